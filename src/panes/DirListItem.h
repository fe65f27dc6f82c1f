#pragma once

#include "clv/CLVListItem.h"
#include "panes/PaneMode.h"

#include <Entry.h>
#include <EntryRecord.h>
#include <GraphicsDefs.h>
#include <Node.h>

#include <memory>
#include <string>

class BBitmap;

namespace norvane {

class DatePattern;

/// One row of a pane: an entry of a folder, of query results or of an FTP listing, or the parent
/// row "..".
///
/// A folder may have a million rows, so a row keeps what the listing found and makes its texts and
/// looks up its icon when they are first asked for.
class DirListItem : public CLVListItem
{
public:
    static constexpr float kMinimumHeight = 20;

    /// A local row, or the parent row (`entry` is not used then).
    DirListItem(BEntry* entry, rgb_color colour, bool isParent, int nameMode,
                const char* dateFormat);
    /// A row of what a look at an entry found, and at what it leads to when it is a link: 0 when
    /// that is nothing.
    DirListItem(entry_ref&& ref, const BEntryRecord& record, const DatePattern& dates,
                mode_t target = 0);
    /// A row of an FTP listing; it has no CommandName() yet.
    DirListItem(const char* name, const char* size, const char* date, const char* permissions);
    /// A parent row without an entry.
    DirListItem();
    ~DirListItem() override;
    DirListItem(const DirListItem&) = delete;
    DirListItem& operator=(const DirListItem&) = delete;

    // CLVListItem
    void DrawItemColumn(BView* owner, BRect rect, int32 columnIndex, bool complete) override;
    void Update(BView* owner, const BFont* font) override;

    /// Reads the entry anew; the row shows its leaf name from then on.
    /// Errors: those of reading the entry; the row stays as it was then.
    status_t Update(const entry_ref* ref, const char* dateFormat);
    status_t Update(const char* dateFormat);
    /// Shows what a look at the entry found, and at what it leads to.
    void Take(const BEntryRecord& record, const DatePattern& dates, mode_t target = 0);
    /// Shows what a fresh row of the same entry does. False when it did so already.
    bool Become(const DirListItem& fresh);
    /// Shows a whole path as its name, until it is updated.
    void ShowPath(std::string path);
    /// The entry has another name in its folder.
    void SetName(const char* name);
    /// Shows what a folder occupies.
    void SetDirSize(int64 bytes);
    /// Shows that this is being found out, until it is.
    void SetMeasuring(bool isOn);
    /// Whether that is known.
    bool IsMeasured() const;

    /// Valid until the row is updated or deleted.
    const char* GetEntryName() const;
    const entry_ref* GetRef() const { return &fRef; }
    /// The name without a path before it, as it is edited. Valid until the row is updated or
    /// deleted.
    const char* LeafName() const;
    /// What commands call the entry of an FTP row, which shows more of a link; "" for one that is
    /// only shown.
    void SetCommandName(const std::string& name);
    std::string CommandName() const;
    node_ref NodeRef() const;
    /// Whether it is a local entry that could be read: ".." and a server's rows have no node.
    bool HasNode() const { return fNode != 0; }
    bool IsDir() const { return fIsDirectory; }
    /// Whether a person can go into it: a folder or a link to one, no FIFO, socket or device.
    bool IsEnterable() const { return fIsDirectory && fKind != Kind::kOther; }
    /// A folder itself, no link to one.
    bool IsFolder() const { return fKind == Kind::kFolder; }
    /// A link, to whatever.
    bool IsLink() const { return fKind == Kind::kLink; }
    bool IsParent() const { return fKind == Kind::kParent; }
    int64 GetSize() const { return fSize; }
    /// The same, but what a measured folder occupies.
    int64 SizeShown() const;
    /// When a local entry was changed last, in seconds since 1970, and its mode.
    int64 Modified() const { return fModified; }
    uint16 Mode() const { return fMode; }
    /// Has the date told in this form from here on; what a server wrote stays.
    void SetDates(const DatePattern& dates);
    /// The text of column 1 to 4; empty for any other. Valid until the row is updated or deleted.
    const char* Text(int32 columnIndex) const;
    /// The four texts, for assistive programs.
    std::string SpokenText() const override;
    /// The row's picture; null for an entry that has none. Lent until the row is updated or
    /// deleted.
    const BBitmap* GetBitmap() const;
    /// Has another picture from now on. Either may be null, not both.
    void SetBitmap(std::unique_ptr<BBitmap> own, const BBitmap* shared);
    bool IsMarked() const { return fIsMarked; }
    void Mark(bool isMarked) { fIsMarked = isMarked; }
    /// Which of a filter's texts keeps it out of the list; 0 when none does.
    uint8 HiddenBy() const { return fHiddenBy; }
    void SetHiddenBy(uint8 text) { fHiddenBy = text; }
    bool IsFilteredAway() const { return fHiddenBy != 0; }
    float Baseline() const { return fBaseline; }

    /// Nine characters: read, write and execute of owner, group and others. Returned to the caller
    /// (delete[]).
    static char* GetStrPermissions(unsigned int mode);
    /// Kept for completeness of the row class: panes install no compare function.
    static int MyCompare(const CLVListItem* a, const CLVListItem* b, int32 columnIndex);

private:
    enum class Kind : uint8 { kParent, kFile, kFolder, kLink, kOther, kRemoteFile, kRemoteFolder };
    struct Texts;

    void TakeEntry(const BEntry& entry, const struct stat& st);
    void TakeRecord(const BEntryRecord& record, mode_t target);
    void TakeNode(mode_t mode, ino_t node, off_t size, time_t modified);
    void FollowLink();
    Texts& MadeTexts() const;
    std::string SizeColumnText() const;
    void DropTextsAndIcon();
    void LookForIcon(const BView* owner) const;
    void DrawIcon(BView& owner, BRect cell) const;

    entry_ref fRef;
    ino_t fNode = 0;
    int64 fSize = 0;
    int64 fModified = 0;
    const DatePattern* fDates = nullptr;
    mutable std::unique_ptr<Texts> fTexts;  // null until a text is asked for
    mutable const BBitmap* fIcon = nullptr; // shared by all rows of a type
    float fBaseline = 0;
    uint16 fMode = 0;
    Kind fKind = Kind::kParent;
    bool fIsDirectory = true;
    bool fHasPermissions = true;
    bool fIsMarked = false;
    uint8 fHiddenBy = 0;
    mutable bool fHasLookedForIcon = false;
    mutable bool fOwnsIcon = false; // a picture of this very entry, not shared
};

} // namespace norvane
