#include "FtpTree.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace {

constexpr size_t kBlock = 64 * 1024;

std::string Parent(const std::string& path)
{
    const size_t slash = path.rfind('/');
    return slash == 0 || slash == std::string::npos ? "/" : path.substr(0, slash);
}

/// `name`, seen from `folder`.
std::string Resolved(const std::string& folder, const std::string& name)
{
    if (name == "..") {
        return Parent(folder);
    }
    if (name.empty() || name == ".") {
        return folder;
    }
    if (name[0] == '~') {
        return "/"; // a home folder, as many servers understand it
    }
    const std::string plain = name.starts_with("./") ? name.substr(2) : name;
    std::string path = plain[0] == '/' ? plain : (folder == "/" ? "/" : folder + "/") + plain;
    while (path.size() > 1 && path.back() == '/') {
        path.pop_back();
    }
    return path;
}

} // namespace

/// One client's commands.
class FtpTreeSession
{
public:
    FtpTreeSession(FtpTree& tree, FtpSession& session) : fTree(tree), fSession(session) {}

    void Serve();

private:
    bool Answer(const std::string& command);
    bool AnswerGuest(const std::string& verb, const std::string& argument);
    bool AnswerPlace(const std::string& verb, const std::string& argument);
    bool AnswerChange(const std::string& verb, const std::string& argument);
    bool AnswerTransfer(const std::string& command, const std::string& verb,
                        const std::string& argument);
    bool SendAsData(const std::string& data, size_t breakAfter);
    bool Take(const std::string& path);
    std::string Delete(const std::string& path, bool isFolder);
    std::string MakeFolder(const std::string& path);
    std::string Rename(const std::string& path);
    FtpTree::Habits Habits() const;

    FtpTree& fTree;
    FtpSession& fSession;
    std::string fUser;
    bool fIsIn = false;
    std::string fFolder = "/";
    std::string fRenamed;
};

FtpTree::FtpTree()
{
    fNodes["/"].kind = 'd';
}

FtpServer::Handler FtpTree::Handler()
{
    return [this](FtpSession& session) {
        FtpTreeSession(*this, session).Serve();
    };
}

void FtpTree::SetHabits(Habits habits)
{
    const std::lock_guard lock(fMutex);
    fHabits = std::move(habits);
}

void FtpTree::AddFolder(const std::string& path)
{
    {
        const std::lock_guard lock(fMutex);
        fNodes[path].kind = 'd';
    }
    if (path != "/") {
        AddFolder(Parent(path));
    }
}

void FtpTree::AddFile(const std::string& path, std::string contents)
{
    AddFolder(Parent(path));
    const std::lock_guard lock(fMutex);
    fNodes[path] = {'-', std::move(contents)};
}

void FtpTree::AddLink(const std::string& path, std::string target)
{
    AddFile(path, std::move(target));
    const std::lock_guard lock(fMutex);
    fNodes[path].kind = 'l';
}

void FtpTree::Remove(const std::string& path)
{
    const std::lock_guard lock(fMutex);
    fNodes.erase(path);
}

bool FtpTree::Exists(const std::string& path) const
{
    const std::lock_guard lock(fMutex);
    return fNodes.count(path) != 0;
}

bool FtpTree::IsFolder(const std::string& path) const
{
    const std::lock_guard lock(fMutex);
    const auto found = fNodes.find(path);
    return found != fNodes.end() && found->second.kind == 'd';
}

std::string FtpTree::Read(const std::string& path) const
{
    const std::lock_guard lock(fMutex);
    const auto found = fNodes.find(path);
    return found != fNodes.end() && found->second.kind == '-' ? found->second.contents
                                                              : "(missing)";
}

std::string FtpTree::List() const
{
    const std::lock_guard lock(fMutex);
    std::string list;
    for (const auto& [path, node] : fNodes) {
        list += path + (node.kind == 'd' && path != "/" ? "/\n" : "\n");
    }
    return list;
}

