#include "MakeArchive/ArchiveFormat.h"

#include <Directory.h>
#include <File.h>
#include <FindDirectory.h>
#include <Path.h>

#include <archive.h>

#include <algorithm>
#include <cstring>

namespace add_ons {

namespace {

/// What the library says to a step: warnings are none of ours.
bool Is(int result)
{
    return result == ARCHIVE_OK || result == ARCHIVE_WARN;
}

bool PrepareTar(archive* writer)
{
    return Is(archive_write_set_format_pax_restricted(writer));
}

/// One that another program would have to be started for is not made.
bool PrepareFilter(int result)
{
    return result == ARCHIVE_OK;
}

const ArchiveFormat kFormats[] = {
    {".tar.gz", "tar.gz: opened everywhere", true,
     [](archive* writer) {
         return PrepareTar(writer) && PrepareFilter(archive_write_add_filter_gzip(writer));
     }},
    {".zip", "zip: for other systems", false,
     [](archive* writer) {
         return Is(archive_write_set_format_zip(writer));
     }},
    {".tar.xz", "tar.xz: small, slow", true,
     [](archive* writer) {
         return PrepareTar(writer) && PrepareFilter(archive_write_add_filter_xz(writer));
     }},
    {".tar.zst", "tar.zst: small, fast", true,
     [](archive* writer) {
         return PrepareTar(writer) && PrepareFilter(archive_write_add_filter_zstd(writer));
     }},
    {".tar", "tar: nothing made smaller", true,
     [](archive* writer) {
         return PrepareTar(writer);
     }},
};

std::vector<ArchiveFormat> FindFormats()
{
    std::vector<ArchiveFormat> found;
    for (const ArchiveFormat& format : kFormats) {
        archive* writer = archive_write_new();
        if (writer != nullptr && format.prepare(writer)) {
            found.push_back(format);
        }
        archive_write_free(writer);
    }
    return found;
}

bool FindChoiceFile(BPath* path, bool makes)
{
    return find_directory(B_USER_SETTINGS_DIRECTORY, path) == B_OK &&
           path->Append("Norvane") == B_OK &&
           (!makes || create_directory(path->Path(), 0700) == B_OK) &&
           path->Append("MakeArchive.pref") == B_OK;
}

} // namespace

const std::vector<ArchiveFormat>& ArchiveFormats()
{
    static const std::vector<ArchiveFormat> sFormats = FindFormats();
    return sFormats;
}

size_t ChosenFormat()
{
    BPath path;
    char text[32] = "";
    if (FindChoiceFile(&path, false)) {
        BFile file(path.Path(), B_READ_ONLY);
        const ssize_t length = file.Read(text, sizeof(text) - 1);
        text[std::max<ssize_t>(length, 0)] = '\0';
    }
    const std::vector<ArchiveFormat>& formats = ArchiveFormats();
    for (size_t format = 0; format < formats.size(); format++) {
        if (std::strcmp(text, formats[format].ending) == 0) {
            return format;
        }
    }
    return 0;
}

void KeepFormat(size_t format)
{
    BPath path;
    if (format != ChosenFormat() && FindChoiceFile(&path, true)) {
        const std::string text = ArchiveFormats()[format].ending;
        BFile file(path.Path(), B_WRITE_ONLY | B_CREATE_FILE | B_ERASE_FILE);
        file.Write(text.data(), text.size());
    }
}

} // namespace add_ons
