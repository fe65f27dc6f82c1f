#include "panes/PaneMenus.h"

#include "clv/ColumnListView.h"
#include "panes/EntryClipboard.h"
#include "panes/PaneMarks.h"
#include "panes/PaneRows.h"
#include "panes/ScrollIntoSight.h"
#include "settings/MsgBox.h"

#include <Message.h>
#include <PopUpMenu.h>
#include <Screen.h>
#include <Window.h>

#include <algorithm>
#include <utility>

namespace norvane {

namespace {

constexpr int32 kNameColumn = 1;
constexpr float kIntoName = 2; // where the name's letters begin in their cell

/// The menu goes by itself when it was left or did its work.
void Go(std::unique_ptr<BPopUpMenu> menu, BPoint where)
{
    menu->SetAsyncAutoDestruct(true);
    menu.release()->Go(where, true, true, true);
}

} // namespace

void PaneMenus::OpenByKey()
{
    DirListItem* row = fRows.RowAt(fList.CurrentSelection());
    if (fList.Window() == nullptr) {
        return;
    }
    if (row == nullptr && !fMarks.IsEmpty()) {
        row = fMarks.Rows().front();
    }
    const int32 index = row != nullptr ? fRows.IndexOf(row) : -1;
    if (row != nullptr) {
        BRect frame = fList.ItemFrame(index);
        frame.left = frame.right = fList.Bounds().left; // columns stay where they are
        fList.ScrollTo(ScrolledToShow(fList.Bounds(), frame));
    }
    std::unique_ptr<BPopUpMenu> menu = Make(row);
    Remember(row, ActedOn(row, true));
    const BPoint where = BelowName(index, *menu);
    Go(std::move(menu), where);
}

void PaneMenus::OpenAt(std::optional<DirListItem*> row, BPoint screen)
{
    if (row.has_value() && fList.Window() != nullptr) {
        std::unique_ptr<BPopUpMenu> menu = Make(*row);
        Remember(*row, ActedOn(*row, false));
        Go(std::move(menu), screen);
    }
}

std::vector<DirListItem*> PaneMenus::ActedOn(DirListItem* row, bool isByKey) const
{
    if (row == nullptr || row->IsParent() || fMarks.IsEmpty() || (!isByKey && !row->IsMarked())) {
        return row != nullptr ? std::vector<DirListItem*>{row} : std::vector<DirListItem*>{};
    }
    return fMarks.Rows();
}

std::unique_ptr<BPopUpMenu> PaneMenus::Make(const DirListItem* row)
{
    RowMenuFacts facts = fTarget.FactsOf(row);
    facts.isMarked = row != nullptr && row->IsMarked();
    facts.canPaste = facts.canPaste && EntryClipboard::MayHoldEntries();
    const BMessenger list(&fList);
    fNumber++;
    return row != nullptr ? MakeRowMenu(facts, list, fNumber) : MakePlaceMenu(facts, list, fNumber);
}

void PaneMenus::Remember(DirListItem* row, const std::vector<DirListItem*>& rows)
{
    fPlace = fTarget.PlaceName();
    fIsOfPlace = row == nullptr;
    fRow = row != nullptr ? RememberedRows({row}) : RememberedRows();
    fActedOn = RememberedRows(rows);
}

/// Or above the row, where the screen has no room below it.
BPoint PaneMenus::BelowName(int32 index, BPopUpMenu& menu) const
{
    const BRect bounds = fList.Bounds();
    if (index < 0) {
        return fList.ConvertToScreen(bounds.LeftTop() + BPoint(kIntoName, kIntoName));
    }
    const BRect row = fList.ItemFrame(index);
    const CLVColumn* column = fList.ColumnAt(kNameColumn);
    const float left = column != nullptr ? column->Begin() + kIntoName : bounds.left;
    const BPoint top(std::clamp(left, bounds.left, bounds.right), row.top);
    const BPoint screenTop = fList.ConvertToScreen(top);
    const float below = screenTop.y + row.Height() + 1;
    float width = 0;
    float height = 0;
    menu.GetPreferredSize(&width, &height);
    const BRect screen = BScreen(fList.Window()).AvailableFrame();
    const float above = screenTop.y - 1 - height;
    return BPoint(screenTop.x,
                  below + height > screen.bottom && above >= screen.top ? above : below);
}

void PaneMenus::Chosen(const BMessage& choice)
{
    if (choice.GetInt32("menu", 0) != fNumber || fNumber == 0) {
        return; // of a menu before the last one
    }
    const auto command = static_cast<RowCommand>(choice.GetInt32("command", 0));
    const RememberedRows row = std::exchange(fRow, {});
    const RememberedRows actedOn = std::exchange(fActedOn, {});
    const bool isSamePlace = fPlace == fTarget.PlaceName();
    const std::vector<DirListItem*> one =
        isSamePlace ? row.FindIn(fRows) : std::vector<DirListItem*>{};
    const std::vector<DirListItem*> all =
        isSamePlace ? actedOn.FindIn(fRows) : std::vector<DirListItem*>{};
    if (fIsOfPlace ? !isSamePlace : one.empty() && all.empty()) {
        MsgBox("Oh Well", "What the menu was opened for is not here any more.", "OK", B_INFO_ALERT);
        return;
    }
    fTarget.CarryOut(command, one.empty() ? nullptr : one.front(), all);
}

} // namespace norvane
