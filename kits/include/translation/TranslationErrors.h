#pragma once

#include <Errors.h>

/// Of the translation kit.
constexpr int B_NO_TRANSLATOR = B_TRANSLATION_ERROR_BASE; // nothing here reads that format
constexpr int B_ILLEGAL_DATA =
    B_TRANSLATION_ERROR_BASE + 1; // the format is known, the data damaged
