#pragma once

#include "viewer/TextReading.h"

#include <Font.h>
#include <Messenger.h>

#include <memory>
#include <string>
#include <vector>

class BBitmap;
class BTextContents;

namespace norvane {

/// What a viewer shows a file as.
enum class ViewedKind : int32 {
    kError = -1,
    kNone = 0,
    kText = 1,
    kImage = 2,
    kUnknown = 3,
};

/// What came of loading a file since one last asked.
struct FileNews
{
    FileNews();
    FileNews(FileNews&&) noexcept;
    FileNews& operator=(FileNews&&) noexcept;
    ~FileNews();

    bool hasKind = false; // the next two are known now
    ViewedKind kind = ViewedKind::kNone;
    bool isFile = false;                 // a regular one, whose bytes can be looked at
    std::vector<const char*> complaints; // of finding that out, in their order

    std::unique_ptr<BTextContents> text; // all that was read so far; null: nothing new
    std::unique_ptr<BBitmap> image;      // null: none, or not yet
    bool isDone = false;                 // nothing more comes; the rest of a text is known
    TextOutcome outcome;                 // why it cannot be shown, or what is shown of a text
};

/// Finds out what a file is and loads it, on a thread of its own that waits for the disk and then
/// dies, whether or not anybody is still interested. FIFOs, sockets and devices are not opened.
///
/// Thread: the functions are the viewer's.
class FileLoading
{
public:
    /// Begins. `viewer` is sent a kFileNews whenever TakeNews() has something; texts are measured
    /// in `font`. Without a thread to be had it is done when this returns.
    FileLoading(const std::string& path, const BMessenger& viewer, const BFont& font);
    /// The same for what is known to be a text.
    FileLoading(const std::string& path, TextEncoding encoding, const BMessenger& viewer,
                const BFont& font);
    /// Lets go. Waits for nothing.
    ~FileLoading();
    FileLoading(const FileLoading&) = delete;
    FileLoading& operator=(const FileLoading&) = delete;

    FileNews TakeNews();

private:
    class Work;

    void Begin();

    const std::shared_ptr<Work> fWork;
};

} // namespace norvane
