// Types ahead into dialogs as fast as the system delivers keys, round after round, and counts what
// went astray.
//
// A key in window A opens dialog B. At once, without waiting, Return is held down and six letters
// are typed. All letters must arrive in B in their order and none in A; the held Return answers
// nothing. A fresh Return answers one dialog, though another follows it at once, and goes on being
// held: its repeats answer nothing and do nothing in A. A letter typed then goes to the view of A
// that had the focus before.
//
// Usage: focus-procedure [ROUNDS]. With QT_QPA_PLATFORM=offscreen the keys are synthetic, else they
// are real ones made by xdotool.

#include "FocusWindows.h"

#include <InterfaceDefs.h>
#include <OS.h>

#include "BesideMain.h"
#include "testing/Driver.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string>

namespace {

using focus::DialogKind;
using focus::Opener;
using focus::Record;
using kits::testing::WaitFor;

constexpr const char* kLetters = "abcdef";
// A question that may interrupt typing takes no answer sooner after a key.
constexpr bigtime_t kQuietTime = 520'000;
constexpr int32 kRepeats = 18;
constexpr bigtime_t kRepeatPause = 33'000;

// One line of xdotool, so that nothing waits between the keys; or the same through the driver.
class Keys
{
public:
    explicit Keys(bool isReal) : fIsReal(isReal) {}

    // With the letters first they fall into the moment in which the focus moves; with Return first
    // its repeats do.
    void OpenAndTypeAhead(bool lettersFirst) const
    {
        if (fIsReal) {
            Run(lettersFirst ? "xdotool key --delay 0 o a b c d e f keydown Return "
                               "sleep 0.6 keyup Return"
                             : "xdotool keydown o keyup o keydown Return sleep 0.6 keyup Return "
                               "key --delay 0 a b c d e f");
            return;
        }
        kits::testing::TypeKey('o');
        if (lettersFirst) {
            kits::testing::TypeText(kLetters);
        }
        HoldReturn();
        if (!lettersFirst) {
            kits::testing::TypeText(kLetters);
        }
    }
    // The letter right behind shows where the focus is then.
    void Answer(bool typesAfterwards) const
    {
        if (fIsReal) {
            Run(typesAfterwards ? "xdotool keydown Return sleep 0.6 keyup Return key --delay 0 z"
                                : "xdotool keydown Return sleep 0.6 keyup Return");
            return;
        }
        HoldReturn();
        if (typesAfterwards) {
            kits::testing::TypeKey('z');
        }
    }

private:
    static void Run(const char* command)
    {
        if (std::system(command) != 0) {
            std::fprintf(stderr, "failed: %s\n", command);
        }
    }
    // As long as a keyboard would, past the time after which dialogs answer.
    static void HoldReturn()
    {
        for (int32 repeat = 0; repeat <= kRepeats; ++repeat) {
            kits::testing::PressKey(B_ENTER);
            snooze(kRepeatPause);
        }
        kits::testing::ReleaseKey(B_ENTER);
    }

    const bool fIsReal;
};

std::string Complaint(const char* what, const std::string& typed)
{
    std::string complaint(what);
    complaint.append(": \"").append(typed).append("\"");
    return complaint;
}

class Procedure
{
public:
    Procedure(Record& record, Opener& opener, const Keys& keys)
        : fRecord(record), fOpener(opener), fKeys(keys)
    {
    }

