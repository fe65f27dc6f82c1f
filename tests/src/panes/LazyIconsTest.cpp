// Which entries are opened, and how often attributes are read: for that the system's calls of this
// whole program pass here.

#include "PaneWindowFixture.h"
#include "panes/DatePattern.h"
#include "panes/FolderReader.h"

#include <dlfcn.h>
#include <sys/types.h>

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <map>

namespace {

constexpr const char* kPrefix = "looked-at-";

std::mutex gMutex;
std::map<std::string, int> gOpened; // guarded by gMutex
std::atomic<int> gAttributeCalls{0};

template<typename Function>
Function RealOf(const char* name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

void Note(const char* path)
{
    const std::string_view text(path);
    const size_t start = text.rfind('/') == text.npos ? 0 : text.rfind('/') + 1;
    if (text.substr(start).starts_with(kPrefix)) {
        const std::lock_guard lock(gMutex);
        gOpened[std::string(text.substr(start))]++;
    }
}

} // namespace

extern "C" {

int openat(int folder, const char* path, int flags, ...)
{
    va_list more;
    va_start(more, flags);
    const mode_t mode = va_arg(more, mode_t);
    va_end(more);
    Note(path);
    static const auto real = RealOf<int (*)(int, const char*, int, ...)>("openat");
    return real(folder, path, flags, mode);
}

ssize_t flistxattr(int file, char* list, size_t size) noexcept
{
    ++gAttributeCalls;
    static const auto real = RealOf<ssize_t (*)(int, char*, size_t)>("flistxattr");
    return real(file, list, size);
}

ssize_t listxattr(const char* path, char* list, size_t size) noexcept
{
    ++gAttributeCalls;
    static const auto real = RealOf<ssize_t (*)(const char*, char*, size_t)>("listxattr");
    return real(path, list, size);
}

ssize_t fgetxattr(int file, const char* name, void* value, size_t size) noexcept
{
    ++gAttributeCalls;
    static const auto real = RealOf<ssize_t (*)(int, const char*, void*, size_t)>("fgetxattr");
    return real(file, name, value, size);
}

ssize_t getxattr(const char* path, const char* name, void* value, size_t size) noexcept
{
    ++gAttributeCalls;
    static const auto real =
        RealOf<ssize_t (*)(const char*, const char*, void*, size_t)>("getxattr");
    return real(path, name, value, size);
}

} // extern "C"

namespace {

using namespace norvane;

/// A folder of many entries: what listing it and painting some of its rows takes of them.
class LazyIconsTest : public PaneWindowFixture
{
protected:
    static constexpr int kEntries = 300;

    void SetUp() override
    {
        PaneWindowFixture::SetUp();
        for (int i = 0; i < kEntries; i++) {
            fTree.Write("shown/" + Name(i), "");
        }
        Forget();
    }

    static std::string Name(int index)
    {
        char text[64];
        std::snprintf(text, sizeof(text), "%s%03d.txt", kPrefix, index);
        return text;
    }

    static void Forget()
    {
        const std::lock_guard lock(gMutex);
        gOpened.clear();
        gAttributeCalls = 0;
    }

    static std::map<std::string, int> Opened()
    {
        const std::lock_guard lock(gMutex);
        return gOpened;
    }

    void ScrollTo(int32 index)
    {
        Locked([&] {
            fList->ScrollTo(BPoint(0, fList->ItemFrame(index).top));
            return 0;
        });
        kits::testing::TakePicture(fWindow); // painted by then
    }
};

TEST_F(LazyIconsTest, ListingOpensNoEntryAndReadsNoAttribute)
{
    FolderReader reader;
    ASSERT_EQ(reader.Open(fTree.Path("shown")), B_OK);
    ASSERT_EQ(reader.ReadNames(), B_OK);
    while (reader.ReadMore()) {
    }
    std::vector<std::unique_ptr<DirListItem>> folders;
    std::vector<std::unique_ptr<DirListItem>> files;
    LinkTargets links{BMessenger()};
    reader.TakeRows(DatePattern::For("%D %R"), links, folders, files);
    ASSERT_EQ(files.size(), size_t(kEntries));
    for (const auto& file : files) {
        EXPECT_STREQ(file->Text(4), "rw-r--r--");
    }

    EXPECT_TRUE(Opened().empty());
    EXPECT_EQ(gAttributeCalls, 0);

    EXPECT_NE(files[7]->GetBitmap(), nullptr);
    EXPECT_EQ(Opened(), (std::map<std::string, int>{{Name(7), 1}}));
    EXPECT_GT(gAttributeCalls, 0);
}

TEST_F(LazyIconsTest, OnlyRowsThatAreShownAreLookedAt)
{
    Open();
    kits::testing::TakePicture(fWindow);

    EXPECT_TRUE(kits::testing::WaitFor([] { return Opened().contains(Name(10)); }));
    const std::map<std::string, int> opened = Opened();
    EXPECT_TRUE(opened.contains(Name(0)));
    const float rowHeight = Locked([this] { return fList->ItemFrame(1).Height() + 1; });
    const float shown = Locked([this] { return fList->Bounds().Height() + 1; }) / rowHeight;
    EXPECT_LE(opened.size(), static_cast<size_t>(shown) + 2);
}

TEST_F(LazyIconsTest, ARowIsLookedAtWhenItComesIntoSight)
{
    Open();
    kits::testing::TakePicture(fWindow);
    ASSERT_FALSE(Opened().contains(Name(kEntries - 1)));

    ScrollTo(kEntries - 5);

    // On a thread of its own.
    EXPECT_TRUE(kits::testing::WaitFor([] { return Opened().contains(Name(kEntries - 1)); }));
    EXPECT_FALSE(Opened().contains(Name(kEntries / 2)));
}

TEST_F(LazyIconsTest, ARowIsLookedAtOnce)
{
    Open();
    kits::testing::TakePicture(fWindow);
    ScrollTo(kEntries - 5);
    ScrollTo(0);

    for (const auto& [name, count] : Opened()) {
        EXPECT_EQ(count, 1) << name;
    }
}

} // namespace
