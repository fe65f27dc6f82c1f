#include "panes/DirView.h"

#include "clv/CLVContainerView.h"
#include "panes/DatePattern.h"
#include "panes/DirPane.h"
#include "settings/HomeFolder.h"
#include "settings/Numbers.h"
#include "settings/Profile.h"

#include <Font.h>
#include <ScrollView.h>
#include <Window.h>

#include <cmath>
#include <cstring>

// Construction, columns, preferences and notices. Listing, selection and marks, keys, mouse and
// drops, and live updates have sources of their own.

namespace norvane {

namespace {

constexpr float kFontSize = 12;
constexpr float kMinimumWidth = 20;
constexpr std::size_t kDateFormatBytes = 64;

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

bool ReadFlag(const char* key)
{
    char value[kProfileLineBytes];
    return !GetProfileString(kSettingsFolder, key, value, kSettingsFile) || atoi(value) != 0;
}

} // namespace

DirView::DirView(BRect frame, BScrollView** containerOut, const char* path, const char* iconLabel,
                 BView* parentPane)
    : ColumnListView(frame, nullptr, "dirview", B_FOLLOW_ALL_SIDES,
                     B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE, B_SINGLE_SELECTION_LIST, false,
                     true, true, B_NO_BORDER, be_plain_font),
      fPath(path != nullptr ? path : "/"), fOrder(fSource), fPane(parentPane), fNotifier(parentPane)
{
    *containerOut = Container();
    SetFontSize(kFontSize);
    AddColumns(iconLabel);
    GetPreferences();
}

DirView::~DirView()
{
    StopNodeMonitoring();
    DeleteRows();
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
    if (!fIsFirstAttachment) {
        return;
    }
    fIsFirstAttachment = false;
    // Told later, together with other panes' folders: the window is not even shown yet.
    if (List(fPath, Complaint::kNone) != 1) {
        fUnreadable = fPath;
        fPath = HomeFolder();
        List(fPath, Complaint::kNone);
    }
    NotifyParent(MSG_PANE_INFO);
}

void DirView::DetachedFromWindow()
{
    StopNodeMonitoring();
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
    }
}

DirListItem* DirView::RowAt(int32 index) const
{
    return static_cast<DirListItem*>(ItemAt(index));
}

// Columns

void DirView::ColumnWidthChanged(int32 columnIndex, float newWidth)
{
    // A width that the window passes on must not come back to it.
    if (Window() == nullptr || fIsTakingWidth) {
        return;
    }
    char text[16];
    BMessage message(kColumnResized);
    itoa(columnIndex, text);
    message.AddString("ColumnIndex", text);
    itoa(static_cast<int>(std::lround(newWidth)), text);
    message.AddString("ColumnWidth", text);
    Window()->PostMessage(&message);
}

int DirView::ColumnWidth(int32 index) const
{
    const CLVColumn* column = ColumnAt(index);
    return column != nullptr ? static_cast<int>(column->Width()) : -1;
}

void DirView::SetColumnWidth(int32 index, int width)
{
    if (CLVColumn* column = ColumnAt(index)) {
        fIsTakingWidth = true;
        column->SetWidth(static_cast<float>(width));
        fIsTakingWidth = false;
    }
}

// Preferences

void DirView::GetPreferences()
{
    char format[kDateFormatBytes];
    std::strcpy(format, DatePattern::kDefault);
    GetProfileString(kSettingsFolder, "DateFormat", format, sizeof(format), kSettingsFile);
    SetDateFormat(format);
    fShowsProgress = ReadFlag("ShowProgressBar");
    fShowsHeader = ReadFlag("ShowHeader");
    fShowsFooter = ReadFlag("ShowFooter");
}

void DirView::SetDateFormat(const char* pattern)
{
    // One that is too long is refused: its first part could mean something else.
    if (std::strlen(pattern) < kDateFormatBytes) {
        fDateFormat = pattern;
    }
}

// Notices

void DirView::NotifyParent(uint32 code)
{
    // Twenty thousand changes need one refreshed footer, not as many.
    if (code == MSG_PANE_INFO && Window() != nullptr) {
        if (fIsInfoOnItsWay) {
            return;
        }
        fIsInfoOnItsWay = true;
    }
    fNotifier.Post(code);
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
        EntriesDropped(message);
        break;
    case kFolderMeasured:
        FolderMeasured(*message);
        break;
    case kNewNameTyped:
        RenameEnded(true);
        break;
    case kRenameCancelled:
        RenameEnded(false);
        break;
    default:
        ColumnListView::MessageReceived(message);
    }
}

} // namespace norvane