    // What went wrong in a round, or nothing.
    std::string Play(int32 round)
    {
        const auto kind = static_cast<DialogKind>(round % focus::kDialogKinds);
        const int32 dialogs = 1 + round / focus::kDialogKinds % 2;
        fRecord.Clear();
        fOpener.Expect(kind, dialogs);
        if (!WaitFor([&] { return fRecord.isOpenerActive.load(); })) {
            return "the opener has no focus";
        }
        // Either order for every kind within sixteen rounds, both within any two.
        fKeys.OpenAndTypeAhead(round % 2 == round / (2 * focus::kDialogKinds) % 2);
        std::string failure = LettersArrive();
        for (int32 dialog = 1; failure.empty() && dialog <= dialogs; ++dialog) {
            failure = AnswerOne(kind, dialog, dialogs);
        }
        return failure.empty() ? OpenerIsUntouched() : failure;
    }

private:
    std::string LettersArrive()
    {
        const size_t count = std::strlen(kLetters);
        if (!WaitFor([&] { return fRecord.Get(&Record::inDialog).size() >= count; })) {
            return Complaint("letters are missing", fRecord.Get(&Record::inDialog)) + ", " +
                   Complaint("the opener has", fRecord.Get(&Record::inFocus));
        }
        if (fRecord.answers != 0) {
            return "the held Return answered";
        }
        const std::string typed = fRecord.Get(&Record::inDialog);
        return typed == kLetters ? "" : Complaint("the dialog got", typed);
    }

    std::string AnswerOne(DialogKind kind, int32 dialog, int32 dialogs)
    {
        BWindow* window = kits::testing::WaitForWindow(focus::kDialogTitle);
        if (window == nullptr || !kits::testing::WaitForFocus(window)) {
            return "the dialog has no focus";
        }
        if (!kits::testing::WaitUntilAnswers(window)) {
            return "the dialog never takes answers";
        }
        if (kind == DialogKind::kQuestion) {
            WaitFor([&] { return system_time() > fRecord.lastKeyTime + kQuietTime; });
        }
        fKeys.Answer(dialog == dialogs);
        if (!WaitFor([&] { return fRecord.answers >= dialog; })) {
            return "the fresh Return answered nothing";
        }
        return fRecord.answers == dialog ? "" : "the fresh Return answered twice";
    }

    std::string OpenerIsUntouched()
    {
        if (!WaitFor([&] { return fRecord.isOpenerActive.load(); })) {
            return "the opener did not get the focus back";
        }
        if (!WaitFor([&] { return !fRecord.Get(&Record::inFocus).empty(); })) {
            return "the letter after the dialog is missing";
        }
        kits::testing::SyncServer();
        kits::testing::Sync(&fOpener);
        if (fRecord.Get(&Record::inFocus) != "z" || !fRecord.Get(&Record::inOther).empty()) {
            return Complaint("the opener got", fRecord.Get(&Record::inFocus)) + ", " +
                   Complaint("its other view", fRecord.Get(&Record::inOther));
        }
        if (fRecord.Get(&Record::inDialog) != kLetters) {
            return Complaint("the dialog got", fRecord.Get(&Record::inDialog));
        }
        return fOpener.HasFocusInPlace() ? "" : "the opener's focus has moved";
    }

    Record& fRecord;
    Opener& fOpener;
    const Keys& fKeys;
};

int32 PlayRounds(int32 rounds)
{
    const char* platform = std::getenv("QT_QPA_PLATFORM");
    const Keys keys(platform == nullptr || std::strcmp(platform, "offscreen") != 0);
    Record record;
    int32 failures = 0;
    {
        const kits::testing::HeadlessApplication application;
        auto* opener = new Opener(record); // deletes itself when the application ends
        opener->Show();
        Procedure procedure(record, *opener, keys);
        for (int32 round = 0; round < rounds && failures == 0; ++round) {
            const std::string failure = procedure.Play(round);
            if (!failure.empty()) {
                std::printf("round %d: %s\n", round, failure.c_str());
                ++failures;
            }
        }
    }
    std::printf("%d rounds, %d failed\n", rounds, failures);
    return failures;
}

} // namespace

int main(int argumentCount, char** arguments)
{
    const int32 rounds = argumentCount > 1 ? std::atoi(arguments[1]) : 60;
    return RunBesideMain([rounds] { return PlayRounds(rounds) == 0 ? 0 : 1; });
}
