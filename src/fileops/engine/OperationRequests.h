#pragma once

#include <memory>

class BMessage;

namespace norvane {

class Measurement;
class Operation;
class OperationUI;

/// The operation that `request` asks for, in the folder at `path`; null when it asks for none.
///
/// What may happen to the items, for good or not, is in the request. Ownership: the caller's;
/// borrows `ui` for its own life. Thread: the operation's.
std::unique_ptr<Operation> MakeOperation(const BMessage& request, const char* path,
                                         OperationUI& ui);

/// Begins to measure what `request` speaks of, for Operation::TakeMeasurement(); null when that is
/// no list of local entries. Returns at once. Thread: any.
std::unique_ptr<Measurement> StartMeasuring(const BMessage& request);

} // namespace norvane
