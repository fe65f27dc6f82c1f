#pragma once

#include <StorageDefs.h>

class BDirectory;
struct node_ref;

/// A mounted file system, named by the device number that its nodes carry.
///
/// An object of numbers: it opens nothing and keeps nothing mounted. Whatever it is asked it looks
/// up at that moment, so a volume that was unmounted meanwhile answers B_BAD_VALUE. Thread: any,
/// one at a time.
class BVolume
{
public:
    /// Names no volume, or the one with that number.
    BVolume() = default;
    explicit BVolume(dev_t device);
    /// Copies the number.
    BVolume(const BVolume&) = default;
    BVolume& operator=(const BVolume&) = default;
    virtual ~BVolume();

    /// Errors: B_NO_INIT, or what the last SetTo() said.
    status_t InitCheck() const { return fStatus; }
    /// Errors: B_BAD_VALUE when nothing with that number is mounted; the volume is unset then.
    status_t SetTo(dev_t device);
    /// Names no volume from now on.
    void Unset();

    /// The number, 0 when unset.
    dev_t Device() const { return fDevice; }

    /// The folder that the volume is mounted on. Errors: B_NO_INIT, B_BAD_VALUE when it is gone,
    /// those of opening.
    status_t GetRootDirectory(BDirectory* directory) const;
    /// Units: bytes. Errors: a negative value is the status.
    off_t Capacity() const;
    /// What this user may still write. Units: bytes. Errors: a negative value is the status.
    off_t FreeBytes() const;
    /// The last step of the path that it is mounted on; the root volume is called by what it is
    /// made of
    /// ("sda1"). `name` holds at least B_FILE_NAME_LENGTH bytes.
    status_t GetName(char* name) const;

    /// Whether its medium can be taken out: false where the system does not tell.
    bool IsRemovable() const;
    /// Whether nothing can be written on it.
    bool IsReadOnly() const;
    /// Whether it outlives a restart of the machine; one in memory does not.
    bool IsPersistent() const;
    /// Whether another machine holds it: a network file system.
    bool IsShared() const;
    /// Whether its nodes can have attributes.
    bool KnowsAttr() const;
    /// Whether its nodes can store their types: the same.
    bool KnowsMime() const { return KnowsAttr(); }
    /// Always: queries are answered by walking.
    bool KnowsQuery() const { return fStatus == B_OK; }

    /// The same number; two unset ones are equal.
    bool operator==(const BVolume& other) const { return fDevice == other.fDevice; }
    bool operator!=(const BVolume& other) const { return fDevice != other.fDevice; }

private:
    dev_t fDevice = 0;
    status_t fStatus = B_NO_INIT;
};
