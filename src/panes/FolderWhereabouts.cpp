#include "panes/FolderWhereabouts.h"

#include "MessageCodes.h"
#include "panes/DiskErrands.h"
#include "panes/LiveUpdates.h"
#include "panes/PaneListing.h"

#include <Entry.h>
#include <Message.h>
#include <MessageRunner.h>
#include <Node.h>
#include <Path.h>

#include <string>
#include <utility>

namespace norvane {

namespace {

constexpr bigtime_t kLookInterval = 1'000'000; // for a folder that was removed
constexpr bigtime_t kLookAgainInterval = 3'000'000;

bool LeadsTo(const char* path, const node_ref& folder)
{
    node_ref found;
    return BNode(path).GetNodeRef(&found) == B_OK && found == folder;
}

/// The path of the folder that `inside` lies in, when `shown` does not lead to it any more.
std::string NewPlace(const std::string& shown, const entry_ref& inside, const node_ref& folder)
{
    BPath path(&inside);
    if (LeadsTo(shown.c_str(), folder) || path.InitCheck() != B_OK ||
        path.GetParent(&path) != B_OK || !LeadsTo(path.Path(), folder)) {
        return {};
    }
    return path.Path();
}

} // namespace

FolderWhereabouts::FolderWhereabouts(LiveUpdates& updates, PaneListing& listing)
    : fUpdates(updates), fListing(listing)
{
}

FolderWhereabouts::~FolderWhereabouts() = default;

void FolderWhereabouts::LookOut()
{
    fLooking.reset();
    if (!fList.IsValid() || !fUpdates.IsFollowing()) {
        return;
    }
    if (fUpdates.IsGone()) {
        const BMessage look(kLookForFolder);
        fLooking = std::make_unique<BMessageRunner>(fList, &look, kLookInterval);
    } else if (!fUpdates.IsWatching()) {
        const BMessage look(kLookAgain);
        fLooking = std::make_unique<BMessageRunner>(fList, &look, kLookAgainInterval, 1);
    }
}

bool FolderWhereabouts::MessageReceived(const BMessage& message)
{
    switch (message.what) {
    case kLookForFolder:
        LookForFolder();
        return true;
    case kFolderIsBack:
        FolderIsBack(message);
        return true;
    case kLookAgain:
        fListing.LookAgain(fListing.Source().LocalFolder());
        return true;
    case kFolderChecked:
        Checked(message);
        return true;
    default:
        return false;
    }
}

void FolderWhereabouts::LookForFolder()
{
    DiskErrands::Get().Do([path = fListing.Source().LocalFolder(), list = fList] {
        if (BEntry(path.c_str(), true).IsDirectory()) {
            BMessage back(kFolderIsBack);
            back.AddString("path", path.c_str());
            list.SendMessage(&back);
        }
    });
}

void FolderWhereabouts::FolderIsBack(const BMessage& message)
{
    if (fUpdates.IsGone() && fListing.Source().LocalFolder() == message.GetString("path", "")) {
        fListing.ReadAgain();
    }
}

void FolderWhereabouts::Check()
{
    if (!fList.IsValid() || !fUpdates.IsFollowing() || fUpdates.IsGone()) {
        return;
    }
    if (fChecking != Checking::kNot) {
        fChecking = Checking::kOnceMore; // it may have looked already
        return;
    }
    fChecking = Checking::kRunning;
    DiskErrands::Get().Do([shown = fListing.Source().LocalFolder(), inside = fUpdates.Inside(),
                           node = fUpdates.FolderNode(), list = fList] {
        BMessage checked(kFolderChecked);
        checked.AddString("path", NewPlace(shown, inside, node).c_str());
        checked.AddInt64("device", static_cast<int64>(node.device));
        checked.AddInt64("node", static_cast<int64>(node.node));
        list.SendMessage(&checked);
    });
}

void FolderWhereabouts::Checked(const BMessage& message)
{
    const bool isOnceMore = std::exchange(fChecking, Checking::kNot) == Checking::kOnceMore;
    const node_ref& shown = fUpdates.FolderNode();
    const std::string path = message.GetString("path", "");
    if (fUpdates.IsFollowing() &&
        message.GetInt64("device", 0) == static_cast<int64>(shown.device) &&
        message.GetInt64("node", 0) == static_cast<int64>(shown.node) && !path.empty()) {
        fListing.LookAgain(path);
    }
    if (isOnceMore) {
        Check();
    }
}

} // namespace norvane
