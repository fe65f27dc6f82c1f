#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace kits {

/// A part of a text that nobody changes: passed on, and kept, without copying its bytes.
///
/// Thread: any.
class SharedText
{
public:
    SharedText() = default;
    explicit SharedText(std::string text)
        : fWhole(std::make_shared<const std::string>(std::move(text))), fSize(fWhole->size())
    {
    }
    /// The bytes from `from` on; they are in `whole`, which is never changed again.
    SharedText(std::shared_ptr<const std::string> whole, size_t from, size_t size)
        : fWhole(std::move(whole)), fFrom(from), fSize(size)
    {
    }

    std::string_view View() const
    {
        return fWhole != nullptr ? std::string_view(*fWhole).substr(fFrom, fSize)
                                 : std::string_view();
    }
    bool IsEmpty() const { return fSize == 0; }

private:
    std::shared_ptr<const std::string> fWhole; // null for no text
    size_t fFrom = 0;
    size_t fSize = 0;
};

} // namespace kits
