#include "Checksums/SumWindow.h"

#include "Checksums/SumLines.h"
#include "Checksums/SumList.h"
#include "Checksums/SumSaving.h"
#include "Checksums/SumTexts.h"
#include "common/DetachedThread.h"
#include "common/StatusText.h"

#include <AppDefs.h>
#include <Button.h>
#include <Clipboard.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <MessageRunner.h>
#include <StatusBar.h>
#include <StringView.h>
#include <TextControl.h>
#include <TypeConstants.h>

#include <algorithm>
#include <utility>

// What the window does; SumWindowViews.cpp has what is seen of it.

namespace checksums {

namespace {

// A block of a file is read before it is noticed that nobody wants it any more.
constexpr bigtime_t kPatienceAtQuit = 2'000'000;
constexpr rgb_color kText = {0, 0, 0, 255};
constexpr rgb_color kRight = {0, 110, 0, 255};
constexpr rgb_color kWrong = {170, 0, 0, 255};

float PartOf(const SumJob::Progress& progress)
{
    if (progress.allBytes <= 0) {
        return progress.hasEnded ? kFullBar : 0;
    }
    return static_cast<float>(static_cast<double>(progress.bytes) /
                              static_cast<double>(progress.allBytes)) *
           kFullBar;
}

size_t CountSums(const std::vector<SumRow>& rows)
{
    return static_cast<size_t>(std::count_if(rows.begin(), rows.end(),
                                             [](const SumRow& row) { return !row.sum.empty(); }));
}

std::string Sums(const std::vector<SumRow>& rows)
{
    const size_t count = CountSums(rows);
    return count == 1 ? "1 sum" : add_ons::Grouped(count) + " sums";
}

/// What is to be said of files that have none; "" when all have.
std::string Without(const std::vector<SumRow>& rows)
{
    const size_t count = rows.size() - CountSums(rows);
    if (count == 0) {
        return {};
    }
    return ". There is none of " + (count == 1 ? "1 file" : add_ons::Grouped(count) + " files");
}

void ShowLine(BStringView* line, const std::string& text, rgb_color color)
{
    line->SetHighColor(color);
    line->SetText(add_ons::ShownName(text).c_str());
    line->Invalidate();
}

} // namespace

SumWindow::~SumWindow() = default;

void SumWindow::DispatchMessage(BMessage* message, BHandler* handler)
{
    int8 byte = 0;
    if (message->what == B_KEY_DOWN && message->FindInt8("byte", &byte) == B_OK &&
        byte == B_ESCAPE) {
        if (TakesAnswers()) {
            PostMessage(B_QUIT_REQUESTED);
        }
        return;
    }
    BWindow::DispatchMessage(message, handler);
}

void SumWindow::MessageReceived(BMessage* message)
{
    switch (message->what) {
    case kSumTick:
    case kSumsEnded:
        ShowState();
        break;
    case kPastedChanged:
        ShowMatch();
        break;
    case kCopySums:
        Copy();
        break;
    case kSaveSums:
        Save();
        break;
    case kSumsSaved:
        Saved(*message);
        break;
    case kStopOrClose:
        if (fJob->Look().hasEnded) {
            PostMessage(B_QUIT_REQUESTED);
        } else {
            fJob->Stop();
        }
        break;
    default:
        BWindow::MessageReceived(message);
    }
}

bool SumWindow::QuitRequested()
{
    fJob->Stop();
    fJob->WaitForEnd(kPatienceAtQuit);
    return true;
}

void SumWindow::ShowState()
{
    const SumJob::Progress progress = fJob->Look();
    fList->Refresh();
    fBar->Update(PartOf(progress) - fBar->CurrentValue(), SummaryOf(*fJob).c_str());
    if (progress.hasEnded && fTicks != nullptr) {
        fTicks.reset();
        bool isTroubled = false;
        bool hasSums = false;
        for (const SumRow& row : fJob->Rows()) {
            isTroubled = isTroubled || IsTrouble(row.state);
            hasSums = hasSums || !row.sum.empty();
        }
        const rgb_color good = progress.isComparing && !progress.wasStopped ? kRight : kText;
        ShowLine(fSummary, SummaryOf(*fJob), isTroubled ? kWrong : good);
        fCopy->SetEnabled(hasSums);
        fSave->SetEnabled(hasSums && !progress.isComparing);
        fClose->SetLabel("Close");
        fBar->Hide();
        fSummary->Show();
    }
    ShowMatch();
}

void SumWindow::ShowMatch()
{
    const std::string pasted = fPasted->Text();
    const std::string sum = ReadPastedSum(pasted);
    if (fList->Mark(sum)) {
        const std::string name = fJob->RowAt(fJob->FindSum(sum)).name;
        ShowLine(fMatch, "This is the sum of “" + name + "”", kRight);
    } else if (!sum.empty()) {
        const bool hasEnded = fJob->Look().hasEnded;
        ShowLine(fMatch, hasEnded ? "No file here has this sum" : "No file has this sum so far",
                 hasEnded ? kWrong : kText);
    } else if (pasted.find_first_not_of(" \t\r\n") != std::string::npos) {
        ShowLine(fMatch, "This is no SHA-256 sum, which has 64 hexadecimal digits", kWrong);
    } else {
        ShowLine(fMatch, "Paste a sum here to see which file has it", kText);
    }
}

/// The selected rows, or all.
void SumWindow::Copy()
{
    std::vector<SumRow> rows;
    for (int32 number = 0; fList->CurrentSelection(number) >= 0; number++) {
        rows.push_back(fJob->RowAt(static_cast<size_t>(fList->CurrentSelection(number))));
    }
    if (rows.empty()) {
        rows = fJob->Rows();
    }
    const std::string lines = LinesOf(rows);
    if (lines.empty()) {
        ShowLine(fSummary, "No sum is known of what is selected", kText);
        return;
    }
    if (!be_clipboard->Lock()) {
        return;
    }
    be_clipboard->Clear();
    if (BMessage* data = be_clipboard->Data()) {
        data->AddData("text/plain", B_MIME_TYPE, lines.data(), static_cast<ssize_t>(lines.size()));
        be_clipboard->Commit();
    }
    be_clipboard->Unlock();
    ShowLine(fSummary, "Copied " + Sums(rows) + Without(rows), kText);
}

void SumWindow::Save()
{
    if (fIsSaving) {
        return;
    }
    // A disk may take its time.
    fIsSaving =
        add_ons::StartDetached("Checksums", [neighbour = fNeighbour, lines = LinesOf(fJob->Rows()),
                                             target = BMessenger(this)] {
            std::string name;
            const status_t status = SaveSums(neighbour, lines, &name);
            BMessage saved(kSumsSaved);
            saved.AddInt32("status", status);
            saved.AddString("name", name.c_str());
            target.SendMessage(&saved);
        });
    fSave->SetEnabled(!fIsSaving);
}

void SumWindow::Saved(const BMessage& message)
{
    fIsSaving = false;
    fSave->SetEnabled(true);
    const status_t status = message.GetInt32("status", B_ERROR);
    if (status == B_OK) {
        ShowLine(fSummary,
                 std::string("Saved as “") + message.GetString("name", "") + "”" +
                     Without(fJob->Rows()),
                 kText);
    } else {
        ShowLine(fSummary, std::string("Could not be saved: ") + add_ons::StatusText(status),
                 kWrong);
    }
}

} // namespace checksums
