#include "viewer/FileLoading.h"

#include "DetachedThread.h"
#include "MessageCodes.h"
#include "viewer/FileKind.h"
#include "viewer/ImageReading.h"

#include <Bitmap.h>
#include <OS.h>
#include <TextContents.h>

#include <functional>
#include <mutex>
#include <optional>
#include <utility>

namespace norvane {

FileNews::FileNews() = default;
FileNews::FileNews(FileNews&&) noexcept = default;
FileNews& FileNews::operator=(FileNews&&) noexcept = default;
FileNews::~FileNews() = default;

/// What the owner and the thread share.
class FileLoading::Work : private TextTaker
{
public:
    Work(const std::string& path, const BMessenger& viewer, const BFont& font)
        : fPath(path), fViewer(viewer), fFont(font)
    {
    }

    void Run();
    void ReadAs(TextEncoding encoding) { fEncoding = encoding; }
    void LetGo();
    FileNews TakeNews();

private:
    // TextTaker
    bool WantsMore() override;
    void TakeText(std::unique_ptr<BTextContents> text) override;

    ViewedKind FindKind();
    void Tell(const std::function<void(FileNews&)>& change);

    const std::string fPath;
    const BMessenger fViewer;
    const BFont fFont;
    std::optional<TextEncoding> fEncoding; // of what is known to be a text
    std::mutex fMutex;                     // guards all below
    FileNews fNews;
    bool fIsToldOf = false; // a message of the news is on its way
    bool fIsLetGo = false;
};

ViewedKind FileLoading::Work::FindKind()
{
    const FileKind found = FindFileKind(fPath);
    Tell([&](FileNews& news) {
        news.hasKind = true;
        news.kind = found.kind;
        news.isFile = found.isFile;
        news.complaints = found.complaints;
    });
    return found.kind;
}

void FileLoading::Work::Run()
{
    const ViewedKind kind = fEncoding.has_value() ? ViewedKind::kText : FindKind();
    TextOutcome outcome;
    std::unique_ptr<BBitmap> image;
    if (kind == ViewedKind::kText) {
        outcome = ReadText(fPath, fEncoding.value_or(TextEncoding::kGuessed), fFont, *this);
    } else if (kind == ViewedKind::kImage && WantsMore()) {
        image = ReadImage(fPath, &outcome.trouble);
    }
    Tell([&](FileNews& news) {
        news.image = std::move(image);
        news.outcome = outcome;
        news.isDone = true;
    });
}

bool FileLoading::Work::WantsMore()
{
    const std::lock_guard lock(fMutex);
    return !fIsLetGo;
}

void FileLoading::Work::TakeText(std::unique_ptr<BTextContents> text)
{
    Tell([&](FileNews& news) { std::swap(news.text, text); });
}

void FileLoading::Work::Tell(const std::function<void(FileNews&)>& change)
{
    {
        const std::lock_guard lock(fMutex);
        change(fNews);
        if (fIsToldOf || fIsLetGo) {
            return;
        }
        fIsToldOf = true;
    }
    fViewer.SendMessage(kFileNews);
}

void FileLoading::Work::LetGo()
{
    const std::lock_guard lock(fMutex);
    fIsLetGo = true;
}

FileNews FileLoading::Work::TakeNews()
{
    const std::lock_guard lock(fMutex);
    fIsToldOf = false;
    return std::exchange(fNews, FileNews());
}

FileLoading::FileLoading(const std::string& path, const BMessenger& viewer, const BFont& font)
    : fWork(std::make_shared<Work>(path, viewer, font))
{
    Begin();
}

FileLoading::FileLoading(const std::string& path, TextEncoding encoding, const BMessenger& viewer,
                         const BFont& font)
    : fWork(std::make_shared<Work>(path, viewer, font))
{
    fWork->ReadAs(encoding);
    Begin();
}

void FileLoading::Begin()
{
    if (!StartDetached("viewing", B_NORMAL_PRIORITY, [work = fWork] { work->Run(); })) {
        fWork->Run();
    }
}

FileLoading::~FileLoading()
{
    fWork->LetGo();
}

FileNews FileLoading::TakeNews()
{
    return fWork->TakeNews();
}

} // namespace norvane
