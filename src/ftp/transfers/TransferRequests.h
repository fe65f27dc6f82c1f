#pragma once

#include <memory>

class BMessage;

namespace norvane {

class Operation;
class OperationUI;

/// The operation that `request` asks for: an upload of its "refs", or a download into the folder at
/// `path`; null when it asks for neither. An upload shows `path` as its target.
///
/// Ownership: the caller's; borrows `ui` for its own life. Thread: the operation's.
std::unique_ptr<Operation> MakeTransfer(const BMessage& request, const char* path, OperationUI& ui);

} // namespace norvane
