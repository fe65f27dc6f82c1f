#include "ftp/remote/RemoteSource.h"

#include "MessageCodes.h"
#include "fileops/engine/ProblemList.h"
#include "ftp/client/ServerReason.h"
#include "ftp/client/clsFTP.h"
#include "ftp/remote/RemoteDeletion.h"
#include "ftp/remote/RemoteRows.h"
#include "ftp/sessions/PasswordWin.h"
#include "ftp/transfers/TransferHost.h"
#include "panes/FolderSource.h"
#include "settings/MsgBox.h"

#include <Alert.h>
#include <Entry.h>
#include <Message.h>
#include <Window.h>

#include <algorithm>
#include <cstdlib>
#include <mutex>
#include <optional>
#include <set>
#include <utility>

namespace norvane {

namespace {

using Answer = ConnectionAnswer;

constexpr char kErr[] = "Err";

/// The answer after something was changed on the server; `problems` may be empty.
Answer Changed(const ProblemList& problems)
{
    return {Answer::Kind::kChanged, kErr, problems.IsEmpty() ? std::string() : problems.Text()};
}

RemoteEntry EntryOf(const DirListItem& row)
{
    return {row.GetEntryName(), std::to_string(row.GetSize()), row.Text(3), row.Text(4),
            row.CommandName()};
}

/// Carried out as described: whichever button is pressed, the folder was to be deleted.
void TellNotEmpty()
{
    (new BAlert("Sir?", "The directory is not empty are you sure you want to delete it?", "Cancel",
                "Delete", nullptr, B_WIDTH_AS_USUAL, B_WARNING_ALERT))
        ->Go();
}

} // namespace

struct RemoteSource::Listing
{
    std::mutex mutex; // guards all below
    bool hasEnded = false;
    int code = 0;
    std::string path;
    std::string text;
    ListingEnd end = ListingEnd::kLineFeed;
    ListedRows rows;
};

RemoteSource::RemoteSource(const std::string& sessionFile, const ConnectionListeners& listeners,
                           std::string localFolder)
    : fConnection(std::make_shared<RemoteConnection>(sessionFile, listeners)),
      fListeners(listeners), fLocalFolder(std::move(localFolder)), fIsConnecting(true)
{
}

RemoteSource::RemoteSource(const RemoteSource& from, std::string base, std::string step)
    : fConnection(from.fConnection), fListeners(from.fListeners), fLocalFolder(from.fLocalFolder),
      fBase(std::move(base)), fStep(std::move(step)), fIsFirst(from.fIsConnecting)
{
}

RemoteSource::~RemoteSource()
{
    if (fPrompt.IsValid()) {
        fPrompt.SendMessage(B_QUIT_REQUESTED);
    }
}

// Rows

status_t RemoteSource::Open(const OpenOrder&, RowTaker& taker)
{
    fTaker = &taker;
    if (fIsConnecting) {
        fConnection->Connect();
        taker.Opened(*this, {});
    } else {
        BeginListing();
    }
    return B_OK;
}

void RemoteSource::BeginListing()
{
    fListing = std::make_shared<Listing>();
    fConnection->Do(RemoteConnection::Kind::kList, "listing",
                    [listing = fListing, base = fBase, step = fStep,
                     list = fListeners.list](RemoteConnection::Desk& desk) {
                        RemoteFolder& folder = desk.folder;
                        std::string text;
                        ListingEnd end = ListingEnd::kLineFeed;
                        int code = base.empty() ? folder.Find() : folder.Go(base);
                        if (code == 0 && !step.empty()) {
                            code = folder.Enter(step);
                        }
                        code = code == 0 ? folder.ListText(&text, &end) : code;
                        ListedRows rows;
                        if (code == 0) {
                            rows = RowsOf(ParseListing(text, end), folder.Path());
                        }
                        {
                            const std::lock_guard lock(listing->mutex);
                            listing->hasEnded = true;
                            listing->code = code;
                            listing->path = folder.Path();
                            listing->text = std::move(text);
                            listing->end = end;
                            listing->rows = std::move(rows);
                        }
                        list.SendMessage(kListingNews);
                        return std::optional<Answer>();
                    });
}

void RemoteSource::Proceed()
{
    if (fListing == nullptr || fHasHandedOver) {
        return;
    }
    int code = 0;
    ListedRows rows;
    {
        const std::lock_guard lock(fListing->mutex);
        if (!fListing->hasEnded) {
            return;
        }
        code = fListing->code;
        fPath = fListing->path;
        rows = std::move(fListing->rows);
    }
    fHasHandedOver = true;
    if (code == 0) {
        fTaker->Opened(*this, std::move(rows));
        return;
    }
    // Above the folder that a login leads to there may be none.
    const bool isSilent = code == kFtpCancelled || (code == kFtpStaysWhereItIs && fStep == "..");
    if (!isSilent) {
        MsgBox("Could not get a directory listing", B_STOP_ALERT);
    }
    if (fIsFirst) {
        fListeners.pane.SendMessage(MSG_FTP_DISCONNECT);
    }
    fTaker->NotOpened(*this, B_ERROR);
}

std::string RemoteSource::Complaint(status_t) const
{
    return {}; // it was told
}

/// One answer at a time: each has news of its own, and after one of them this place may be gone.
void RemoteSource::NewsWhileShown()
{
    const std::optional<Answer> answer = fConnection->TakeAnswer();
    if (!answer.has_value()) {
        return;
    }
    if (!answer->text.empty()) {
        const bool isFailure = answer->kind == Answer::Kind::kNotConnected;
        MsgBox(answer->title.c_str(), answer->text.c_str(), "OK",
               isFailure ? B_STOP_ALERT : B_INFO_ALERT);
    }
    switch (answer->kind) {
    case Answer::Kind::kConnected:
    case Answer::Kind::kChanged:
        fTaker->ReadAgain(*this);
        break;
    case Answer::Kind::kNotConnected:
        fListeners.pane.SendMessage(MSG_FTP_DISCONNECT);
        break;
    case Answer::Kind::kWantsPassword:
        AskForPassword();
        break;
    }
}

void RemoteSource::AskForPassword()
{
    BLooper* looper = nullptr;
    BHandler* list = fListeners.list.Target(&looper);
    const auto* window = dynamic_cast<BWindow*>(looper);
    if (window == nullptr) {
        fConnection->GivePassword(std::nullopt);
        return;
    }
    const FtpSession session = fConnection->Session();
    auto* prompt = new PasswordWin(window->Frame(), list, session.user, session.host);
    fPrompt = BMessenger(prompt);
    prompt->Show();
}

void RemoteSource::TakeReply(const BMessage& reply)
{
    const char* password = nullptr;
    fConnection->GivePassword(reply.FindString("text", &password) == B_OK
                                  ? std::optional<std::string>(password)
                                  : std::nullopt);
}

// Other places

std::unique_ptr<RowSource> RemoteSource::Step(const std::string& name) const
{
    return std::unique_ptr<RowSource>(new RemoteSource(*this, fPath, name));
}

std::unique_ptr<RowSource> RemoteSource::Again() const
{
    return Step("");
}

std::unique_ptr<RowSource> RemoteSource::Up() const
{
    return fPath.empty() || fPath == "/" ? nullptr : Step("..");
}

std::unique_ptr<RowSource> RemoteSource::Into(const DirListItem& row) const
{
    const std::string name = row.CommandName();
    return row.IsDir() && !name.empty() ? Step(name) : nullptr;
}

std::unique_ptr<RowSource> RemoteSource::GoTo(const std::string& folder)
{
    return MayLeave() ? std::make_unique<FolderSource>(folder) : nullptr;
}

bool RemoteSource::MayLeave()
{
    auto* question =
        new BAlert("Sir?", "Do you really want to disconnect from the ftp server?", "Cancel",
                   "Disconnect", nullptr, B_WIDTH_FROM_LABEL, B_WARNING_ALERT);
    return question->Go() == 1;
}

// Changes of entries

/// A name that is taken, as far as the last listing says.
bool RemoteSource::HasEntry(const std::string& name) const
{
    if (fListing == nullptr) {
        return false;
    }
    const std::lock_guard lock(fListing->mutex);
    const std::vector<RemoteEntry> entries = ParseListing(fListing->text, fListing->end);
    return std::any_of(entries.begin(), entries.end(),
                       [&name](const RemoteEntry& entry) { return entry.commandName == name; });
}

FolderWork RemoteSource::MakingFolder() const
{
    return [connection = fConnection, path = fPath](const std::string& name) {
        connection->Do(RemoteConnection::Kind::kChange, "making a folder",
                       [path, name](RemoteConnection::Desk& desk) {
                           int code = desk.folder.Go(path);
                           code =
                               code == 0 ? desk.client.MakeDir(NameInCommand(name).c_str()) : code;
                           ProblemList problems;
                           if (!IsAgreed(code)) {
                               problems.Add(name, ServerReason(desk.client, code));
                           }
                           return std::optional<Answer>(Changed(problems));
                       });
        return B_OK;
    };
}

EntryWork RemoteSource::Renaming(const DirListItem& row, const std::string& newName) const
{
    const std::string name = row.CommandName();
    if (name.empty()) {
        return [] {
            return B_NOT_ALLOWED;
        };
    }
    if (HasEntry(newName)) {
        return [] {
            return B_FILE_EXISTS;
        };
    }
    return [connection = fConnection, path = fPath, name, newName] {
        connection->Do(RemoteConnection::Kind::kChange, "renaming",
                       [path, name, newName](RemoteConnection::Desk& desk) {
                           int code = desk.folder.Go(path);
                           code = code == 0 ? desk.client.RenameFile(NameInCommand(name).c_str(),
                                                                     NameInCommand(newName).c_str())
                                            : code;
                           Answer answer = {Answer::Kind::kChanged, "Foo", ""};
                           if (!IsAgreed(code)) {
                               answer.text = "Could not rename: " + ServerReason(desk.client, code);
                           }
                           return std::optional<Answer>(std::move(answer));
                       });
        return B_OK;
    };
}

std::optional<OperationRequest> RemoteSource::Delete(const std::vector<DirListItem*>& rows, bool)
{
    fConnection->Do(RemoteConnection::Kind::kChange, "deleting",
                    [choice = ChoiceOf(rows), path = fPath](RemoteConnection::Desk& desk) {
                        ProblemList problems;
                        const int code = desk.folder.Go(path);
                        if (!IsAgreed(code)) {
                            problems.Add(path, ServerReason(desk.client, code));
                            return std::optional<Answer>(Changed(problems));
                        }
                        RemoteDeletion deletion(desk, &TellNotEmpty);
                        deletion.LeaveAlone(choice.unusable);
                        deletion.DeleteFiles(choice.files);
                        deletion.DeleteFolders(choice.folders);
                        return std::optional<Answer>(Changed(deletion.Problems()));
                    });
    return std::nullopt;
}

// Messages

void RemoteSource::AddHost(BMessage* request) const
{
    const FtpSession session = fConnection->Session();
    request->AddString("Host", session.host.c_str());
    request->AddString("User", session.user.c_str());
    request->AddString("Password", session.password.c_str());
    request->AddString("FtpPath", fPath.c_str());
    request->AddInt32("Port", std::atoi(session.port.c_str()));
    request->AddBool("Passive", session.isPassive);
}

std::unique_ptr<BMessage> RemoteSource::MessageFor(const std::vector<DirListItem*>& rows) const
{
    auto message = std::make_unique<BMessage>(kRemoteEntries);
    AddHost(message.get());
    for (const DirListItem* row : rows) {
        const RemoteEntry entry = EntryOf(*row);
        if (entry.commandName.empty()) {
            message->AddString("FtpUnusable", entry.name.c_str());
        } else {
            message->AddString(entry.IsFolder() ? "FtpDir" : "FtpFile", entry.commandName.c_str());
            AddListed(message.get(), entry);
        }
    }
    message->AddString("From", HeaderText().c_str());
    return message;
}

DropMeaning RemoteSource::MeaningOf(const BMessage& entries, const DirListItem*) const
{
    using Act = DropMeaning::Act;
    if (entries.what == kRemoteEntries) {
        return {Act::kRefuse, "Foo",
                "Transferring from one Ftp server to another is not supported(Yet...we will "
                "support this."};
    }
    if (!entries.HasRef("refs")) {
        return {Act::kPassOn};
    }
    if (fPath.empty()) {
        return {Act::kIgnore}; // there is no connection yet
    }
    return {Act::kOperate, "", "", UploadOf(entries)};
}

OperationRequest RemoteSource::UploadOf(const BMessage& entries) const
{
    auto request = std::make_unique<BMessage>(entries);
    request->AddString("Session", fConnection->Session().name.c_str());
    AddHost(request.get());
    std::set<std::string> sent;
    entry_ref ref;
    for (int32 index = 0; entries.FindRef("refs", index, &ref) == B_OK; index++) {
        sent.insert(ref.name != nullptr ? ref.name : "");
    }
    const std::lock_guard lock(fListing->mutex);
    for (const RemoteEntry& entry : ParseListing(fListing->text, fListing->end)) {
        if (sent.contains(entry.commandName)) {
            AddListed(request.get(), entry);
        }
    }
    return {"Upload", fPath, std::move(request)};
}

// Texts

std::string RemoteSource::HeaderText() const
{
    return fIsConnecting ? fConnection->Status() : "ftp: " + fPath;
}

std::string RemoteSource::FooterText(const FolderTotals& selected, const FolderTotals& all) const
{
    const std::string doing = fConnection->Doing();
    const std::string text = RowSource::FooterText(selected, all);
    return doing.empty() ? text : text + " (" + doing + "...)";
}

std::string RemoteSource::PathOf(const DirListItem& row) const
{
    return (fPath == "/" ? "" : fPath) + "/" + row.GetEntryName();
}

std::string RemoteSource::NameAbove() const
{
    return fPath.substr(fPath.rfind('/') + 1);
}

} // namespace norvane
