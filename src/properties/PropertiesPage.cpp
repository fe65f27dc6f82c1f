#include "properties/PropertiesPage.h"

#include "MessageCodes.h"
#include "fileops/engine/ProblemList.h"
#include "fileops/windows/DialogLayout.h"
#include "properties/FactsView.h"
#include "properties/ModeGrid.h"

#include <Bitmap.h>
#include <CheckBox.h>
#include <Font.h>
#include <Message.h>
#include <ScrollBar.h>
#include <ScrollView.h>
#include <String.h>
#include <StringView.h>

#include <algorithm>
#include <cmath>

namespace norvane {

namespace {

constexpr rgb_color kGrey = {216, 216, 216, 255};
constexpr rgb_color kDim = {90, 90, 90, 255};
constexpr rgb_color kShadow = {168, 168, 168, 255};
constexpr rgb_color kShine = {255, 255, 255, 255};
constexpr float kEdge = 10;
constexpr float kGap = 8;
constexpr float kIconSide = 32;
constexpr float kBetweenColumns = 12;

float HeadHeight()
{
    return std::max(kIconSide, 2 * LineHeight());
}

std::string TitleOf(const ReadProperties& read)
{
    const size_t count = read.subjects->size();
    if (count == 1 && read.chosen.unreadable == 0) {
        return read.subjects->front().ref.name;
    }
    return Counted(read.chosen.Count() + read.chosen.unreadable, "entry", "entries");
}

/// A class of its own for the focus: it is no permission.
class InsideBox : public BCheckBox
{
public:
    InsideBox()
        : BCheckBox(BRect(0, 0, 10, 10), "AlsoInside", "Also what is in the folders",
                    new BMessage(kModeTouched), B_FOLLOW_NONE)
    {
    }

