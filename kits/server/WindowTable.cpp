#include "WindowTable.h"

#include "NativeWindow.h"
#include "Surface.h"

#include <algorithm>

namespace kits {

void WindowTable::Add(const std::shared_ptr<NativeWindow>& window)
{
    fWindows[window->Token()] = window;
}

void WindowTable::Remove(int32 token)
{
    Lower(token);
    fWindows.erase(token);
}

void WindowTable::Raise(int32 token)
{
    Lower(token);
    fShown.push_back(token);
}

void WindowTable::Lower(int32 token)
{
    std::erase(fShown, token);
}

std::shared_ptr<NativeWindow> WindowTable::Any() const
{
    return fWindows.empty() ? nullptr : fWindows.begin()->second;
}

NativeWindow* WindowTable::Find(int32 token) const
{
    const auto found = fWindows.find(token);
    return found == fWindows.end() ? nullptr : found->second.get();
}

NativeWindow* WindowTable::Find(const QWindow* window) const
{
    const auto* surface = dynamic_cast<const Surface*>(window);
    return surface == nullptr ? nullptr : &surface->Owner();
}

int32 WindowTable::WindowAt(QPoint screen) const
{
    for (const bool wantsPopUps : {true, false}) {
        for (auto token = fShown.rbegin(); token != fShown.rend(); ++token) {
            const NativeWindow* window = Find(*token);
            if (window != nullptr && window->IsPopUp() == wantsPopUps && !window->IsTip() &&
                window->GetSurface()->geometry().contains(screen)) {
                return *token;
            }
        }
    }
    return 0;
}

} // namespace kits
