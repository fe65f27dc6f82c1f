#pragma once

#include <Messenger.h>
#include <SupportDefs.h>

#include <memory>
#include <string>

class BMessage;

namespace kits {
void ClipboardReplaced();
}

/// Tells those that watch a clipboard that its data was replaced.
constexpr uint32 B_CLIPBOARD_CHANGED = 'CLCH';

/// Data that passes between programs, or under another name than "system" within this one.
///
/// Between Lock() and Unlock() the data is this thread's alone. Data() holds "text/plain"
/// (B_MIME_TYPE, UTF-8 without a final NUL), or files: "refs", and "be:actions" (int32), which is
/// B_MOVE_TARGET when they were cut and B_COPY_TARGET when they were copied. Other programs get
/// files as addresses, with the marks of the common desktops, and their paths as text. What this
/// program committed comes back with all its fields while no other program has replaced it. Thread:
/// any but the server's.
class BClipboard
{
public:
    /// `isTransient` is taken for the platform's sake: nothing is kept over restarts here.
    explicit BClipboard(const char* name, bool isTransient = false);
    virtual ~BClipboard();
    BClipboard(const BClipboard&) = delete;
    BClipboard& operator=(const BClipboard&) = delete;

    /// Lends the name given; "" for null.
    const char* Name() const { return fName.c_str(); }
    /// How often the data that Data() lends was replaced, by whomever.
    uint32 LocalCount() const;
    /// The same: the data is fetched at each Lock().
    uint32 SystemCount() const;
    /// Sends B_CLIPBOARD_CHANGED to `target` after each change, by whichever program. Errors:
    /// B_BAD_VALUE for a target that is not valid.
    status_t StartWatching(BMessenger target);
    /// Ends that. Errors: B_BAD_VALUE when `target` was not watching.
    status_t StopWatching(BMessenger target);

    /// Waits for other threads. The data is fetched when it is first looked at: that waits for the
    /// program that owns it, a second at most for its first bytes and five in all; one that is
    /// slower counts as having none. A window waits without stopping by BTextView::Paste().
    bool Lock();
    /// Gives back one lock; what was changed and not committed is dropped by the next one.
    void Unlock();
    /// Whether this thread holds the lock.
    bool IsLocked() const;

    /// An extension of the platform. Sends `target` a message of that code with what Data() would
    /// hold: another program is waited for by a thread of its own, as the disk is for its files,
    /// and the clipboard is not locked meanwhile. One that does not answer is told by a beep, and
    /// the message is empty. Errors: B_BAD_VALUE for a target that is not valid; B_NO_MORE_THREADS.
    status_t SendData(const BMessenger& target, uint32 what) const;

    // Locked

    /// Empties the data, before other data is put into it. Errors: B_NOT_ALLOWED without the lock,
    /// as of the next two.
    status_t Clear();
    /// Makes the data what others get.
    status_t Commit();
    /// Fetches the data anew, dropping what was changed.
    status_t Revert();
    /// The program the data comes from: this one, else a messenger that is not valid, as without
    /// the lock.
    BMessenger DataSource() const;
    /// Ownership: lends, while locked. Null without the lock.
    BMessage* Data() const;

private:
    friend void kits::ClipboardReplaced();
    struct Store;

    void Replaced();

    std::string fName;
    std::shared_ptr<Store> fStore; // shared by all clipboards of that name
};

/// The desktop's clipboard. Valid from before main() on.
extern BClipboard* const be_clipboard;
