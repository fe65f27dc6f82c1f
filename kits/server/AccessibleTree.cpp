#include "AccessibleTree.h"

#include "AccessibleInterface.h"

#include <utility>

namespace kits {

AccessibleTree::~AccessibleTree() = default;

void AccessibleTree::Close()
{
    fIsClosed = true;
    fWindow = nullptr;
    for (const auto& [id, interface] : fInterfaces) {
        QAccessible::deleteAccessibleInterface(interface);
    }
    fInterfaces.clear();
    fNodes.clear();
    fPublished.reset();
}

void AccessibleTree::Changed(std::shared_ptr<const Published> published)
{
    if (fIsClosed) {
        return;
    }
    fNodes.clear();
    fPublished = std::move(published);
    const int32 oldFocus = std::exchange(fFocused, kRoot);
    if (fPublished->root != nullptr) {
        Index(*fPublished->root, kRoot);
    }
    std::erase_if(fInterfaces, [this](const auto& entry) {
        const bool isGone = entry.first != kRoot && fNodes.count(entry.first) == 0;
        if (isGone) {
            QAccessible::deleteAccessibleInterface(entry.second);
        }
        return isGone;
    });
    if (QAccessible::isActive() && fWindow != nullptr && fFocused != oldFocus) {
        QAccessibleEvent event(Interface(fFocused), QAccessible::Focus);
        QAccessible::updateAccessibility(&event);
    }
}

void AccessibleTree::Index(const AccessibleNode& node, int32 parent)
{
    // The published root is the window itself, whatever its own number.
    const bool isRoot = &node == fPublished->root.get();
    const int32 id = isRoot ? kRoot : node.id;
    fNodes[id] = {&node, parent};
    if (!isRoot && (node.states & AccessibleNode::State::kFocused) != 0) {
        fFocused = id;
    }
    for (const std::shared_ptr<const AccessibleNode>& child : node.children) {
        Index(*child, id);
    }
}

QAccessibleInterface* AccessibleTree::Interface(int32 id)
{
    if (fIsClosed || (id != kRoot && fNodes.count(id) == 0)) {
        return nullptr;
    }
    const auto found = fInterfaces.find(id);
    if (found != fInterfaces.end()) {
        return QAccessible::accessibleInterface(found->second);
    }
    // Adopted by the registration.
    auto* interface = new AccessibleInterface(*this, id);
    fInterfaces[id] = QAccessible::registerAccessibleInterface(interface);
    return interface;
}

const AccessibleNode* AccessibleTree::Node(int32 id) const
{
    const auto found = fNodes.find(id);
    return found == fNodes.end() ? nullptr : found->second.node;
}

int32 AccessibleTree::ParentOf(int32 id) const
{
    const auto found = fNodes.find(id);
    return found == fNodes.end() ? kRoot : found->second.parent;
}

} // namespace kits
