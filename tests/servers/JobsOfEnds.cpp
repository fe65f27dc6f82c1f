#include "Jobs.h"
#include "Visit.h"

#include <DataIO.h>
#include <OS.h>

#include <algorithm>
#include <filesystem>
#include <unistd.h>

namespace {

constexpr off_t kBig = off_t{256} << 20;
constexpr int64 kEnough = 1 << 20;

/// Throws away what it is given.
class Nowhere : public BDataIO
{
public:
    ssize_t Read(void*, size_t) override { return 0; }
    ssize_t Write(const void*, size_t size) override { return static_cast<ssize_t>(size); }
};

/// Has as many bytes as are wanted.
class Spring : public BDataIO
{
public:
    ssize_t Read(void* buffer, size_t size) override
    {
        const size_t count = std::min(size, static_cast<size_t>(kBig - fGiven));
        std::fill_n(static_cast<char*>(buffer), count, 'x');
        fGiven += static_cast<off_t>(count);
        return static_cast<ssize_t>(count);
    }
    ssize_t Write(const void*, size_t) override { return B_ERROR; }

private:
    off_t fGiven = 0;
};

void MakeBig(Visit& visit)
{
    WriteFile(visit.Path("big"), "");
    visit.Check(truncate(visit.Path("big").c_str(), kBig) == 0, "no big file can be made");
    WriteFile(visit.Path("small"), "as it was");
}

/// The connection is as good as before, or it is known to be gone and the next one is.
void CheckGoesOn(Visit& visit, const std::string& after)
{
    if (!visit.Client().IsConnected()) {
        visit.NoteMissing("to go on after " + after);
        visit.CheckAgreed(visit.LogIn(), "logging in again");
        return;
    }
    visit.CheckInStep(after);
    std::string small;
    visit.CheckAgreed(visit.Fetch("small", &small), "fetching after " + after);
    visit.Check(small == "as it was", "what is fetched after " + after + " is something else");
    std::vector<norvane::RemoteEntry> entries;
    visit.CheckAgreed(visit.Folder().List(&entries), "listing after " + after);
    visit.Check(entries.size() >= 2, "not all is listed after " + after);
}

void CheckCancelled(Visit& visit, int code, bigtime_t cancelled)
{
    visit.Check(code == norvane::kFtpCancelled, "it ended with " + std::to_string(code));
    visit.Check(system_time() - cancelled < 200'000, "it took long to end");
    visit.Check(visit.Client().BytesMoved() < kBig, "it had ended before");
}

} // namespace

void CancelDownload(Visit& visit)
{
    if (!visit.StartIn("cancel a download")) {
        return;
    }
    MakeBig(visit);
    bigtime_t cancelled = 0;
    visit.atStep = [&visit, &cancelled] {
        if (cancelled == 0 && visit.Client().BytesMoved() >= kEnough) {
            cancelled = system_time();
            visit.Client().Cancel();
        }
        return 1;
    };
    Nowhere nowhere;
    const int code = visit.Client().DownloadTo(nowhere, "big", true, visit.At().isPassive);
    CheckCancelled(visit, code, cancelled);
    visit.atStep = nullptr;
    CheckGoesOn(visit, "a cancelled download");
}

void CancelUpload(Visit& visit)
{
    if (!visit.StartIn("cancel an upload")) {
        return;
    }
    MakeBig(visit);
    bigtime_t cancelled = 0;
    visit.atStep = [&visit, &cancelled] {
        if (cancelled == 0 && visit.Client().BytesMoved() >= kEnough) {
            cancelled = system_time();
            visit.Client().Cancel();
        }
        return 1;
    };
    Spring spring;
    const int code = visit.Client().UploadFrom(spring, kBig, "sent", true, visit.At().isPassive);
    CheckCancelled(visit, code, cancelled);
    visit.atStep = nullptr;
    CheckGoesOn(visit, "a cancelled upload");
}

void AbandonDownload(Visit& visit)
{
    if (!visit.StartIn("abandon a download")) {
        return;
    }
    MakeBig(visit);
    visit.atStep = [&visit] {
        return visit.Client().BytesMoved() < kEnough ? 1 : 0;
    };
    Nowhere nowhere;
    visit.Client().DownloadTo(nowhere, "big", true, visit.At().isPassive);
    visit.Check(visit.Client().BytesMoved() < kBig, "it was not abandoned");
    visit.atStep = nullptr;
    CheckGoesOn(visit, "an abandoned download");
}

void KeepFiles(Visit& visit)
{
    if (!visit.StartIn("refusals")) {
        return;
    }
    norvane::clsFTP& client = visit.Client();
    const bool isPassive = visit.At().isPassive;
    std::filesystem::create_directories(visit.Path("full/of this"));
    WriteFile(visit.Path("file"), "kept");
    std::string bytes;
    visit.CheckRefused(client.DeleteFile("missing"), "deleting what is missing");
    visit.CheckRefused(client.RenameFile("missing", "x"), "renaming what is missing");
    visit.CheckRefused(client.RenameFile("file", "no folder/x"), "renaming to nowhere");
    visit.CheckRefused(client.RemoveDir("missing"), "removing what is missing");
    visit.CheckRefused(client.RemoveDir("full"), "removing a full folder");
    visit.CheckRefused(client.RemoveDir("file"), "removing a file as a folder");
    visit.CheckRefused(client.MakeDir("full"), "making what is there");
    visit.CheckRefused(client.ChangeDir("missing"), "going to what is missing");
    visit.CheckRefused(client.ChangeDir("file"), "going to a file");
    visit.CheckRefused(visit.Fetch("missing", &bytes), "fetching what is missing");
    visit.CheckRefused(visit.Fetch("full", &bytes), "fetching a folder");
    visit.CheckRefused(client.UploadBuffer("x", 1, "no folder/x", true, isPassive),
                       "storing nowhere");
    visit.CheckRefused(client.UploadBuffer("x", 1, "full", true, isPassive),
                       "storing over a folder");
    visit.Check(ReadFile(visit.Path("file")) == "kept", "the file was lost");
    visit.Check(client.DeleteFile("file\r\nDELE file") == norvane::kFtpBadName &&
                    std::filesystem::exists(visit.Path("file")),
                "a line break became a command");
    visit.CheckAgreed(visit.Fetch("file", &bytes), "fetching after refusals");
    visit.Check(bytes == "kept", "what is fetched after refusals is something else");
}
