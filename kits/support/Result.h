#pragma once

#include <SupportDefs.h>

#include <optional>
#include <utility>

namespace kits {

/// A value, or the status that says why there is none.
template<class Value>
class [[nodiscard]] Result
{
public:
    Result(Value value)
        : fValue(std::move(value)) {} // NOLINT(google-explicit-constructor): reads as the value
    /// `status` is not B_OK.
    Result(status_t status)
        : fStatus(status) {} // NOLINT(google-explicit-constructor): reads as the error

    bool IsOk() const { return fStatus == B_OK; }
    status_t Status() const { return fStatus; }

    // Only when IsOk().
    const Value& Get() const { return *fValue; }
    Value& Get() { return *fValue; }
    Value Take() { return std::move(*fValue); }

private:
    std::optional<Value> fValue;
    status_t fStatus = B_OK;
};

} // namespace kits
