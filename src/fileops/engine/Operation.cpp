#include "fileops/engine/Operation.h"

#include "fileops/engine/EntrySize.h"

namespace norvane {

Operation::Operation(OperationUI& ui, std::vector<entry_ref> items)
    : fDesk(ui, [this] { Settle(); }), fContext(fDesk), fItems(std::move(items))
{
    for (const entry_ref& item : fItems) {
        fContext.journal.AddItem(item);
    }
}

Operation::~Operation() = default;

void Operation::Run()
{
    Measure();
    for (size_t index = 0; index < CountItems() && !fDesk.IsStopped(); index++) {
        RunItem(index);
        if (fDesk.StandingAnswer() == kAnswerCancel) {
            break;
        }
    }
    Finish();
    const std::string summary = Summary();
    if (!summary.empty()) {
        fDesk.ShowSummary(summary);
    }
}

void Operation::Measure()
{
    OperationSize size = MeasureItems();
    size.items = CountItems();
    fDesk.Measured(size);
}

OperationSize Operation::MeasureItems()
{
    OperationSize size;
    fSizes.reserve(CountItems());
    for (const entry_ref& item : fItems) {
        fSizes.push_back(MeasureEntry(BEntry(&item), fDesk));
        size.bytes += fSizes.back();
    }
    return size;
}

void Operation::RunItem(size_t index)
{
    DoItem(index);
    fDesk.EntriesVisited(0);
}

void Operation::Settle(bigtime_t) {}

void Operation::Finish()
{
    fContext.smallFiles.Drain();
    Settle();
}

} // namespace norvane
