#include "fileops/engine/Operation.h"

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

void Operation::TakeMeasurement(std::unique_ptr<Measurement> measurement)
{
    if (measurement != nullptr && (measurement->KeepsRecords() || !IsDeletion())) {
        fMeasurement = std::move(measurement);
    }
}

void Operation::Measure()
{
    if (fMeasurement == nullptr) {
        using Keep = Measurement::Keep;
        fMeasurement = std::make_unique<Measurement>([this] { return fItems; },
                                                     IsDeletion() ? Keep::kRecords : Keep::kSizes);
    }
    fMeasurement->Finish(fDesk);
    OperationSize size;
    size.kind = Kind();
    size.bytes = fMeasurement->TotalBytes();
    size.items = CountItems();
    if (IsDeletion()) {
        size.entries = fMeasurement->CountEntries() + static_cast<int64>(CountItems());
    }
    fDesk.Measured(size);
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
