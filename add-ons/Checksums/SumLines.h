#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace checksums {

/// A file's sum, as one line says it.
struct SumLine
{
    std::string name; // any bytes
    std::string sum;  // small hexadecimal digits
};

/// What a file of sums says.
struct SumFile
{
    std::vector<SumLine> lines;
    size_t others = 0; // lines that are neither sums nor empty nor comments
};

/// Writes a line as sha256sum does, with its break: names with breaks or backslashes are escaped.
std::string LineOf(const SumLine& line);

/// Reads a line of sha256sum, of its --tag, or of the BSDs, without its break.
std::optional<SumLine> ReadLine(std::string_view line);

/// Reads all lines; lines may end with a carriage return when all do.
SumFile ReadSums(std::string_view text);

/// Whether files of that name hold sums: "SHA256SUMS" is in it, or its ending is ".sha256".
bool IsSumFileName(std::string_view name);

/// The sum that a person has pasted: digits in any letters with blanks between them, or a line as
/// above. Empty when it is none.
std::string ReadPastedSum(std::string_view text);

/// The steps of a name below the folder of its file of sums; nothing when it leads out of there,
/// or nowhere.
std::optional<std::vector<std::string>> StepsBelow(std::string_view name);

} // namespace checksums
