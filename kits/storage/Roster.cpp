#include <Roster.h>

#include "DesktopChoice.h"
#include "DesktopPrograms.h"
#include "FixedPrograms.h"
#include "ProgramFile.h"
#include "ProgramStart.h"

#include <Entry.h>
#include <Mime.h>
#include <Node.h>
#include <NodeInfo.h>
#include <Path.h>

#include <string>
#include <vector>

// Here and not with the application kit, which knows nothing of files.

namespace {

using Paths = std::vector<std::string>;

/// What a ref leads to.
struct Target
{
    entry_ref ref;
    struct stat record = {};
    std::string path;
};

status_t Follow(const entry_ref& ref, Target* target)
{
    BEntry entry(&ref, true);
    BPath path;
    status_t status = entry.InitCheck();
    if (status == B_OK) {
        status = entry.GetStat(&target->record);
    }
    if ((status == B_ENTRY_NOT_FOUND || status == B_NOT_A_DIRECTORY) && BEntry(&ref).IsSymLink()) {
        return B_LAUNCH_FAILED_NO_RESOLVE_LINK;
    }
    if (status == B_OK) {
        status = entry.GetRef(&target->ref);
    }
    if (status == B_OK) {
        status = entry.GetPath(&path);
    }
    if (status == B_OK) {
        target->path = path.Path();
    }
    return status;
}

/// Whether the name says that it is something else than a program.
bool IsNamedAsDocument(const char* name)
{
    BMimeType type;
    if (BMimeType::GuessMimeType(name, &type) != B_OK) {
        return false;
    }
    for (const char* undecided : {B_FILE_MIME_TYPE, B_APP_MIME_TYPE, "application/x-pie-executable",
                                  "application/vnd.appimage", "application/x-iso9660-appimage"}) {
        if (type == undecided) {
            return false;
        }
    }
    return true;
}

status_t OpenDocument(const Target& document, const Paths& paths, team_id* team)
{
    BNode node(&document.ref);
    const BNodeInfo info(&node);
    char stored[B_MIME_TYPE_LENGTH];
    status_t status = B_LAUNCH_FAILED_NO_PREFERRED_APP;
    if (info.GetType(stored) == B_OK) {
        status = kits::OpenByType(stored, paths, team);
    }
    BMimeType type;
    if (status == B_LAUNCH_FAILED_NO_PREFERRED_APP &&
        BMimeType::GuessMimeType(&document.ref, &type) == B_OK) {
        status = kits::OpenByType(type.Type(), paths, team);
    }
    // What is empty can become a text.
    if (status == B_LAUNCH_FAILED_NO_PREFERRED_APP && document.record.st_size == 0) {
        status = kits::OpenByType("text/plain", paths, team);
    }
    return status;
}

status_t OpenTarget(const Target& target, const Paths& arguments, team_id* team)
{
    Paths paths{target.path};
    paths.insert(paths.end(), arguments.begin(), arguments.end());
    if (S_ISDIR(target.record.st_mode)) {
        return kits::OpenInFileManager(paths, team);
    }
    if (!S_ISREG(target.record.st_mode)) {
        return B_BAD_TYPE;
    }
    if (kits::IsProgramFile(target.path) && !IsNamedAsDocument(target.ref.name)) {
        const std::string folder = target.path.substr(0, target.path.rfind('/') + 1);
        const kits::ProgramOrder order{
            .path = target.path, .arguments = arguments, .folder = folder};
        return kits::StartProgram(order, team);
    }
    return OpenDocument(target, paths, team);
}

status_t LaunchWith(const entry_ref* ref, const Paths& arguments, team_id* team)
{
    if (ref == nullptr || ref->name == nullptr) {
        return B_BAD_VALUE;
    }
    switch (kits::FixedProgramOf(*ref)) {
    case kits::FixedProgram::kTextEditor:
        return kits::OpenInTextEditor(arguments, team);
    case kits::FixedProgram::kFileManager:
        return kits::OpenInFileManager(arguments, team);
    case kits::FixedProgram::kNone:
        break;
    }
    Target target;
    const status_t status = Follow(*ref, &target);
    return status == B_OK ? OpenTarget(target, arguments, team) : status;
}

bool TakeArguments(int argc, const char* const* argv, Paths* arguments)
{
    if (argc < 0 || (argc > 0 && argv == nullptr)) {
        return false;
    }
    for (int index = 0; index < argc; ++index) {
        if (argv[index] == nullptr) {
            return false;
        }
        arguments->emplace_back(argv[index]);
    }
    return true;
}

} // namespace

status_t BRoster::Launch(const entry_ref* ref, const BMessage* initialMessage, team_id* team) const
{
    return initialMessage == nullptr ? LaunchWith(ref, {}, team) : status_t(B_BAD_VALUE);
}

status_t BRoster::Launch(const entry_ref* ref, int argc, const char* const* argv,
                         team_id* team) const
{
    Paths arguments;
    return TakeArguments(argc, argv, &arguments) ? LaunchWith(ref, arguments, team)
                                                 : status_t(B_BAD_VALUE);
}

status_t BRoster::Launch(const char* signature, int argc, const char* const* argv,
                         team_id* team) const
{
    Paths arguments;
    if (!BMimeType::IsValid(signature) || !TakeArguments(argc, argv, &arguments)) {
        return B_BAD_VALUE;
    }
    const std::string program = kits::ProgramOf(signature);
    return program.empty() ? status_t(B_LAUNCH_FAILED_APP_NOT_FOUND)
                           : kits::OpenByProgram(program, arguments, team);
}
