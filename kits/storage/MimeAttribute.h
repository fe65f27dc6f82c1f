#pragma once

#include <SupportDefs.h>

class BNode;

namespace kits {

/// Reads an attribute that holds a MIME type; `type` has room for B_MIME_TYPE_LENGTH bytes. Errors:
/// B_NO_INIT without a node, B_ENTRY_NOT_FOUND when there is none, B_BAD_VALUE for a text that is
/// no type, and for null.
[[nodiscard]] status_t ReadMimeAttribute(const BNode* node, const char* attribute, char* type);

/// Writes such an attribute, or removes it for null. Errors: B_NO_INIT, B_BAD_VALUE for a text that
/// is no type, B_UNSUPPORTED ...
[[nodiscard]] status_t WriteMimeAttribute(BNode* node, const char* attribute, const char* type);

} // namespace kits
