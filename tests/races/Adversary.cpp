#include "Adversary.h"

#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr size_t kOwnBytes = 7001;

/// Contents that say whose they are.
std::string OwnText(const std::string& path, size_t sizeBytes)
{
    std::string text;
    while (text.size() < sizeBytes) {
        text += "[somebody else's " + path + " " + std::to_string(text.size()) + "]";
    }
    text.resize(sizeBytes);
    return text;
}

bool WriteAll(int file, const std::string& text)
{
    const bool isWritten =
        file >= 0 && write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    if (file >= 0) {
        close(file);
    }
    return isWritten;
}

} // namespace

const std::vector<Adversary::Deed>& Adversary::Deeds()
{
    static const std::vector<Deed> sDeeds = {
        {"item swapped for a file", &Adversary::SwapItemForFile},
        {"item swapped for a folder", &Adversary::SwapItemForFolder},
        {"item swapped for a link", &Adversary::SwapItemForLink},
        {"item's folder swapped", &Adversary::SwapItemFolder},
        {"entry replaced", &Adversary::ReplaceEntry},
        {"entry rewritten", &Adversary::RewriteEntry},
        {"entry grown", &Adversary::GrowEntry},
        {"entry truncated", &Adversary::TruncateEntry},
        {"entry removed", &Adversary::RemoveEntry},
        {"entry closed to others", &Adversary::CloseEntry},
        {"entry added", &Adversary::AddEntry},
        {"entry swapped for a link", &Adversary::SwapEntryForLink},
        {"target's name taken", &Adversary::PutTarget},
        {"target's name linked", &Adversary::PutLinkAtTarget},
        {"target replaced", &Adversary::ReplaceTarget},
        {"target removed", &Adversary::RemoveTarget},
        {"target rewritten", &Adversary::RewriteTarget},
        {"target opened to all", &Adversary::OpenTarget},
        {"target swapped for a folder", &Adversary::SwapTargetForFolder},
        {"target swapped for a link", &Adversary::SwapTargetForLink},
        {"target's folder swapped", &Adversary::SwapTargetFolder},
        {"Trash emptied", &Adversary::EmptyTrash},
    };
    return sDeeds;
}

char Adversary::KindOf(const std::string& path) const
{
    struct stat st = {};
    if (lstat(fScene.Path(path).c_str(), &st) != 0) {
        return '\0';
    }
    return S_ISDIR(st.st_mode) ? 'd' : S_ISLNK(st.st_mode) ? 'l' : 'f';
}

bool Adversary::Put(const std::string& path, mode_t mode) const
{
    const int file = open(fScene.Path(path).c_str(), O_WRONLY | O_CREAT | O_EXCL, mode);
    return WriteAll(file, OwnText(path, kOwnBytes));
}

bool Adversary::PutFolder(const std::string& path) const
{
    return mkdir(fScene.Path(path).c_str(), 0755) == 0;
}

bool Adversary::PutLink(const std::string& path, const char* name) const
{
    const std::string text = fScene.Path("one") + kMarkOfLink + name;
    return symlink(text.c_str(), fScene.Path(path).c_str()) == 0;
}

bool Adversary::MoveAway(const std::string& path, const std::string& newPath) const
{
    return rename(fScene.Path(path).c_str(), fScene.Path(newPath).c_str()) == 0;
}

bool Adversary::Replace(const std::string& path, mode_t mode) const
{
    return IsFile(path) && Put(path + "-new", mode) && MoveAway(path + "-new", path);
}

bool Adversary::Rewrite(const std::string& path) const
{
    struct stat st = {};
    if (lstat(fScene.Path(path).c_str(), &st) != 0 || !S_ISREG(st.st_mode) || st.st_size == 0) {
        return false;
    }
    const int file = open(fScene.Path(path).c_str(), O_WRONLY | O_NOFOLLOW);
    return WriteAll(file, OwnText(path, static_cast<size_t>(st.st_size)));
}

bool Adversary::SwapItemForFile() const
{
    return MoveAside(fPlaces.item) && Put(fPlaces.item, 0600);
}

bool Adversary::SwapItemForFolder() const
{
    return MoveAside(fPlaces.item) && PutFolder(fPlaces.item) && Put(fPlaces.item + "/big", 0600) &&
           Put(fPlaces.item + "/a", 0600);
}

bool Adversary::SwapItemForLink() const
{
    return MoveAside(fPlaces.item) && PutLink(fPlaces.item, fPlaces.isFolder ? "" : "/file");
}

