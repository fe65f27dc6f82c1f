#pragma once

#include <SupportDefs.h>

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

/// The whole program, started anew whenever it was told to quit. Thread: the test's own.
class Program
{
public:
    explicit Program(Scene& scene);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    // What is wrong; empty when nothing is:

    /// Starts it when it is not running.
    std::string Start();
    /// Brings it to rest: ends what is dragged, answers dialogs and waits for operations.
    std::string ComeToRest();
    /// Compares the rows of every pane with its folder, for some seconds while they differ.
    std::string ComparePanes();

    /// Leads panes that are far from the scene back to it, most of the time.
    void LeadBack(uint32 number);
    int CountStarts() const { return fStarts; }
    int64 CountRowsCompared() const { return fRowsCompared; }
    int64 CountPanesCompared() const { return fPanesCompared; }

private:
    struct Pane;

    bool HasWindow() const;
    std::string AwaitEnd();
    std::string DescribeUnrest() const;
    bool ReadPanes(std::vector<Pane>* panes);
    bool Judge(const std::vector<Pane>& panes, std::string* fault, int64* rows) const;

    Scene& fScene;
    std::unique_ptr<kits::testing::HeadlessApplication> fApplication;
    std::shared_ptr<kits::LooperCore> fCore; // the main window's
    int fStarts = 0;
    int64 fRowsCompared = 0;
    int64 fPanesCompared = 0;
};
