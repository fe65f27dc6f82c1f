#pragma once

#include <string>

namespace norvane {

class clsFTP;

/// Why a command failed, as the second half of "name: reason". A server's own words are cut.
/// Thread: the client's.
std::string ServerReason(const clsFTP& client, int code);

} // namespace norvane
