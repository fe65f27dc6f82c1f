#pragma once

#include <NodeRef.h>
#include <SupportDefs.h>

#include <memory>
#include <string>
#include <vector>

class BDirectory;

namespace norvane {

/// The folders from the top of a walk down to where it is. However deep that is, only the lowest
/// few stay open; those above are found again on the way back, and compared.
///
/// Thread: one at a time.
class FolderChain
{
public:
    /// `top` stays open: what the walk begins in. Ownership: borrowed for its own life.
    explicit FolderChain(BDirectory& top);
    ~FolderChain();

    /// Goes down into a folder that was opened in Here() by `name`.
    void Enter(std::shared_ptr<BDirectory> folder, std::string name, const node_ref& node);
    /// Goes up again.
    void Leave();
    /// The folder where the walk is; null when it cannot be found any more. The top is lent, the
    /// others stay open as long as they are held.
    std::shared_ptr<BDirectory> Here() const;
    /// How many folders were entered and not left.
    size_t Depth() const { return fLevels.size(); }
    /// Closes all but the lowest, for when the program has no descriptors left. Says whether that
    /// closed any.
    bool CloseAbove();

private:
    struct Level
    {
        std::shared_ptr<BDirectory> folder; // null while it is closed
        std::string name;
        node_ref node;
    };

    std::shared_ptr<BDirectory> OpenFromTop(size_t depth);

    BDirectory& fTop;
    std::vector<Level> fLevels;
    size_t fFirstOpen = 0; // those before are closed
};

/// Both, for walks beside each other.
bool CloseAbove(FolderChain& one, FolderChain& other);

} // namespace norvane
