#include "panes/DirView.h"

#include "MessageCodes.h"
#include "clv/CLVContainerView.h"
#include "panes/DirPane.h"
#include "panes/PatternMarking.h"
#include "panes/RowIcons.h"

#include <AppDefs.h>
#include <Bitmap.h>
#include <Clipboard.h>
#include <Entry.h>
#include <Font.h>
#include <ScrollView.h>
#include <Window.h>

#include <utility>

// Construction, and what the list is told.

namespace norvane {

namespace {

constexpr float kMinimumWidth = 20;

struct ColumnDefault
{
    const char* label;
    float width;
    uint32 flags;
};

constexpr ColumnDefault kColumns[] = {
    {nullptr, 20, CLV_NOT_MOVABLE | CLV_NOT_RESIZABLE}, // the icon, under the pane's digit
    {"Name", 108, CLV_SORT_KEYABLE},
    {"Size", 70, CLV_SORT_KEYABLE},
    {"Date", 145, CLV_SORT_KEYABLE},
    {"Permissions", 100, CLV_SORT_KEYABLE},
};

} // namespace

DirView::DirView(BRect frame, BScrollView** containerOut, const char* path, const char* iconLabel,
                 BView* parentPane)
    : ColumnListView(frame, nullptr, "dirview", B_FOLLOW_ALL_SIDES,
                     B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE, B_SINGLE_SELECTION_LIST, false,
                     true, true, B_NO_BORDER, be_plain_font),
      fPane(parentPane), fNotifier(parentPane),
      fDragOver(*this, fRows,
                [this](const DirListItem& row, const BMessage& entries) {
                    return TakesEntries(row, entries);
                }),
      fListing(path != nullptr ? path : "/", fRows, fUpdates, fNotifier, *this)
{
    *containerOut = Container();
    SetFontSize(Preferences::kFontSize);
    AddColumns(iconLabel);
    GetPreferences();
}

DirView::~DirView()
{
    Clear();
}

void DirView::AddColumns(const char* iconLabel)
{
    for (const ColumnDefault& column : kColumns) {
        const char* label = column.label != nullptr ? column.label : iconLabel;
        AddColumn(new CLVColumn(label, column.width, column.flags, kMinimumWidth)); // adopted
    }
}

void DirView::AttachedToWindow()
{
    ColumnListView::AttachedToWindow();
    fNotifier.Attached();
    fUpdates.SetList(BMessenger(this));
    if (fPane != nullptr) {
        fWhereabouts.SetList(BMessenger(this));
    }
    be_clipboard->StartWatching(BMessenger(this));
    if (!fIsFirstAttachment) {
        return;
    }
    fIsFirstAttachment = false;
    fListing.Start();
    RefreshNote();
    NotifyParent(MSG_PANE_INFO);
}

void DirView::DetachedFromWindow()
{
    StopNodeMonitoring();
    be_clipboard->StopWatching(BMessenger(this));
    ColumnListView::DetachedFromWindow();
}

void DirView::MakeFocus(bool isFocused)
{
    ColumnListView::MakeFocus(isFocused);
    if (auto* pane = dynamic_cast<DirPane*>(fPane)) {
        pane->HightlighHeader(isFocused || fRename.IsOpen());
    }
}

void DirView::WindowActivated(bool isActive)
{
    ColumnListView::WindowActivated(isActive);
    if (isActive) {
        AddMissing();
        fWhereabouts.Check();
    }
}

// Keys and mouse

int32 DirView::CurrentInt32(const char* field) const
{
    int32 value = 0;
    const BMessage* message = Window() != nullptr ? Window()->CurrentMessage() : nullptr;
    if (message != nullptr) {
        message->FindInt32(field, &value);
    }
    return value;
}

void DirView::KeyDown(const char* bytes, int32 byteCount)
{
    const KeyPress key{bytes, byteCount, CurrentInt32("key"),
                       static_cast<uint32>(CurrentInt32("modifiers")),
                       CurrentInt32("be:key_repeat") != 0};
    if (!fKeys.KeyDown(key)) {
        ColumnListView::KeyDown(bytes, byteCount);
    }
}

void DirView::Draw(BRect updateRect)
{
    ColumnListView::Draw(updateRect);
    if (CountItems() <= 1) {
        fNote.Draw(CountItems() == 0 ? 0 : ItemFrame(0).bottom + 1);
    }
    fDragOver.Draw();
}

void DirView::ScrollTo(BPoint where)
{
    ColumnListView::ScrollTo(where);
    fNote.Scrolled();
}

void DirView::MouseDown(BPoint where)
{
    const auto buttons = static_cast<uint32>(CurrentInt32("buttons"));
    if (GoBySideButton(buttons)) {
        return;
    }
    const int32 index = IndexOf(where);
    if (fGestures.Pressed(where, index, static_cast<uint32>(CurrentInt32("modifiers")), buttons)) {
        SetMouseEventMask(B_POINTER_EVENTS);
    }
    const DirListItem* row = RowAt(index);
    const bool isChosen = row != nullptr && (row->IsMarked() || IsItemSelected(index));
    if ((buttons & B_PRIMARY_MOUSE_BUTTON) == 0 && isChosen) {
        MakeFocus(); // what is chosen stays so under any other button
        return;
    }
    ColumnListView::MouseDown(where);
}

void DirView::MouseMoved(BPoint where, uint32 transit, const BMessage* dragged)
{
    const DirListItem* row = fGestures.Moved(where, static_cast<uint32>(CurrentInt32("buttons")));
    fDragOver.Moved(where, transit, dragged);
    ColumnListView::MouseMoved(where, transit, dragged);
    if (row != nullptr) {
        StartDrag(fRows.IndexOf(row));
    }
}

void DirView::MouseUp(BPoint where)
{
    const std::optional<DirListItem*> menuOf = fGestures.Released();
    ColumnListView::MouseUp(where);
    fMenus.OpenAt(menuOf, ConvertToScreen(where));
}

bool DirView::InitiateDrag(BPoint, int32, bool)
{
    // StartDrag() does it; and a press that moves away never sweeps the selection along.
    return true;
}

// Rows

void DirView::RowsLeave(const std::vector<DirListItem*>& rows)
{
    fMarks.Forget(rows);
    for (const DirListItem* row : rows) {
        fGestures.Forget(row);
        fRename.Forget(row);
        fDragOver.Forget(row);
        fKeys.Forget(row);
    }
}

void DirView::AllRowsLeave()
{
    fRename.Drop();
    fMeasure.Cancel();
    fGestures.ForgetAll();
    fDragOver.ForgetAll();
    fKeys.ForgetAll();
    fMarks.ForgetAll();
    fUpdates.ForgetAll();
}

void DirView::RowsChanged()
{
    fRename.Follow();
    RefreshNote();
    NotifyParent(MSG_PANE_INFO);
}

// Notices

void DirView::NodeChanged(const BMessage& notice)
{
    const bool wasGone = fUpdates.IsGone();
    fUpdates.NodeChanged(notice);
    if (fUpdates.IsGone() != wasGone) {
        fWhereabouts.LookOut();
        RefreshNote();
        NotifyParent(MSG_PANE_INFO);
    } else if (fUpdates.TakeMoved()) {
        fWhereabouts.Check();
    }
    if (EditNamed(fNameToEdit)) {
        fNameToEdit.clear();
    }
    if (fUpdates.TakeFolderLeft() && Window() != nullptr) {
        Window()->PostMessage(kFoldersMoved);
    }
}

void DirView::LookedAgain(status_t status)
{
    RefreshNote();
    fWhereabouts.LookOut();
    if (status == B_OK || status == B_ENTRY_NOT_FOUND) {
        fWhereabouts.Check(); // it may have moved again while it was read
    }
    NotifyParent(MSG_PANE_INFO);
}

void DirView::IconFound(const BMessage& message)
{
    FoundIcon found;
    if (!found.Read(message)) {
        return;
    }
    DirListItem* row = fRows.FindRow(found.name.c_str());
    if (row == nullptr || row->NodeRef() != found.node) {
        row = fRows.Find(found.node, nullptr); // query results are listed by their paths
    }
    if (row != nullptr && row->LeafName() == found.name) {
        row->SetBitmap(std::move(found.icon.own), found.icon.shared);
        fRows.Redraw(row);
    }
}

void DirView::LinkAnswered(const BMessage& message)
{
    LinkAnswer answer;
    if (answer.Read(message)) {
        fUpdates.LinkAnswered(answer);
    }
}

void DirView::SelectionChanged()
{
    fMeasure.Cancel();
    NotifyParent(MSG_PANE_INFO);
}

void DirView::MessageReceived(BMessage* message)
{
    switch (message->what) {
    case kLocalEntries:
    case kRemoteEntries:
        EntriesDropped(message);
        break;
    case B_NODE_MONITOR: // of hits; the pane passes on what its folder's watch tells
        fListing.NodeChanged(*message);
        break;
    case kListingNews:
        fListing.Proceed();
        break;
    case kSourceNews:
        NewsOfSource();
        break;
    case kPasswordGiven:
        fListing.Source().TakeReply(*message);
        break;
    case kLinkAnswered:
        LinkAnswered(*message);
        break;
    case kIconFound:
        IconFound(*message);
        break;
    case kRowMenuChosen:
        fMenus.Chosen(*message);
        break;
    case B_UNMAPPED_KEY_DOWN:
        UnmappedKeyDown(*message);
        break;
    case B_COPY:
        CopyEntries();
        break;
    case B_CUT:
        CutEntries();
        break;
    case B_PASTE:
        PasteEntries();
        break;
    case kEntriesToPaste:
        EntriesArrived(message);
        break;
    case B_CLIPBOARD_CHANGED:
        ClipboardChanged();
        break;
    case kDragScroll:
        fDragOver.Scroll();
        break;
    case kTellOfMissingWatch:
        fListing.TellOfMissingWatch();
        break;
    case kFolderMeasured:
        FolderMeasured(*message);
        break;
    case kFolderMade:
    case kEntryRenamed:
        EntryAnswered(*message);
        break;
    case kNewNameTyped:
        RenameEnded(true);
        break;
    case kRenameCancelled:
        RenameEnded(false);
        break;
    default:
        if (!fWhereabouts.MessageReceived(*message) && !MarkAsTold(*message, fMarks)) {
            ColumnListView::MessageReceived(message);
        }
    }
}

} // namespace norvane
