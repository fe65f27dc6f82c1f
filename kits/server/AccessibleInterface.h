#pragma once

#include "AccessibleTree.h"

namespace kits {

/// One node of a window as the toolkit's bridges want it.
/// Thread: the server's.
class AccessibleInterface : public QAccessibleInterface
{
public:
    AccessibleInterface(AccessibleTree& tree, int32 id) : fTree(tree), fId(id) {}

    // QAccessibleInterface
    bool isValid() const override;
    QObject* object() const override;
    QWindow* window() const override;
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int index) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    QAccessibleInterface* focusChild() const override;
    int childCount() const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;

private:
    const AccessibleNode* Node() const { return fTree.Node(fId); }

    AccessibleTree& fTree;
    const int32 fId;
};

} // namespace kits
