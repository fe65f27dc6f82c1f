#include "ProgramFile.h"

#include "SystemCalls.h"

#include <elf.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
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

} // namespace

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
