#include "FixedPrograms.h"

#include <cstring>
#include <unistd.h>

namespace kits {

namespace {

struct Known
{
    const char* path;
    FixedProgram program;
};

constexpr Known kPrograms[] = {
    {"/boot/apps/StyledEdit", FixedProgram::kTextEditor},
    {"/boot/beos/system/Tracker", FixedProgram::kFileManager},
};

const char* NameIn(const Known& known)
{
    return std::strrchr(known.path, '/') + 1;
}

/// The number of the folder that lies on no disk.
ino_t FolderOf(const Known& known)
{
    return static_cast<ino_t>(known.program);
}

} // namespace

bool PlaceOfFixedProgram(const char* path, Place* place)
{
    for (const Known& known : kPrograms) {
        if (std::strcmp(path, known.path) == 0 && ::access(path, F_OK) != 0) {
            place->folder = FolderTable::Get().FindNowhere(FolderOf(known));
            place->name = NameIn(known);
            return true;
        }
    }
    return false;
}

FixedProgram FixedProgramOf(const entry_ref& ref)
{
    for (const Known& known : kPrograms) {
        if (ref.device == 0 && ref.directory == FolderOf(known) && ref.name != nullptr &&
            std::strcmp(ref.name, NameIn(known)) == 0) {
            return known.program;
        }
    }
    return FixedProgram::kNone;
}

} // namespace kits
