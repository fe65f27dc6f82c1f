// Changes a folder at random while a list follows it, and compares the two. The script `run` beside
// this tells of the options and of what is judged.

#include "Expected.h"
#include "ListOfRows.h"
#include "StoppedWatcher.h"
#include "TempTree.h"

#include <OS.h>
#include <testing/Driver.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int kSteps = 200;
constexpr int kProcesses = 3;
constexpr bigtime_t kPatience = 1'000'000; // after which rows have to be right

enum class Manner : uint8_t { kPrompt, kLate, kAtOnce, kSeveral, kLost };
constexpr const char* kManners[] = {"prompt", "late", "at once", "several", "lost"};
constexpr int kMannerCount = 5;

struct Arguments
{
    int runs = 2000;
    int first = 1;
    bool isVerbose = false;
};

std::string Joined(const std::vector<std::string>& lines, const char* between)
{
    std::string text;
    for (const std::string& line : lines) {
        text += (text.empty() ? "" : between) + line;
    }
    return text;
}

/// One folder, one list, 200 steps.
class Run
{
public:
    explicit Run(int number)
        : fManner(static_cast<Manner>(number % kMannerCount)),
          fIsFiltered(number / kMannerCount % 2 == 1), fDice(static_cast<uint32_t>(number)),
          fFolder(fTree.Path("shown")), fOutside(fTree.Path("outside"))
    {
        fTree.MakeFolder("shown");
        fTree.MakeFolder("outside");
        for (int i = 0; i < 12; i++) {
            ::Do(fDice.NextStep(), fFolder, fOutside);
        }
    }

