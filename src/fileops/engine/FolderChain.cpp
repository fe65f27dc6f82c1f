#include "fileops/engine/FolderChain.h"

#include <Directory.h>

namespace norvane {

namespace {

constexpr size_t kMostOpen = 48;

bool IsNode(const BDirectory& folder, const node_ref& node)
{
    struct stat record;
    return folder.InitCheck() == B_OK && folder.GetStat(&record) == B_OK &&
           node_ref(record.st_dev, record.st_ino) == node;
}

} // namespace

FolderChain::FolderChain(BDirectory& top) : fTop(top) {}

FolderChain::~FolderChain() = default;

void FolderChain::Enter(std::shared_ptr<BDirectory> folder, std::string name, const node_ref& node)
{
    fLevels.push_back({std::move(folder), std::move(name), node});
    if (fLevels.size() - fFirstOpen > kMostOpen) {
        fLevels[fFirstOpen++].folder.reset();
    }
}

void FolderChain::Leave()
{
    const std::shared_ptr<BDirectory> left = std::move(fLevels.back().folder);
    fLevels.pop_back();
    if (fLevels.empty() || fLevels.size() > fFirstOpen) {
        return;
    }
    // From below: that finds it wherever the whole was moved to.
    Level& above = fLevels.back();
    auto found = std::make_shared<BDirectory>();
    if (left == nullptr || found->SetToParent(*left) != B_OK || !IsNode(*found, above.node)) {
        found = OpenFromTop(fLevels.size());
    }
    above.folder = std::move(found);
    fFirstOpen = fLevels.size() - 1;
}

std::shared_ptr<BDirectory> FolderChain::OpenFromTop(size_t depth)
{
    std::shared_ptr<BDirectory> open;
    for (size_t level = 0; level < depth; level++) {
        auto next = std::make_shared<BDirectory>();
        const BDirectory& above = open != nullptr ? *open : fTop;
        if (next->SetToChild(above, fLevels[level].name.c_str()) != B_OK ||
            !IsNode(*next, fLevels[level].node)) {
            return nullptr;
        }
        open = std::move(next);
    }
    return open;
}

std::shared_ptr<BDirectory> FolderChain::Here() const
{
    return fLevels.empty() ? std::shared_ptr<BDirectory>(std::shared_ptr<BDirectory>(), &fTop)
                           : fLevels.back().folder;
}

bool FolderChain::CloseAbove()
{
    bool hasClosed = false;
    while (fFirstOpen + 1 < fLevels.size()) {
        fLevels[fFirstOpen++].folder.reset();
        hasClosed = true;
    }
    return hasClosed;
}

bool CloseAbove(FolderChain& one, FolderChain& other)
{
    const bool hasClosed = one.CloseAbove();
    return other.CloseAbove() || hasClosed;
}

} // namespace norvane
