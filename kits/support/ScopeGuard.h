#pragma once

#include <utility>

namespace kits {

/// Runs a function at the end of the scope, unless dismissed: undoes what is half done.
template<class Function>
class [[nodiscard]] ScopeGuard
{
public:
    explicit ScopeGuard(Function function) : fFunction(std::move(function)) {}
    ~ScopeGuard()
    {
        if (fIsArmed) {
            fFunction();
        }
    }
    ScopeGuard(const ScopeGuard&) = delete;
    ScopeGuard& operator=(const ScopeGuard&) = delete;

    void Dismiss() { fIsArmed = false; }

private:
    Function fFunction;
    bool fIsArmed = true;
};

} // namespace kits
