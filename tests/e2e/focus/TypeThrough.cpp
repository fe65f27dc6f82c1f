// Types on while windows that only show progress come and go, and counts what went astray.
//
// A key in the main window opens such a window, which closes itself a moment later. Meanwhile the
// alphabet is typed; every letter must arrive in the main window, in its order: while the progress
// window is being shown, while it is there, while it goes, and afterwards.
//
// Usage: type-through [ROUNDS]. With QT_QPA_PLATFORM=offscreen the keys are synthetic, else they
// are real ones made by xdotool.

#include <AppDefs.h>
#include <InterfaceDefs.h>
#include <Messenger.h>
#include <OS.h>
#include <View.h>
#include <Window.h>

#include "BesideMain.h"
#include "testing/Driver.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <string>
#include <thread>

namespace {

using kits::testing::WaitFor;

constexpr const char* kLetters = "abcdefghijklmnpqrstuvwxyz"; // "o" opens

/// Letters in the order of their arrival. Thread: any.
class Arrivals
{
public:
    void Clear() { Set(""); }
    void Add(const char* bytes)
    {
        std::lock_guard lock(fMutex);
        fLetters += bytes;
    }
    std::string Get() const
    {
        std::lock_guard lock(fMutex);
        return fLetters;
    }

private:
    void Set(const char* letters)
    {
        std::lock_guard lock(fMutex);
        fLetters = letters;
    }

    mutable std::mutex fMutex; // guards fLetters
    std::string fLetters;
};

/// Shows progress for as long as it was told.
class Progress : public BWindow
{
public:
    Progress(BWindow* opener, bigtime_t time)
        : BWindow(BRect(100, 120, 339, 199), "progress", B_TITLED_WINDOW, 0), fTime(time)
    {
        SetOpener(opener);
        SetTakesKeys(false);
    }

    /// Shows it; it ends by itself.
    void Play()
    {
        Show();
        std::thread([target = BMessenger(nullptr, this), time = fTime] {
            snooze(time);
            target.SendMessage(B_QUIT_REQUESTED);
        }).detach();
    }

private:
    const bigtime_t fTime;
};

class KeyView : public BView
{
public:
    KeyView(BRect frame, Arrivals& arrivals)
        : BView(frame, "keys", B_FOLLOW_ALL, B_WILL_DRAW | B_NAVIGABLE), fArrivals(arrivals)
    {
    }

    /// How long the next progress window stays. Thread: any.
    void SetTime(bigtime_t time) { fTime = time; }

    // BView
    void KeyDown(const char* bytes, int32) override
    {
        if (std::strcmp(bytes, "o") == 0) {
            (new Progress(Window(), fTime))->Play(); // deletes itself
        } else {
            fArrivals.Add(bytes);
        }
    }

private:
    Arrivals& fArrivals;
    std::atomic<bigtime_t> fTime{0};
};

bool TypeAll(bool isReal, int32 pauseMs)
{
    if (!isReal) {
        kits::testing::TypeKey('o');
        kits::testing::TypeText(kLetters);
        return true;
    }
    std::string command = "xdotool key --delay " + std::to_string(pauseMs) + " o";
    for (const char* letter = kLetters; *letter != '\0'; ++letter) {
        command += std::string(" ") + *letter;
    }
    return std::system(command.c_str()) == 0;
}

int32 PlayRounds(int32 rounds)
{
    const char* platform = std::getenv("QT_QPA_PLATFORM");
    const bool isReal = platform == nullptr || std::strcmp(platform, "offscreen") != 0;
    const kits::testing::HeadlessApplication application;
    Arrivals arrivals;
    int32 failures = 0;
    auto* window = new BWindow(BRect(40, 60, 439, 359), "main", B_TITLED_WINDOW, 0);
    auto* keys = new KeyView(window->Bounds(), arrivals);
    window->AddChild(keys); // adopted
    keys->MakeFocus(true);
    window->Show(); // deletes itself when the application ends
    if (!kits::testing::WaitForFocus(window)) {
        std::puts("the main window has no focus");
        return 1;
    }
    for (int32 round = 0; round < rounds; ++round) {
        arrivals.Clear();
        keys->SetTime(round * 7 % 50 * 1000);
        if (!TypeAll(isReal, round % 5)) {
            std::puts("cannot type");
            return 1;
        }
        WaitFor([&] { return arrivals.Get().size() >= std::strlen(kLetters); }, 2'000'000);
        if (!kits::testing::WaitForNoWindow("progress")) {
            std::puts("the progress window stays");
            return 1;
        }
        const std::string arrived = arrivals.Get();
        if (arrived != kLetters) {
            std::printf("round %d: arrived \"%s\"\n", round, arrived.c_str());
            ++failures;
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
