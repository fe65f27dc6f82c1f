// How long the client, and transfers without a window, take with a server on this machine: prints
// the milliseconds from connecting to the goodbye.
//
//   ftp get PORT USER PASSWORD NAME FILE      one file
//   ftp put PORT USER PASSWORD NAME FILE
//   ftp download PORT USER PASSWORD NAME TO   the folder NAME into the folder TO
//   ftp upload PORT USER PASSWORD ITEM        a folder into the one that a login leads to

#include "MessageCodes.h"
#include "fileops/engine/Operation.h"
#include "fileops/engine/OperationUI.h"
#include "ftp/client/clsFTP.h"
#include "ftp/transfers/TransferRequests.h"

#include <Entry.h>
#include <File.h>
#include <Message.h>
#include <OS.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

constexpr unsigned int kTimeout = 20'000;

/// Shows nothing, and cannot be asked.
class Silence : public norvane::OperationUI
{
public:
    void Measured(const norvane::OperationSize&) override {}
    void FileStarted(const norvane::StartedFile&) override {}
    void BytesCopied(const char*, int64) override {}
    void BytesDone(int64) override {}
    void Transferring(const norvane::TransferStep&) override {}
    void EntriesVisited(int64) override {}
    bool CanAsk() const override { return false; }
    uint32 StandingAnswer() const override { return norvane::kAnswerNone; }
    void AskOverwrite(const norvane::OverwriteQuestion&) override {}
    norvane::AttributesAnswer AskAboutAttributes() override
    {
        return norvane::AttributesAnswer::kLeave;
    }
    void HideProgress() override {}
    void ShowProgress() override {}
    void Tell(const std::string& name, norvane::ItemAlert) override { Fail(name, ""); }
    void NoteProblem(const std::string& name, const std::string& why) override { Fail(name, why); }
    void ShowSummary(const std::string&) override {}
    bool IsStopped() const override { return false; }
    bool MayDelete() const override { return true; }

    bool hasFailed = false;

private:
    void Fail(const std::string& name, const std::string& why)
    {
        std::fprintf(stderr, "ftp: %s: %s\n", name.c_str(), why.c_str());
        hasFailed = true;
    }
};

bool MoveFile(char** words)
{
    norvane::clsFTP client("127.0.0.1", static_cast<unsigned int>(std::atoi(words[1])), nullptr, 0,
                           kTimeout, nullptr, nullptr);
    int code = client.Connect(words[2], words[3], nullptr);
    const bool isUpload = std::strcmp(words[0], "put") == 0;
    BFile file(words[5], isUpload ? B_READ_ONLY : B_WRITE_ONLY | B_CREATE_FILE | B_ERASE_FILE);
    off_t size = 0;
    file.GetSize(&size);
    if (code == 0) {
        code = isUpload ? client.UploadFrom(file, size, words[4], true, true)
                        : client.DownloadTo(file, words[4], true, true);
    }
    client.Disconnect();
    if (code != 0) {
        std::fprintf(stderr, "ftp: %s ended with %d\n", words[0], code);
    }
    return code == 0;
}

bool Carry(char** words)
{
    const bool isUpload = std::strcmp(words[0], "upload") == 0;
    BMessage request(isUpload ? norvane::kLocalEntries : norvane::kRemoteEntries);
    request.AddString("Host", "127.0.0.1");
    request.AddInt32("Port", std::atoi(words[1]));
    request.AddString("User", words[2]);
    request.AddString("Password", words[3]);
    request.AddString("FtpPath", "");
    request.AddBool("Passive", true);
    entry_ref item;
    if (!isUpload) {
        request.AddString("FtpDir", words[4]);
    } else if (get_ref_for_path(words[4], &item) == B_OK) {
        request.AddString("Session", "here");
        request.AddRef("refs", &item);
    }
    Silence ui;
    const auto operation = norvane::MakeTransfer(request, isUpload ? "" : words[5], ui);
    if (operation != nullptr) {
        operation->Run();
    }
    return operation != nullptr && !ui.hasFailed;
}

} // namespace

int main(int count, char** words)
{
    words++;
    const bool isUpload = count == 6 && std::strcmp(words[0], "upload") == 0;
    if (!isUpload && count != 7) {
        std::fputs("ftp get|put|download|upload PORT USER PASSWORD NAME [FILE|TO]\n", stderr);
        return 1;
    }
    const bool isFile = std::strcmp(words[0], "get") == 0 || std::strcmp(words[0], "put") == 0;
    const bigtime_t begin = system_time();
    const bool isDone = isFile ? MoveFile(words) : Carry(words);
    std::printf("%.1f\n", static_cast<double>(system_time() - begin) / 1e3);
    return isDone ? 0 : 1;
}
