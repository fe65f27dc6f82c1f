#pragma once

namespace kits {

// How the program ends on its own errors: at once, and with the stack of who made them. An
// exception that nobody catches is such an error, whichever thread it is thrown on: a thread's
// entry catches none, so that the stack is still there.

/// Prints the calling thread's stack to stderr.
void PrintStack();

/// Prints `complaint` and the calling thread's stack to stderr and ends the program.
[[noreturn]] void EndWithStack(const char* complaint);

/// Stands around the call of a hook and ends the program when an exception leaves it.
///
/// Somebody further out may catch what a hook throws (a main() that wraps Run()). He must not get
/// it: what the hook was called under, the looper's lock first of all, would be left as it is.
class HookBoundary
{
public:
    HookBoundary();
    ~HookBoundary();
    HookBoundary(const HookBoundary&) = delete;
    HookBoundary& operator=(const HookBoundary&) = delete;

private:
    const int fExceptions; // in flight when the hook was called: it may be called by a destructor
};

} // namespace kits
