#pragma once

#include <SupportDefs.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

class BWindow;

namespace kits {
class LooperCore;
namespace testing {
class HeadlessApplication;
}
} // namespace kits

class Scene;
struct SeenWindow;

/// The whole program. Thread: the test's own.
class Program
{
public:
    /// What was compared.
    struct Tally
    {
        int64 rows = 0;
        int64 panes = 0;
        int64 gone = 0;  // and whose folder was there no more
    };

    explicit Program(Scene& scene);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    // What is wrong; empty when nothing is:

    std::string Start();
    /// Waits for its end, which something has told it to come to.
    std::string AwaitEnd();
    /// Brings it to rest: ends what is dragged, answers dialogs and waits for operations.
    std::string ComeToRest();
    /// Compares the rows of every pane with its folder, for some seconds while they differ.
    std::string ComparePanes();

    /// Leads panes that are far from the scene back to it, most of the time.
    void LeadBack(uint32 number);
    /// Whether it has its main window, and was not told to quit.
    bool IsRunning() const;
    const Tally& Compared() const { return fTally; }
    /// How often windows had to be dismissed, by their titles.
    const std::map<std::string, int>& Dismissed() const { return fDismissed; }

private:
    struct Pane;

    std::vector<SeenWindow> OtherWindows() const;
    void Dismiss(const std::vector<SeenWindow>& others, int attempt) const;
    std::string DescribeUnrest() const;
    bool ReadPanes(std::vector<Pane>* panes) const;
    static std::string Judge(const Pane& pane, Tally* tally);

    Scene& fScene;
    std::unique_ptr<kits::testing::HeadlessApplication> fApplication;
    std::shared_ptr<kits::LooperCore> fCore; // the main window's
    Tally fTally;
    std::map<std::string, int> fDismissed;
};