/// Lines as "ls -l" writes them.
std::string FtpTree::ListingOf(const std::string& folder) const
{
    const std::lock_guard lock(fMutex);
    std::string lines = fHabits.isTotalLineSent ? "total 8\r\n" : "";
    for (const auto& [path, node] : fNodes) {
        if (path == "/" || Parent(path) != folder) {
            continue;
        }
        char start[96];
        std::snprintf(start, sizeof(start), "%c%s   1 anna     users    %9zu Jan  5 12:34 ",
                      node.kind, node.kind == 'd' ? "rwxr-xr-x" : "rw-r--r--",
                      node.kind == 'd' ? size_t{4096} : node.contents.size());
        lines += start + path.substr(path.rfind('/') + 1);
        lines += (node.kind == 'l' ? " -> " + node.contents : "") + "\r\n";
    }
    return lines;
}

bool FtpTree::IsEmpty(const std::string& folder) const
{
    const std::lock_guard lock(fMutex);
    return std::none_of(fNodes.begin(), fNodes.end(), [&](const auto& node) {
        return node.first != "/" && Parent(node.first) == folder;
    });
}

FtpTree::Habits FtpTreeSession::Habits() const
{
    const std::lock_guard lock(fTree.fMutex);
    return fTree.fHabits;
}

void FtpTreeSession::Serve()
{
    fSession.Reply(Habits().greeting);
    std::string command;
    while (fSession.ReadLine(&command)) {
        FtpServer::Note(fSession, command);
        const auto& answer = Habits().answer;
        const std::optional<std::string> said = answer ? answer(command) : std::nullopt;
        if (said ? !fSession.Send(*said) : !Answer(command)) {
            return;
        }
    }
}

bool FtpTreeSession::Answer(const std::string& command)
{
    const size_t blank = command.find(' ');
    const std::string verb = command.substr(0, blank);
    const std::string argument = blank == std::string::npos ? "" : command.substr(blank + 1);
    if (verb == "QUIT") {
        fSession.Reply("221 Bye");
        return false;
    }
    if (!fIsIn || verb == "USER" || verb == "PASS") {
        return AnswerGuest(verb, argument);
    }
    if (verb == "CWD" || verb == "CDUP" || verb == "PWD" || verb == "TYPE" || verb == "NOOP") {
        return AnswerPlace(verb, argument);
    }
    if (verb == "DELE" || verb == "RMD" || verb == "MKD" || verb == "RNFR" || verb == "RNTO") {
        return AnswerChange(verb, argument);
    }
    return AnswerTransfer(command, verb, argument);
}

bool FtpTreeSession::AnswerGuest(const std::string& verb, const std::string& argument)
{
    if (verb == "USER") {
        fUser = argument;
        fIsIn = false;
        return fSession.Reply("331 Password please");
    }
    if (verb != "PASS") {
        return fSession.Reply("530 Please log in");
    }
    fIsIn = fUser == FtpTree::kUser && argument == FtpTree::kPassword;
    return fSession.Reply(fIsIn ? "230 Welcome" : "530 Wrong name or password");
}

bool FtpTreeSession::AnswerPlace(const std::string& verb, const std::string& argument)
{
    if (verb == "PWD") {
        return fSession.Reply("257 \"" + fFolder + "\" is here");
    }
    if (verb == "CWD" || verb == "CDUP") {
        const std::string folder = Resolved(fFolder, verb == "CDUP" ? ".." : argument);
        if (!fTree.IsFolder(folder)) {
            return fSession.Reply("550 No such folder");
        }
        fFolder = folder;
        return fSession.Reply("250 Now in " + folder);
    }
    return fSession.Reply("200 Fine");
}

bool FtpTreeSession::AnswerChange(const std::string& verb, const std::string& argument)
{
    const std::string path = Resolved(fFolder, argument);
    if (verb == "RNFR") {
        fRenamed = fTree.Exists(path) ? path : "";
        return fSession.Reply(fRenamed.empty() ? "550 No such entry" : "350 And to?");
    }
    if (verb == "RNTO") {
        return fSession.Reply(Rename(path));
    }
    return fSession.Reply(verb == "MKD" ? MakeFolder(path) : Delete(path, verb == "RMD"));
}

std::string FtpTreeSession::MakeFolder(const std::string& path)
{
    if (fTree.Exists(path) || !fTree.IsFolder(Parent(path))) {
        return "550 Cannot be made";
    }
    fTree.AddFolder(path);
    return "257 \"" + path + "\" made";
}