bool Adversary::SwapItemFolder() const
{
    if (!MoveAside(fPlaces.itemFolder) || !PutFolder(fPlaces.itemFolder)) {
        return false;
    }
    return (!fPlaces.isFolder || PutFolder(fPlaces.item)) && Put(fPlaces.InItem("big"), 0600);
}

bool Adversary::ReplaceEntry() const
{
    return Replace(fPlaces.InItem("big"), 0600);
}

bool Adversary::RewriteEntry() const
{
    return Rewrite(fPlaces.InItem("big"));
}

bool Adversary::GrowEntry() const
{
    const std::string path = fPlaces.InItem("sub/b");
    const int file = open(fScene.Path(path).c_str(), O_WRONLY | O_APPEND | O_NOFOLLOW);
    return WriteAll(file, OwnText(path, kOwnBytes));
}

bool Adversary::TruncateEntry() const
{
    const std::string path = fPlaces.InItem("big");
    return IsFile(path) && truncate(fScene.Path(path).c_str(), 130'000) == 0;
}

bool Adversary::RemoveEntry() const
{
    return unlink(fScene.Path(fPlaces.InItem("sub/b")).c_str()) == 0;
}

bool Adversary::CloseEntry() const
{
    const std::string path = fPlaces.InItem("big");
    return IsFile(path) && chmod(fScene.Path(path).c_str(), 0600) == 0;
}

bool Adversary::AddEntry() const
{
    return fPlaces.isFolder && Put(fPlaces.item + "/sub/new", 0600);
}

bool Adversary::SwapEntryForLink() const
{
    return fPlaces.isFolder &&
           MoveAway(fPlaces.item + "/sub", fPlaces.itemFolder + "/sub" + kAside) &&
           PutLink(fPlaces.item + "/sub", "");
}

bool Adversary::PutTarget() const
{
    if (!fPlaces.HasTarget()) {
        return false;
    }
    // The first that is free, of one that is made early and one that is made late.
    for (const std::string& path :
         {fPlaces.target, fPlaces.InTarget("big"), fPlaces.InTarget("sub/b")}) {
        if (IsFree(path)) {
            return Put(path, 0644);
        }
    }
    return false;
}

bool Adversary::PutLinkAtTarget() const
{
    if (!fPlaces.HasTarget()) {
        return false;
    }
    if (IsFree(fPlaces.target)) {
        return PutLink(fPlaces.target, fPlaces.isFolder ? "" : "/file");
    }
    return fPlaces.isFolder && PutLink(fPlaces.target + "/sub/b", "/file");
}

bool Adversary::ReplaceTarget() const
{
    return fPlaces.HasTarget() && Replace(fPlaces.InTarget("big"), 0644);
}

bool Adversary::RemoveTarget() const
{
    return fPlaces.HasTarget() && unlink(fScene.Path(fPlaces.InTarget("sub/b")).c_str()) == 0;
}

bool Adversary::RewriteTarget() const
{
    return fPlaces.HasTarget() && Rewrite(fPlaces.InTarget("big"));
}

bool Adversary::OpenTarget() const
{
    const std::string path = fPlaces.InTarget("private");
    return fPlaces.HasTarget() && IsFile(path) && chmod(fScene.Path(path).c_str(), 0666) == 0;
}

bool Adversary::SwapTargetForFolder() const
{
    return fPlaces.HasTarget() && MoveAside(fPlaces.target) && PutFolder(fPlaces.target) &&
           Put(fPlaces.target + "/big", 0644);
}

bool Adversary::SwapTargetForLink() const
{
    return fPlaces.HasTarget() && MoveAside(fPlaces.target) &&
           PutLink(fPlaces.target, fPlaces.isFolder ? "" : "/file");
}

bool Adversary::SwapTargetFolder() const
{
    return fPlaces.HasTarget() && MoveAside(fPlaces.targetFolder) &&
           PutFolder(fPlaces.targetFolder);
}

bool Adversary::EmptyTrash() const
{
    namespace fs = std::filesystem;
    std::error_code error;
    bool hasRemoved = false;
    for (const char* part : {"/files", "/info"}) {
        std::vector<fs::path> entries;
        for (const auto& entry : fs::directory_iterator(fScene.Path(kHomeTrash) + part, error)) {
            entries.push_back(entry.path());
        }
        for (const fs::path& entry : entries) {
            hasRemoved = fs::remove_all(entry, error) > 0 || hasRemoved;
        }
    }
    return hasRemoved;
}