    /// What is wrong; empty when nothing is.
    std::string Go()
    {
        ListOfRows list(fFolder);
        Expected expected(fFolder);
        Choose(&list, &expected);
        switch (fManner) {
        case Manner::kSeveral:
            DoAsSeveral(&list);
            break;
        case Manner::kLost: {
            const StoppedWatcher stopped;
            if (!stopped.IsStopped()) {
                return "there is no watcher to stop";
            }
            FillKernelQueue();
            DoAlone(&list, &expected);
            break;
        }
        default:
            DoAlone(&list, &expected);
        }
        if (!list.HandleAll()) {
            return "the last entry was never listed";
        }
        list.Activate();
        expected.Activate();
        // What changes often is told every tenth of a second.
        const bigtime_t end = system_time() + kPatience;
        std::string fault = JudgeShown(&list, &expected);
        while (!fault.empty() && system_time() < end) {
            snooze(10'000);
            list.Handle();
            fault = JudgeShown(&list, &expected);
        }
        return fault;
    }

    std::string Steps() const { return Joined(fSteps, "\n"); }

private:
    void Choose(ListOfRows* list, Expected* expected)
    {
        auto& rows = expected->Rows();
        for (size_t i = 0; i < rows.size(); i++) {
            if (fDice.Below(3) == 0) {
                rows[i].isMarked = true;
                list->Mark(static_cast<int>(i));
            }
        }
        if (!rows.empty()) {
            const int selected = fDice.Below(static_cast<int>(rows.size()));
            rows[static_cast<size_t>(selected)].isSelected = true;
            list->Select(selected);
        }
    }

    /// A person types a text that some names hold, or ends that.
    void ChangeFilter(ListOfRows* list)
    {
        if (!fIsFiltered || fDice.Below(4) != 0) {
            return;
        }
        const std::vector<std::string> texts = {"e", "en", "d", "B", "k", "a", ""};
        const auto text = static_cast<size_t>(fDice.Below(8));
        if (text == texts.size()) {
            list->EndFilter();
            fSteps.emplace_back("filter ends");
        } else {
            list->Filter(texts[text]);
            fSteps.push_back("filter " + texts[text]);
        }
    }

    void DoAlone(ListOfRows* list, Expected* expected)
    {
        Step last;
        for (int i = 0; i < kSteps; i++) {
            const Step step = fDice.NextStep();
            // There and back cannot be told from an exchange by what the kernel says.
            if (last.act == Act::kRename && step.act == Act::kRename && last.name == step.second &&
                last.second == step.name) {
                continue;
            }
            if (!expected->Do(step, fOutside)) {
                continue;
            }
            last = step;
            fSteps.push_back(step.Text());
            ChangeFilter(list);
            if (fManner == Manner::kPrompt && !list->HandleAll()) {
                return;
            }
            if (fManner == Manner::kLate && fDice.Below(5) == 0) {
                usleep(static_cast<useconds_t>(fDice.Below(2000)));
                list->Handle();
            }
        }
    }

    void DoAsSeveral(ListOfRows* list)
    {
        pid_t processes[kProcesses];
        for (int i = 0; i < kProcesses; i++) {
            const auto seed = static_cast<uint32_t>(fDice.Below(1 << 30));
            processes[i] = fork();
            if (processes[i] == 0) {
                Dice dice(seed);
                for (int step = 0; step < kSteps / kProcesses; step++) {
                    ::Do(dice.NextStep(), fFolder, fOutside);
                }
                _exit(0);
            }
        }
        for (const pid_t process : processes) {
            usleep(static_cast<useconds_t>(fDice.Below(1000)));
            ChangeFilter(list);
            list->Handle();
            ChangeFilter(list);
            waitpid(process, nullptr, 0);
        }
    }

    /// By writing to two files in turn: equal notices in a row would count as one.
    void FillKernelQueue()
    {
        int limit = 0;
        if (FILE* file = std::fopen("/proc/sys/fs/inotify/max_queued_events", "r")) {
            if (std::fscanf(file, "%d", &limit) != 1) {
                limit = 0;
            }
            std::fclose(file);
        }
        const int files[] = {
            open((fFolder + "/one").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600),
            open((fFolder + "/two").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600)};
        for (int i = 0; i < limit + 10; i++) {
            if (pwrite(files[i % 2], "x", 1, 0) != 1) {
                break;
            }
        }
        close(files[0]);
        close(files[1]);
    }

    /// First what the filter shows, then, without it, all rows.
    std::string JudgeShown(ListOfRows* list, Expected* expected) const
    {
        const std::string text = list->FilterText();
        const std::string fault = JudgeLines(*list, text);
        if (!fault.empty()) {
            return "filter \"" + text + "\": " + fault;
        }
        list->EndFilter();
        return Judge(*list, expected);
    }

    std::string JudgeLines(const ListOfRows& list, const std::string& text) const
    {
        const std::vector<std::string> fresh = FreshLines(fFolder, text);
        if (list.Lines() == fresh) {
            return {};
        }
        return "the rows are\n" + Joined(list.Lines(), "\n") + "\nbut should be\n" +
               Joined(fresh, "\n");
    }

    std::string Judge(const ListOfRows& list, Expected* expected) const
    {
        const std::string fault = JudgeLines(list, "");
        if (!fault.empty()) {
            return fault;
        }
        if (fManner == Manner::kSeveral || fManner == Manner::kLost) {
            return {};
        }
        std::vector<std::string> names;
        std::vector<std::string> marked;
        std::string selected = expected->HasLostSelection() ? ".." : "(none)";
        for (const Expected::Row& row : expected->Rows()) {
            names.push_back(row.name);
            if (row.isMarked) {
                marked.push_back(row.name);
            }
            selected = row.isSelected ? row.name : selected;
        }
        std::sort(marked.begin(), marked.end());
        if (list.MarkedNames() != marked) {
            return "marked are " + Joined(list.MarkedNames(), ", ") + ", but should be " +
                   Joined(marked, ", ");
        }
        // A filter selects what it still shows.
        if (!fIsFiltered && (fManner == Manner::kPrompt || !expected->HasLostSelection()) &&
            list.SelectedName() != selected) {
            return "selected is " + list.SelectedName() + ", but should be " + selected;
        }
        if (fManner == Manner::kPrompt && list.Names() != names) {
            return "the order is " + Joined(list.Names(), ", ") + ", but should be " +
                   Joined(names, ", ");
        }
        return {};
    }

    const Manner fManner;
    const bool fIsFiltered; // now and then
    Dice fDice;
    TempTree fTree;
    const std::string fFolder;
    const std::string fOutside;
    std::vector<std::string> fSteps;
};

int DoRuns(const Arguments& arguments)
{
    int counts[kMannerCount] = {};
    int wrong[kMannerCount] = {};
    for (int number = arguments.first; number < arguments.first + arguments.runs; number++) {
        Run run(number);
        const std::string fault = run.Go();
        counts[number % kMannerCount]++;
        if (!fault.empty()) {
            if (arguments.isVerbose) {
                std::printf("%s\n", run.Steps().c_str());
            }
            if (wrong[number % kMannerCount]++ < 3 || arguments.isVerbose) {
                std::printf("run %d: %s\n", number, fault.c_str());
            }
        }
    }
    std::printf("%-10s %7s %7s\n", "", "runs", "wrong");
    int all = 0;
    for (int i = 0; i < kMannerCount; i++) {
        std::printf("%-10s %7d %7d\n", kManners[i], counts[i], wrong[i]);
        all += wrong[i];
    }
    return all == 0 ? 0 : 1;
}

} // namespace

int main(int count, char** values)
{
    Arguments arguments;
    for (int i = 1; i < count; i++) {
        if (std::strcmp(values[i], "--verbose") == 0) {
            arguments.isVerbose = true;
        } else if (i + 1 < count && std::strcmp(values[i], "--runs") == 0) {
            arguments.runs = std::atoi(values[++i]);
        } else if (i + 1 < count && std::strcmp(values[i], "--first") == 0) {
            arguments.first = std::atoi(values[++i]);
        } else {
            std::fprintf(stderr, "usage: see the script `run`\n");
            return 2;
        }
    }
    const kits::testing::HeadlessApplication application;
    return DoRuns(arguments);
}