    // BView
    void MakeFocus(bool focused = true) override
    {
        BCheckBox::MakeFocus(focused);
        if (auto* page = dynamic_cast<PropertiesPage*>(Parent()); focused && page != nullptr) {
            page->Reveal(Frame());
        }
    }
};

BStringView* MakeNote(const char* name, const char* text)
{
    auto* note = new BStringView(BRect(0, 0, 10, 10), name, text, B_FOLLOW_NONE);
    note->SetHighColor(kDim);
    note->SetTruncation(B_TRUNCATE_END);
    return note;
}

} // namespace

PropertiesPage::PropertiesPage(BRect frame)
    : BView(frame, "Properties", B_FOLLOW_ALL_SIDES,
            B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE | B_FULL_UPDATE_ON_RESIZE)
{
    SetViewColor(kGrey);
    SetLowColor(kGrey);
    fFacts = new FactsView("Facts");
    AddChild(fFacts); // adopted, as are those below
    fGrid = std::make_unique<ModeGrid>(*this);
    fInside = new InsideBox;
    AddChild(fInside);
    fRule = MakeNote("Rule", "Execute goes to folders, and to files that are programs");
    AddChild(fRule);
    fPreview = MakeNote("Preview", "");
    AddChild(fPreview);
    fMore = new FactsView("More");
    AddChild(fMore);
    for (BView* part : {static_cast<BView*>(fInside), static_cast<BView*>(fRule),
                        static_cast<BView*>(fPreview)}) {
        part->Hide(); // until there are folders
    }
    Place();
}

PropertiesPage::~PropertiesPage() = default;

// Contents

void PropertiesPage::SetTo(const ReadProperties& read)
{
    if (!read.isRead) {
        return;
    }
    ShowLines(read);
    if (!fHasModes) {
        fHasModes = true;
        fTitle = TitleOf(read);
        fIcon = read.icon;
        fHasFolders = read.chosen.folders > 0;
        if (read.chosen.Count() > read.chosen.links) {
            fGrid->SetTo(read.mix);
        } else if (read.chosen.links > 0) {
            fGrid->SetToNone();
        }
        if (fHasFolders) {
            fInside->Show();
            fRule->Show();
            fPreview->Show();
        }
        Place();
        Invalidate();
    }
    ModeTouched(read.contents, read.isCounted);
}

void PropertiesPage::ShowLines(const ReadProperties& read)
{
    const float before = fFacts->NeededHeight();
    if (read.facts != nullptr) {
        const bool isFolder = read.chosen.folders > 0;
        fKind = read.facts->kind;
        fFacts->SetTo(LinesOf(*read.facts, isFolder ? &read.contents : nullptr, read.isCounted));
        fMore->SetTo(read.facts->more);
    } else if (read.subjects->empty()) {
        fKind = std::string("Not there, or not readable: ") + ReasonFor(read.status);
    } else {
        fFacts->SetTo(LinesOf(read.chosen, read.contents, read.isCounted));
    }
    if (fFacts->NeededHeight() != before) {
        Place();
    }
}

void PropertiesPage::ModeTouched(const Tally& contents, bool isCounted)
{
    fGrid->ShowNumber();
    std::string text;
    const ModeChange change = Change();
    if (GoesInside() && !change.IsEmpty()) {
        text = isCounted ? "Changes " : "Changes at least ";
        text += Counted(contents.ChangedBy(change), "entry", "entries") + " in there";
    } else if (GoesInside()) {
        text = "Nothing is to be changed yet";
    }
    fPreview->SetText(text.c_str());
}

void PropertiesPage::SetEnabled(bool isEnabled)
{
    fGrid->SetEnabled(isEnabled);
    fInside->SetEnabled(isEnabled);
}

ModeChange PropertiesPage::Change() const
{
    return fGrid->Change();
}

bool PropertiesPage::GoesInside() const
{
    return fInside->Value() != B_CONTROL_OFF;
}

// Layout

float PropertiesPage::Divider() const
{
    return std::max({fFacts->WidestLabel(), fMore->WidestLabel(), fGrid->WidestLabel()}) +
           kBetweenColumns;
}

float PropertiesPage::LeastWidth() const
{
    return 2 * kEdge + Divider() + fGrid->BoxesWidth();
}

/// Where lines end: the bar's own place is edge enough.
float PropertiesPage::RightEdge() const
{
    return Bounds().right - (fHidesBar ? 0 : kEdge);
}

void PropertiesPage::PutAt(BView* view, float left, float top, float height) const
{
    view->MoveTo(left, top);
    view->ResizeTo(RightEdge() - left, std::max(0.0f, height));
}

void PropertiesPage::Place()
{
    const float divider = Divider();
    float top = kEdge + HeadHeight() + kGap;
    fFacts->SetDivider(divider);
    PutAt(fFacts, kEdge, top, fFacts->NeededHeight());
    top += fFacts->NeededHeight() + kGap;
    fLineAbove = top;
    top = fGrid->Place(kEdge, top + kGap, divider);
    if (fHasFolders) {
        top = PlaceInside(kEdge + divider, top);
    }
    fMore->SetDivider(divider);
    fLineBelow = 0;
    if (fMore->NeededHeight() > 0) {
        fLineBelow = top + kGap;
        top = fLineBelow + kGap;
    }
    PutAt(fMore, kEdge, top, fMore->NeededHeight());
    fContentsHeight = top + fMore->NeededHeight() + kGap;
    FitBar();
}

float PropertiesPage::PlaceInside(float left, float top)
{
    float boxWidth = 0;
    float boxHeight = 0;
    fInside->GetPreferredSize(&boxWidth, &boxHeight);
    PutAt(fInside, left, top, boxHeight);
    top += boxHeight + 1;
    for (BView* note : {fRule, fPreview}) {
        PutAt(note, left, top, LineHeight());
        top += LineHeight() + 2;
    }
    return top;
}

void PropertiesPage::Reveal(BRect place)
{
    if (fBar == nullptr) {
        return;
    }
    const BRect seen = Bounds();
    if (place.top < seen.top) {
        fBar->SetValue(std::max(0.0f, place.top - kGap));
    } else if (place.bottom > seen.bottom) {
        fBar->SetValue(std::min(place.bottom + kGap - seen.Height(), place.top));
    }
}

void PropertiesPage::FitBar()
{
    if (fBar == nullptr) {
        return;
    }
    const float height = Bounds().Height();
    const float hidden = std::max(0.0f, fContentsHeight - height);
    fBar->SetRange(0, hidden);
    fBar->SetProportion(hidden > 0 ? height / fContentsHeight : 1);
    fBar->SetSteps(LineHeight(), std::max(LineHeight(), height - LineHeight()));
    if (fHidesBar != (hidden == 0)) {
        fHidesBar = !fHidesBar;
        fHidesBar ? fBar->Hide() : fBar->Show();
        Place(); // once more: the lines end elsewhere, and the height stays
    }
}

// BView

void PropertiesPage::AttachedToWindow()
{
    Place();
}

void PropertiesPage::FrameResized(float, float)
{
    Place();
}

void PropertiesPage::TargetedByScrollView(BScrollView* scrollView)
{
    fBar = scrollView != nullptr ? scrollView->ScrollBar(B_VERTICAL) : nullptr;
    fHidesBar = false;
    FitBar();
}

void PropertiesPage::KeyDown(const char* bytes, int32 byteCount)
{
    float small = 0;
    float large = 0;
    if (fBar != nullptr) {
        fBar->GetSteps(&small, &large);
    }
    switch (byteCount == 1 && fBar != nullptr ? bytes[0] : '\0') {
    case B_UP_ARROW:
        fBar->SetValue(fBar->Value() - small);
        break;
    case B_DOWN_ARROW:
        fBar->SetValue(fBar->Value() + small);
        break;
    case B_PAGE_UP:
        fBar->SetValue(fBar->Value() - large);
        break;
    case B_PAGE_DOWN:
        fBar->SetValue(fBar->Value() + large);
        break;
    case B_HOME:
        fBar->SetValue(0);
        break;
    case B_END:
        fBar->SetValue(fContentsHeight);
        break;
    default:
        BView::KeyDown(bytes, byteCount);
    }
}

void PropertiesPage::Draw(BRect)
{
    DrawHead();
    for (const float line : {fLineAbove, fLineBelow}) {
        if (line > 0) {
            SetHighColor(kShadow);
            StrokeLine(BPoint(kEdge, line), BPoint(RightEdge(), line));
            SetHighColor(kShine);
            StrokeLine(BPoint(kEdge, line + 1), BPoint(RightEdge(), line + 1));
        }
    }
}

void PropertiesPage::DrawHead()
{
    const float middle = kEdge + HeadHeight() / 2;
    if (fIcon != nullptr) {
        SetDrawingMode(B_OP_OVER);
        DrawBitmap(fIcon.get(), BPoint(kEdge, std::floor(middle - kIconSide / 2)));
        SetDrawingMode(B_OP_COPY);
    }
    const float left = kEdge + (fIcon != nullptr ? kIconSide + kGap : 0);
    const float room = RightEdge() - left;
    font_height height;
    be_bold_font->GetHeight(&height);
    const float line = LineHeight();
    const auto draw = [&](const BFont& font, std::string text, float top) {
        std::replace(text.begin(), text.end(), '\n', ' ');
        BString shown(text.c_str());
        font.TruncateString(&shown, B_TRUNCATE_MIDDLE, room);
        SetFont(&font);
        DrawString(shown.String(), BPoint(left, top + std::ceil(height.ascent)));
    };
    const float top = std::floor(middle - (fKind.empty() ? line / 2 : line));
    SetHighColor({0, 0, 0, 255});
    draw(*be_bold_font, fTitle, top);
    SetHighColor(kDim);
    draw(*be_plain_font, fKind, top + line);
}

} // namespace norvane
