#pragma once

#include "PanelFolder.h"

#include <Bitmap.h>
#include <ListItem.h>
#include <ListView.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace kits {

/// The list of a file panel: a row for each entry whose name contains what is typed, and a line in
/// its middle where there is none.
///
/// Thread: the window's.
class PanelList : public BListView
{
public:
    PanelList(BRect frame, list_view_type type);
    ~PanelList() override;

    /// Shows other entries, the first one selected. Adopts the folder's; null for none.
    void SetTo(std::unique_ptr<PanelFolder> folder);
    /// Leaves the names that contain the text, whatever the case of plain letters.
    void Filter(const std::string& text);
    /// What is said where there is no row.
    void SetRemark(const std::string& remark);
    const std::string& Remark() const { return fRemark; }

    /// Null outside the list.
    const PanelFolder::Entry* EntryAt(int32 index) const;

    // BListView
    void Draw(BRect updateRect) override;

private:
    class Row;

    const BBitmap* IconFor(const PanelFolder::Entry& entry);
    void ShowRows(const std::string& text);

    std::unique_ptr<PanelFolder> fFolder;
    std::vector<std::unique_ptr<Row>> fRows;                // one for each entry
    std::map<std::string, std::unique_ptr<BBitmap>> fIcons; // by the end of the name
    std::string fText;                                      // in small letters
    std::string fRemark;
};

} // namespace kits
