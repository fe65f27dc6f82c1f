#pragma once

#include <string>

class BEntry;

namespace norvane {

class OperationUI;

/// Gives an entry that was put aside under a hidden name its own name back, or one like it where
/// that was taken meanwhile; tells when it cannot be given any.
void PutBack(BEntry& item, const std::string& name, OperationUI& ui);

} // namespace norvane
