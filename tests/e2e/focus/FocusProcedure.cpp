// Types ahead into dialogs as fast as the system delivers keys, round after round, and counts what
// went astray.
//
// A key in window A opens dialog B. At once, without waiting, Return is held down and six letters
// are typed. All letters must arrive in B in their order and none in A; the held Return answers
// nothing. A fresh Return answers B once, and goes on being held: its repeats do nothing in A.
//
// Usage: focus-procedure [ROUNDS]. With QT_QPA_PLATFORM=offscreen the keys are synthetic, else they
// are real ones made by xdotool.

#include <AppDefs.h>
#include <Application.h>
#include <InterfaceDefs.h>
#include <Looper.h>
#include <Message.h>
#include <OS.h>

#include "server/FrontImage.h"
#include "server/WindowServer.h"
#include "testing/Driver.h"

#include <QImage>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <mutex>
#include <string>

namespace {

using kits::testing::WaitFor;

constexpr const char* kLetters = "abcdef";
constexpr bigtime_t kAnswerDelay = 200'000;
constexpr uint32 kClose = 'Clos';

/// A looper with a native window that keeps what is typed into it.
class KeyWindow : public BLooper
{
public:
    KeyWindow(const char* title, BRect frame) : BLooper(title)
    {
        fShape.title = std::string(title);
        fShape.frame = frame;
        fLink = std::make_unique<kits::WindowLink>(this, fShape);
        Run();
    }

    void Show(const kits::ShowRequest& request)
    {
        QImage canvas(QSize(300, 200) * static_cast<double>(fLink->Scale()), QImage::Format_RGB32);
        canvas.setDevicePixelRatio(static_cast<double>(fLink->Scale()));
        canvas.fill(Qt::white);
        fLink->Front().Update(canvas, QRegion(canvas.rect()));
        fLink->Show(request);
    }
    int32 Token() const { return fLink->Token(); }
    bool IsActive() const { return fIsActive; }
    bool TakesAnswers() const
    {
        const bigtime_t shown = fLink->Front().firstPresentTime;
        return shown != 0 && system_time() > shown + kAnswerDelay;
    }
    std::string Typed() const
    {
        std::lock_guard<std::mutex> lock(fTypedLock);
        return fTyped;
    }

    // BLooper
    void MessageReceived(BMessage* message) override
    {
        bool isActive = false;
        switch (message->what) {
        case B_WINDOW_ACTIVATED:
            message->FindBool("active", &isActive);
            fIsActive = isActive;
            break;
        case B_KEY_DOWN:
            KeyDown(*message);
            break;
        case kClose:
            fLink.reset();
            Quit();
            break;
        default:
            BLooper::MessageReceived(message);
        }
    }

protected:
    virtual void KeyDown(const BMessage& message) = 0;

    static bool IsKey(const BMessage& message, const char* bytes)
    {
        const char* typed = "";
        message.FindString("bytes", &typed);
        return std::strcmp(typed, bytes) == 0;
    }
    void Keep(const BMessage& message)
    {
        const char* typed = "";
        message.FindString("bytes", &typed);
        std::lock_guard<std::mutex> lock(fTypedLock);
        fTyped += typed;
    }

    std::unique_ptr<kits::WindowLink> fLink;

private:
    kits::WindowShape fShape;
    std::atomic<bool> fIsActive{false};
    mutable std::mutex fTypedLock;
    std::string fTyped; // guarded by fTypedLock
};

/// Closes itself at the first Return that may answer.
class Dialog : public KeyWindow
{
public:
    Dialog(const char* title, BRect frame, std::atomic<int32>& answers)
        : KeyWindow(title, frame), fAnswers(answers)
    {
    }

protected:
    void KeyDown(const BMessage& message) override
    {
        if (!IsKey(message, "\n")) {
            Keep(message);
            return;
        }
        if (!message.HasBool("kits:early") && !message.HasInt32("be:key_repeat") &&
            TakesAnswers()) {
            ++fAnswers;
            PostMessage(kClose);
        }
    }

private:
    std::atomic<int32>& fAnswers;
};

/// Opens a dialog at "o"; any other key is one too many.
class Opener : public KeyWindow
{
public:
    Opener() : KeyWindow("opener", BRect(40, 60, 339, 259)) {}

