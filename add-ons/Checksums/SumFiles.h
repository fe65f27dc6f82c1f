#pragma once

#include <Directory.h>
#include <File.h>
#include <SupportDefs.h>

#include <atomic>
#include <functional>
#include <string>
#include <vector>

namespace checksums {

/// Opens the file at the end of the steps below `base`, without following any link. Errors:
/// B_LINK_LIMIT or B_NOT_A_DIRECTORY for a link, B_BAD_VALUE for what is no regular file ...
status_t OpenBelow(const BDirectory& base, const std::vector<std::string>& steps, BFile* file);

/// What reading a file through has brought.
struct Summed
{
    status_t status = B_OK; // B_CANCELED when it was stopped
    std::string sum;        // empty unless the status is B_OK and the file stayed the same
    bool hasChanged = false;
};

/// Works out the sum of an open file; `read` is told of each piece. A file whose size or time of
/// modification is another afterwards has changed.
Summed SumOf(BFile& file, const std::atomic<bool>& isStopped,
             const std::function<void(int64 bytes)>& read);

/// A regular file below a folder, or a folder that could not be read.
struct FoundFile
{
    std::string path; // from the folder
    int64 bytes = 0;
    status_t status = B_OK;
};

/// Finds all regular files below `top`, a folder of `base`; links are not followed. Stops early
/// when `isStopped`.
void FindFiles(const BDirectory& base, const std::string& top, const std::atomic<bool>& isStopped,
               const std::function<void(const FoundFile& found)>& found);

/// Reads a small file whole. Errors: those of opening; B_NO_MEMORY for one of more than 64 MiB.
status_t ReadWhole(BFile& file, std::string* text);

} // namespace checksums
