#pragma once

#include <string>
#include <string_view>

// Texts in other letters, one letter for each: what a language writes as two stays as it is. An
// extension of the platform. Texts are UTF-8; bytes that are none are kept. Thread: any.

/// Makes all letters small, or capitals.
std::string to_lower_case(std::string_view text);
std::string to_upper_case(std::string_view text);
/// Makes the first letter of each word a capital and the others small. Letters and digits make
/// words, and an apostrophe between letters does not end one.
std::string to_title_case(std::string_view text);
