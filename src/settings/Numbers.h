#pragma once

/// The program's own decimal conversions, used for numbers in settings and messages.
namespace norvane {

/// Writes `number` in decimal, with "-" when negative.
/// Units: `text` holds at least 12 bytes.
void itoa(int number, char* text);
/// Writes `number` in decimal, with "-" when negative.
/// Units: `text` holds at least 21 bytes.
void ltoa(long number, char* text);
/// Reverses a string in place.
void reverse(char* text);
/// Reads leading digits: no sign, no blanks; 0 when there are none. Values past the largest int
/// give the largest int.
int atoi(const char* text);

} // namespace norvane
