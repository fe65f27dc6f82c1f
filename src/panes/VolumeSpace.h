#pragma once

#include <Messenger.h>
#include <SupportDefs.h>

#include <memory>
#include <string>

class BMessage;
class BMessageRunner;

namespace norvane {

/// How much room the volume of a pane's folder has.
///
/// The disk is asked by others (DiskErrands), at most one question at a time, which answer by
/// kSpaceFound; a volume that does not answer holds nobody up. Thread: the pane's window's.
class VolumeSpace
{
public:
    VolumeSpace();
    ~VolumeSpace();
    VolumeSpace(const VolumeSpace&) = delete;
    VolumeSpace& operator=(const VolumeSpace&) = delete;

    /// What is shown lies on this volume, and may have changed; 0: on none. `pane` gets the
    /// answers, and hands them to Take().
    void Look(dev_t device, const BMessenger& pane);
    /// Something that was asked for came, or it is time to ask; false when it says nothing new.
    bool Take(const BMessage& message);

    /// "12 GiB free, ext4"; empty until it is known.
    std::string ShortText() const;
    /// "12 GiB free of 98 GiB, ext4, volume data"; empty until it is known.
    std::string LongText() const;

private:
    void Ask();

    BMessenger fPane;
    dev_t fDevice = 0;
    bool fIsAsked = false;   // and the answer awaited
    bool fIsToAsk = false;   // once that is there
    bigtime_t fLastTime = 0; // of asking
    std::unique_ptr<BMessageRunner> fLater;

    int64 fFree = -1;
    int64 fSize = 0;
    std::string fKind;
    std::string fName;
};

} // namespace norvane
