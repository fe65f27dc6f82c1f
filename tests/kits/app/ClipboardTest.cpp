#include <Application.h>
#include <Clipboard.h>

#include "RecordingLooper.h"

#include <Message.h>
#include <TypeConstants.h>

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace {

void Put(BClipboard& clipboard, const char* text)
{
    clipboard.Lock();
    clipboard.Clear();
    clipboard.Data()->AddData("text/plain", B_MIME_TYPE, text,
                              static_cast<ssize_t>(std::string(text).size()));
    clipboard.Commit();
    clipboard.Unlock();
}

std::string Get(BClipboard& clipboard)
{
    clipboard.Lock();
    const void* data = nullptr;
    ssize_t size = 0;
    std::string text = "(none)";
    if (clipboard.Data()->FindData("text/plain", B_MIME_TYPE, &data, &size) == B_OK) {
        text.assign(static_cast<const char*>(data), static_cast<size_t>(size));
    }
    clipboard.Unlock();
    return text;
}

TEST(ClipboardTest, KeepsWhatWasCommitted)
{
    BClipboard clipboard("round trip");

    Put(clipboard, "text");

    EXPECT_EQ(Get(clipboard), "text");
}

TEST(ClipboardTest, SharesDataByName)
{
    BClipboard first("shared");
    BClipboard second("shared");
    BClipboard other("another");

    Put(first, "text");

    EXPECT_EQ(Get(second), "text");
    EXPECT_EQ(Get(other), "(none)");
}

TEST(ClipboardTest, DropsWhatWasNotCommitted)
{
    BClipboard clipboard("dropped");
    Put(clipboard, "kept");

    clipboard.Lock();
    clipboard.Clear();
    clipboard.Data()->AddString("text", "lost");
    clipboard.Unlock();

    EXPECT_EQ(Get(clipboard), "kept");
}

TEST(ClipboardTest, RevertBringsTheDataBack)
{
    BClipboard clipboard("reverted");
    Put(clipboard, "kept");

    clipboard.Lock();
    clipboard.Clear();
    EXPECT_FALSE(clipboard.Data()->HasData("text/plain", B_MIME_TYPE));
    EXPECT_EQ(clipboard.Revert(), B_OK);
    EXPECT_TRUE(clipboard.Data()->HasData("text/plain", B_MIME_TYPE));
    clipboard.Unlock();
}

TEST(ClipboardTest, KeepsAllFieldsWithinTheProgram)
{
    BClipboard clipboard("fields");
    clipboard.Lock();
    clipboard.Clear();
    clipboard.Data()->AddInt32("number", 7);
    clipboard.Commit();
    clipboard.Unlock();

    clipboard.Lock();
    EXPECT_EQ(clipboard.Data()->GetInt32("number", 0), 7);
    clipboard.Unlock();
}

TEST(ClipboardTest, GivesNothingWithoutTheLock)
{
    BClipboard clipboard("unlocked");

    EXPECT_EQ(clipboard.Data(), nullptr);
    EXPECT_EQ(clipboard.Clear(), B_NOT_ALLOWED);
    EXPECT_EQ(clipboard.Commit(), B_NOT_ALLOWED);
    EXPECT_EQ(clipboard.Revert(), B_NOT_ALLOWED);
    EXPECT_FALSE(clipboard.IsLocked());
}

TEST(ClipboardTest, LocksNestAndKeepOthersOut)
{
    BClipboard clipboard("locked");
    clipboard.Lock();
    clipboard.Lock();
    clipboard.Clear();
    clipboard.Unlock();
    EXPECT_TRUE(clipboard.IsLocked());
    EXPECT_NE(clipboard.Data(), nullptr);

    bool seenByOther = true;
    std::thread([&] { seenByOther = clipboard.IsLocked() || clipboard.Data() != nullptr; }).join();
    EXPECT_FALSE(seenByOther);
    clipboard.Unlock();
}

TEST(ClipboardTest, CountsReplacements)
{
    BClipboard clipboard("counted");
    const uint32 before = clipboard.SystemCount();

    Put(clipboard, "a");
    Put(clipboard, "b");

    EXPECT_EQ(clipboard.SystemCount(), before + 2);
    EXPECT_EQ(clipboard.LocalCount(), before + 2);
}

TEST(ClipboardTest, TellsThoseWhoWatch)
{
    BClipboard clipboard("told");
    Record record;
    auto* looper = new RecordingLooper(record);
    looper->Run();

    EXPECT_EQ(clipboard.StartWatching(BMessenger(looper)), B_OK);
    EXPECT_EQ(clipboard.StartWatching(BMessenger(looper)), B_OK); // told once all the same
    Put(clipboard, "a");
    EXPECT_TRUE(record.Await());
    EXPECT_EQ(clipboard.StopWatching(BMessenger(looper)), B_OK);
    Put(clipboard, "b");
    looper->PostMessage('last');
    EXPECT_TRUE(record.Await(2));

    EndLooper(looper);
    EXPECT_EQ(record.All(), (Record::Entries{{"looper", B_CLIPBOARD_CHANGED}, {"looper", 'last'}}));
}

TEST(ClipboardTest, RefusesToTellNobody)
{
    BClipboard clipboard("watched");

    EXPECT_EQ(clipboard.StartWatching(BMessenger()), B_BAD_VALUE);
    EXPECT_EQ(clipboard.StopWatching(BMessenger()), B_BAD_VALUE);
}

TEST(ClipboardTest, TellsItsSourceToTheOneThatHasTheLock)
{
    const BApplication application("application/x-vnd.test");
    BClipboard clipboard("source");
    Put(clipboard, "text");

    EXPECT_FALSE(clipboard.DataSource().IsValid());
    clipboard.Lock();
    EXPECT_EQ(clipboard.DataSource(), be_app_messenger);
    EXPECT_TRUE(clipboard.DataSource().IsValid());
    clipboard.Unlock();
}

} // namespace
