#pragma once

#include <SupportDefs.h>

#include <sys/stat.h>

class BNode;

namespace norvane {

/// Gives `target` the owner, mode and times of `source`, as a move takes them along.
///
/// The owner and group only where that is allowed: the rights that another group would have by the
/// mode are not given to it then, nor those to act as owner or group. Call it last: writing to the
/// target, or into it, changes its times again.
void TakeRecordAlong(BNode* target, const struct stat& source);

} // namespace norvane
