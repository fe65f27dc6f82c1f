#pragma once

#include <SupportDefs.h>

#include <string>
#include <string_view>

namespace norvane {

/// What the bytes of a text stand for. The numbers are those of the menu's messages.
enum class TextEncoding : int32 { kGuessed, kUtf8, kUtf16Le, kUtf16Be, kLatin1 };

/// What they are called, from kUtf8 on.
const char* NameOf(TextEncoding encoding);

/// UTF-16 where a mark says so, UTF-8 where all of it is that, else Latin-1. `isWhole` is false for
/// the beginning of a text, whose end may cut a character.
TextEncoding GuessEncoding(std::string_view bytes, bool isWhole);

/// As UTF-8, without the mark at its beginning; `taken`, unless null, is told how many bytes that
/// is: the last of a UTF-16 text may be half a character. What is none becomes a substitute.
std::string TextOf(std::string_view bytes, TextEncoding encoding, size_t* taken);

} // namespace norvane
