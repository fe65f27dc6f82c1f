#include "panes/DirListItem.h"

#include "panes/DatePattern.h"
#include "panes/EntryClipboard.h"
#include "panes/RowIcons.h"
#include "panes/RowTexts.h"
#include "settings/Preferences.h"

#include <Bitmap.h>
#include <Font.h>
#include <Messenger.h>
#include <Path.h>
#include <Region.h>
#include <View.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <tuple>
#include <utility>

namespace norvane {

namespace {

constexpr int32 kNameColumn = 1;
constexpr int32 kSizeColumn = 2;
constexpr int32 kDateColumn = 3;
constexpr int32 kPermissionColumn = 4;

constexpr const char* kFolderText = "[Directory]";
constexpr const char* kLinkText = "[Link]";
constexpr const char* kMeasuringText = "...";

} // namespace

struct DirListItem::Texts
{
    std::string name; // empty: the ref's own
    std::string size;
    std::string date;
    std::string permissions;
    int64 occupied = -1;                     // by a folder that was measured
    bool isMeasuring = false;                // that is being found out
    bool isMade = false;                     // size, date and permissions
    SizeUnits units = SizeUnits::kKilobytes; // that the size is written in
};

DirListItem::DirListItem(BEntry* entry, rgb_color, bool isParent, int nameMode,
                         const char* dateFormat)
    : CLVListItem(0, true, true, kMinimumHeight)
{
    if (isParent) {
        return;
    }
    fDates = &DatePattern::For(dateFormat);
    struct stat st = {};
    fHasPermissions = entry->GetStat(&st) == B_OK;
    TakeEntry(*entry, st);
    if (nameMode == kQueryMode) {
        BPath path;
        if (entry->GetPath(&path) == B_OK) {
            ShowPath(path.Path());
        }
    }
}

DirListItem::DirListItem(entry_ref&& ref, const BEntryRecord& record, const DatePattern& dates,
                         mode_t target)
    : CLVListItem(0, true, true, kMinimumHeight), fRef(std::move(ref)), fDates(&dates)
{
    TakeRecord(record, target);
}

DirListItem::DirListItem(const char* name, const char* size, const char* date,
                         const char* permissions)
    : CLVListItem(0, true, true, kMinimumHeight), fTexts(std::make_unique<Texts>())
{
    const char kind = permissions[0];
    fKind = kind == 'd' ? Kind::kRemoteFolder : Kind::kRemoteFile;
    fIsDirectory = kind == 'd';
    fSize = std::strtoll(size, nullptr, 10);
    fTexts->name = name;
    fTexts->date = date;
    fTexts->permissions = permissions;
    fTexts->units = CurrentSizeUnits();
    fTexts->size = SizeColumnText();
    fTexts->isMade = true;
}

DirListItem::DirListItem() : CLVListItem(0, true, true, kMinimumHeight) {}

DirListItem::~DirListItem()
{
    DropTextsAndIcon();
}

void DirListItem::DropTextsAndIcon()
{
    if (fOwnsIcon) {
        delete fIcon;
    }
    fIcon = nullptr;
    fOwnsIcon = false;
    fHasLookedForIcon = false;
    fTexts.reset();
}

void DirListItem::TakeEntry(const BEntry& entry, const struct stat& st)
{
    entry.GetRef(&fRef);
    TakeNode(st.st_mode, st.st_ino, st.st_size, st.st_mtime);
    if (fKind == Kind::kLink) {
        FollowLink();
    }
}

void DirListItem::TakeRecord(const BEntryRecord& record, mode_t target)
{
    TakeNode(record.mode, record.node, record.size, record.modified);
    fHasPermissions = record.status == B_OK;
    if (fKind == Kind::kLink) {
        fIsDirectory = !S_ISREG(target);
    }
}

void DirListItem::Take(const BEntryRecord& record, const DatePattern& dates, mode_t target)
{
    DropTextsAndIcon();
    fDates = &dates;
    TakeRecord(record, target);
}

void DirListItem::SetDates(const DatePattern& dates)
{
    if (fDates == nullptr) {
        return;
    }
    fDates = &dates;
    if (fTexts != nullptr && fTexts->isMade && fKind != Kind::kParent) {
        fTexts->date = fDates->Format(fModified);
    }
}

bool DirListItem::Become(const DirListItem& fresh)
{
    const auto shown = [](const DirListItem& row) {
        return std::tie(row.fNode, row.fSize, row.fModified, row.fDates, row.fMode, row.fKind,
                        row.fIsDirectory, row.fHasPermissions);
    };
    if (shown(*this) == shown(fresh)) {
        return false;
    }
    DropTextsAndIcon();
    fNode = fresh.fNode;
    fSize = fresh.fSize;
    fModified = fresh.fModified;
    fDates = fresh.fDates;
    fMode = fresh.fMode;
    fKind = fresh.fKind;
    fIsDirectory = fresh.fIsDirectory;
    fHasPermissions = fresh.fHasPermissions;
    return true;
}

void DirListItem::ShowPath(std::string path)
{
    DropTextsAndIcon();
    fTexts = std::make_unique<Texts>();
    fTexts->name = std::move(path);
}

void DirListItem::SetName(const char* name)
{
    DropTextsAndIcon();
    fRef.set_name(name);
}

void DirListItem::TakeNode(mode_t mode, ino_t node, off_t size, time_t modified)
{
    fMode = static_cast<uint16>(mode);
    fNode = node;
    fModified = modified;
    fSize = S_ISREG(mode) ? size : 0;
    fIsDirectory = !S_ISREG(mode);
    if (S_ISREG(mode)) {
        fKind = Kind::kFile;
    } else if (S_ISDIR(mode)) {
        fKind = Kind::kFolder;
    } else {
        fKind = S_ISLNK(mode) ? Kind::kLink : Kind::kOther;
    }
}

void DirListItem::FollowLink()
{
    struct stat target = {};
    if (BEntry(&fRef, true).GetStat(&target) == B_OK) {
        fIsDirectory = !S_ISREG(target.st_mode);
    }
}

status_t DirListItem::Update(const entry_ref* ref, const char* dateFormat)
{
    // The row's own ref may be the one passed, so the entry is read from a copy.
    const BEntry entry(ref);
    struct stat st = {};
    const status_t status = entry.GetStat(&st);
    if (status != B_OK) {
        return status;
    }
    DropTextsAndIcon();
    fDates = &DatePattern::For(dateFormat);
    fHasPermissions = true;
    TakeEntry(entry, st);
    return B_OK;
}

status_t DirListItem::Update(const char* dateFormat)
{
    return Update(&fRef, dateFormat);
}

void DirListItem::SetDirSize(int64 bytes)
{
    Texts& texts = MadeTexts();
    texts.occupied = bytes;
    texts.isMeasuring = false;
    texts.size = SizeColumnText();
}

void DirListItem::SetMeasuring(bool isOn)
{
    if (isOn || fTexts != nullptr) {
        Texts& texts = MadeTexts();
        texts.isMeasuring = isOn;
        texts.size = SizeColumnText();
    }
}

int64 DirListItem::SizeShown() const
{
    return IsMeasured() ? fTexts->occupied : fSize;
}

bool DirListItem::IsMeasured() const
{
    return fTexts != nullptr && fTexts->occupied >= 0;
}

node_ref DirListItem::NodeRef() const
{
    return {fRef.device, fNode};
}

const char* DirListItem::GetEntryName() const
{
    if (fKind == Kind::kParent) {
        return "..";
    }
    if (fTexts != nullptr && !fTexts->name.empty()) {
        return fTexts->name.c_str();
    }
    return fRef.name != nullptr ? fRef.name : "";
}

const char* DirListItem::LeafName() const
{
    return fRef.name != nullptr ? fRef.name : GetEntryName();
}

void DirListItem::SetCommandName(const std::string& name)
{
    fRef.set_name(name.empty() ? nullptr : name.c_str());
}

std::string DirListItem::CommandName() const
{
    return fRef.name != nullptr ? fRef.name : "";
}

DirListItem::Texts& DirListItem::MadeTexts() const
{
    if (fTexts == nullptr) {
        fTexts = std::make_unique<Texts>();
    }
    Texts& texts = *fTexts;
    const SizeUnits units = CurrentSizeUnits();
    if (texts.isMade && texts.units == units) {
        return texts;
    }
    texts.units = units;
    texts.size = SizeColumnText();
    if (texts.isMade) {
        return texts;
    }
    texts.isMade = true;
    if (fKind == Kind::kParent) {
        texts.date = texts.permissions = "--";
        return texts;
    }
    texts.date = fDates->Format(fModified);
    texts.permissions = fHasPermissions ? PermissionText(fMode) : "n/a";
    return texts;
}

std::string DirListItem::SizeColumnText() const
{
    if (fTexts->isMeasuring) {
        return kMeasuringText;
    }
    if (fTexts->occupied >= 0) {
        return OccupiedText(fTexts->occupied);
    }
    switch (fKind) {
    case Kind::kParent:
        return "--";
    case Kind::kFile:
        return SizeText(fSize);
    case Kind::kFolder:
    case Kind::kRemoteFolder:
        return kFolderText;
    case Kind::kLink:
        return kLinkText;
    case Kind::kRemoteFile:
        return fTexts->permissions[0] == 'l' ? kLinkText : SizeText(fSize);
    default:
        return "";
    }
}

std::string DirListItem::SpokenText() const
{
    std::string spoken = GetEntryName();
    for (const int32 column : {kSizeColumn, kDateColumn, kPermissionColumn}) {
        spoken.append(", ").append(Text(column));
    }
    return spoken + (IsMarked() ? ", marked" : "");
}

const char* DirListItem::Text(int32 columnIndex) const
{
    switch (columnIndex) {
    case kNameColumn:
        return GetEntryName();
    case kSizeColumn:
        return MadeTexts().size.c_str();
    case kDateColumn:
        return MadeTexts().date.c_str();
    case kPermissionColumn:
        return MadeTexts().permissions.c_str();
    default:
        return "";
    }
}

// Icon

const BBitmap* DirListItem::GetBitmap() const
{
    if (!fHasLookedForIcon) {
        LookForIcon(nullptr);
    }
    return fIcon;
}

void DirListItem::SetBitmap(std::unique_ptr<BBitmap> own, const BBitmap* shared)
{
    if (fOwnsIcon) {
        delete fIcon;
    }
    fHasLookedForIcon = true;
    fOwnsIcon = own != nullptr;
    fIcon = fOwnsIcon ? own.release() : shared;
}

/// In a list that a window shows nobody waits for the disk: a likely icon is shown until another
/// one is found.
void DirListItem::LookForIcon(const BView* owner) const
{
    fHasLookedForIcon = true;
    switch (fKind) {
    case Kind::kParent:
        fIcon = UpArrowIcon();
        break;
    case Kind::kRemoteFolder:
        fIcon = RemoteFolderIcon();
        break;
    case Kind::kRemoteFile:
        fIcon = RemoteFileIcon();
        break;
    case Kind::kOther:
        break;
    default: {
        if (owner != nullptr && owner->Window() != nullptr) {
            // Of a link its target's kind is known, but not its name.
            const mode_t likelyMode =
                fKind != Kind::kLink ? fMode : (fIsDirectory ? mode_t{S_IFDIR} : mode_t{S_IFREG});
            fIcon = LikelyRowIcon(fRef, likelyMode);
            FindRowIconLater(fRef, NodeRef(), fMode, fIcon, BMessenger(owner));
            break;
        }
        RowIcon icon = FindRowIcon(fRef, fMode);
        fOwnsIcon = icon.own != nullptr;
        fIcon = fOwnsIcon ? icon.own.release() : icon.shared;
        break;
    }
    }
}

// Drawing

void DirListItem::Update(BView* owner, const BFont* font)
{
    // Measured once: a million rows are updated when they join their list.
    static const font_height plain = [] {
        font_height height;
        be_plain_font->GetHeight(&height);
        return height;
    }();
    CLVListItem::Update(owner, font);
    font_height height = plain;
    if (font->Size() != Preferences::kFontSize) {
        font->GetHeight(&height);
    }
    const float line = std::ceil(height.ascent) + std::ceil(height.descent);
    fBaseline = std::ceil(height.ascent) + (Height() - line) / 2;
}

void DirListItem::DrawItemColumn(BView* owner, BRect rect, int32 columnIndex, bool complete)
{
    constexpr rgb_color kSelected = {194, 194, 194, 255};
    constexpr rgb_color kWhite = {255, 255, 255, 255};
    constexpr rgb_color kRed = {255, 0, 0, 255};
    constexpr rgb_color kBlack = {0, 0, 0, 255};
    constexpr float kTextInset = 2;
    constexpr uint8 kCutVeil = 150;

    const rgb_color background = IsSelected() ? kSelected : kWhite;
    owner->SetLowColor(background);
    owner->SetDrawingMode(B_OP_COPY);
    if (IsSelected() || complete) {
        owner->SetHighColor(background);
        owner->FillRect(rect);
    }
    if (columnIndex < 0) {
        return;
    }
    BRegion clipping(rect);
    owner->ConstrainClippingRegion(&clipping);
    if (columnIndex == 0) {
        DrawIcon(*owner, rect);
    } else {
        owner->SetHighColor(fIsMarked ? kRed : kBlack);
        owner->DrawString(Text(columnIndex), BPoint(rect.left + kTextInset, rect.top + fBaseline));
    }
    if (EntryClipboard::IsCut(fRef)) {
        // It is still there, but on its way.
        owner->SetDrawingMode(B_OP_ALPHA);
        owner->SetHighColor(background.red, background.green, background.blue, kCutVeil);
        owner->FillRect(rect);
        owner->SetDrawingMode(B_OP_COPY);
    }
    owner->ConstrainClippingRegion(nullptr);
}

void DirListItem::DrawIcon(BView& owner, BRect cell) const
{
    constexpr float kInset = 2;
    constexpr float kLastPixel = 15;
    if (!fHasLookedForIcon) {
        LookForIcon(&owner);
    }
    const BBitmap* icon = fIcon;
    if (icon == nullptr) {
        return;
    }
    BRect place(cell.left + kInset, cell.top + kInset, cell.left + kInset + kLastPixel, 0);
    if (Height() > kMinimumHeight) {
        place.top += std::ceil((Height() - kMinimumHeight) / 2);
    }
    place.bottom = place.top + kLastPixel;
    owner.SetDrawingMode(B_OP_OVER);
    owner.DrawBitmap(icon, place);
    owner.SetDrawingMode(B_OP_COPY);
}

char* DirListItem::GetStrPermissions(unsigned int mode)
{
    constexpr std::size_t kBytes = 15;
    auto* text = new char[kBytes];
    std::snprintf(text, kBytes, "%s", PermissionText(mode).c_str());
    return text;
}

int DirListItem::MyCompare(const CLVListItem* a, const CLVListItem* b, int32)
{
    const auto* left = static_cast<const DirListItem*>(a);
    const auto* right = static_cast<const DirListItem*>(b);
    return std::strcmp(left->Text(kSizeColumn), right->Text(kSizeColumn));
}

} // namespace norvane
