#pragma once

#include <Entry.h>
#include <Messenger.h>
#include <SupportDefs.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace kits {

class PanelLink;

/// What a file panel shows of a folder.
struct PanelFolder
{
    struct Entry
    {
        entry_ref ref;
        mode_t mode = 0; // of what a link leads to
        bool IsFolder() const;
    };

    status_t status = B_OK; // of reading
    std::string path;       // of the folder, as the system names it
    entry_ref ref;
    std::vector<Entry> entries;      // folders first, in the order of people's language
    std::vector<std::string> places; // folders to go to: those above, then the system's, "" between
    // The path was that of a file, which is `chosen`, in the folder at `path`; no entries then.
    bool isFile = false;
    bool isPassed = false; // by the filter
    entry_ref chosen;
};

/// Reads a folder on a thread of its own, which waits for the disk as long as it takes; whoever
/// lets go of the reading waits for nothing.
class PanelReading
{
public:
    /// Reads `path`; "~" is the home folder, "" the one in which a file was chosen last. A file is
    /// found, too.
    /// `told` is sent a kPanelFolderRead when it is done. Without a thread to be had it is done
    /// when this returns.
    PanelReading(std::string path, std::shared_ptr<PanelLink> link, const BMessenger& told);
    ~PanelReading();
    PanelReading(const PanelReading&) = delete;
    PanelReading& operator=(const PanelReading&) = delete;

    /// Null while it is being read. Once.
    std::unique_ptr<PanelFolder> Take();

private:
    struct Shared;

    const std::shared_ptr<Shared> fShared;
};

constexpr uint32 kPanelFolderRead = 'PFrd';

} // namespace kits
