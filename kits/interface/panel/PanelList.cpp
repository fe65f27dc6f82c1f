#include "PanelList.h"

#include <Font.h>
#include <List.h>
#include <NodeInfo.h>
#include <String.h>
#include <Window.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace kits {

namespace {

constexpr float kIconSize = 16;
constexpr float kIconLeft = 3;
constexpr float kTextLeft = 24;
constexpr float kLeastHeight = 18;
constexpr rgb_color kSelected = {196, 208, 228, 255};
constexpr rgb_color kUnfocused = {220, 220, 220, 255};
constexpr rgb_color kQuiet = {110, 110, 110, 255};

/// Plain letters made small; all else stays.
char SmallLetter(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + ('a' - 'A')) : letter;
}

std::string SmallLetters(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), SmallLetter);
    return text;
}

/// Whether a name contains a text of small letters.
bool ContainsSmall(const char* name, const std::string& text)
{
    const char* end = name + std::strlen(name);
    return text.empty() || std::search(name, end, text.begin(), text.end(),
                                       [](char a, char b) { return SmallLetter(a) == b; }) != end;
}

} // namespace

class PanelList::Row : public BListItem
{
public:
    Row(PanelList& list, const PanelFolder::Entry& entry) : fList(list), fEntry(entry) {}

    const PanelFolder::Entry& Entry() const { return fEntry; }

    // BListItem
    void DrawItem(BView* owner, BRect frame, bool complete) override;
    void Update(BView* owner, const BFont* font) override;
    std::string SpokenText() const override { return fEntry.ref.name; }

private:
    PanelList& fList;
    const PanelFolder::Entry& fEntry; // the list's folder's
    float fBaseline = 0;
};

void PanelList::Row::Update(BView* owner, const BFont* font)
{
    font_height height;
    font->GetHeight(&height);
    const float text = std::ceil(height.ascent) + std::ceil(height.descent) + 2;
    SetHeight(std::max(kLeastHeight, text));
    SetWidth(owner->Bounds().Width());
    fBaseline = std::floor((Height() - text) / 2) + 1 + std::ceil(height.ascent);
}

void PanelList::Row::DrawItem(BView* owner, BRect frame, bool)
{
    const rgb_color selected = owner->Window()->IsActive() ? kSelected : kUnfocused;
    owner->SetLowColor(IsSelected() ? selected : owner->ViewColor());
    owner->FillRect(frame, B_SOLID_LOW);
    if (const BBitmap* icon = fList.IconFor(fEntry)) {
        const float top = frame.top + std::floor((Height() - kIconSize) / 2);
        owner->SetDrawingMode(B_OP_OVER);
        owner->DrawBitmap(icon,
                          BRect(kIconLeft, top, kIconLeft + kIconSize - 1, top + kIconSize - 1));
        owner->SetDrawingMode(B_OP_COPY);
    }
    owner->SetHighColor(0, 0, 0);
    BFont font;
    owner->GetFont(&font);
    BString name(fEntry.ref.name);
    font.TruncateString(&name, B_TRUNCATE_MIDDLE, frame.right - kTextLeft - 4);
    owner->DrawString(name.String(), BPoint(kTextLeft, frame.top + fBaseline));
}

PanelList::PanelList(BRect frame, list_view_type type)
    : BListView(frame, "PoseView", type, B_FOLLOW_ALL_SIDES,
                B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE | B_FULL_UPDATE_ON_RESIZE)
{
}

PanelList::~PanelList()
{
    MakeEmpty();
}

void PanelList::SetTo(std::unique_ptr<PanelFolder> folder)
{
    MakeEmpty();
    fRows.clear();
    fFolder = std::move(folder);
    fRemark.clear();
    if (fFolder != nullptr) {
        for (const PanelFolder::Entry& entry : fFolder->entries) {
            fRows.push_back(std::make_unique<Row>(*this, entry));
        }
    }
    ShowRows("");
}

void PanelList::Filter(const std::string& text)
{
    ShowRows(SmallLetters(text));
}

void PanelList::ShowRows(const std::string& text)
{
    fText = text;
    BList shown(static_cast<int32>(fRows.size()) + 1);
    for (const auto& row : fRows) {
        if (ContainsSmall(row->Entry().ref.name, text)) {
            shown.AddItem(row.get());
        }
    }
    SetItems(&shown);
    Select(0);
    ScrollToSelection();
    Invalidate();
}

void PanelList::SetRemark(const std::string& remark)
{
    fRemark = remark;
    Invalidate();
}

const PanelFolder::Entry* PanelList::EntryAt(int32 index) const
{
    const auto* row = static_cast<const Row*>(ItemAt(index));
    return row != nullptr ? &row->Entry() : nullptr;
}

/// By the kind and the end of the name, like panes do; asked for once for each.
const BBitmap* PanelList::IconFor(const PanelFolder::Entry& entry)
{
    const char* suffix = std::strrchr(entry.ref.name, '.');
    std::string key = std::to_string(entry.mode & S_IFMT);
    if (!entry.IsFolder() && suffix != nullptr) {
        key += suffix;
    }
    const auto [found, isNew] = fIcons.try_emplace(key);
    if (isNew) {
        auto icon = std::make_unique<BBitmap>(BRect(0, 0, kIconSize - 1, kIconSize - 1), B_RGBA32);
        if (BNodeInfo::GetTrackerIcon(entry.ref.name, entry.mode, icon.get(), B_MINI_ICON) ==
            B_OK) {
            found->second = std::move(icon);
        }
    }
    return found->second.get();
}

void PanelList::Draw(BRect updateRect)
{
    BListView::Draw(updateRect);
    if (CountItems() > 0) {
        return;
    }
    const std::string remark = !fRemark.empty()     ? fRemark
                               : fFolder == nullptr ? ""
                               : fRows.empty()      ? "This folder is empty."
                                                    : "No name contains this.";
    const BRect bounds = Bounds();
    SetHighColor(kQuiet);
    SetLowColor(ViewColor());
    DrawString(
        remark.c_str(),
        BPoint(std::max(4.0F, std::floor((bounds.Width() - StringWidth(remark.c_str())) / 2)),
               std::floor(bounds.Height() / 2)));
    SetHighColor(0, 0, 0);
}

} // namespace kits
