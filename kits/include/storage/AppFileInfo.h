#pragma once

#include <NodeInfo.h>

class BFile;

/// What a program's file says of the program.
///
/// Ownership: borrows the file, which outlives it. Thread: as the file.
class BAppFileInfo : public BNodeInfo
{
public:
    /// Has no file, or `file` as SetTo() does.
    BAppFileInfo() = default;
    explicit BAppFileInfo(BFile* file);

    /// Takes an open file. Errors: B_BAD_VALUE for null and for one that is not open.
    status_t SetTo(BFile* file);

    /// The program's signature, a MIME type. `signature` holds at least B_MIME_TYPE_LENGTH bytes.
    /// The file of the terminal that load_image() would start has that of the platform's,
    /// "application/x-vnd.be-shel". Errors: B_NO_INIT; B_ENTRY_NOT_FOUND when none is stored.
    status_t GetSignature(char* signature) const;
    /// Stores the signature; null removes it. Errors: B_BAD_VALUE for one that is no MIME type;
    /// B_UNSUPPORTED where the file system has no attributes; B_PERMISSION_DENIED ...
    status_t SetSignature(const char* signature);

private:
    bool IsTerminal() const;

    BFile* fFile = nullptr;
};
