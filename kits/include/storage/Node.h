#pragma once

#include <NodeRef.h>
#include <Statable.h>
#include <TypeConstants.h>

#include <memory>
#include <string>
#include <vector>

class BDirectory;
class BEntry;
struct entry_ref;

/// What GetAttrInfo() tells of an attribute.
struct attr_info
{
    type_code type = 0; // as it was written
    off_t size = 0;     // bytes
};

/// An open node: holds on to a file, folder or link whatever happens to its name, and to its
/// attributes.
///
/// Opening reads nothing and waits for nothing, also for a FIFO or a device. A link is the link
/// itself. Attributes are kept as extended attributes; a file system without them answers
/// B_UNSUPPORTED. Thread: one at a time.
class BNode : public BStatable
{
public:
    /// Holds no node, or opens one as SetTo() does; InitCheck() tells what became of it.
    BNode();
    explicit BNode(const entry_ref* ref);
    explicit BNode(const BEntry* entry);
    explicit BNode(const char* path);
    /// Opens the node at `path` from `directory`.
    BNode(const BDirectory* directory, const char* path);
    /// The copy holds the node by a descriptor of its own.
    BNode(const BNode& other);
    BNode& operator=(const BNode& other);
    ~BNode() override;

    /// Errors: B_NO_INIT, or what the last SetTo() said.
    status_t InitCheck() const { return fStatus; }
    /// Opens a node. Errors: B_BAD_VALUE for null, B_ENTRY_NOT_FOUND, B_NOT_A_DIRECTORY,
    /// B_PERMISSION_DENIED ...; no node is held then.
    status_t SetTo(const entry_ref* ref);
    status_t SetTo(const BEntry* entry);
    status_t SetTo(const char* path);
    status_t SetTo(const BDirectory* directory, const char* path);
    /// Lets the node go.
    virtual void Unset();

    // BStatable
    status_t GetStat(struct stat* st) const override;

    /// Sends the node's data to the medium.
    virtual status_t Sync();

    /// Locks the node's contents against others that lock them, in this program and in others, until
    /// Unlock() or until the node is let go of; reading and writing without a lock goes on. Only
    /// what was opened for reading or writing can be locked: a file. Never waits. Errors: B_BUSY
    /// when another holds it, B_NO_INIT, B_NOT_ALLOWED for a node that is only held,
    /// B_UNSUPPORTED where the file system has no locks.
    status_t Lock();
    /// Errors: as of Lock().
    status_t Unlock();

    /// Writes the whole attribute; `offset` must be 0.
    /// Errors: a negative count is the status; B_UNSUPPORTED where the file system has no
    /// attributes.
    ssize_t WriteAttr(const char* name, type_code type, off_t offset, const void* buffer,
                      size_t size);
    /// Reads up to `size` bytes from `offset` on; returns their number, or a status.
    /// Errors: B_ENTRY_NOT_FOUND. The type is not compared.
    ssize_t ReadAttr(const char* name, type_code type, off_t offset, void* buffer,
                     size_t size) const;
    /// Removes an attribute. Errors: B_ENTRY_NOT_FOUND when there is none of that name;
    /// B_UNSUPPORTED.
    status_t RemoveAttr(const char* name);
    /// Tells type and size of an attribute. Errors: B_ENTRY_NOT_FOUND when there is none of that
    /// name.
    status_t GetAttrInfo(const char* name, attr_info* info) const;
    /// Names of the attributes in turn, at most B_ATTR_NAME_LENGTH bytes. Errors: B_ENTRY_NOT_FOUND
    /// at the end.
    status_t GetNextAttrName(char* buffer);
    /// Has GetNextAttrName() begin anew.
    void RewindAttrs();
    /// How many attributes the node has; one cheap call, 0 also where there are none to be had. An
    /// extension of the platform.
    int32 CountAttrs() const;
    /// Takes over the extended attributes of `source` that programs and people gave it ("user.").
    /// What the system itself labels stays behind, and lists of who may use it are BNodeAccess's.
    /// An extension of the platform. Errors: B_UNSUPPORTED when this file system cannot hold some
    /// of them, by their number, size or kind, and nothing else is wrong; else that of the first
    /// one that could not be read or written. The others are there nevertheless.
    status_t CopyAttrsFrom(const BNode& source);
    /// Asks whether this new node can keep all of `source` that counts: those attributes, and its
    /// access lists. An extension of the platform. The attributes are there afterwards, the lists
    /// are not; it is open to nobody but its owner. One cheap call when `source` has none. Errors:
    /// B_UNSUPPORTED when it cannot; those of reading and writing.
    status_t CheckAttrsFrom(const BNode& source);

    /// A new descriptor of the same node for the caller to close, or a status.
    int Dup() const;

    /// The same node; unset ones are equal to nothing.
    bool operator==(const BNode& other) const;
    bool operator!=(const BNode& other) const { return !(*this == other); }

protected:
    /// Lets the node go; InitCheck() and this call say `status`.
    status_t Fail(status_t status);
    /// Takes `descriptor` over as the open node.
    void Adopt(int descriptor);
    /// Closes the node and tells what the system says to it.
    status_t CloseDescriptor();
    /// The open node's descriptor, negative when there is none. Ownership: lent.
    int Descriptor() const { return fDescriptor; }
    /// Whatever has to be done before the node is asked about itself: a file writes what it holds
    /// back.
    virtual status_t Settle() const;

    // BStatable
    status_t SetStat(const struct stat& st, uint32 what) override;
    void KnowFolder(const struct stat& st) const override;

private:
    friend class BDirectory;
    friend class BEntryBatch;
    friend class BFile;
    friend class BNodeAccess;

    int fDescriptor = -1; // owned
    status_t fStatus;
    std::vector<std::string>
        fAttributeNames; // what GetNextAttrName() gives, read at its first call
    size_t fNextAttribute = 0;
    bool fHasAttributeNames = false;
};
