#pragma once

#include <optional>
#include <string>
#include <string_view>

class BMessage;

namespace kits {

// Files as other programs of the desktop name them: "file:" addresses, a line each (RFC 8089, RFC
// 2483). Names are bytes; what is no plain letter, digit or one of "-._~/" is escaped.

/// The address of an absolute path.
std::string AddressOfPath(std::string_view path);

/// The absolute path of an address on this machine; none for other machines, other kinds of
/// addresses, and a path that holds a NUL.
std::optional<std::string> PathOfAddress(std::string_view address);

/// The addresses of all "refs" of `message`, each line ended by CR LF; entries whose folder cannot
/// be found are left out. Asks the disk where a folder is.
std::string AddressesOfRefs(const BMessage& message);

/// Adds the local files of such a list to `message` as "refs", in their order. Comments, empty
/// lines, and what is not on this machine or has no folder are passed over. Asks the disk: call it
/// on a thread that may wait.
void AddRefsOfAddresses(std::string_view list, BMessage* message);

} // namespace kits
