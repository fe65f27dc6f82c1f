#pragma once

class BNode;

namespace norvane {

/// Gives `target` the preferred application, the type and both icons of `source`, those that it
/// has. What the target's file system cannot keep is left out without a word.
void CopyFileInfo(BNode* source, BNode* target);

} // namespace norvane
