#pragma once

#include <Messenger.h>
#include <SupportDefs.h>

namespace norvane {

/// The file operations that are running, as quitting needs to know them.
///
/// Quitting never breaks an operation off: it answers the questions that are open and every later
/// one, and the operations come to their ends. Thread: any; holds messengers only, so it waits for
/// nobody.
class Operations
{
public:
    /// Counts one operation for as long as it lives.
    class Running
    {
    public:
        /// `question` leads to the operation's overwrite dialog, `operation` to its window,
        /// `opener` to the window that started it.
        explicit Running(const BMessenger& question, const BMessenger& operation = BMessenger(),
                         const BMessenger& opener = BMessenger());
        ~Running();
        Running(const Running&) = delete;
        Running& operator=(const Running&) = delete;

    private:
        int32 fId;
    };

    static int32 Count();

    /// Has the newest operation that `opener` started ask whether it is to stop.
    static void AskToStop(const BMessenger& opener);

    /// Answers every question that is open, and those still to come, with Cancel.
    static void BeginQuit();
    /// Ends what BeginQuit() began, when the program goes on after all.
    static void Resume();
    static bool IsQuitting();
};

} // namespace norvane
