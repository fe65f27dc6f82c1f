#include "Checksums/SumSaving.h"

#include <Directory.h>
#include <Entry.h>
#include <File.h>

namespace checksums {

namespace {

constexpr char kName[] = "SHA256SUMS";
constexpr char kUnfinished[] = ".SHA256SUMS-unfinished-";
constexpr int kMostNames = 10'000;
constexpr mode_t kMode = 0666; // less the umask

status_t MakeFile(BDirectory& folder, BFile* file, std::string* name)
{
    status_t status = B_FILE_EXISTS;
    for (int number = 1; status == B_FILE_EXISTS && number < kMostNames; number++) {
        *name = kUnfinished + std::to_string(number);
        status = folder.CreateNewFile(name->c_str(), kMode, file);
    }
    return status;
}

status_t WriteAll(BFile& file, const std::string& lines)
{
    const ssize_t written = file.Write(lines.data(), lines.size());
    if (written < 0) {
        return static_cast<status_t>(written);
    }
    if (static_cast<size_t>(written) != lines.size()) {
        return B_DEVICE_FULL;
    }
    const status_t synced = file.Sync();
    const status_t closed = file.Close();
    return synced != B_OK ? synced : closed;
}

status_t GiveFreeName(BDirectory& folder, const std::string& unfinished, std::string* name)
{
    status_t status = B_FILE_EXISTS;
    for (int number = 1; status == B_FILE_EXISTS && number < kMostNames; number++) {
        *name = number == 1 ? kName : std::string(kName) + " " + std::to_string(number);
        status = folder.RenameChild(unfinished.c_str(), name->c_str());
    }
    return status;
}

} // namespace

status_t SaveSums(const entry_ref& neighbour, const std::string& lines, std::string* name)
{
    BDirectory folder;
    const BEntry entry(&neighbour);
    status_t status = entry.InitCheck() == B_OK ? entry.GetParent(&folder) : entry.InitCheck();
    BFile file;
    std::string unfinished;
    if (status == B_OK) {
        status = MakeFile(folder, &file, &unfinished);
    }
    if (status != B_OK) {
        return status;
    }
    status = WriteAll(file, lines);
    if (status == B_OK) {
        status = GiveFreeName(folder, unfinished, name);
    }
    if (status != B_OK) {
        folder.RemoveChildFile(unfinished.c_str());
    }
    return status;
}

} // namespace checksums
