#pragma once

#include <SupportDefs.h>

namespace norvane {

/// The first character of a UTF-8 text that ends with a zero, and steps behind it; 0 at the end. A
/// byte that is no UTF-8 is a character of its own, beyond all others.
uint32 TakeCharacter(const char** text);
/// Whether it stands for a byte that is no UTF-8.
bool IsStrayByte(uint32 character);
/// The same for all letters that differ in their case alone, in whatever script.
uint32 FoldedCase(uint32 character);
bool IsCapital(uint32 character);
bool IsLetterOrDigit(uint32 character);
/// Whether there is a capital letter in a text: what is typed without one means both cases.
bool HasCapital(const char* text);

} // namespace norvane
