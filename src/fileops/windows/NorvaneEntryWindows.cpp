#include "fileops/engine/NorvaneEntry.h"
#include "fileops/engine/OperationDesk.h"
#include "fileops/engine/OverwriteDetails.h"
#include "fileops/windows/WindowUI.h"

#include <Alert.h>
#include <Errors.h>

// The calls of an entry that speak of windows. They stand among these, so that the engine needs
// none.

namespace norvane {

namespace {

struct ErrorRow
{
    status_t status;
    const char* message;
    const char* button;
};

constexpr ErrorRow kErrorRows[] = {
    {B_BAD_VALUE, "Initialization for output incorrect.", "OK"},
    {B_BUSY, "The node is busy.", "OK"},
    {B_ENTRY_NOT_FOUND, "Couldn't create file.", "OK"},
    {B_FILE_ERROR, "A file system error prevented the operation.", "OK"},
    {B_FILE_EXISTS, "Strange but this file exists.", "Even Scotty Can't Fix it"},
    {B_LINK_LIMIT, "A cyclic loop has been detected in the file system.", "OK"},
    {B_NAME_TOO_LONG, "The path specified is too long.", "OK"},
    {B_NO_MEMORY, "Out of Memory.", "OK"},
    {B_NO_MORE_FDS, "Too many files are open.", "OK"},
    {B_IS_A_DIRECTORY, "Can't replace a directory with a file.", "OK"},
    {B_NOT_A_DIRECTORY, "A portion of the path is not a directory.", "OK"},
    {B_NOT_ALLOWED, "This volume is read only.", "OK"},
    {B_READ_ONLY_DEVICE, "This volume is read only.", "OK"},
    {B_PERMISSION_DENIED, "Permission denied.", "OK"},
};

constexpr ErrorRow kUnknownError = {B_ERROR, "Unknown Error.", "OK"};

const ErrorRow& RowFor(status_t status)
{
    for (const ErrorRow& row : kErrorRows) {
        if (row.status == status) {
            return row;
        }
    }
    return kUnknownError;
}

} // namespace

bool NorvaneEntry::CopyTo(const char* destDir, CopyWin* copyWin, OverWin* overWin)
{
    WindowUI ui(copyWin, overWin);
    OperationDesk desk(ui, [] {});
    const bool isDone = CopyTo(destDir, desk);
    if (!desk.Summary().empty()) {
        ui.ShowSummary(desk.Summary());
    }
    return isDone;
}

void NorvaneEntry::Overwrite(const char* sourcePath, const char* targetPath, OverWin* overWin)
{
    struct stat source = {};
    struct stat target = {};
    GetStat(&source);
    BEntry(targetPath).GetStat(&target);
    WindowUI ui(nullptr, overWin);
    ui.AskOverwrite({sourcePath, targetPath, OverwriteDetails(target.st_size, target.st_mtime),
                     OverwriteDetails(static_cast<int64>(CopySize()), source.st_mtime)});
}

void NorvaneEntry::ShowError(long status)
{
    const ErrorRow& row = RowFor(static_cast<status_t>(status));
    BAlert* alert = new BAlert("Sorry Charley", row.message, row.button, nullptr, nullptr,
                               B_WIDTH_FROM_LABEL, B_STOP_ALERT);
    alert->Go();
}

} // namespace norvane
