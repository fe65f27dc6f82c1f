#pragma once

#include <string>
#include <vector>

namespace norvane {

/// What a person is asked before these entries are deleted: up to twenty are named, more are
/// counted.
std::string DeletionQuestion(const std::vector<std::string>& names, bool isForGood);

} // namespace norvane
