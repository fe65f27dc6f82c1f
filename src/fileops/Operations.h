#pragma once

#include <Messenger.h>
#include <SupportDefs.h>

namespace norvane {

/// Posted to an overwrite question when the program is about to quit: it is then answered with
/// Cancel.
constexpr uint32 kAnswerForQuit = 'AnsQ';

/// The file operations that are running, as quitting needs to know them.
///
/// Quitting never breaks an operation off: it answers the questions that are open, lets the
/// operations come to their ends, and is told when the last one has. Thread: any; holds messengers
/// only, so it waits for nobody.
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

    /// Starts quitting: open questions are answered with Cancel, and so is every later one.
    /// When operations are running, `message` is posted to `whenDone` after the last has ended, and
    /// true is returned.
    static bool WaitForEnd(const BMessenger& whenDone, uint32 message);
    static bool IsQuitting();
    /// Ends quitting, for the case that it was not gone through with.
    static void Resume();
};

} // namespace norvane
