#pragma once

#include "fileops/engine/ProblemList.h"
#include "properties/ModeChange.h"
#include "properties/PropertiesReading.h"

#include <Messenger.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

namespace norvane {

/// What is to be changed.
struct ModeOrder
{
    std::shared_ptr<const std::vector<Subject>> subjects; // none but those shown
    ModeChange change;
    bool goesInside = false; // also what is in the folders
};

/// How far it is.
struct ModeProgress
{
    int64 changed = 0; // entries
    bool isOver = false;
    bool wasStopped = false; // before its end
    ProblemList problems;    // what keeps its permissions
};

/// Changes permissions, on a thread that nobody waits for: the bits that a person touched, of each
/// entry by itself.
///
/// An entry that is not the one shown any more stays as it is, and so does what a link leads to or
/// what is mounted in a folder. A folder gets what is given to it before what is in it, and loses
/// what is taken after that. Thread: any.
class ModeWork
{
public:
    /// Begins; `window` is sent kPropertiesNews when Look() has something new, a few times a second
    /// at most. Null without a thread to be had.
    static std::shared_ptr<ModeWork> Start(const ModeOrder& order, const BMessenger& window);

    ModeWork(const ModeOrder& order, const BMessenger& window) : fOrder(order), fWindow(window) {}
    ModeWork(const ModeWork&) = delete;
    ModeWork& operator=(const ModeWork&) = delete;

    /// Changes it all. Called once.
    void Run();
    /// What is not changed yet stays as it is.
    void Stop() { fIsStopped = true; }
    ModeProgress Look();

private:
    class Changer;
    struct Modes
    {
        mode_t from;
        mode_t to;
    };
    /// Of a folder that is given something and loses something: the first of both.
    enum class Step { kWhole, kFirst };

    void ChangeChosen(const Subject& subject);
    void ChangeInside(const Subject& subject);
    /// Why the node keeps its permissions; empty when it does not.
    std::string Set(BStatable& node, Modes modes, Step step);
    bool SetOrFail(BStatable& node, Modes modes, Step step, const char* name);
    void Fail(const std::string& name, const std::string& reason);
    void TellSoon();

    const ModeOrder fOrder;
    const BMessenger fWindow;
    std::atomic<bool> fIsStopped{false};
    bigtime_t fToldAt = 0; // of the thread that works
    std::mutex fMutex;     // guards all below
    ModeProgress fProgress;
    bool fIsTold = false;
};

} // namespace norvane