std::string FtpTreeSession::Delete(const std::string& path, bool isFolder)
{
    if (!fTree.Exists(path) || fTree.IsFolder(path) != isFolder || path == "/" ||
        (isFolder && !fTree.IsEmpty(path))) {
        return "550 Cannot be removed";
    }
    fTree.Remove(path);
    return "250 Gone";
}

std::string FtpTreeSession::Rename(const std::string& path)
{
    if (fRenamed.empty() || !fTree.IsFolder(Parent(path))) {
        return "550 Cannot be renamed";
    }
    const std::lock_guard lock(fTree.fMutex);
    std::map<std::string, FtpTree::Node> moved;
    for (auto it = fTree.fNodes.begin(); it != fTree.fNodes.end();) {
        const bool isIn = it->first == fRenamed || it->first.rfind(fRenamed + "/", 0) == 0;
        if (isIn) {
            moved[path + it->first.substr(fRenamed.size())] = it->second;
        }
        it = isIn ? fTree.fNodes.erase(it) : std::next(it);
    }
    for (auto& [name, node] : moved) {
        fTree.fNodes[name] = node;
    }
    fRenamed.clear();
    return "250 Renamed";
}

bool FtpTreeSession::AnswerTransfer(const std::string& command, const std::string& verb,
                                    const std::string& argument)
{
    if (verb == "PASV") {
        return fSession.Reply("227 Here (" + fSession.ListenForData() + ")");
    }
    if (verb == "EPSV") {
        fSession.ListenForData();
        return fSession.Reply("229 Here (|||" + std::to_string(fSession.DataPort()) + "|)");
    }
    if (verb == "PORT" || verb == "EPRT") {
        return fSession.Reply(fSession.SetActive(command) ? "200 Taken" : "501 No address");
    }
    if (verb == "ABOR") {
        return fSession.Reply("226 Nothing left to abort");
    }
    const std::string path = Resolved(fFolder, argument);
    if (verb == "LIST") {
        const auto& listing = Habits().listing;
        const std::optional<std::string> told = listing ? listing(path) : std::nullopt;
        return fTree.IsFolder(path)
                   ? SendAsData(told.value_or(fTree.ListingOf(path)), std::string::npos)
                   : fSession.Reply("550 No such folder");
    }
    if (verb == "RETR") {
        const bool isFile = fTree.Exists(path) && !fTree.IsFolder(path);
        return isFile ? SendAsData(fTree.Read(path), Habits().breakAfter)
                      : fSession.Reply("550 No such file");
    }
    if (verb == "STOR") {
        const bool isAllowed = fTree.IsFolder(Parent(path)) && !fTree.IsFolder(path);
        return isAllowed ? Take(path) : fSession.Reply("553 Not there");
    }
    return fSession.Reply("502 Unknown");
}

bool FtpTreeSession::SendAsData(const std::string& data, size_t breakAfter)
{
    fSession.Reply("150 Coming (" + std::to_string(data.size()) + " bytes)");
    if (!fSession.OpenData()) {
        return fSession.Reply("425 No data connection");
    }
    const size_t size = std::min(data.size(), breakAfter);
    bool isSent = true;
    for (size_t at = 0; isSent && at < size; at += kBlock) {
        isSent = fSession.Pause(Habits().pause) &&
                 fSession.SendData(std::string_view(data).substr(at, std::min(kBlock, size - at)));
    }
    if (!isSent || size < data.size()) {
        fSession.ResetData();
        return fSession.Reply("426 Broken off");
    }
    fSession.CloseData();
    return fSession.Reply("226 Done");
}

bool FtpTreeSession::Take(const std::string& path)
{
    fTree.AddFile(path, "");
    fSession.Reply("150 Waiting");
    if (!fSession.OpenData()) {
        return fSession.Reply("425 No data connection");
    }
    const FtpTree::Habits habits = Habits();
    std::string data;
    bool isWhole = false;
    if (habits.breakAfter != std::string::npos) {
        fSession.ReadSomeData(habits.breakAfter, &data);
        data.resize(std::min(data.size(), habits.breakAfter));
        fSession.ResetData();
    } else {
        fSession.Pause(habits.pause);
        isWhole = fSession.ReadData(&data);
    }
    fSession.CloseData();
    fTree.AddFile(path, data);
    return fSession.Reply(isWhole ? "226 Stored" : "426 Broken off");
}
