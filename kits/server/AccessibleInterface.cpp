#include "AccessibleInterface.h"

#include "WindowFlags.h"

#include <QGuiApplication>
#include <QWindow>

namespace kits {

namespace {

QAccessible::Role RoleOf(AccessibleNode::Role role)
{
    switch (role) {
    case AccessibleNode::Role::kWindow:
        return QAccessible::Window;
    case AccessibleNode::Role::kPane:
        return QAccessible::Pane;
    case AccessibleNode::Role::kButton:
        return QAccessible::Button;
    case AccessibleNode::Role::kCheckBox:
        return QAccessible::CheckBox;
    case AccessibleNode::Role::kStaticText:
        return QAccessible::StaticText;
    case AccessibleNode::Role::kTextField:
        return QAccessible::EditableText;
    case AccessibleNode::Role::kList:
        return QAccessible::List;
    case AccessibleNode::Role::kListItem:
        return QAccessible::ListItem;
    case AccessibleNode::Role::kTable:
        return QAccessible::Table;
    case AccessibleNode::Role::kRow:
        return QAccessible::Row;
    case AccessibleNode::Role::kCell:
        return QAccessible::Cell;
    case AccessibleNode::Role::kColumnHeader:
        return QAccessible::ColumnHeader;
    case AccessibleNode::Role::kScrollBar:
        return QAccessible::ScrollBar;
    case AccessibleNode::Role::kProgressBar:
        return QAccessible::ProgressBar;
    case AccessibleNode::Role::kMenuBar:
        return QAccessible::MenuBar;
    case AccessibleNode::Role::kMenu:
        return QAccessible::PopupMenu;
    case AccessibleNode::Role::kMenuItem:
        return QAccessible::MenuItem;
    case AccessibleNode::Role::kMenuField:
        return QAccessible::ComboBox;
    case AccessibleNode::Role::kTabList:
        return QAccessible::PageTabList;
    case AccessibleNode::Role::kTab:
        return QAccessible::PageTab;
    }
    return QAccessible::Pane;
}

} // namespace

bool AccessibleInterface::isValid() const
{
    return fId == AccessibleTree::kRoot || Node() != nullptr;
}

QObject* AccessibleInterface::object() const
{
    // The toolkit lists a window by this object; the rest the bridges know by its number alone.
    return fId == AccessibleTree::kRoot ? fTree.Window() : nullptr;
}

QWindow* AccessibleInterface::window() const
{
    return fTree.Window();
}

QAccessibleInterface* AccessibleInterface::parent() const
{
    if (fId == AccessibleTree::kRoot) {
        return QAccessible::queryAccessibleInterface(qGuiApp);
    }
    return fTree.Interface(fTree.ParentOf(fId));
}

int AccessibleInterface::childCount() const
{
    const AccessibleNode* node = Node();
    return node == nullptr ? 0 : static_cast<int>(node->children.size());
}

QAccessibleInterface* AccessibleInterface::child(int index) const
{
    if (index < 0 || index >= childCount()) {
        return nullptr;
    }
    return fTree.Interface(Node()->children[static_cast<size_t>(index)]->id);
}

QAccessibleInterface* AccessibleInterface::childAt(int x, int y) const
{
    for (int index = 0; index < childCount(); ++index) {
        QAccessibleInterface* candidate = child(index);
        if (candidate->rect().contains(x, y)) {
            return candidate;
        }
    }
    return nullptr;
}

QAccessibleInterface* AccessibleInterface::focusChild() const
{
    const int32 focused = fTree.Focused();
    for (int32 id = focused; id != AccessibleTree::kRoot; id = fTree.ParentOf(id)) {
        if (fTree.ParentOf(id) == fId || fId == AccessibleTree::kRoot) {
            return fTree.Interface(focused);
        }
    }
    return nullptr;
}

int AccessibleInterface::indexOfChild(const QAccessibleInterface* child) const
{
    for (int index = 0; index < childCount(); ++index) {
        if (this->child(index) == child) {
            return index;
        }
    }
    return -1;
}

QString AccessibleInterface::text(QAccessible::Text kind) const
{
    const AccessibleNode* node = Node();
    if (kind == QAccessible::Name) {
        // A window that has published nothing yet has a title all the same.
        if (fId == AccessibleTree::kRoot && (node == nullptr || node->name.empty())) {
            return window() == nullptr ? QString() : window()->title();
        }
        return node == nullptr ? QString() : QString::fromStdString(node->name);
    }
    if (kind == QAccessible::Value && node != nullptr) {
        return QString::fromStdString(node->value);
    }
    return {};
}

QRect AccessibleInterface::rect() const
{
    const QWindow* native = fTree.Window();
    if (native == nullptr) {
        return {};
    }
    const AccessibleNode* node = Node();
    if (fId == AccessibleTree::kRoot || node == nullptr) {
        return native->geometry();
    }
    return RectFrom(node->box).translated(native->geometry().topLeft());
}

QAccessible::Role AccessibleInterface::role() const
{
    const AccessibleNode* node = Node();
    return fId == AccessibleTree::kRoot || node == nullptr ? QAccessible::Window
                                                           : RoleOf(node->role);
}

QAccessible::State AccessibleInterface::state() const
{
    QAccessible::State state;
    const AccessibleNode* node = Node();
    if (fId == AccessibleTree::kRoot) {
        state.active = QGuiApplication::focusWindow() == fTree.Window();
        return state;
    }
    if (node == nullptr) {
        state.invalid = true;
        return state;
    }
    const auto has = [node](AccessibleNode::State flag) {
        return (node->states & flag) != 0;
    };
    state.focusable = has(AccessibleNode::State::kFocusable);
    state.focused = has(AccessibleNode::State::kFocused);
    state.selected = has(AccessibleNode::State::kSelected);
    state.checked = has(AccessibleNode::State::kMarked);
    state.disabled = has(AccessibleNode::State::kDisabled);
    state.defaultButton = has(AccessibleNode::State::kDefault);
    state.passwordEdit = has(AccessibleNode::State::kHidesText);
    state.checkable = node->role == AccessibleNode::Role::kCheckBox;
    state.selectable = node->role == AccessibleNode::Role::kRow ||
                       node->role == AccessibleNode::Role::kListItem ||
                       node->role == AccessibleNode::Role::kTab;
    state.editable = node->role == AccessibleNode::Role::kTextField;
    return state;
}

} // namespace kits
