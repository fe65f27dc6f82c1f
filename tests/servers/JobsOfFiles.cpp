#include "Jobs.h"
#include "Visit.h"

#include <File.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace {

/// Sends, and brings back, and looks at what lies on the server.
void MoveThereAndBack(Visit& visit, const std::string& name, const std::string& bytes)
{
    if (!visit.Store(name, bytes)) {
        return;
    }
    visit.Check(std::filesystem::is_regular_file(visit.Path(name)) &&
                    ReadFile(visit.Path(name)) == bytes,
                name + " is another one there");
    std::string back;
    visit.CheckAgreed(visit.Fetch(name, &back), "fetching " + name);
    visit.Check(back == bytes, name + " is another one here");
}

const norvane::RemoteEntry* Find(const std::vector<norvane::RemoteEntry>& entries,
                                 const std::string& name)
{
    const auto found = std::find_if(entries.begin(), entries.end(), [&name](const auto& entry) {
        return entry.commandName == name;
    });
    return found != entries.end() ? &*found : nullptr;
}

void MoveName(Visit& visit, const std::string& name)
{
    const std::string bytes = "of " + name;
    const std::string asked = norvane::NameInCommand(name);
    const int stored = visit.Client().UploadBuffer(bytes.data(), static_cast<int>(bytes.size()),
                                                   asked.c_str(), true, visit.At().isPassive);
    if (stored != 0 || !std::filesystem::exists(visit.Path(name))) {
        // Its own business; but it has to be asked for under that name, and to be in step.
        visit.NoteMissing("the name \"" + name + "\"");
        visit.Check(stored == 0 || stored >= 400, name + " ended with " + std::to_string(stored));
        visit.CheckInStep("storing " + name);
        return;
    }
    std::vector<norvane::RemoteEntry> entries;
    visit.CheckAgreed(visit.Folder().List(&entries), "listing");
    const norvane::RemoteEntry* entry = Find(entries, name);
    if (entry == nullptr && name[0] == '.') {
        visit.NoteMissing("to list \"" + name + "\"");
    } else if (visit.Check(entry != nullptr, "\"" + name + "\" is not listed")) {
        visit.Check(entry->size == std::to_string(bytes.size()), name + " has a size of its own");
    }
    std::string back;
    visit.CheckAgreed(visit.Fetch(asked, &back), "fetching " + name);
    visit.Check(back == bytes, name + " is another one here");
    visit.CheckAgreed(visit.Client().RenameFile(asked.c_str(), "plain"), "renaming " + name);
    visit.CheckAgreed(visit.Client().RenameFile("plain", asked.c_str()), "renaming to " + name);
    visit.CheckAgreed(visit.Client().DeleteFile(asked.c_str()), "deleting " + name);
    visit.Check(!std::filesystem::exists(visit.Path(name)), name + " was not deleted");
}

} // namespace

void MoveSizes(Visit& visit)
{
    if (!visit.StartIn("sizes")) {
        return;
    }
    for (const size_t size : {0, 1, 8191, 8192, 8193, 1024 * 1024 + 1}) {
        MoveThereAndBack(visit, std::to_string(size), AnyBytes(size));
    }
    // Over what is there.
    MoveThereAndBack(visit, "8193", AnyBytes(10));
}

void MoveNames(Visit& visit)
{
    if (!visit.StartIn("names")) {
        return;
    }
    for (const char* name : {"two words",
                             "gr\xc3\xbc\xc3\x9f \xe6\x97\xa5\xe6\x9c\xac",
                             "Latin \xe4\xf6\xfc",
                             "-rf",
                             "--help",
                             "quote\"s'",
                             "\"",
                             "50%",
                             "back\\slash",
                             "#a;b|c&d$e`",
                             "[x]{y}",
                             "~",
                             "...",
                             " leading",
                             "trailing ",
                             "three   blanks",
                             "tab\there",
                             "a -> b",
                             ".hidden",
                             "*?"}) {
        MoveName(visit, name);
    }
    MoveName(visit, std::string(150, 'n'));
}

void MoveFiles(Visit& visit)
{
    if (!visit.StartIn("files")) {
        return;
    }
    const std::string bytes = AnyBytes(1024 * 1024 + 1);
    const std::string here = visit.Path("here");
    WriteFile(here, bytes);
    norvane::clsFTP& client = visit.Client();
    const bool isPassive = visit.At().isPassive;
    visit.CheckAgreed(client.Upload(here.c_str(), "by path", true, isPassive), "sending a file");
    visit.Check(ReadFile(visit.Path("by path")) == bytes, "the file is another one there");
    visit.CheckAgreed(
        client.Download("by path", visit.At().folder.c_str(), "back", true, isPassive),
        "fetching a file");
    visit.Check(ReadFile(visit.At().folder + "/back") == bytes, "the file is another one here");
    {
        BFile file((visit.Path("opened")).c_str(), B_WRITE_ONLY | B_CREATE_FILE);
        visit.CheckAgreed(client.DownloadTo(file, "by path", true, isPassive),
                          "fetching into an open file");
        visit.Check(client.BytesMoved() == static_cast<int64>(bytes.size()), "bytes are missing");
    }
    visit.Check(ReadFile(visit.Path("opened")) == bytes, "the open file is another one");
    const int nowhere = client.Download("by path", "/nowhere/at all", "x", true, isPassive);
    visit.Check(nowhere == norvane::kFtpLocalFile, "it was written to nowhere");
    visit.CheckInStep("fetching without a place for it");
}

void MoveText(Visit& visit)
{
    if (!visit.StartIn("text")) {
        return;
    }
    const std::string text = "one\r\ntwo\r\n";
    const bool isPassive = visit.At().isPassive;
    visit.CheckAgreed(visit.Client().UploadBuffer(text.data(), static_cast<int>(text.size()),
                                                  "text", false, isPassive),
                      "sending text");
    char* data = nullptr;
    int length = 0;
    visit.CheckAgreed(visit.Client().DownloadBuffer(&data, &length, "text", false, isPassive),
                      "fetching text");
    const std::string back(data != nullptr ? data : "", static_cast<size_t>(length));
    std::free(data);
    visit.Check(back == text, "the text is another one here");
    // The type is told anew when it changes.
    MoveThereAndBack(visit, "bytes", "a\nb\r\n\r\r\n");
}

void MoveMany(Visit& visit)
{
    if (!visit.StartIn("many")) {
        return;
    }
    const auto count = [] {
        const std::filesystem::directory_iterator begin("/proc/self/fd");
        return std::distance(begin, {});
    };
    const auto before = count();
    for (int i = 0; i < 40; i++) {
        MoveThereAndBack(visit, std::to_string(i), AnyBytes(static_cast<size_t>(i)));
    }
    visit.Check(count() == before, "descriptors were left open");
}
