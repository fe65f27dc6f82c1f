#pragma once

#include <Message.h>
#include <Messenger.h>

#include <string>
#include <vector>

namespace norvane {

/// What an add-on is to work on.
struct AddOnTask
{
    std::string name;   // as its menu shows it
    std::string folder; // the pane's; where it shows none (hits), that of the first entry counts
    BMessage selected;  // "refs"; none: nothing is selected
};

/// The add-ons that are at work, each on a thread of its own.
///
/// An add-on is code of others in this program: what it throws is caught, a crash of it ends all.
/// Thread: any.
class AddOnRun
{
public:
    /// Loads the add-on and has it work. `window` is sent a kAddOnEnded with the string "name" at
    /// the end; with the bool "unselected" when nothing was selected, and with the string "reason"
    /// when it failed. An add-on that is not there, cannot be loaded or does not export what it
    /// has to does nothing. False when there is no thread to be had.
    static bool Start(AddOnTask task, const BMessenger& window);

    /// The names of those at work.
    static std::vector<std::string> AtWork();
    /// Has the application sent a kAddOnsEnded once none is at work any more, after this call: at
    /// once when there is none.
    static void TellWhenEnded();
};

} // namespace norvane
