#pragma once

#include <SupportDefs.h>

class BBitmap;
struct entry_ref;

/// Loads pictures in whatever format the system can read.
///
/// They come as they are to be looked at: of several pictures the first one, turned upright where
/// the file says how it was taken. A picture of more than 512 MB is refused before it is unpacked.
/// Only regular files are opened, and links to them. Thread: any; reading waits for the disk.
/// Ownership: a bitmap is returned to the caller.
class BTranslationUtils
{
public:
    BTranslationUtils() = delete;

    /// The picture in a file, in B_RGB32, or in B_RGBA32 where some of it may be transparent; null
    /// when there is none to be had.
    static BBitmap* GetBitmap(const char* path);
    static BBitmap* GetBitmap(const entry_ref* ref);
    /// An extension of the platform: the same, and tells in `status` why there is none.
    /// Errors: B_NO_TRANSLATOR for a format that nothing here reads; B_ILLEGAL_DATA for a damaged
    /// file; B_NO_MEMORY for a picture that is too large; B_BAD_VALUE for what is no regular file;
    /// B_NO_INIT without a running application; those of opening and reading.
    static BBitmap* GetBitmap(const char* path, status_t* status);
};
