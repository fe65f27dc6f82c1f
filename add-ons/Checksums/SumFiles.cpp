#include "Checksums/SumFiles.h"

#include "Checksums/Sha256.h"
#include "Checksums/SumLines.h"

#include <algorithm>
#include <utility>

namespace checksums {

namespace {

constexpr off_t kBlockBytes = 1 << 20;
constexpr off_t kLeastBlockBytes = 4096;
constexpr off_t kMostWholeBytes = 64 << 20;

/// Opens the folder at the end of the steps, `base` itself without any.
status_t OpenFolderBelow(const BDirectory& base, const std::vector<std::string>& steps,
                         size_t count, BDirectory* folder)
{
    status_t status = folder->SetTo(&base, ".");
    for (size_t step = 0; step < count && status == B_OK; step++) {
        BDirectory child;
        status = child.SetToChild(*folder, steps[step].c_str());
        if (status == B_OK) {
            *folder = child;
            status = folder->InitCheck();
        }
    }
    return status;
}

bool IsSame(const struct stat& before, const struct stat& after, int64 read)
{
    // The kernel's own files say that they are empty.
    return before.st_size == after.st_size && before.st_mtim.tv_sec == after.st_mtim.tv_sec &&
           before.st_mtim.tv_nsec == after.st_mtim.tv_nsec &&
           (read == after.st_size || after.st_size == 0);
}

/// Tells of the files of one folder; the folders in it are appended.
void LookInto(BDirectory& folder, const std::string& path,
              const std::function<void(const FoundFile& found)>& found,
              std::vector<std::string>* folders)
{
    const char* name = nullptr;
    status_t next = B_OK;
    while ((next = folder.GetNextName(&name)) == B_OK) {
        struct stat st = {};
        const status_t status = folder.GetStatFor(name, &st);
        if (status == B_ENTRY_NOT_FOUND) {
            continue; // it has gone since
        }
        const std::string inner = path + "/" + name;
        if (status != B_OK || S_ISREG(st.st_mode)) {
            found({inner, status == B_OK ? int64(st.st_size) : 0, status});
        } else if (S_ISDIR(st.st_mode)) {
            folders->push_back(inner);
        }
    }
    if (next != B_ENTRY_NOT_FOUND) {
        found({path, 0, next}); // that was not the end
    }
}

} // namespace

status_t OpenBelow(const BDirectory& base, const std::vector<std::string>& steps, BFile* file)
{
    if (steps.empty()) {
        return B_BAD_VALUE;
    }
    BDirectory folder;
    const status_t status = OpenFolderBelow(base, steps, steps.size() - 1, &folder);
    struct stat st = {};
    return status == B_OK ? file->SetToChild(folder, steps.back().c_str(), &st) : status;
}

Summed SumOf(BFile& file, const std::atomic<bool>& isStopped,
             const std::function<void(int64 bytes)>& read)
{
    Summed summed;
    struct stat before = {};
    struct stat after = {};
    summed.status = file.GetStat(&before);
    if (summed.status != B_OK) {
        return summed;
    }
    Sha256 sum;
    // One byte more than a small file has shows its end, too.
    std::vector<char> block(
        static_cast<size_t>(std::clamp(before.st_size + 1, kLeastBlockBytes, kBlockBytes)));
    int64 total = 0;
    for (;;) {
        if (isStopped) {
            summed.status = B_CANCELED;
            return summed;
        }
        const ssize_t count = file.Read(block.data(), block.size());
        if (count < 0) {
            summed.status = static_cast<status_t>(count);
            return summed;
        }
        if (count == 0) {
            break;
        }
        sum.Add(block.data(), static_cast<size_t>(count));
        total += count;
        read(count);
    }
    summed.status = file.GetStat(&after);
    summed.hasChanged = summed.status == B_OK && !IsSame(before, after, total);
    if (summed.status == B_OK && !summed.hasChanged) {
        summed.sum = sum.Finish();
        summed.status = summed.sum.empty() ? B_NO_MEMORY : B_OK;
    }
    return summed;
}

void FindFiles(const BDirectory& base, const std::string& top, const std::atomic<bool>& isStopped,
               const std::function<void(const FoundFile& found)>& found)
{
    // Folders whose turn comes; a path is opened step by step, so depth costs no descriptors.
    std::vector<std::string> waiting = {top};
    while (!waiting.empty() && !isStopped) {
        const std::string path = std::move(waiting.back());
        waiting.pop_back();
        const std::vector<std::string> steps =
            StepsBelow(path).value_or(std::vector<std::string>());
        BDirectory folder;
        const status_t status = OpenFolderBelow(base, steps, steps.size(), &folder);
        if (status != B_OK) {
            found({path, 0, status});
            continue;
        }
        const size_t first = waiting.size();
        LookInto(folder, path, found, &waiting);
        std::reverse(waiting.begin() + static_cast<ptrdiff_t>(first), waiting.end());
    }
}

status_t ReadWhole(BFile& file, std::string* text)
{
    off_t size = 0;
    const status_t status = file.GetSize(&size);
    if (status != B_OK) {
        return status;
    }
    if (size > kMostWholeBytes) {
        return B_NO_MEMORY;
    }
    text->resize(static_cast<size_t>(size));
    const ssize_t count = file.Read(text->data(), text->size());
    if (count < 0) {
        return static_cast<status_t>(count);
    }
    text->resize(static_cast<size_t>(count));
    return B_OK;
}

} // namespace checksums
