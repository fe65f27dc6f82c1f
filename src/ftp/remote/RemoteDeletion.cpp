#include "ftp/remote/RemoteDeletion.h"

#include "ftp/client/ServerReason.h"
#include "ftp/client/clsFTP.h"

#include <utility>

namespace norvane {

namespace {

constexpr int kNotEmpty = 550; // or refused for any other reason
constexpr size_t kMaxDepth = 1000;

} // namespace

RemoteDeletion::RemoteDeletion(RemoteConnection::Desk& desk, std::function<void()> tellNotEmpty)
    : fDesk(desk), fTellNotEmpty(std::move(tellNotEmpty))
{
}

/// Notes when there is nobody to talk to any more.
int RemoteDeletion::Do(int code)
{
    if (code == kFtpTimedOut || code == kFtpCancelled || !fDesk.client.IsConnected()) {
        fIsUsable = false;
    }
    return code;
}

void RemoteDeletion::Note(const std::string& name, int code)
{
    if (!fDesk.isCancelled) {
        fProblems.Add(name, ServerReason(fDesk.client, code));
    }
}

void RemoteDeletion::LeaveAlone(const std::vector<std::string>& shownNames)
{
    for (const std::string& name : shownNames) {
        fProblems.Add(name, "its name cannot be used");
    }
}

void RemoteDeletion::DeleteFiles(const std::vector<std::string>& names)
{
    for (const std::string& name : names) {
        DeleteFile(name);
    }
}

void RemoteDeletion::DeleteFile(const std::string& name)
{
    if (!MayGoOn()) {
        return;
    }
    const int code = Do(fDesk.client.DeleteFile(NameInCommand(name).c_str()));
    if (!IsAgreed(code)) {
        Note(name, code);
    }
}

void RemoteDeletion::DeleteFolders(const std::vector<std::string>& names)
{
    for (const std::string& name : names) {
        if (!MayGoOn() || RemoveFolder(name)) {
            continue;
        }
        fTellNotEmpty();
        Empty(name);
    }
}

/// False when it may have to be emptied first.
bool RemoteDeletion::RemoveFolder(const std::string& name)
{
    const int code = Do(fDesk.client.RemoveDir(NameInCommand(name).c_str()));
    if (code == kNotEmpty && MayGoOn()) {
        return false;
    }
    if (!IsAgreed(code)) {
        Note(name, code);
    }
    return true;
}

void RemoteDeletion::Empty(const std::string& top)
{
    if (!Enter(top)) {
        return;
    }
    while (!fLevels.empty()) {
        Level& level = fLevels.back();
        if (!MayGoOn() || level.next == level.folders.size()) {
            Leave();
            continue;
        }
        const std::string name = level.folders[level.next++];
        if (!RemoveFolder(name)) {
            Enter(name);
        }
    }
}

bool RemoteDeletion::Enter(const std::string& name)
{
    if (fLevels.size() == kMaxDepth) {
        fProblems.Add(name, "there are too many folders in folders");
        return false;
    }
    const std::string above = fDesk.folder.Path();
    const int code = Do(fDesk.folder.Enter(name));
    if (!IsAgreed(code)) {
        Note(name, code);
        return false;
    }
    fLevels.push_back({name, above, {}});
    DeleteContents();
    return true;
}

void RemoteDeletion::DeleteContents()
{
    std::vector<RemoteEntry> entries;
    const int code = Do(fDesk.folder.List(&entries));
    if (code != 0) {
        Note(fLevels.back().name, code);
        return;
    }
    for (const RemoteEntry& entry : entries) {
        if (entry.commandName.empty()) {
            fProblems.Add(entry.name, "its name cannot be used");
        } else if (entry.IsFolder()) {
            fLevels.back().folders.push_back(entry.commandName);
        } else {
            DeleteFile(entry.commandName);
        }
    }
}

/// Goes up to where the folder was entered from, and removes it there.
void RemoteDeletion::Leave()
{
    const Level left = std::move(fLevels.back());
    fLevels.pop_back();
    if (!fIsUsable) {
        return;
    }
    int code = Do(fDesk.folder.Enter(".."));
    if (code == 0 && fDesk.folder.Path() != left.above) {
        code = Do(fDesk.folder.Go(left.above)); // it was entered by a link
    }
    if (!IsAgreed(code)) {
        fIsUsable = false;
        Note(left.name, code);
        return;
    }
    if (!fDesk.isCancelled) {
        const int removed = Do(fDesk.client.RemoveDir(NameInCommand(left.name).c_str()));
        if (!IsAgreed(removed)) {
            Note(left.name, removed);
        }
    }
}

} // namespace norvane
