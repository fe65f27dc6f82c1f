#include "ftp/sessions/ConWin.h"

#include "MessageCodes.h"
#include "fileops/engine/ProblemList.h"
#include "fileops/windows/DialogLayout.h"
#include "ftp/sessions/FtpWin.h"
#include "ftp/sessions/SessionErrands.h"
#include "settings/MsgBox.h"

#include <AppDefs.h>
#include <Button.h>
#include <Errors.h>
#include <ListView.h>
#include <Message.h>
#include <NodeMonitor.h>
#include <ScrollView.h>
#include <StringView.h>

#include <algorithm>

namespace norvane {

namespace {

constexpr float kWidth = 360;
constexpr float kHeight = 240;
constexpr float kLeastListWidth = 100;
constexpr float kGap = 10;
constexpr float kButtonGap = 8;
constexpr float kBorder = 2;      // of the scroll view
constexpr float kDefaultMark = 3; // around the face of the default button

struct ButtonOf
{
    const char* name;
    const char* label;
    uint32 what;
};

// From the top; the last one stands apart, at the bottom.
const ButtonOf kButtons[] = {
    {"bConnect", "Connect", kSessionAccepted}, {"bNew", "New Connection", kSessionNew},
    {"bEdit", "Edit", kSessionEdit},           {"bDelete", "Delete", kSessionDelete},
    {"bCancel", "Cancel", kSessionCancelled},
};
constexpr float kButtonCount = 5;

// Of the buttons, with the default one's mark.
float ColumnWidth()
{
    float widest = 0;
    for (const ButtonOf& button : kButtons) {
        widest = std::max(widest, ButtonWidth(button.label));
    }
    return widest + 2 * kDefaultMark;
}

float ListTop()
{
    return kDialogEdge + LineHeight() + 4;
}

float LeastHeight()
{
    return ListTop() + kDefaultMark + kButtonCount * (ButtonHeight() + kButtonGap) + kDialogEdge;
}

void TellThatNoneIsSelected()
{
    MsgBox("Hey", "Please select a session first.", "OK", B_INFO_ALERT);
}

} // namespace

ConWin::ConWin(BRect frame, BWindow* owner)
    : BWindow(CentredFrame(frame, kWidth, std::max(kHeight, LeastHeight())), "Ftp Sessions",
              B_TITLED_WINDOW, B_ASYNCHRONOUS_CONTROLS),
      fOwner(owner)
{
    if (owner != nullptr) {
        SetOpener(owner);
    }
    BuildContents();
    fWatch = std::make_unique<SessionsWatch>(BMessenger(this));
    LoadConnectionList();
}

ConWin::~ConWin()
{
    Clear();
}

void ConWin::BuildContents()
{
    BView* ground = MakeDialogGround(Bounds(), "FtpConContainer");
    AddChild(ground);
    const float listRight = Bounds().right - kDialogEdge - ColumnWidth() - kGap;
    AddList(ground, listRight);
    AddButtons(ground);
    const float leastWidth = 2 * kDialogEdge + kLeastListWidth + kGap + ColumnWidth();
    SetSizeLimits(std::min(leastWidth, Bounds().Width()), 32767,
                  std::min(LeastHeight(), Bounds().Height()), 32767);
    fList->MakeFocus(true);
}

void ConWin::AddList(BView* ground, float right)
{
    const BRect bounds = Bounds();
    ground->AddChild(
        new BStringView(BRect(kDialogEdge, kDialogEdge, right, kDialogEdge + LineHeight()),
                        "Label1", "Connect To:"));
    const BRect frame(kDialogEdge + kBorder, ListTop() + kBorder,
                      right - kBorder - B_V_SCROLL_BAR_WIDTH,
                      bounds.bottom - kDialogEdge - kBorder);
    fList = new BListView(frame, "lvConnections", B_SINGLE_SELECTION_LIST, B_FOLLOW_ALL_SIDES);
    fList->SetInvocationMessage(new BMessage(kSessionAccepted));
    ground->AddChild(new BScrollView("ScrollContainer", fList, B_FOLLOW_ALL_SIDES, 0, false, true));
    fList->SetTarget(this);
}

void ConWin::AddButtons(BView* ground)
{
    const float right = Bounds().right - kDialogEdge - kDefaultMark;
    const float left = right - ColumnWidth() + 2 * kDefaultMark;
    float top = ListTop() + kDefaultMark;
    for (const ButtonOf& one : kButtons) {
        const bool isLast = one.what == kSessionCancelled;
        if (isLast) {
            top = Bounds().bottom - kDialogEdge - ButtonHeight();
        }
        auto* button = new BButton(BRect(left, top, right, top + ButtonHeight()), one.name,
                                   one.label, new BMessage(one.what),
                                   B_FOLLOW_RIGHT | (isLast ? B_FOLLOW_BOTTOM : B_FOLLOW_TOP));
        ground->AddChild(button);
        button->SetTarget(this);
        button->MakeDefault(one.what == kSessionAccepted);
        top += ButtonHeight() + kButtonGap;
    }
}

void ConWin::MessageReceived(BMessage* message)
{
    switch (message->what) {
    case kSessionAccepted:
        Connect();
        break;
    case kSessionCancelled:
        PostMessage(B_QUIT_REQUESTED);
        break;
    case kSessionNew:
        OpenEditor(nullptr);
        break;
    case kSessionEdit:
        Edit();
        break;
    case kSessionDelete:
        AskToDelete();
        break;
    case kSessionDeleted:
        Deleted(*message);
        break;
    case kSessionsListed:
        Listed(*message);
        break;
    case B_NODE_MONITOR:
    case kSessionsChanged:
        ListAgain();
        break;
    default:
        BWindow::MessageReceived(message);
    }
}

// The list

void ConWin::LoadConnectionList()
{
    fIsListing = true;
    fIsToListAgain = false;
    fWatch->List();
}

void ConWin::ListAgain()
{
    if (fIsListing) {
        fIsToListAgain = true;
    } else {
        LoadConnectionList();
    }
}

void ConWin::Clear()
{
    fList->MakeEmpty();
    fRows.clear();
}

void ConWin::Listed(const BMessage& message)
{
    fIsListing = false;
    if (message.GetInt32("status", B_ERROR) == B_OK) {
        ShowNames(message);
    }
    if (fIsToListAgain) {
        LoadConnectionList();
    }
    TellListing(message);
}

void ConWin::ShowNames(const BMessage& message)
{
    std::string selected;
    const bool hadSelection = GetSelected(&selected);
    Clear();
    BList rows;
    int32 place = -1;
    const char* name = nullptr;
    for (int32 index = 0; message.FindString("name", index, &name) == B_OK; index++) {
        fRows.push_back(std::make_unique<BStringItem>(name));
        rows.AddItem(fRows.back().get());
        if (hadSelection && selected == name) {
            place = index;
        }
    }
    fList->AddList(&rows);
    if (place >= 0) {
        fList->Select(place);
        fList->ScrollToSelection();
    }
}

void ConWin::TellListing(const BMessage& message)
{
    const status_t watch = message.GetInt32("watch", B_OK);
    const status_t status = message.GetInt32("status", B_OK);
    if (watch != B_OK && !fHasToldOfWatch) {
        fHasToldOfWatch = true;
        MsgBox("Err",
               watch == B_BAD_VALUE ? "A bad value was passed.  Node Monitoring disabled."
                                    : "Out of memory. Node Monitoring disabled.",
               "Oh Well", B_INFO_ALERT);
    } else if (watch == B_OK && status != B_OK) {
        const std::string text =
            std::string("Could not read the sessions: ") + ReasonForSession(status);
        MsgBox("Err", text.c_str(), "OK", B_INFO_ALERT);
    }
}

// What its buttons do

const BStringItem* ConWin::Selected() const
{
    const int32 row = fList->CurrentSelection();
    return row >= 0 ? fRows[static_cast<std::size_t>(row)].get() : nullptr;
}

bool ConWin::GetSelected(std::string* name) const
{
    const BStringItem* row = Selected();
    if (row != nullptr) {
        *name = row->Text();
    }
    return row != nullptr;
}

void ConWin::Connect()
{
    std::string name;
    if (!GetSelected(&name)) {
        TellThatNoneIsSelected();
        return;
    }
    BMessage chosen(kSessionChosen);
    chosen.AddString("session", SessionFile::FileNameOf(name).c_str());
    fOwner.SendMessage(&chosen);
    PostMessage(B_QUIT_REQUESTED);
}

void ConWin::Edit()
{
    std::string name;
    if (GetSelected(&name)) {
        OpenEditor(SessionFile::FileNameOf(name).c_str());
    } else {
        TellThatNoneIsSelected();
    }
}

void ConWin::OpenEditor(const char* fileName)
{
    auto* editor = new FtpWin(Frame(), this, fileName);
    editor->Show();
}

void ConWin::AskToDelete()
{
    std::string name;
    if (!GetSelected(&name)) {
        TellThatNoneIsSelected();
        return;
    }
    const std::string question =
        "Are you sure you want to delete the session: " + ShownName(name) + "?";
    if (WarnAndAsk(question, "Delete")) {
        DeleteSession(name, BMessenger(this));
    }
}

void ConWin::Deleted(const BMessage& message)
{
    ListAgain();
    const status_t status = message.GetInt32("status", B_ERROR);
    if (status != B_OK && status != B_ENTRY_NOT_FOUND) {
        const std::string text = "Could not delete the session " +
                                 ShownName(message.GetString("name", "")) + ": " +
                                 ReasonForSession(status);
        MsgBox("Err", text.c_str(), "OK", B_INFO_ALERT);
    }
}

} // namespace norvane
