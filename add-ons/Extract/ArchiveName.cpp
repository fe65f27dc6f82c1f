#include "Extract/ArchiveName.h"

#include <algorithm>
#include <cctype>

namespace add_ons {

namespace {

constexpr const char* kPackings[] = {".gz", ".bz2", ".xz", ".zst", ".lz4", ".lzma", ".lz", ".Z"};
constexpr const char* kKinds[] = {".tar", ".tgz", ".tbz2", ".tbz", ".txz", ".tzst", ".zip",
                                  ".7z",  ".rar", ".cpio", ".iso", ".jar", ".cab",  ".lha",
                                  ".lzh", ".ar",  ".deb",  ".xar", ".cbz", ".cbr",  ".epub"};

template<size_t count>
void TakeEnding(std::string* name, const char* const (&endings)[count])
{
    std::string low = *name;
    std::transform(low.begin(), low.end(), low.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    for (const char* known : endings) {
        std::string ending = known;
        std::transform(ending.begin(), ending.end(), ending.begin(), [](unsigned char letter) {
            return static_cast<char>(std::tolower(letter));
        });
        if (low.size() > ending.size() && low.ends_with(ending)) {
            name->resize(name->size() - ending.size());
            return;
        }
    }
}

} // namespace

std::string NameWithoutEnding(const std::string& name)
{
    std::string plain = name;
    TakeEnding(&plain, kPackings);
    TakeEnding(&plain, kKinds);
    return plain;
}

} // namespace add_ons
