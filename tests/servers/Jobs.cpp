#include "Jobs.h"

#include "Visit.h"

#include <filesystem>

namespace {

void LogIn(Visit& visit)
{
    norvane::clsFTP& client = visit.Client();
    const std::string user = visit.At().user;
    const int wrong = client.Connect(user.c_str(), "wrong", nullptr);
    visit.Check(wrong == 530, "a wrong password ended with " + std::to_string(wrong));
    visit.Check(!client.IsConnected(), "it is connected all the same");
    const int none = client.Connect(user.c_str(), nullptr, nullptr);
    visit.Check(none == 331, "no password ended with " + std::to_string(none));
    visit.CheckAgreed(client.SendPass(visit.At().password.c_str()), "the password");
    visit.Check(client.Disconnect() == 221, "there was no goodbye");
    visit.Check(!client.IsConnected(), "it stays connected");
    visit.CheckAgreed(visit.LogIn(), "logging in");
    visit.Check(!visit.Folder().Path().empty(), "it does not say where it is");
    visit.Check(visit.Log().find(visit.At().password) == std::string::npos,
                "the password is in the log");
}

void WalkFolder(Visit& visit, const std::string& name)
{
    norvane::clsFTP& client = visit.Client();
    const std::string asked = norvane::NameInCommand(name);
    const std::string before = visit.Folder().Path();
    const int made = client.MakeDir(asked.c_str());
    if (made != 0 || !std::filesystem::is_directory(visit.Path(name))) {
        visit.NoteMissing("a folder called \"" + name + "\"");
        visit.CheckInStep("making " + name);
        return;
    }
    if (visit.CheckAgreed(visit.Folder().Enter(name), "entering " + name)) {
        const std::string inside = visit.Folder().Path();
        visit.CheckAgreed(visit.Folder().Enter(".."), "going up from " + name);
        visit.Check(visit.Folder().Path() == before, "up from " + name + " is elsewhere");
        visit.CheckAgreed(visit.Folder().Go(inside), "going to " + inside);
        visit.CheckAgreed(visit.Folder().Go(before), "going back to " + before);
    }
    visit.CheckAgreed(client.RenameFile(asked.c_str(), "renamed"), "renaming " + name);
    visit.CheckAgreed(client.RenameFile("renamed", asked.c_str()), "renaming to " + name);
    visit.CheckAgreed(client.RemoveDir(asked.c_str()), "removing " + name);
    visit.Check(!std::filesystem::exists(visit.Path(name)), name + " was not removed");
}

void WalkFolders(Visit& visit)
{
    if (!visit.StartIn("folders")) {
        return;
    }
    for (const char* name : {"plain", "two words", "gr\xc3\xbc\xc3\x9f", "Latin \xe4\xf6", "-l",
                             "quote\"s", "\"", "it's", "50%", "[x]", "~", "..."}) {
        WalkFolder(visit, name);
    }
}

void Leave(Visit& visit)
{
    visit.Check(visit.Client().Disconnect() == 221, "there was no goodbye");
}

} // namespace

std::vector<Job> AllJobs()
{
    return {{"log in", &LogIn},
            {"folders", &WalkFolders},
            {"sizes", &MoveSizes},
            {"names", &MoveNames},
            {"files", &MoveFiles},
            {"text", &MoveText},
            {"many", &MoveMany},
            {"known listing", &ListKnown},
            {"listing of one", &ListOne},
            {"listing of 1,500", &ListMany},
            {"refusals", &KeepFiles},
            {"cancelled download", &CancelDownload},
            {"cancelled upload", &CancelUpload},
            {"abandoned download", &AbandonDownload},
            {"goodbye", &Leave}};
}
