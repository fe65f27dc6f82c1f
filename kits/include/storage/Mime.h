#pragma once

#include <StorageDefs.h>

#include <string>

class BMessage;
struct entry_ref;

/// The two sizes of an icon, in units of a side.
enum icon_size {
    B_LARGE_ICON = 32,
    B_MINI_ICON = 16,
};

/// What a preferred application is for.
enum app_verb {
    B_OPEN,
};

/// The types of programs, of files that say nothing of themselves, of folders and of links.
constexpr const char* B_APP_MIME_TYPE = "application/x-executable";
constexpr const char* B_FILE_MIME_TYPE = "application/octet-stream";
constexpr const char* B_DIRECTORY_MIME_TYPE = "inode/directory";
constexpr const char* B_SYMLINK_MIME_TYPE = "inode/symlink";

/// A type of content, such as "text/plain", or a whole family of them, such as "text".
///
/// Types are those of the shared MIME database. Thread: any, one at a time per object.
class BMimeType
{
public:
    /// Names no type, or `type` as SetTo() does.
    BMimeType() = default;
    explicit BMimeType(const char* type);

    /// Errors: B_BAD_VALUE when `type` is no valid type; the object is unset then.
    status_t SetTo(const char* type);
    /// Names no type from now on.
    void Unset();
    /// Errors: B_NO_INIT, or what SetTo() said.
    status_t InitCheck() const { return fStatus; }

    /// The text, or null when unset.
    const char* Type() const;
    /// Whether it names a type.
    bool IsValid() const { return fStatus == B_OK; }
    /// Whether it names a family: a type without a slash.
    bool IsSupertypeOnly() const;
    /// Tells the family of a type. Errors: B_BAD_VALUE for null, for a family and when unset.
    status_t GetSupertype(BMimeType* supertype) const;
    /// Equal without regard to case.
    bool operator==(const BMimeType& other) const;
    bool operator==(const char* type) const;
    /// Whether `type` is this type or, when this one is a supertype, belongs to it.
    bool Contains(const BMimeType* type) const;
    /// Whether `type` is this type or one that it is a kind of, as a script is a kind of
    /// "text/plain". An extension of the platform.
    bool Inherits(const char* type) const;
    /// Whether the database knows the type, or the signature's program is installed.
    bool IsInstalled() const;
    /// A few words in the user's language; of a signature, the program's name. `buffer` holds at
    /// least B_MIME_TYPE_LENGTH bytes; longer words are cut at a character's end. Errors:
    /// B_ENTRY_NOT_FOUND when the database knows none.
    status_t GetShortDescription(char* buffer) const;

    // Programs are named by signatures, which are types, too. They are those of the desktop, but
    // for "application/x-vnd.be-shel": the terminal. The calls read the disk.

    /// The file of the program with this signature; the desktop's describe theirs in one of their
    /// own. Errors: B_ENTRY_NOT_FOUND when no installed program has it, B_BAD_VALUE for null,
    /// B_NO_INIT.
    status_t GetAppHint(entry_ref* ref) const;
    /// The signature of the program that is set for this type, or for what it derives from. It has
    /// room for B_MIME_TYPE_LENGTH bytes. Errors: as above.
    status_t GetPreferredApp(char* signature, app_verb verb = B_OPEN) const;
    /// Sets the program for this type, as the person's choice for the whole desktop. Errors:
    /// B_ENTRY_NOT_FOUND when no installed program has that signature; B_BAD_VALUE; B_NO_INIT;
    /// B_ERROR when it cannot be kept.
    status_t SetPreferredApp(const char* signature, app_verb verb = B_OPEN);
    /// The signatures of those that say that they open this type, as strings "applications"; the
    /// preferred one first.
    status_t GetSupportingApps(BMessage* signatures) const;
    /// The signatures of all programs that open files of some kind, by the programs' names.
    static status_t GetWildcardApps(BMessage* signatures);

    /// A printable text of at most B_MIME_TYPE_LENGTH - 1 characters with at most one slash, not at
    /// an end.
    static bool IsValid(const char* type);
    /// The type by name and, where the name says nothing, by content. Folders and links have types
    /// of their own; a FIFO, socket or device is not opened.
    static status_t GuessMimeType(const entry_ref* ref, BMimeType* type);
    /// The type by the name alone, or by the first bytes of its content.
    static status_t GuessMimeType(const char* fileName, BMimeType* type);
    static status_t GuessMimeType(const void* buffer, int32 length, BMimeType* type);

private:
    std::string fType;
    status_t fStatus = B_NO_INIT;
};
