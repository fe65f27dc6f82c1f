// Preferences that are applied to ten panes of a folder. Prints the milliseconds until all panes
// are painted: with larger letters, with sizes in other units, with rows sorted by names downwards,
// without names that begin with a dot, and with dates in another form, for which folders are read
// again. preferences FOLDER ROWS, as many as the folder has

#include "MessageCodes.h"
#include "app/NorvaneWindow.h"
#include "panes/DirPane.h"
#include "panes/DirView.h"
#include "settings/Preferences.h"

#include <Application.h>
#include <Autolock.h>
#include <Message.h>
#include <OS.h>

#include <cstdio>
#include <functional>
#include <string>
#include <thread>
#include <vector>

using norvane::DirListItem;
using norvane::DirView;
using norvane::NorvaneWindow;
using norvane::Preferences;

namespace {

constexpr int kPanes = 10;
constexpr int32 kNameColumn = 1;
constexpr int32 kDateColumn = 3;

class Bench
{
public:
    explicit Bench(NorvaneWindow* window) : fWindow(window) {}

    void Run(int32 rows)
    {
        Wait([rows](DirView& list) { return list.CountItems() >= rows; });
        Preferences preferences;
        preferences.fontSize = 18;
        const double font = Apply(preferences);
        preferences.showsReadableSizes = true;
        const double units = Apply(preferences);
        ClickName();
        preferences.sortsByColumns = true;
        const double sorting = Apply(preferences);
        preferences.hidesDotNames = true;
        const double dots = Apply(preferences);
        preferences.dateFormat = "%Y";
        const bigtime_t start = system_time();
        Apply(preferences);
        Wait([](DirView& list) {
            const DirListItem* last = list.RowAt(list.CountItems() - 1);
            return last != nullptr && std::string(last->Text(kDateColumn)).size() == 4;
        });
        std::printf("%.1f %.1f %.1f %.1f %.1f\n", font, units, sorting, dots, Since(start));
    }

private:
    static double Since(bigtime_t start)
    {
        return static_cast<double>(system_time() - start) / 1000;
    }

    double Apply(const Preferences& preferences)
    {
        BMessage read(norvane::kPreferencesRead);
        preferences.AddTo(&read);
        const BAutolock lock(fWindow);
        const bigtime_t start = system_time();
        fWindow->MessageReceived(&read);
        fWindow->Sync();
        return Since(start);
    }

    void ClickName()
    {
        const BAutolock lock(fWindow);
        for (int32 pane = 0; pane < fWindow->CountPanes(); pane++) {
            fWindow->PaneAt(pane)->GetDirView()->SetSortKey(kNameColumn);
        }
        fWindow->Sync();
    }

    /// Until it holds for all panes, and is painted.
    void Wait(const std::function<bool(DirView&)>& holds)
    {
        for (;;) {
            {
                const BAutolock lock(fWindow);
                bool all = true;
                for (int32 pane = 0; pane < fWindow->CountPanes(); pane++) {
                    all = all && holds(*fWindow->PaneAt(pane)->GetDirView());
                }
                if (all) {
                    fWindow->Sync();
                    return;
                }
            }
            snooze(500);
        }
    }

    NorvaneWindow* const fWindow;
};

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        return 2;
    }
    BApplication application("application/x-vnd.bench-preferences");
    if (application.InitCheck() != B_OK) {
        return 1;
    }
    const int32 rows = std::stoi(argv[2]);
    auto* window = new NorvaneWindow(BRect(20, 40, 1200, 680), true,
                                     std::vector<std::string>(kPanes, argv[1]));
    window->Show();
    std::thread measuring([=] {
        Bench(window).Run(rows);
        be_app_messenger.SendMessage(B_QUIT_REQUESTED);
    });
    application.Run();
    measuring.join();
    return 0;
}
