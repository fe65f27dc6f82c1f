#include "ftp/sessions/SessionErrands.h"

#include "DetachedThread.h"
#include "MessageCodes.h"
#include "fileops/engine/ProblemList.h"

#include <Directory.h>
#include <Errors.h>
#include <Message.h>
#include <NodeMonitor.h>
#include <OS.h>

#include <functional>
#include <mutex>
#include <utility>

namespace norvane {

namespace {

constexpr uint32 kWatched = B_WATCH_DIRECTORY | B_WATCH_NAME;
constexpr int kRounds = 5;

struct Field
{
    const char* name;
    std::string FtpSession::*text;
};

const Field kFields[] = {
    {"name", &FtpSession::name},         {"host", &FtpSession::host},
    {"port", &FtpSession::port},         {"user", &FtpSession::user},
    {"password", &FtpSession::password}, {"remoteDir", &FtpSession::remoteDir},
    {"localDir", &FtpSession::localDir},
};

constexpr char kPassiveField[] = "passive";

void DoElsewhere(const std::function<void()>& work)
{
    if (!StartDetached("sessions", B_NORMAL_PRIORITY, work)) {
        work();
    }
}

SessionFile FileOf(const FtpSession& session)
{
    return SessionFile(SessionFile::FileNameOf(session.name));
}

/// Only where there is none of this name: the name is taken first, so that of two windows that save
/// at once one is told.
status_t WriteNew(const FtpSession& session)
{
    const SessionFile file = FileOf(session);
    status_t status = file.Create();
    if (status != B_OK) {
        return status;
    }
    status = file.Write(session);
    if (status != B_OK) {
        [[maybe_unused]] const status_t removed = file.Remove(); // an empty session is no use
    }
    return status;
}

status_t Watch(const BMessenger& window)
{
    status_t status = B_ENTRY_NOT_FOUND;
    // The folder may go just when it was found; then it is made again.
    for (int round = 0; status == B_ENTRY_NOT_FOUND && round < kRounds; round++) {
        std::string path;
        node_ref node;
        status = SessionFile::GetFolder(&path);
        if (status == B_OK) {
            status = BDirectory(path.c_str()).GetNodeRef(&node);
        }
        if (status == B_OK) {
            status = watch_node(&node, kWatched, window);
        }
    }
    return status;
}

} // namespace

/// What the owner and the threads share.
class SessionsWatch::Work
{
public:
    explicit Work(const BMessenger& window) : fWindow(window) {}

    void List();
    void LetGo();

private:
    bool IsLetGo();

    const BMessenger fWindow;
    std::mutex fMutex;     // guards all below
    bool fIsLetGo = false; // nobody ends a watch that begins from now on
};

void SessionsWatch::Work::List()
{
    // Watched first: nothing that changes in between is lost.
    const status_t watch = Watch(fWindow);
    std::vector<std::string> names;
    const status_t status = SessionFile::List(&names);
    if (IsLetGo()) {
        stop_watching(fWindow);
        return;
    }
    BMessage listed(kSessionsListed);
    listed.AddInt32("watch", watch);
    listed.AddInt32("status", status);
    for (const std::string& name : names) {
        listed.AddString("name", name.c_str());
    }
    fWindow.SendMessage(&listed);
}

bool SessionsWatch::Work::IsLetGo()
{
    const std::lock_guard lock(fMutex);
    return fIsLetGo;
}

void SessionsWatch::Work::LetGo()
{
    {
        const std::lock_guard lock(fMutex);
        fIsLetGo = true;
    }
    stop_watching(fWindow);
}

SessionsWatch::SessionsWatch(const BMessenger& window) : fWork(std::make_shared<Work>(window)) {}

SessionsWatch::~SessionsWatch()
{
    fWork->LetGo();
}

void SessionsWatch::List()
{
    DoElsewhere([work = fWork] { work->List(); });
}

void ReadSession(const std::string& fileName, const BMessenger& window)
{
    DoElsewhere([fileName, window] {
        FtpSession session;
        BMessage answer(kSessionRead);
        answer.AddInt32("status", SessionFile(fileName).Read(&session));
        for (const Field& field : kFields) {
            answer.AddString(field.name, (session.*field.text).c_str());
        }
        answer.AddBool(kPassiveField, session.isPassive);
        window.SendMessage(&answer);
    });
}

void SaveSession(const FtpSession& session, Existing existing, const BMessenger& window)
{
    DoElsewhere([session, existing, window] {
        const status_t status =
            existing == Existing::kKept ? WriteNew(session) : FileOf(session).Write(session);
        BMessage answer(kSessionSaved);
        answer.AddBool("exists", status == B_FILE_EXISTS);
        answer.AddInt32("status", status);
        window.SendMessage(&answer);
    });
}

void DeleteSession(const std::string& name, const BMessenger& window)
{
    DoElsewhere([name, window] {
        BMessage answer(kSessionDeleted);
        answer.AddString("name", name.c_str());
        answer.AddInt32("status", SessionFile(SessionFile::FileNameOf(name)).Remove());
        window.SendMessage(&answer);
    });
}

FtpSession SessionIn(const BMessage& message)
{
    FtpSession session;
    for (const Field& field : kFields) {
        session.*field.text = message.GetString(field.name, "");
    }
    session.isPassive = message.GetBool(kPassiveField, false);
    return session;
}

const char* ReasonForSession(status_t status)
{
    return status == B_BAD_TYPE ? "its file is none that a session can be in" : ReasonFor(status);
}

} // namespace norvane
