#include "viewer/FileLoading.h"

#include "DetachedThread.h"
#include "MessageCodes.h"
#include "viewer/FileKind.h"
#include "viewer/ImageReading.h"
#include "viewer/TextReading.h"

#include <Bitmap.h>
#include <OS.h>
#include <TextContents.h>

#include <functional>
#include <mutex>
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
    void LetGo();
    FileNews TakeNews();

private:
    // TextTaker
    bool WantsMore() override;
    void TakeText(std::unique_ptr<BTextContents> text) override;

    void Tell(const std::function<void(FileNews&)>& change);

    const std::string fPath;
    const BMessenger fViewer;
    const BFont fFont;
    std::mutex fMutex; // guards all below
    FileNews fNews;
    bool fIsToldOf = false; // a message of the news is on its way
    bool fIsLetGo = false;
};

void FileLoading::Work::Run()
{
    const FileKind found = FindFileKind(fPath);
    Tell([&](FileNews& news) {
        news.hasKind = true;
        news.kind = found.kind;
        news.isFile = found.isFile;
        news.complaints = found.complaints;
    });
    TextOutcome outcome;
    std::unique_ptr<BBitmap> image;
    if (found.kind == ViewedKind::kText) {
        outcome = ReadText(fPath, fFont, *this);
    } else if (found.kind == ViewedKind::kImage && WantsMore()) {
        image = ReadImage(fPath, &outcome.trouble);
    }
    Tell([&](FileNews& news) {
        news.image = std::move(image);
        news.trouble = outcome.trouble;
        news.remark = outcome.remark;
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
