#include "ftp/transfers/FileUpload.h"

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
#include <File.h>

namespace norvane {

bool UploadContext::Claim(const std::string& name) const
{
    if (sent.insert(ShownPath(server.Path(), name.c_str())).second) {
        return true;
    }
    ui.NoteProblem(name, "another item of this operation has its name");
    return false;
}

bool FileUpload::Run(const LocalFolder& folder, const std::string& name,
                     const ListedEntries& listed)
{
    fName = name;
    // A name may lead somewhere else by now: only a regular file is opened, and a link never
    // followed.
    BFile file;
    if (file.SetToChild(folder.folder, name.c_str(), &fRecord) != B_OK) {
        fUpload.ui.Tell(name, ItemAlert::kCannotOpen);
        return false;
    }
    if (!fUpload.Claim(name)) {
        return false;
    }
    const auto target = listed.find(name);
    return (target == listed.end() || MayReplace(folder, target->second)) && Send(file);
}

bool FileUpload::MayReplace(const LocalFolder& folder, const RemoteEntry& target)
{
    if (target.IsFolder()) {
        return Note(ReasonFor(B_IS_A_DIRECTORY));
    }
    if (!fUpload.ui.CanAsk()) {
        return Note(ReasonFor(B_FILE_EXISTS));
    }
    const char* name = fName.c_str();
    const OverwriteQuestion question{ShownPath(folder.path, name),
                                     ShownPath(fUpload.server.Path(), name), ListedDetails(target),
                                     OverwriteDetails(fRecord.st_size, fRecord.st_mtime)};
    return norvane::MayReplace(fUpload.ui, fName, question,
                               AgeOfRemoteTarget(target, fRecord.st_mtime));
}

bool FileUpload::Send(BFile& file)
{
    fUpload.progress.Begin(fName);
    TransferFile source(file);
    const auto progress = [this](int32 percent, int64 bytes) {
        fUpload.progress.Move(percent, bytes);
    };
    const std::string failure = fUpload.server.Send(source, fRecord.st_size, fName, progress);
    const int64 moved = fUpload.server.BytesMoved();
    const std::string sent =
        std::to_string(moved) + " of " + std::to_string(fRecord.st_size) + " bytes were sent";
    if (source.Status() != B_OK) {
        return Note(std::string(ReasonFor(source.Status())) + ": " + sent);
    }
    if (!failure.empty()) {
        return Note(moved > 0 ? failure + ": " + sent : failure);
    }
    struct stat now;
    if (file.GetStat(&now) != B_OK || !IsUnchanged(fRecord, now) || moved != fRecord.st_size) {
        return Note("it changed while it was being sent");
    }
    return true;
}

bool FileUpload::Note(const std::string& problem)
{
    fUpload.ui.NoteProblem(fName, problem);
    return false;
}

} // namespace norvane
