#pragma once

#include "Published.h"

#include <QAccessible>

#include <map>
#include <memory>

class QWindow;

namespace kits {

/// What assistive programs see of a window: answered from what the window published last.
///
/// Interfaces are made when they are asked for, one per node, and go with their node.
/// Thread: the server's.
class AccessibleTree
{
public:
    /// The window itself, also before it has published anything.
    static constexpr int32 kRoot = 0;

    AccessibleTree() = default;
    ~AccessibleTree();
    AccessibleTree(const AccessibleTree&) = delete;
    AccessibleTree& operator=(const AccessibleTree&) = delete;

    /// The window that the nodes lie in, once it is there: nobody can ask for any before.
    /// Ownership: borrows it until Close().
    void SetWindow(QWindow* window) { fWindow = window; }

    /// Takes over the nodes of `published`; drops interfaces whose nodes are gone; tells of a new
    /// focus.
    void Changed(std::shared_ptr<const Published> published);

    /// Deletes all interfaces and makes no more: the native window is about to go, if not at once.
    void Close();

    /// Lends the interface of a node; null when there is no such node, and once it is closed.
    QAccessibleInterface* Interface(int32 id);
    /// Lends the node until the next change; null for unknown ones, and for the root before a
    /// publication.
    const AccessibleNode* Node(int32 id) const;
    /// The node above; kRoot for those at the top.
    int32 ParentOf(int32 id) const;
    /// The node that has the focus; kRoot when none has.
    int32 Focused() const { return fFocused; }
    /// Null before there is one, and once the tree is closed.
    QWindow* Window() const { return fWindow; }

private:
    struct Entry
    {
        const AccessibleNode* node = nullptr; // lives as long as fPublished
        int32 parent = kRoot;
    };

    void Index(const AccessibleNode& node, int32 parent);

    QWindow* fWindow = nullptr;
    std::shared_ptr<const Published> fPublished;
    std::map<int32, Entry> fNodes;
    std::map<int32, QAccessible::Id> fInterfaces;
    int32 fFocused = kRoot;
    bool fIsClosed = false;
};

} // namespace kits
