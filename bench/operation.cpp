// How long an operation takes by itself, without a window and the panes: prints the milliseconds.
//
//   operation copy|move TO ITEM...    into the folder TO
//   operation delete|trash ITEM...

#include "fileops/engine/Copy.h"
#include "fileops/engine/Delete.h"
#include "fileops/engine/Move.h"
#include "fileops/engine/Trash.h"

#include <Entry.h>
#include <OS.h>

#include <cstdio>
#include <cstring>
#include <memory>

namespace {

/// Shows nothing, and cannot be asked.
class Silence : public norvane::OperationUI
{
public:
    void Measured(const norvane::OperationSize&) override {}
    void FileStarted(const norvane::StartedFile&) override {}
    void BytesCopied(const char*, int64) override {}
    void BytesDone(int64) override {}
    void Transferring(const norvane::TransferStep&) override {}
    void EntriesVisited(int64) override {}
    bool CanAsk() const override { return false; }
    uint32 StandingAnswer() const override { return norvane::kAnswerNone; }
    void AskOverwrite(const norvane::OverwriteQuestion&) override {}
    norvane::AttributesAnswer AskAboutAttributes() override
    {
        return norvane::AttributesAnswer::kLeave;
    }
    void HideProgress() override {}
    void ShowProgress() override {}
    void Tell(const std::string& name, norvane::ItemAlert) override { Fail(name); }
    void NoteProblem(const std::string& name, const std::string&) override { Fail(name); }
    void ShowSummary(const std::string&) override {}
    bool IsStopped() const override { return false; }
    bool MayDelete() const override { return true; }

    bool hasFailed = false;

private:
    void Fail(const std::string& name)
    {
        std::fprintf(stderr, "operation: %s\n", name.c_str());
        hasFailed = true;
    }
};

std::unique_ptr<norvane::Operation> MakeOperation(const char* kind, int count, char** names,
                                                  norvane::OperationUI& ui)
{
    const bool hasTarget = std::strcmp(kind, "copy") == 0 || std::strcmp(kind, "move") == 0;
    std::vector<entry_ref> items;
    for (int i = hasTarget ? 1 : 0; i < count; i++) {
        entry_ref item;
        if (get_ref_for_path(names[i], &item) != B_OK) {
            return nullptr;
        }
        items.push_back(item);
    }
    if (std::strcmp(kind, "copy") == 0) {
        return std::make_unique<norvane::Copy>(std::move(items), names[0], ui);
    }
    if (std::strcmp(kind, "move") == 0) {
        return std::make_unique<norvane::Move>(std::move(items), names[0], ui);
    }
    if (std::strcmp(kind, "delete") == 0) {
        return std::make_unique<norvane::Delete>(std::move(items), ui);
    }
    return std::make_unique<norvane::Trash>(std::move(items), ui);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 3) {
        std::fputs("operation copy|move|delete|trash [TO] ITEM...\n", stderr);
        return 1;
    }
    Silence ui;
    const std::unique_ptr<norvane::Operation> operation =
        MakeOperation(argv[1], argc - 2, argv + 2, ui);
    if (operation == nullptr) {
        std::fputs("operation: no such item\n", stderr);
        return 1;
    }
    const bigtime_t begin = system_time();
    operation->Run();
    std::printf("%.1f\n", static_cast<double>(system_time() - begin) / 1e3);
    return ui.hasFailed ? 1 : 0;
}
