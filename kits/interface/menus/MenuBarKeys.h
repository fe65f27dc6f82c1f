#pragma once

#include "interface/views/KeyMenus.h"

namespace kits {

/// A menu bar as the window sees it whose key menu bar it is. Thread: the window's.
class MenuBarKeys : public KeyMenus
{
public:
    explicit MenuBarKeys(BMenuBar& bar) : fBar(bar) {}

    // KeyMenus
    bool InvokeShortcut(const BMessage& key) override;
    bool OpenByKey() override;
    BMenuBar* Bar() override { return &fBar; }
    const BView& View() const override;

private:
    BMenuBar& fBar;
};

} // namespace kits
