#include "ftp/sessions/FtpWin.h"

#include "MessageCodes.h"
#include "fileops/engine/ProblemList.h"
#include "fileops/windows/DialogLayout.h"
#include "ftp/sessions/SessionErrands.h"
#include "settings/MsgBox.h"

#include <Button.h>
#include <CheckBox.h>
#include <Errors.h>
#include <Font.h>
#include <Message.h>
#include <StringView.h>
#include <TextControl.h>

#include <algorithm>
#include <cmath>

namespace norvane {

namespace {

constexpr float kWidth = 340;
constexpr float kFieldPadding = 6; // above and below a field's text, together
constexpr float kRowGap = 4;
constexpr float kLabelGap = 6;
constexpr float kPortWidth = 60;
constexpr float kPassiveGap = 14;
constexpr float kButtonGap = 11;
constexpr float kDefaultMark = 3;
constexpr float kLeastFieldWidth = 180;
constexpr char kUsualPort[] = "21";
constexpr char kWarning[] = "Warning! storing password is insecure.";

} // namespace

/// A field's name and texts.
struct FtpWin::FieldLook
{
    const char* name;
    const char* label;
    const char* text;      // at first
    const char* whenEmpty; // what is said then; null where it may be
    const char* key;       // of the session's file
    const char* thing;     // what it is, in a sentence
    std::string FtpSession::*value;
};

const std::array<FtpWin::FieldLook, FtpWin::kFieldCount> FtpWin::kLooks = {{
    {"text1", "Session:", "", "You must assign a session name to this connection.", "", "",
     &FtpSession::name},
    {"text2", "Host:", "", "You must assign a host to this connection.", "Host", "host",
     &FtpSession::host},
    {"text3", "Port:", kUsualPort, "You must assign a port to this connection.", "Port", "port",
     &FtpSession::port},
    {"text4", "User Name:", "", "You must assign a user name to this connection.", "User",
     "user name", &FtpSession::user},
    {"text5", "Password:", "", nullptr, "Pass", "password", &FtpSession::password},
    {"text6", "Remote Dir:", "", nullptr, "RemoteDir", "remote directory", &FtpSession::remoteDir},
    {"text7", "Local Dir:", "", nullptr, "LocalDir", "local directory", &FtpSession::localDir},
}};

FtpWin::FtpWin(BRect frame, BWindow* owner, const char* session)
    : BWindow(CentredFrame(frame, kWidth, kWidth), "Ftp Connection", B_TITLED_WINDOW,
              B_ASYNCHRONOUS_CONTROLS | B_NOT_ZOOMABLE | B_NOT_V_RESIZABLE),
      fOwner(owner)
{
    if (owner != nullptr) {
        SetOpener(owner);
    }
    BuildContents();
    const BRect placed = CentredFrame(frame, Bounds().Width(), Bounds().Height());
    MoveTo(placed.LeftTop());
    if (session != nullptr) {
        LoadFtpSettings(session);
    }
}

FtpWin::~FtpWin() = default;

void FtpWin::BuildContents()
{
    BView* ground = MakeDialogGround(Bounds(), "FtpConContainer");
    AddChild(ground);
    const float bottom = AddRows(ground);
    ResizeTo(Bounds().Width(), bottom + ButtonHeight() + kDefaultMark + 2 * kDialogEdge);
    AddButtons(ground);
    // The warning stays whole.
    const float fieldWidth = std::max(kLeastFieldWidth, std::ceil(BFont().StringWidth(kWarning)));
    const float leastWidth = fFields[kName]->Divider() + fieldWidth + 2 * kDialogEdge;
    SetSizeLimits(std::min(leastWidth, Bounds().Width()), 32767, Bounds().Height(),
                  Bounds().Height());
    fFields[kName]->MakeFocus(true);
}

/// Returns where the last row ends.
float FtpWin::AddRows(BView* ground)
{
    const BFont font;
    float divider = 0;
    for (const FieldLook& look : kLooks) {
        divider = std::max(divider, std::ceil(font.StringWidth(look.label)) + kLabelGap);
    }
    const float right = ground->Bounds().right - kDialogEdge;
    const float height = LineHeight() + kFieldPadding;
    float top = kDialogEdge;
    for (int32 field = kName; field < kFieldCount; field++) {
        BRect frame(kDialogEdge, top, right, top + height);
        if (field == kPort) {
            frame.right = frame.left + divider + kPortWidth;
        }
        AddField(ground, field, frame);
        fFields[static_cast<std::size_t>(field)]->SetDivider(divider);
        if (field == kPort) {
            // It belongs to how the server is reached, and is walked to behind the port.
            fPassive = new BCheckBox(BRect(frame.right + kPassiveGap, top, right, top + height),
                                     "Passive", "Passive Mode", nullptr);
            ground->AddChild(fPassive);
        }
        top += height + kRowGap;
        if (field == kPassword) {
            ground->AddChild(new BStringView(
                BRect(kDialogEdge + divider, top - 2, right, top - 2 + LineHeight()), "label6",
                kWarning, B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP));
            top += LineHeight() + kRowGap;
        }
    }
    return top - kRowGap;
}

void FtpWin::AddField(BView* ground, int32 field, BRect frame)
{
    const std::size_t place = static_cast<std::size_t>(field);
    const FieldLook& look = kLooks[place];
    const uint32 follow = field == kPort ? B_FOLLOW_LEFT : B_FOLLOW_LEFT_RIGHT;
    auto* control =
        new BTextControl(frame, look.name, look.label, look.text, nullptr, follow | B_FOLLOW_TOP);
    control->SetAlignment(B_ALIGN_RIGHT, B_ALIGN_LEFT);
    ground->AddChild(control);
    fFields[place] = control;
}

void FtpWin::AddButtons(BView* ground)
{
    const BRect bounds = Bounds();
    const float width = std::max(ButtonWidth("OK"), ButtonWidth("Cancel"));
    const float bottom = bounds.bottom - kDialogEdge;
    const float right = bounds.right - kDialogEdge;
    const float top = bottom - ButtonHeight();
    const auto add = [=, this](float left, const char* name, const char* label, uint32 what) {
        auto* button = new BButton(BRect(left, top, left + width, bottom), name, label,
                                   new BMessage(what), B_FOLLOW_RIGHT | B_FOLLOW_BOTTOM);
        ground->AddChild(button);
        button->SetTarget(this);
        return button;
    };
    add(right - 2 * width - kButtonGap - kDefaultMark, "bCancel", "Cancel", kSessionCancelled);
    // The one that Enter presses stands in the corner.
    add(right - width - kDefaultMark, "bOK", "OK", kSessionAccepted)->MakeDefault(true);
}

void FtpWin::MessageReceived(BMessage* message)
{
    switch (message->what) {
    case kSessionAccepted:
        Accept();
        break;
    case kSessionCancelled:
        PostMessage(B_QUIT_REQUESTED);
        break;
    case kSessionRead:
        SessionRead(*message);
        break;
    case kSessionSaved:
        Saved(*message);
        break;
    default:
        BWindow::MessageReceived(message);
    }
}

// Reading

void FtpWin::LoadFtpSettings(const char* session)
{
    const SessionFile file(session);
    fEdited = file.Name();
    fFields[kName]->SetText(fEdited.c_str());
    fIsReading = true;
    ReadSession(file.FileName(), BMessenger(this));
}

void FtpWin::SessionRead(const BMessage& message)
{
    fIsReading = false;
    const status_t status = message.GetInt32("status", B_ERROR);
    if (status == B_OK) {
        Fill(SessionIn(message));
    } else if (status != B_ENTRY_NOT_FOUND) {
        fIsToAccept = false;
        const std::string text =
            "Could not read the session " + ShownName(fEdited) + ": " + ReasonForSession(status);
        MsgBox("Err", text.c_str(), "OK", B_INFO_ALERT);
    }
    if (fIsToAccept) {
        Accept();
    }
}

void FtpWin::Fill(const FtpSession& session)
{
    for (std::size_t field = kHost; field < kFieldCount; field++) {
        const FieldLook& look = kLooks[field];
        const std::string& value = session.*look.value;
        // What was typed while the disk was slow is newer than what is saved.
        if (!value.empty() && fFields[field]->Text() == std::string(look.text)) {
            fFields[field]->SetText(value.c_str());
        }
    }
    if (session.isPassive) {
        fPassive->SetValue(B_CONTROL_ON);
    }
}

// Saving

FtpSession FtpWin::Entered() const
{
    FtpSession session;
    for (std::size_t field = kName; field < kFieldCount; field++) {
        session.*kLooks[field].value = fFields[field]->Text();
    }
    session.isPassive = fPassive->Value() != B_CONTROL_OFF;
    return session;
}

void FtpWin::Accept()
{
    // Until the file is read its fields look empty, and would be saved as that.
    fIsToAccept = fIsReading;
    if (!fIsReading && !fIsSaving && IsComplete() && CanBeKept()) {
        SetFtpSetting();
    }
}

bool FtpWin::IsComplete()
{
    for (std::size_t field = kName; field < kFieldCount; field++) {
        if (kLooks[field].whenEmpty != nullptr && fFields[field]->TextLength() == 0) {
            Refuse(static_cast<Field>(field), kLooks[field].whenEmpty);
            return false;
        }
    }
    return true;
}

bool FtpWin::CanBeKept()
{
    const FtpSession session = Entered();
    if (const char* reason = SessionFile::ReasonAgainstName(session.name)) {
        Refuse(kName, std::string("This session name cannot be used: ") + reason + ".");
        return false;
    }
    if (!SessionFile::IsPort(session.port)) {
        Refuse(kPort, "The port must be a number from 1 to 65535.");
        return false;
    }
    const char* key = SessionFile::KeyThatCannotBeKept(session);
    if (key == nullptr) {
        return true;
    }
    const auto look = std::find_if(kLooks.begin(), kLooks.end(), [key](const FieldLook& one) {
        return std::string(one.key) == key;
    });
    Refuse(static_cast<Field>(look - kLooks.begin()),
           std::string("This ") + look->thing +
               " cannot be saved: it is too long or holds a line break.");
    return false;
}

void FtpWin::Refuse(Field field, const std::string& reason)
{
    fFields[static_cast<std::size_t>(field)]->MakeFocus(true);
    MsgBox("Info", reason.c_str(), "OK", B_WARNING_ALERT);
}

void FtpWin::SetFtpSetting()
{
    const bool isItself = !fEdited.empty() && fEdited == fFields[kName]->Text();
    Save(isItself ? Existing::kReplaced : Existing::kKept);
}

void FtpWin::Save(Existing existing)
{
    fIsSaving = true;
    SaveSession(Entered(), existing, BMessenger(this));
}

void FtpWin::Saved(const BMessage& message)
{
    fIsSaving = false;
    const status_t status = message.GetInt32("status", B_ERROR);
    const std::string name = ShownName(fFields[kName]->Text());
    if (message.GetBool("exists", false)) {
        AskToReplace(name);
    } else if (status == B_OK) {
        fOwner.SendMessage(kSessionsChanged);
        PostMessage(B_QUIT_REQUESTED);
    } else {
        const std::string text =
            "Could not save the session " + name + ": " + ReasonForSession(status);
        MsgBox("Err", text.c_str(), "OK", B_INFO_ALERT);
    }
}

void FtpWin::AskToReplace(const std::string& name)
{
    const std::string question =
        "There is a session " + name + " already. Do you want to replace it?";
    if (WarnAndAsk(question, "Replace")) {
        Save(Existing::kReplaced);
    }
}

} // namespace norvane
