#include "RenameMany/RenameWindow.h"

#include "RenameMany/RenameList.h"
#include "RenameMany/RenameTexts.h"
#include "common/DialogParts.h"
#include "common/StatusText.h"

#include <Alert.h>
#include <AppDefs.h>
#include <Button.h>
#include <CheckBox.h>
#include <InterfaceDefs.h>
#include <Menu.h>
#include <Message.h>
#include <MessageRunner.h>
#include <StringView.h>
#include <TextControl.h>

#include <cstdlib>

// What the window does; RenameWindowViews.cpp has what is seen of it.

namespace rename_many {

namespace {

constexpr int64 kMostNumber = 10'000'000'000;
constexpr int64 kMostDigits = 20;
constexpr bigtime_t kTickTime = 100'000;
constexpr bigtime_t kAnswersAfterFirstFrame = 200'000;
constexpr rgb_color kText = {0, 0, 0, 255};
constexpr rgb_color kWrong = {170, 0, 0, 255};

/// Reads a whole number, with blanks around it; an empty field is `value` as it is.
bool ReadNumber(const BTextControl& field, int64* value)
{
    std::string text = field.Text();
    text.erase(0, text.find_first_not_of(' '));
    text.erase(text.find_last_not_of(' ') + 1);
    if (text.empty()) {
        return true;
    }
    char* end = nullptr;
    const int64 number = std::strtoll(text.c_str(), &end, 10);
    if (*end != '\0' || number > kMostNumber || number < -kMostNumber) {
        return false;
    }
    *value = number;
    return true;
}

void TellTrouble(const std::string& text)
{
    auto* alert = new BAlert("RenameMany", text.c_str(), "OK", nullptr, nullptr, B_WIDTH_AS_USUAL,
                             B_WARNING_ALERT);
    alert->SetAnswerDelay(kAnswersAfterFirstFrame, 0);
    alert->Go(); // deletes it
}

} // namespace

RenameWindow::~RenameWindow() = default;

void RenameWindow::DispatchMessage(BMessage* message, BHandler* handler)
{
    int8 byte = 0;
    if (message->what == B_KEY_DOWN && message->FindInt8("byte", &byte) == B_OK &&
        byte == B_ESCAPE) {
        if (TakesAnswers() && message->GetInt32("be:key_repeat", 0) == 0) {
            Close();
        }
        return;
    }
    BWindow::DispatchMessage(message, handler);
}

void RenameWindow::MessageReceived(BMessage* message)
{
    switch (message->what) {
    case kRulesChanged:
        RulesChanged(false);
        break;
    case kRenameNews:
        TakeNews();
        break;
    case kRenameTick:
        ShowProgress();
        break;
    case kNextFault:
        fList->SelectNextFault();
        break;
    case kDoRename:
        Rename();
        break;
    case kDoUndo:
        Undo();
        break;
    case kDoClose:
        Close();
        break;
    default:
        BWindow::MessageReceived(message);
    }
}

void RenameWindow::WindowActivated(bool active)
{
    BWindow::WindowActivated(active);
    if (active && fState == State::kEditing) {
        RulesChanged(true); // who comes back may have changed the folder
    }
}

bool RenameWindow::QuitRequested()
{
    // What was begun is done first, as operations are.
    fWorker->End();
    fTicks.reset();
    if (const std::optional<RenameWorker::Report> report = fWorker->TakeReport()) {
        const std::string trouble = TroubleOf(*report);
        if (!trouble.empty()) {
            TellTrouble(trouble);
        }
    }
    return true;
}

void RenameWindow::Close()
{
    if (IsWorking()) {
        fWorker->Stop();
    } else {
        PostMessage(B_QUIT_REQUESTED);
    }
}

bool RenameWindow::ReadRules(Rules* rules, std::string* error) const
{
    int64 digits = rules->digits;
    if (!ReadNumber(*fStart, &rules->start)) {
        *error = "“Count from” is no number";
    } else if (!ReadNumber(*fStep, &rules->step)) {
        *error = "“Step” is no number";
    } else if (!ReadNumber(*fDigits, &digits) || digits < 0 || digits > kMostDigits) {
        *error = "“Digits” is no number up to 20";
    }
    rules->digits = static_cast<int32>(digits);
    rules->pattern = fPattern->Text();
    rules->search = fSearch->Text();
    rules->replacement = fReplacement->Text();
    rules->isExpression = fIsExpression->Value() != B_CONTROL_OFF;
    rules->letters = static_cast<Letters>(fLetters->IndexOf(fLetters->FindMarked()));
    rules->changesEnding = fEndingToo->Value() != B_CONTROL_OFF;
    return error->empty();
}

void RenameWindow::RulesChanged(bool looks)
{
    if (fState != State::kEditing) {
        return;
    }
    Rules rules;
    fError.clear();
    fRename->SetEnabled(false); // nothing is renamed that nobody has seen
    if (ReadRules(&rules, &fError)) {
        fWorker->AskForPreview(rules, looks);
    } else {
        ShowPreview();
    }
}

void RenameWindow::Rename()
{
    Rules rules;
    if (fState != State::kEditing || !ReadRules(&rules, &fError)) {
        return;
    }
    SetState(State::kRenaming);
    fWorker->AskToRename(rules);
}

void RenameWindow::Undo()
{
    if (fState == State::kRenamed) {
        SetState(State::kUndoing);
        fWorker->AskToUndo();
    }
}

void RenameWindow::TakeNews()
{
    const std::optional<RenameWorker::Report> report = fWorker->TakeReport();
    if (report) {
        TakeReport(*report);
        return;
    }
    if (fState == State::kEditing) {
        ShowPreview();
    }
}

void RenameWindow::TakeReport(const RenameWorker::Report& report)
{
    using Kind = RenameWorker::Report::Kind;
    if (report.kind == Kind::kRefused) {
        SetState(State::kEditing);
        ShowPreview();
        return;
    }
    const bool isRenamed = report.kind == Kind::kRenamed;
    const Outcome& outcome = report.outcome;
    const bool isOk = outcome.status == B_OK;
    // Undoing that was taken back can be tried again.
    const bool hasNewNames = isRenamed ? isOk : !isOk && outcome.stuck.empty();
    SetState(hasNewNames ? State::kRenamed : State::kEditing);
    if (isOk) {
        ShowSummary(SummaryOf(report), false);
    }
    const std::string trouble = TroubleOf(report);
    if (!trouble.empty()) {
        TellTrouble(trouble);
    }
    RulesChanged(true);
}

void RenameWindow::ShowPreview()
{
    const std::shared_ptr<const Preview> preview = fWorker->LastPreview();
    if (preview == nullptr) {
        return;
    }
    fList->ShowNames(preview);
    const bool isWrong = preview->bad > 0 || !preview->error.empty() || !fError.empty();
    ShowSummary(fError.empty() ? SummaryOf(*preview) : fError, isWrong);
    fRename->SetEnabled(fError.empty() && preview->CanRename());
    fNext->SetEnabled(preview->bad > 0);
}

void RenameWindow::ShowProgress()
{
    if (IsWorking()) {
        const size_t count = fWorker->CountDone();
        ShowSummary("Renaming: " + add_ons::Grouped(count) + " done", false);
    }
}

void RenameWindow::ShowSummary(const std::string& text, bool isWrong)
{
    fSummary->SetHighColor(isWrong ? kWrong : kText);
    fSummary->SetText(add_ons::ShownName(text).c_str());
    fSummary->Invalidate();
}

void RenameWindow::SetState(State state)
{
    fState = state;
    const bool isEditing = state == State::kEditing;
    for (BView* input : fInputs) {
        SetInputEnabled(input, isEditing);
    }
    fClose->SetLabel(IsWorking() ? "Stop" : "Close");
    const auto show = [](BButton* button, bool isShown) {
        if (isShown == button->IsHidden()) {
            isShown ? button->Show() : button->Hide();
        }
    };
    show(fRename, state == State::kEditing || state == State::kRenaming);
    show(fUndo, state == State::kRenamed || state == State::kUndoing);
    fRename->SetEnabled(false); // until a preview says so
    fUndo->SetEnabled(state == State::kRenamed);
    fNext->SetEnabled(false);
    if (isEditing) {
        fRename->MakeDefault(true);
        fPattern->MakeFocus(true);
    } else {
        // Enter has just been pressed, and maybe still is: it answers nothing now.
        SetDefaultButton(nullptr);
        fList->MakeFocus(true);
    }
    fTicks.reset();
    if (IsWorking()) {
        const BMessage tick(kRenameTick);
        fTicks = std::make_unique<BMessageRunner>(BMessenger(this), &tick, kTickTime);
    }
}

} // namespace rename_many
