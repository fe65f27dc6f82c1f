#pragma once

#include <Mime.h>

class BBitmap;
class BNode;

/// The file type attributes of a node: type, preferred application, icons.
///
/// Ownership: borrows the node, which outlives it. Only what is stored in the node itself is told,
/// unless a call says otherwise. Thread: as the node.
class BNodeInfo
{
public:
    /// Has no node, or `node` as SetTo() does.
    BNodeInfo() = default;
    explicit BNodeInfo(BNode* node);

    /// Takes a node. Errors: B_BAD_VALUE for null and for a node that is not open.
    status_t SetTo(BNode* node);
    /// Errors: B_NO_INIT, or what SetTo() said.
    status_t InitCheck() const { return fStatus; }

    /// `type` holds at least B_MIME_TYPE_LENGTH bytes. Errors: B_ENTRY_NOT_FOUND when none is
    /// stored.
    status_t GetType(char* type) const;
    /// Stores the type; null removes it. Errors: B_BAD_VALUE for an invalid type.
    status_t SetType(const char* type);
    /// Tells, or stores, the signature of the application that is to open this very file. Errors:
    /// as of the type.
    status_t GetPreferredApp(char* signature, app_verb verb = B_OPEN) const;
    status_t SetPreferredApp(const char* signature, app_verb verb = B_OPEN);
    /// The icon stored in the node. `icon` has the size of `which` and is of B_CMAP8 or a 32-bit
    /// colour space. Errors: B_ENTRY_NOT_FOUND when none is stored, B_BAD_VALUE when the bitmap
    /// does not fit.
    status_t GetIcon(BBitmap* icon, icon_size which = B_LARGE_ICON) const;
    /// Stores a B_CMAP8 icon; null removes it.
    status_t SetIcon(const BBitmap* icon, icon_size which = B_LARGE_ICON);

    /// The icon that a list shows: the stored one, else that of the stored type, else that of the
    /// kind and name.
    status_t GetTrackerIcon(BBitmap* icon, icon_size which = B_LARGE_ICON) const;
    /// The same for an entry, without opening it: by its kind and name, from a cache by suffix.
    static status_t GetTrackerIcon(const entry_ref* ref, BBitmap* icon,
                                   icon_size which = B_LARGE_ICON);
    /// An extension of the platform: the same when name and mode are known already, without any
    /// system call. For a link, those of its target.
    static status_t GetTrackerIcon(const char* name, mode_t mode, BBitmap* icon,
                                   icon_size which = B_LARGE_ICON);

private:
    BNode* fNode = nullptr;
    status_t fStatus = B_NO_INIT;
};
