#include "query/QueryWindow.h"

#include "MessageCodes.h"
#include "fileops/windows/DialogLayout.h"
#include "query/QueryViews.h"
#include "settings/MsgBox.h"

#include <Button.h>
#include <Font.h>
#include <MessageRunner.h>
#include <Messenger.h>
#include <Query.h>
#include <String.h>
#include <TabView.h>

#include <ctime>
#include <utility>

namespace norvane {

namespace {

constexpr float kWidth = 440;
constexpr float kHeight = 212;
constexpr float kEdge = 5;
constexpr float kButtonsWidth = 100;
constexpr float kButtonWidth = 90;
constexpr float kButtonHeight = 20;
constexpr float kButtonGap = 10;
constexpr char kTitle[] = "Norvane";
constexpr size_t kPredicateBytes = 1024; // with the final zero
constexpr bigtime_t kCountTime = 200'000;

/// "1 234 567": a title's counts are read in passing.
std::string Grouped(int32 count)
{
    std::string text = std::to_string(count);
    for (size_t at = text.size(); at > 3; at -= 3) {
        text.insert(at - 3, 1, ' ');
    }
    return text;
}

} // namespace

QueryWindow::QueryWindow(BRect frame, BWindow* handler)
    : BWindow(CentredFrame(frame, kWidth, kHeight), kTitle, B_FLOATING_WINDOW,
              B_NOT_RESIZABLE | B_NOT_ZOOMABLE | B_ASYNCHRONOUS_CONTROLS),
      fInvoker(nullptr, BMessenger(nullptr, handler))
{
    if (handler != nullptr) {
        SetOpener(handler);
    }
    BuildContents();
    fGeneral->FocusName();
}

QueryWindow::~QueryWindow() = default;

void QueryWindow::BuildContents()
{
    BView* ground = MakeDialogGround(Bounds(), "QueryContainer");
    AddChild(ground);
    BRect frame = Bounds().InsetByCopy(kEdge, kEdge);
    frame.right -= kButtonsWidth;
    auto* tabs = new BTabView(frame, "tab_view", B_WIDTH_FROM_LABEL);
    tabs->SetViewColor(ground->ViewColor());
    ground->AddChild(tabs);
    const BRect page = tabs->ContainerView()->Bounds();
    fGeneral = new GeneralView(page);
    fAdvanced = new AdvancedView(page);
    tabs->AddTab(fGeneral);
    tabs->AddTab(fAdvanced);
    tabs->AddTab(new LoadSaveView(page));
    AddButtons(ground, frame.top + tabs->TabHeight());
}

void QueryWindow::AddButtons(BView* ground, float top)
{
    const auto add = [&](const char* name, const char* label, uint32 what) {
        const float right = Bounds().right - kEdge;
        auto* button = new BButton(BRect(right - kButtonWidth, top, right, top + kButtonHeight),
                                   name, label, new BMessage(what));
        ground->AddChild(button);
        button->SetTarget(this);
        top += kButtonHeight + kButtonGap;
        return button;
    };
    add("StartQuery", "Query", kStartQuery)->MakeDefault(true);
    add("CancelQuery", "Cancel", B_QUIT_REQUESTED);
    add("HelpQuery", "Help", kQueryHelp);
}

bool QueryWindow::QuitRequested()
{
    return true;
}

void QueryWindow::MessageReceived(BMessage* message)
{
    switch (message->what) {
    case kStartQuery:
        GetResults();
        break;
    case kQueryHelp:
        MsgBox("Sorry no Query Help is available at this time.hMaybe Someday...", B_INFO_ALERT);
        break;
    case kHours:
    case kDays:
    case kWeeks:
    case kYears:
        fChoices.ageUnit = message->what;
        break;
    case kSizeEqual:
    case kSizeAtLeast:
    case kSizeAtMost:
        fChoices.sizeOperator = message->what;
        break;
    case kBytes:
    case kKilobytes:
    case kMegabytes:
        fChoices.sizeUnit = message->what;
        break;
    case kNameContains:
    case kNameIsNot:
    case kNameIs:
    case kNameStartsWith:
    case kNameEndsWith:
        fChoices.nameOperator = message->what;
        break;
    case kDateChoice: {
        void* source = nullptr;
        if (message->FindPointer("source", &source) == B_OK) {
            fAdvanced->DateChoiceChanged(source);
        }
        break;
    }
    case kVolumesChoice:
        message->FindInt32("Volumes", &fVolumes);
        break;
    case kSearchEnded:
        SearchEnded(*message);
        break;
    case kTellCounts:
        ShowCounts();
        break;
    default:
        BWindow::MessageReceived(message);
    }
}

/// False after saying what is wrong.
bool QueryWindow::MakePredicate(std::string* predicate)
{
    QueryCriteria criteria = fChoices;
    fGeneral->Tell(&criteria);
    fAdvanced->Tell(&criteria);
    BQuery query;
    const QueryFault fault = PushCriteria(criteria, std::time(nullptr), &query);
    if (fault == QueryFault::kDatesInOrder) {
        MsgBox("foo", "Date 2 must be greater then Date1.", "OK", B_INFO_ALERT);
    }
    // Nobody takes a longer text: the pane's header is as long.
    char text[kPredicateBytes];
    if (fault != QueryFault::kNone || query.GetPredicate(text, sizeof(text)) != B_OK) {
        MsgBox("Foo", "No Criteria Entered, Or Invalid Criteria\nPleaes Modify Query", "OK",
               B_INFO_ALERT);
        return false;
    }
    *predicate = text;
    return true;
}

void QueryWindow::GetResults()
{
    if (!MakePredicate(&fPredicate)) {
        return;
    }
    QuerySearch::Order order{fPredicate, std::nullopt, BMessenger(this), ++fSearches};
    if (fGeneral->SearchesText()) {
        order.text = fGeneral->Text();
    }
    fSearch.reset(); // the one before ends, whatever it has found
    fSearch = std::make_unique<QuerySearch>(std::move(order));
    const BMessage tick(kTellCounts);
    fCounting = std::make_unique<BMessageRunner>(BMessenger(this), &tick, kCountTime);
}

void QueryWindow::SearchEnded(const BMessage& message)
{
    if (fSearch == nullptr || message.GetInt32("search", 0) != fSearches) {
        return;
    }
    fCounting.reset();
    const std::unique_ptr<QuerySearch> ended = std::move(fSearch);
    BMessage results(kQueryResults);
    for (const entry_ref& hit : ended->TakeHits()) {
        results.AddRef("ref", &hit);
    }
    results.AddString("QueryString", fPredicate.c_str());
    const int32 further = ended->Look().unreadable - 1;
    std::string title = kTitle;
    if (further > 0) {
        title.append(" - ").append(Grouped(further)).append(" more not read");
    }
    SetTitle(title.c_str());
    fInvoker.Invoke(&results);
    TellUnreadable(ended->TakeUnreadable());
    for (const std::string& volume : ended->TakeSilent()) {
        const std::string name = BFont::VisibleText(volume.c_str()).String();
        MsgBox(("The volume, " + name + ", does not answer.").c_str(), B_INFO_ALERT);
    }
}

void QueryWindow::ShowCounts()
{
    if (fSearch == nullptr) {
        return;
    }
    const SearchCounts counts = fSearch->Look();
    std::string title = kTitle;
    title.append(" - ").append(Grouped(counts.found)).append(" found");
    if (counts.examined > 0) {
        title.append(" in ").append(Grouped(counts.examined)).append(" files");
    }
    if (counts.unreadable > 0) {
        title.append(", ").append(Grouped(counts.unreadable)).append(" not read");
    }
    SetTitle(title.c_str());
}

void QueryWindow::TellUnreadable(const std::string& path)
{
    if (!path.empty()) {
        MsgBox("We Got a Bad Return from File.ReadAt", B_INFO_ALERT);
        MsgBox(BFont::VisibleText(path.c_str()).String(), B_INFO_ALERT);
    }
}

} // namespace norvane
