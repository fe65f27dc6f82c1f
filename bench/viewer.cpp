// A file in a viewer. A text: prints the milliseconds until its first page is painted, until all of
// it is there, for going to its end, for wrapping and unwrapping it there, and how many MB the
// program has grown by. An image: the milliseconds until it is painted, stretched to the window,
// and for going between the scale modes, the longer way. viewer FILE viewer --image FILE

#include "MessageCodes.h"
#include "viewer/ViewedText.h"
#include "viewer/ViewerWindow.h"
#include "viewer/iview.h"

#include <Application.h>
#include <Autolock.h>
#include <Message.h>
#include <OS.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <functional>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <utility>

using norvane::TImageView;
using norvane::ViewedText;
using norvane::ViewerWindow;

namespace {

double Megabytes()
{
    std::ifstream file("/proc/self/statm");
    long pages = 0;
    long resident = 0;
    file >> pages >> resident;
    return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

ViewedText* TextOf(ViewerWindow* window)
{
    return dynamic_cast<ViewedText*>(window->FindView("textView"));
}

/// Milliseconds until `isDone`, asked in the window's lock, with what was painted by then.
double Until(ViewerWindow* window, bigtime_t start, const std::function<bool()>& isDone)
{
    for (;;) {
        {
            const BAutolock lock(window);
            if (isDone()) {
                window->Sync();
                return static_cast<double>(system_time() - start) / 1000;
            }
        }
        snooze(500);
    }
}

/// Milliseconds that `work` takes in the window's lock, with what it has painted.
double TimeOf(ViewerWindow* window, const std::function<void()>& work)
{
    const BAutolock lock(window);
    const bigtime_t start = system_time();
    work();
    window->Sync();
    return static_cast<double>(system_time() - start) / 1000;
}

void Measure(const char* path)
{
    struct stat st = {};
    stat(path, &st);
    const double before = Megabytes();
    const bigtime_t start = system_time();
    auto* window = new ViewerWindow(BRect(50, 50, 850, 650), path);
    window->Show();
    const double first = Until(window, start, [&] {
        const ViewedText* text = TextOf(window);
        return text != nullptr && (text->TextLength() > 0 || st.st_size == 0);
    });
    const double whole = Until(window, start, [&] {
        return TextOf(window)->TextLength() >= std::min<off_t>(st.st_size, off_t{512} << 20);
    });
    ViewedText* text = TextOf(window);
    const double end = TimeOf(window, [&] {
        const char key = B_END;
        text->KeyDown(&key, 1);
    });
    const double grown = Megabytes() - before;
    BMessage wrap(norvane::kWrapText);
    const double wrapped = TimeOf(window, [&] { window->MessageReceived(&wrap); });
    const double unwrapped = TimeOf(window, [&] { window->MessageReceived(&wrap); });
    std::printf("%.1f %.1f %.1f %.1f %.1f %.1f\n", first, whole, end, wrapped, unwrapped, grown);
}

void MeasureImage(const char* path)
{
    const bigtime_t start = system_time();
    auto* window = new ViewerWindow(BRect(50, 50, 850, 650), path);
    window->Show();
    const auto image = [window] {
        for (BView* view = window->ChildAt(0); view != nullptr; view = view->NextSibling()) {
            for (BView* inside = view->ChildAt(0); inside != nullptr;
                 inside = inside->NextSibling()) {
                if (auto* found = dynamic_cast<TImageView*>(inside)) {
                    return found;
                }
            }
        }
        return static_cast<TImageView*>(nullptr);
    };
    BMessage stretch(norvane::kStretchToFit);
    bool isStretched = false;
    const double shown = Until(window, start, [&] {
        TImageView* view = image();
        if (view != nullptr && !std::exchange(isStretched, true)) {
            window->MessageReceived(&stretch);
        }
        return view != nullptr && view->HasImage();
    });
    const double fixed = TimeOf(window, [&] { window->MessageReceived(&stretch); });
    const double stretched = TimeOf(window, [&] { window->MessageReceived(&stretch); });
    std::printf("%.1f %.1f\n", shown, std::max(fixed, stretched));
}

} // namespace

int main(int argc, char** argv)
{
    const bool isImage = argc == 3 && std::strcmp(argv[1], "--image") == 0;
    if (argc != 2 && !isImage) {
        return 2;
    }
    BApplication application("application/x-vnd.bench-viewer");
    if (application.InitCheck() != B_OK) {
        return 1;
    }
    std::thread measuring([&] {
        isImage ? MeasureImage(argv[2]) : Measure(argv[1]);
        be_app_messenger.SendMessage(B_QUIT_REQUESTED);
    });
    application.Run();
    measuring.join();
    return 0;
}
