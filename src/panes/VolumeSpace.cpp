#include "panes/VolumeSpace.h"

#include "MessageCodes.h"
#include "panes/DiskErrands.h"
#include "panes/RowTexts.h"

#include <Message.h>
#include <MessageRunner.h>
#include <OS.h>
#include <fs_info.h>

#include <algorithm>
#include <utility>

namespace norvane {

namespace {

constexpr bigtime_t kInterval =
    2'000'000; // between two questions: what is copied changes it all the time

BMessage Found(dev_t device)
{
    BMessage found(kSpaceFound);
    found.AddInt64("device", static_cast<int64>(device));
    fs_info info;
    if (fs_stat_dev(device, &info) == B_OK && info.total_blocks > 0) {
        found.AddInt64("free", info.free_blocks * info.block_size);
        found.AddInt64("size", info.total_blocks * info.block_size);
        found.AddString("kind", info.fsh_name);
        found.AddString("name", info.volume_name);
    }
    return found;
}

} // namespace

VolumeSpace::VolumeSpace() = default;

VolumeSpace::~VolumeSpace() = default;

void VolumeSpace::Look(dev_t device, const BMessenger& pane)
{
    fPane = pane;
    const bool isOther = std::exchange(fDevice, device) != device;
    if (isOther) {
        fFree = -1;
    }
    if (fDevice == 0 || !fPane.IsValid()) {
        return;
    }
    const bigtime_t wait = isOther ? 0 : fLastTime + kInterval - system_time();
    if (fIsAsked) {
        fIsToAsk = true;
    } else if (wait <= 0) {
        Ask();
    } else if (fLater == nullptr) {
        const BMessage later(kAskForSpace);
        fLater = std::make_unique<BMessageRunner>(fPane, &later, wait, 1);
    }
}

void VolumeSpace::Ask()
{
    fLater.reset();
    fIsAsked = true;
    fIsToAsk = false;
    fLastTime = system_time();
    DiskErrands::Get().Do([device = fDevice, pane = fPane] {
        BMessage found = Found(device);
        pane.SendMessage(&found);
    });
}

bool VolumeSpace::Take(const BMessage& message)
{
    if (message.what == kAskForSpace) {
        fLater.reset();
        Look(fDevice, fPane);
        return false;
    }
    fIsAsked = false;
    const bool isOfThis = message.GetInt64("device", 0) == static_cast<int64>(fDevice);
    if (isOfThis) {
        fFree = message.GetInt64("free", -1);
        fSize = message.GetInt64("size", 0);
        fKind = message.GetString("kind", "");
        fName = message.GetString("name", "");
    }
    if (!isOfThis && fDevice != 0) {
        Ask();
    } else if (fIsToAsk) {
        Look(fDevice, fPane);
    }
    return isOfThis;
}

std::string VolumeSpace::ShortText() const
{
    return fFree < 0 ? std::string() : ReadableSize(fFree) + " free, " + fKind;
}

std::string VolumeSpace::LongText() const
{
    return fFree < 0 ? std::string()
                     : ReadableSize(fFree) + " free of " + ReadableSize(fSize) + ", " + fKind +
                           ", volume " + fName;
}

} // namespace norvane
