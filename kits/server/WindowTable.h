#pragma once

#include <SupportDefs.h>

#include <QPoint>

#include <map>
#include <memory>
#include <vector>

class QWindow;

namespace kits {

class NativeWindow;

/// The native windows by token, and the shown ones from back to front.
/// Thread: the server's.
class WindowTable
{
public:
    void Add(const std::shared_ptr<NativeWindow>& window);
    void Remove(int32 token);
    /// Puts a shown window in front of the others.
    void Raise(int32 token);
    /// The window is no longer shown.
    void Lower(int32 token);

    /// Any window that is left; null when none is.
    std::shared_ptr<NativeWindow> Any() const;
    /// Lends the window; null when there is none.
    NativeWindow* Find(int32 token) const;
    /// The window of ours that owns this native one; null for null and for foreign ones.
    NativeWindow* Find(const QWindow* window) const;
    /// The frontmost shown window at a point of the screen, menus before all others; 0: none.
    int32 WindowAt(QPoint screen) const;
    /// From back to front.
    const std::vector<int32>& Shown() const { return fShown; }

private:
    std::map<int32, std::shared_ptr<NativeWindow>> fWindows;
    std::vector<int32> fShown;
};

} // namespace kits
