#include "panes/NamePart.h"

#include "panes/Letters.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>

namespace norvane {

namespace {

/// Of a byte of a name: a million names are looked through between two keys.
uint32 FoldedByte(char byte)
{
    const auto value = static_cast<unsigned char>(byte);
    return value >= 'A' && value <= 'Z' ? value + ('a' - 'A') : value;
}

} // namespace

NamePart::NamePart(std::string text) : fText(std::move(text))
{
    if (HasCapital(fText.c_str())) {
        return;
    }
    for (const char* rest = fText.c_str(); *rest != '\0';) {
        fFolded.push_back(FoldedCase(TakeCharacter(&rest)));
    }
    fIsAscii = std::all_of(fFolded.begin(), fFolded.end(), [](uint32 c) { return c < 0x80; });
}

bool NamePart::IsIn(const char* name) const
{
    if (fFolded.empty()) {
        return std::strstr(name, fText.c_str()) != nullptr;
    }
    return fIsAscii ? IsFoldedAsciiIn(name) : IsFoldedIn(name);
}

bool NamePart::IsFoldedAsciiIn(const char* name) const
{
    for (; *name != '\0'; name++) {
        if (FoldedByte(*name) != fFolded.front()) {
            continue;
        }
        std::size_t same = 1;
        while (same < fFolded.size() && FoldedByte(name[same]) == fFolded[same]) {
            same++; // the end of the name is none of the text's characters
        }
        if (same == fFolded.size()) {
            return true;
        }
    }
    return false;
}

bool NamePart::IsFoldedIn(const char* name) const
{
    while (*name != '\0') {
        const char* rest = name;
        std::size_t same = 0;
        while (same < fFolded.size() && FoldedCase(TakeCharacter(&rest)) == fFolded[same]) {
            same++;
        }
        if (same == fFolded.size()) {
            return true;
        }
        TakeCharacter(&name);
    }
    return false;
}

bool NamePart::IsNarrowerThan(const NamePart& other) const
{
    return fText.find(other.fText) != std::string::npos;
}

} // namespace norvane
