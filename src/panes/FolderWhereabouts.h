#pragma once

#include <Messenger.h>
#include <SupportDefs.h>

#include <memory>

class BMessage;
class BMessageRunner;

namespace norvane {

class LiveUpdates;
class PaneListing;

/// Where the folder is that a list shows: looks for it when it was removed, finds its new path when
/// it, or a folder above it, was renamed or moved, and reads it again and again where nobody tells
/// of its changes.
///
/// The disk is asked by others (DiskErrands), which answer by messages. Thread: the list's
/// window's.
class FolderWhereabouts
{
public:
    FolderWhereabouts(LiveUpdates& updates, PaneListing& listing);
    ~FolderWhereabouts();
    FolderWhereabouts(const FolderWhereabouts&) = delete;
    FolderWhereabouts& operator=(const FolderWhereabouts&) = delete;

    /// Who gets the messages, and hands them to MessageReceived().
    void SetList(const BMessenger& list) { fList = list; }
    /// Begins or ends looking, as the folder that is followed needs it.
    void LookOut();
    /// The folder may be elsewhere: nobody tells when one above it is renamed.
    void Check();
    /// False when the message is for others.
    bool MessageReceived(const BMessage& message);

private:
    enum class Checking : uint8 { kNot, kRunning, kOnceMore };

    void LookForFolder();
    void FolderIsBack(const BMessage& message);
    void Checked(const BMessage& message);

    LiveUpdates& fUpdates;
    PaneListing& fListing;
    BMessenger fList;
    std::unique_ptr<BMessageRunner> fLooking; // while the folder is gone, or not watched
    Checking fChecking = Checking::kNot;
};

} // namespace norvane
