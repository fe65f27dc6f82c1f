#include "fileops/engine/ReplaceTarget.h"

#include "fileops/engine/MadeTargets.h"
#include "fileops/engine/PatientWork.h"

#include <Directory.h>
#include <Errors.h>

namespace norvane {

namespace {

// Whoever replaces it again each time it is put back is left alone in the end.
constexpr int kMostExchanges = 4;

} // namespace

bool HasSameContents(const struct stat& before, const struct stat& now)
{
    return before.st_size == now.st_size && before.st_mtim.tv_sec == now.st_mtim.tv_sec &&
           before.st_mtim.tv_nsec == now.st_mtim.tv_nsec;
}

bool IsUnchanged(const struct stat& before, const struct stat& now)
{
    return NodeOf(before) == NodeOf(now) && (before.st_mode & S_IFMT) == (now.st_mode & S_IFMT) &&
           HasSameContents(before, now);
}

ReplaceTarget::ReplaceTarget(BDirectory& folder, std::string name)
    : fFolder(folder), fName(std::move(name))
{
}

ReplaceTarget::~ReplaceTarget()
{
    struct stat record;
    const bool isAnothers = fIsBeside && fFolder.GetStatFor(fBeside.Name(), &record) == B_OK &&
                            NodeOf(record) != NodeOf(fRecord);
    if (fIsBeside && !isAnothers) {
        fFolder.RemoveChildFile(fBeside.Name());
    }
}

status_t ReplaceTarget::Create(mode_t mode)
{
    fFile = std::make_shared<BFile>();
    status_t status = fFolder.CreateNewFile(fBeside.Name(), mode, fFile.get());
    fIsBeside = status == B_OK;
    if (status == B_OK) {
        status = fFile->GetStat(&fRecord);
    }
    if (status != B_OK && fIsBeside) {
        fFolder.RemoveChildFile(fBeside.Name());
        fIsBeside = false;
    }
    return status;
}

status_t ReplaceTarget::Finish(OperationUI& ui)
{
    status_t status = DoPatiently(ui, [file = fFile] { return file->Sync(); });
    if (status == B_OK) {
        status = fNode.SetTo(&fFolder, fBeside.Name());
    }
    struct stat record;
    if (status == B_OK) {
        status = fNode.GetStat(&record);
    }
    if (status == B_OK && NodeOf(record) != NodeOf(fRecord)) {
        status = B_ENTRY_NOT_FOUND;
    }
    return status == B_OK ? fFile->Close() : status;
}

ReplaceTarget::Outcome ReplaceTarget::Fail(status_t status)
{
    fStatus = status;
    return Outcome::kFailed;
}

ReplaceTarget::Outcome ReplaceTarget::Replace(const struct stat& agreed)
{
    status_t status = fFolder.GetStatFor(fName.c_str(), &fFound);
    if (status == B_OK && !IsUnchanged(agreed, fFound)) {
        return Outcome::kChanged;
    }
    if (status == B_OK) {
        status = fFolder.ExchangeChildren(fBeside.Name(), fName.c_str());
    }
    if (status == B_OK) {
        return LookAtExchanged(agreed);
    }
    if (status == B_UNSUPPORTED) {
        return ReplaceUnseen();
    }
    if (status != B_ENTRY_NOT_FOUND) {
        return Fail(status);
    }
    status = fFolder.RenameChild(fBeside.Name(), fName.c_str());
    if (status == B_OK) {
        fIsBeside = false;
        return Outcome::kMade;
    }
    if (status == B_FILE_EXISTS && fFolder.GetStatFor(fName.c_str(), &fFound) == B_OK) {
        return Outcome::kChanged;
    }
    return Fail(status);
}

/// Where names cannot be exchanged the look before is all there is.
ReplaceTarget::Outcome ReplaceTarget::ReplaceUnseen()
{
    const status_t status = fFolder.ReplaceChild(fBeside.Name(), fName.c_str());
    if (status != B_OK) {
        return Fail(status);
    }
    fIsBeside = false;
    return Outcome::kReplaced;
}

ReplaceTarget::Outcome ReplaceTarget::LookAtExchanged(const struct stat& agreed)
{
    const status_t status = fFolder.GetStatFor(fBeside.Name(), &fFound);
    if (status == B_OK && IsUnchanged(agreed, fFound)) {
        // The old file, and nobody knows the name that it has now.
        fIsBeside = false;
        fStatus = fFolder.RemoveChildFile(fBeside.Name());
        return Outcome::kReplaced;
    }
    PutBack();
    return status == B_OK ? Outcome::kChanged : Fail(status);
}

/// Exchanges the two again, until the new file is the one beside.
void ReplaceTarget::PutBack()
{
    for (int attempt = 0; attempt < kMostExchanges; attempt++) {
        struct stat beside;
        status_t status = fFolder.ExchangeChildren(fBeside.Name(), fName.c_str());
        if (status == B_ENTRY_NOT_FOUND) {
            // Somebody removed the new file: its place is free for what was there.
            status = fFolder.RenameChild(fBeside.Name(), fName.c_str());
            fIsBeside = status != B_OK;
            if (status == B_OK) {
                return;
            }
        }
        if (status == B_OK && fFolder.GetStatFor(fBeside.Name(), &beside) == B_OK &&
            NodeOf(beside) == NodeOf(fRecord)) {
            return;
        }
        // Somebody replaced the new file meanwhile, and what has its place came last.
    }
    fStatus = B_BUSY;
}

} // namespace norvane
