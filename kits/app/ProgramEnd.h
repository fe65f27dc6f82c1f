#pragma once

namespace kits {

/// The program's end that no window of it was asked for: a signal, or the end of the session.
///
/// Nobody may be there to answer: from the request on, alerts go without an answer, those that are
/// open and those still to come. Thread: any.
class ProgramEnd
{
public:
    static void Request();
    static bool IsRequested();
    /// The program goes on after all, or another one begins.
    static void Forget();
};

} // namespace kits