    std::atomic<Dialog*> dialog{nullptr};
    std::atomic<int32> answers{0};
    std::atomic<bool> opensModal{false};

protected:
    void KeyDown(const BMessage& message) override
    {
        if (!IsKey(message, "o") || message.HasInt32("be:key_repeat")) {
            Keep(message);
            return;
        }
        kits::ShowRequest request;
        request.opener = Token();
        request.isModal = opensModal;
        auto* opened = new Dialog("dialog", BRect(80, 100, 379, 299), answers);
        opened->Show(request);
        dialog = opened;
    }
};

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
        kits::testing::HoldKey(B_ENTER, 10);
        if (!lettersFirst) {
            kits::testing::TypeText(kLetters);
        }
    }
    void Answer() const
    {
        if (fIsReal) {
            Run("xdotool keydown Return sleep 0.6 keyup Return");
            return;
        }
        kits::testing::HoldKey(B_ENTER, 10);
    }

private:
    static void Run(const char* command)
    {
        if (std::system(command) != 0) {
            std::fprintf(stderr, "failed: %s\n", command);
        }
    }

    const bool fIsReal;
};

std::string Complaint(const char* what, const std::string& typed)
{
    std::string complaint(what);
    complaint.append(": \"").append(typed).append("\"");
    return complaint;
}

// What went wrong in a round, or nothing.
std::string PlayRound(Opener& opener, const Keys& keys, int32 round)
{
    opener.dialog = nullptr;
    opener.answers = 0;
    opener.opensModal = round % 2 == 1;
    if (!WaitFor([&] { return opener.IsActive(); })) {
        return "the opener has no focus";
    }
    keys.OpenAndTypeAhead(round % 4 < 2);
    if (!WaitFor([&] { return opener.dialog != nullptr; })) {
        return "no dialog came";
    }
    Dialog* dialog = opener.dialog;
    if (!WaitFor([&] { return opener.answers > 0 || dialog->Typed().size() >= 6; })) {
        return Complaint("letters are missing", dialog->Typed());
    }
    if (opener.answers > 0) {
        return "the held Return answered";
    }
    if (dialog->Typed() != kLetters) {
        return Complaint("the dialog got", dialog->Typed());
    }
    if (!WaitFor([&] { return dialog->IsActive() && dialog->TakesAnswers(); })) {
        return "the dialog has no focus";
    }
    keys.Answer();
    if (!WaitFor([&] { return opener.answers > 0 && opener.IsActive(); })) {
        return "the fresh Return answered nothing";
    }
    kits::testing::SyncServer();
    if (opener.answers != 1) {
        return "the fresh Return answered twice";
    }
    return opener.Typed().empty() ? "" : Complaint("the opener got", opener.Typed());
}

int32 PlayRounds(int32 rounds)
{
    const char* platform = std::getenv("QT_QPA_PLATFORM");
    const Keys keys(platform == nullptr || std::strcmp(platform, "offscreen") != 0);
    auto* opener = new Opener;
    opener->Show({});
    int32 failures = 0;
    for (int32 round = 0; round < rounds && failures == 0; ++round) {
        const std::string failure = PlayRound(*opener, keys, round);
        if (!failure.empty()) {
            std::printf("round %d: %s\n", round, failure.c_str());
            ++failures;
        }
    }
    std::printf("%d rounds, %d failed\n", rounds, failures);
    opener->PostMessage(kClose);
    return failures;
}

} // namespace

int main(int argumentCount, char** arguments)
{
    const int32 rounds = argumentCount > 1 ? std::atoi(arguments[1]) : 60;
    int32 failures = 0;
    {
        const kits::testing::HeadlessApplication application;
        failures = PlayRounds(rounds);
    }
    return failures == 0 ? 0 : 1;
}
