#include "ftp/transfers/FileDownload.h"

#include "fileops/engine/OperationContext.h"
#include "fileops/engine/OperationUI.h"
#include "fileops/engine/OverwriteDetails.h"
#include "fileops/engine/ProblemList.h"
#include "fileops/engine/ReplaceTarget.h"
#include "ftp/transfers/Server.h"
#include "ftp/transfers/TransferClash.h"
#include "ftp/transfers/TransferFile.h"
#include "ftp/transfers/TransferProgress.h"

#include <Directory.h>
#include <Errors.h>

#include <algorithm>
#include <cstdlib>

namespace norvane {

namespace {

constexpr mode_t kNewFileMode = 0666; // less the umask: nobody knows whom the server's was open to
constexpr mode_t kOwnMode = 0600;

int32 PercentOf(int64 part, int64 whole)
{
    return static_cast<int32>(std::min<int64>(100, part * 100 / whole));
}

} // namespace

bool IsLocalName(const std::string& name)
{
    return !name.empty() && name != "." && name != ".." && name.find('/') == std::string::npos &&
           name.find('\0') == std::string::npos;
}

FileDownload::FileDownload(const DownloadContext& context, const CopyPlace& target)
    : fContext(context.operation), fUI(context.operation.ui), fServer(context.server),
      fProgress(context.progress), fItem(context.item), fTarget(target)
{
}

bool FileDownload::Run(const RemoteEntry& source)
{
    fSource = source;
    fName = source.commandName;
    if (!IsLocalName(fName)) {
        fName = source.name;
        return Note("it cannot have this name here");
    }
    if (!Look() || (fHasExisting && !MayReplaceExisting())) {
        return false;
    }
    ReplaceTarget place(fTarget.folder, fName);
    const bool isNew = !fHasExisting || !S_ISREG(fExisting.st_mode);
    const status_t created = place.Create(isNew ? kNewFileMode : kOwnMode);
    if (created != B_OK) {
        return Note(ReasonFor(created));
    }
    if (Receive(place)) {
        return PutInPlace(place);
    }
    if (!fHasExisting && !fUI.IsStopped()) {
        KeepPart(place);
    }
    return false;
}

/// Finds what is there; false, and told, when that cannot be.
bool FileDownload::Look()
{
    const status_t status = fTarget.folder.GetStatFor(fName.c_str(), &fExisting);
    fHasExisting = status == B_OK;
    if (status != B_OK && status != B_ENTRY_NOT_FOUND) {
        return Note(ReasonFor(status));
    }
    return true;
}

bool FileDownload::MayReplaceExisting()
{
    if (fContext.made.Has(NodeOf(fExisting)) ||
        fContext.made.HasName(fTarget.path, fName.c_str())) {
        return Note("another item of this operation has its name");
    }
    if (S_ISDIR(fExisting.st_mode)) {
        return Note(ReasonFor(B_IS_A_DIRECTORY));
    }
    if (!fUI.CanAsk()) {
        return Note(ReasonFor(B_FILE_EXISTS));
    }
    const OverwriteQuestion question{
        ShownPath(fServer.Path(), fName.c_str()), fTarget.PathOf(fName.c_str()),
        OverwriteDetails(fExisting.st_size, fExisting.st_mtime), ListedDetails(fSource)};
    fAccess = AccessOf(fExisting);
    return MayReplace(fUI, fName, question, AgeOfLocalTarget(fExisting.st_mtime, fSource));
}

/// Who may use the file that lies there.
BNodeAccess FileDownload::AccessOf(const struct stat& existing) const
{
    const BNode node(&fTarget.folder, fName.c_str());
    struct stat record;
    const bool isIt = S_ISREG(existing.st_mode) && node.GetStat(&record) == B_OK &&
                      NodeOf(record) == NodeOf(existing);
    return isIt ? BNodeAccess(node) : BNodeAccess();
}

/// How long the file is, as the listing says; 0 when that is not known, as of what a link leads to.
int64 FileDownload::ListedSize() const
{
    return fSource.IsLink() ? 0 : std::strtoll(fSource.size.c_str(), nullptr, 10);
}

/// Has the server send the file; false, and told, when not all of it is there.
bool FileDownload::Receive(ReplaceTarget& place)
{
    fProgress.Begin(fName);
    TransferFile file(*place.File());
    // Few servers say how long a file is that they begin to send; most listings did.
    const auto progress = [this, listed = ListedSize()](int32 percent, int64 bytes) {
        const bool isKnown = percent > 0 || listed <= 0;
        fProgress.Move(isKnown ? percent : PercentOf(bytes, listed), bytes);
    };
    const std::string failure = fServer.Receive(file, fName, progress);
    // What a file keeps in memory shows its error only now.
    const ssize_t flushed = place.File()->Write(nullptr, 0);
    status_t written = file.Status();
    if (written == B_OK && flushed < 0) {
        written = static_cast<status_t>(flushed);
    }
    const std::string problem = CheckArrived(place, written, failure);
    if (fUI.IsStopped()) {
        return false;
    }
    if (written == B_DEVICE_FULL) {
        fUI.Tell(fName, ItemAlert::kVolumeFull);
        return false;
    }
    return problem.empty() || Note(problem);
}

/// What is wrong with what arrived; "" when nothing is.
std::string FileDownload::CheckArrived(ReplaceTarget& place, status_t written,
                                       const std::string& failure)
{
    off_t size = 0;
    const status_t known = place.File()->GetSize(&size);
    const int64 listed = ListedSize();
    const bool isShort = size < listed;
    fHasFailedHere = written != B_OK || known != B_OK || size != fServer.BytesMoved();
    if (failure.empty() && !fHasFailedHere && !isShort) {
        return "";
    }
    std::string arrived = std::to_string(size);
    arrived += listed > 0 ? " of " + fSource.size + " bytes arrived" : " bytes arrived";
    if (fHasFailedHere && failure.empty() && written == B_OK) {
        return "not every byte could be kept: " + arrived;
    }
    std::string reason = written != B_OK ? ReasonFor(written) : failure;
    if (size == 0 && !reason.empty()) {
        return reason;
    }
    return reason.empty() ? "only " + arrived : reason + ": " + arrived;
}

bool FileDownload::PutInPlace(ReplaceTarget& place)
{
    using Outcome = ReplaceTarget::Outcome;
    if (fHasExisting) {
        // The old bytes may go only when the new ones are where no loss of power takes them.
        const status_t synced = place.Finish(fUI);
        if (synced != B_OK) {
            return synced != B_CANCELED && Note(ReasonFor(synced));
        }
        fIsFinished = true;
    }
    Outcome outcome = place.Replace(fExisting);
    while (outcome == Outcome::kChanged) {
        if (!AskAgain(place)) {
            return false;
        }
        outcome = place.Replace(fExisting);
    }
    if (outcome == Outcome::kFailed) {
        return Note(ReasonFor(place.Status()));
    }
    if (place.Status() != B_OK) {
        Note("what it replaced is still beside it, under the name of a temporary file");
    }
    const bool isMade = outcome == Outcome::kMade;
    NoteMade(place, isMade ? Change::Kind::kMade : Change::Kind::kReplaced);
    return GiveAccess(place);
}

/// Something else is there than what was agreed to.
bool FileDownload::AskAgain(ReplaceTarget& place)
{
    fExisting = place.Found();
    fHasExisting = true;
    if (fUI.IsStopped() || !MayReplaceExisting()) {
        return false;
    }
    if (!fIsFinished) {
        const status_t synced = place.Finish(fUI);
        fIsFinished = synced == B_OK;
        return fIsFinished || (synced != B_CANCELED && Note(ReasonFor(synced)));
    }
    return true;
}

/// A replaced file keeps what it was open to. Closes one that was not closed before.
bool FileDownload::GiveAccess(ReplaceTarget& place)
{
    if (!fIsFinished) {
        const status_t closed = place.File()->Close();
        return closed == B_OK || Note(ReasonFor(closed));
    }
    if (S_ISREG(fExisting.st_mode) &&
        fContext.access.FinishReplacement(&place.Node(), fAccess) != B_OK) {
        Note("who may use it could not be set");
    }
    return true;
}

/// What was cut off is there to be looked at, unless something else has the name by now.
void FileDownload::KeepPart(ReplaceTarget& place)
{
    off_t size = 0;
    if (place.File()->GetSize(&size) != B_OK || size == 0) {
        return;
    }
    if (place.Replace(fExisting) == ReplaceTarget::Outcome::kMade) {
        NoteMade(place, Change::Kind::kMade);
    }
}

void FileDownload::NoteMade(ReplaceTarget& place, Change::Kind kind)
{
    const node_ref node = NodeOf(place.Record());
    fContext.made.Add(node);
    if (!fTarget.hasStableNodes) {
        fContext.made.AddName(fTarget.path, fName.c_str());
    }
    if (!fTarget.isNew) {
        fContext.journal.Note(fItem, {kind, fTarget.node, fName, node});
    }
}

bool FileDownload::Note(const std::string& problem)
{
    fUI.NoteProblem(fName, problem);
    return false;
}

} // namespace norvane
