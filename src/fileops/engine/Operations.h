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
        /// `question` leads to the operation's overwrite dialog.
        explicit Running(const BMessenger& question);
        ~Running();
        Running(const Running&) = delete;
        Running& operator=(const Running&) = delete;

    private:
        int32 fId;
    };

    static int32 Count();

    /// Answers every question that is open, and those still to come, with Cancel.
    static void BeginQuit();
    /// Ends what BeginQuit() began, when the program goes on after all.
    static void Resume();
    static bool IsQuitting();
};

} // namespace norvane
