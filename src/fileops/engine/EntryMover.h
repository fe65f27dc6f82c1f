#pragma once

#include "fileops/engine/CopyPlace.h"

#include <SupportDefs.h>

#include <sys/stat.h>

#include <cstddef>

namespace norvane {

struct OperationContext;

/// Moves entries within their volume by giving them another place there: at once, however large
/// they are, and with all that they are.
///
/// Thread: the operation's.
class EntryMover
{
public:
    /// `item` is its number in the journal. Ownership: borrows `context` for its own life.
    EntryMover(OperationContext& context, size_t item) : fContext(context), fItem(item) {}

    /// Moves an entry to where nothing is. Errors: B_FILE_EXISTS when something has the name there;
    /// others when it cannot be moved so, as to another volume, or into itself. It is where it was
    /// then, and leads where it led.
    [[nodiscard]] status_t Move(const CopyStep& step);

private:
    [[nodiscard]] status_t KeepLinks(const CopyStep& step, const struct stat& record);
    void Note(const CopyStep& step, const struct stat& record);

    OperationContext& fContext;
    const size_t fItem;
};

} // namespace norvane
