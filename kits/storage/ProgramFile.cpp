#include "ProgramFile.h"

#include "SystemCalls.h"
#include "support/ErrnoTable.h"

#include <elf.h>
#include <fcntl.h>
#include <link.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>

namespace kits {

namespace {

/// Reads a record at a place of an open file; false when the file ends before.
template<class Record>
bool ReadRecord(int file, uint64_t position, Record* record)
{
    return position < INT64_MAX &&
           sys::ReadAt(file, record, sizeof(Record), static_cast<off_t>(position)) ==
               static_cast<ssize_t>(sizeof(Record));
}

/// Whether the table of a file that can be loaded anywhere calls it a program.
template<class Segment, class Dynamic>
bool IsMarkedAsProgram(int file, const Segment& table)
{
    for (uint64_t place = 0; place + sizeof(Dynamic) <= table.p_filesz; place += sizeof(Dynamic)) {
        Dynamic entry;
        if (!ReadRecord(file, table.p_offset + place, &entry) || entry.d_tag == DT_NULL) {
            return false;
        }
        if (entry.d_tag == DT_FLAGS_1) {
            return (entry.d_un.d_val & DF_1_PIE) != 0;
        }
    }
    return false;
}

/// Programs that can be loaded anywhere have the form of libraries. They name what loads them, or
/// say themselves what they are.
template<class Header, class Segment, class Dynamic>
bool IsRunnable(int file)
{
    Header header;
    if (!ReadRecord(file, 0, &header) || header.e_phentsize != sizeof(Segment)) {
        return false;
    }
    for (unsigned index = 0; header.e_type == ET_DYN && index < header.e_phnum; ++index) {
        Segment segment;
        if (!ReadRecord(file, header.e_phoff + uint64_t{index} * sizeof(Segment), &segment)) {
            return false;
        }
        if (segment.p_type == PT_INTERP ||
            (segment.p_type == PT_DYNAMIC && IsMarkedAsProgram<Segment, Dynamic>(file, segment))) {
            return true;
        }
    }
    return header.e_type == ET_EXEC;
}

/// Opens a regular file without waiting for anyone.
status_t OpenRegular(const std::string& path, UniqueFd* file, struct stat* st)
{
    status_t status = sys::StatPath(path.c_str(), st);
    if (status == B_OK && !S_ISREG(st->st_mode)) {
        status = B_NOT_AN_EXECUTABLE;
    }
    if (status != B_OK) {
        return status;
    }
    // Something else may be there by now; what was opened counts.
    *file = UniqueFd(sys::OpenAt(sys::kWorkingDirectory, path.c_str(), O_RDONLY | O_NONBLOCK));
    if (!file->IsOpen()) {
        return file->Get();
    }
    status = sys::Stat(file->Get(), st);
    return status == B_OK && !S_ISREG(st->st_mode) ? status_t(B_NOT_AN_EXECUTABLE) : status;
}

#if defined(__x86_64__)
constexpr int kMachine = EM_X86_64;
#elif defined(__aarch64__)
constexpr int kMachine = EM_AARCH64;
#else
constexpr int kMachine = EM_NONE; // which one this is, only loading will tell
#endif

bool IsWholeLibrary(int file, off_t size)
{
    ElfW(Ehdr) header;
    constexpr int kClass = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;
    if (!ReadRecord(file, 0, &header) || std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 ||
        header.e_ident[EI_CLASS] != kClass || header.e_type != ET_DYN ||
        header.e_phentsize != sizeof(ElfW(Phdr)) ||
        (kMachine != EM_NONE && header.e_machine != kMachine)) {
        return false;
    }
    const auto bytes = static_cast<uint64_t>(size);
    bool hasTable = false;
    for (unsigned index = 0; index < header.e_phnum; ++index) {
        ElfW(Phdr) segment;
        if (!ReadRecord(file, header.e_phoff + uint64_t{index} * sizeof(segment), &segment)) {
            return false;
        }
        if ((segment.p_type == PT_LOAD || segment.p_type == PT_DYNAMIC) &&
            (segment.p_offset > bytes || segment.p_filesz > bytes - segment.p_offset)) {
            return false;
        }
        hasTable = hasTable || segment.p_type == PT_DYNAMIC;
    }
    return hasTable;
}

} // namespace

status_t CheckLibraryFile(const std::string& path)
{
    UniqueFd file;
    struct stat st;
    const status_t status = OpenRegular(path, &file, &st);
    if (status == B_OK && !IsWholeLibrary(file.Get(), st.st_size)) {
        return B_NOT_AN_EXECUTABLE;
    }
    return status;
}

status_t CheckRunnable(const std::string& path)
{
    struct stat st;
    status_t status = sys::StatPath(path.c_str(), &st);
    if (status != B_OK) {
        return status;
    }
    if (!S_ISREG(st.st_mode)) {
        return B_NOT_AN_EXECUTABLE;
    }
    if (::faccessat(AT_FDCWD, path.c_str(), X_OK, AT_EACCESS) != 0) {
        return StatusFromErrno(errno);
    }
    // One that may be run, but not read, is seen when it is run.
    UniqueFd file;
    char mark[SELFMAG];
    status = OpenRegular(path, &file, &st);
    if (status == B_OK &&
        (!ReadRecord(file.Get(), 0, &mark) ||
         (std::memcmp(mark, ELFMAG, SELFMAG) != 0 && std::memcmp(mark, "#!", 2) != 0))) {
        return B_NOT_AN_EXECUTABLE;
    }
    return B_OK;
}

bool IsProgramFile(const std::string& path)
{
    if (::faccessat(AT_FDCWD, path.c_str(), X_OK, AT_EACCESS) != 0) {
        return false;
    }
    const UniqueFd file(sys::OpenAt(sys::kWorkingDirectory, path.c_str(), O_RDONLY | O_NONBLOCK));
    unsigned char mark[EI_NIDENT];
    if (!file.IsOpen() || !ReadRecord(file.Get(), 0, &mark) ||
        std::memcmp(mark, ELFMAG, SELFMAG) != 0) {
        return false;
    }
    return mark[EI_CLASS] == ELFCLASS64 ? IsRunnable<Elf64_Ehdr, Elf64_Phdr, Elf64_Dyn>(file.Get())
                                        : IsRunnable<Elf32_Ehdr, Elf32_Phdr, Elf32_Dyn>(file.Get());
}

bool HasInterpreter(const std::string& path)
{
    const UniqueFd file(sys::OpenAt(sys::kWorkingDirectory, path.c_str(), O_RDONLY | O_NONBLOCK));
    char line[256]; // as much as the system reads of it
    const ssize_t length = file.IsOpen() ? sys::ReadAt(file.Get(), line, sizeof(line), 0) : 0;
    const std::string_view text(line, length > 0 ? static_cast<size_t>(length) : 0);
    if (!text.starts_with("#!")) {
        return true;
    }
    const size_t start = text.find_first_not_of(" \t", 2);
    if (start == std::string_view::npos) {
        return true;
    }
    const size_t end = std::min(text.find_first_of(" \t\n", start), text.size());
    return ::access(std::string(text.substr(start, end - start)).c_str(), X_OK) == 0;
}

} // namespace kits
