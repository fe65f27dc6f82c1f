#pragma once

#include <string>
#include <vector>

struct archive;

namespace add_ons {

/// A form in which archives are made.
struct ArchiveFormat
{
    const char* ending; // with its dot; it also names the format where a choice is kept
    const char* label;  // for people
    bool hasHardLinks;
    /// Prepares a writer; false when this library cannot make such archives.
    bool (*prepare)(archive* writer);
};

/// All that can be made here, the first for those who chose none.
const std::vector<ArchiveFormat>& ArchiveFormats();

/// The place of the format that was chosen last. Reads a small file.
size_t ChosenFormat();
/// Keeps a choice for the next time; nothing is told when that fails.
void KeepFormat(size_t format);

} // namespace add_ons
