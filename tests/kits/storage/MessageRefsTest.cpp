#include "SameNumbers.h"
#include "storage/FolderTable.h"

#include <Clipboard.h>
#include <Entry.h>
#include <Message.h>
#include <Path.h>

#include <TempTree.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace {

/// The bytes of a ref as a message holds them, with a name that may be no name.
void AddBytes(BMessage& message, const char* name, size_t nameBytes)
{
    char bytes[64] = {};
    std::memcpy(bytes + 16, name, nameBytes);
    message.AddData("refs", B_REF_TYPE, bytes, static_cast<ssize_t>(16 + nameBytes), false);
}

/// A folder whose ref comes into messages, and enough others to push it out of what is remembered.
class MessageFoldersTest : public testing::Test
{
protected:
    MessageFoldersTest()
    {
        fTree.Write("kept/file", "x");
        get_ref_for_path(fTree.Path("kept/file").c_str(), &fRef);
        fNumbers = entry_ref(fRef.device, fRef.directory, "file");
    }
    static void SetUpTestSuite()
    {
        sOthers = std::make_unique<TempTree>();
        for (int i = 0; i < kOthers; ++i) {
            sOthers->MakeFolder(std::to_string(i));
        }
    }
    static void TearDownTestSuite() { sOthers.reset(); }

    /// Lets go of the folder here, and has the table see more others than it remembers unheld.
    void Forget()
    {
        fRef = entry_ref();
        // Twice: the first time its descriptor is closed, which counts as a use.
        for (int i = 0; i < 2 * kOthers; ++i) {
            const std::string name = std::to_string(i % kOthers) + "/file";
            entry_ref other;
            get_ref_for_path(sOthers->Path(name).c_str(), &other);
        }
    }

    bool IsKnown() const
    {
        return static_cast<bool>(
            kits::FolderTable::Get().Find(fNumbers.device, fNumbers.directory));
    }

    std::string PathIn(const BMessage& message) const
    {
        entry_ref ref;
        if (message.FindRef("refs", &ref) != B_OK) {
            return "(no ref)";
        }
        const BPath path(&ref);
        return path.InitCheck() == B_OK ? path.Path() : "(no path)";
    }

    static constexpr int kOthers = 1100;
    static inline std::unique_ptr<TempTree> sOthers;

    TempTree fTree;
    entry_ref fRef;
    entry_ref fNumbers;
};

} // namespace

TEST_F(MessageFoldersTest, AreForgottenWithoutAMessage)
{
    Forget();

    EXPECT_FALSE(IsKnown());
}

TEST_F(MessageFoldersTest, StayKnownAndAreFollowed)
{
    BMessage message;
    message.AddRef("refs", &fRef);
    ASSERT_EQ(rename(fTree.Path("kept").c_str(), fTree.Path("moved").c_str()), 0);
    Forget();

    EXPECT_EQ(PathIn(message), fTree.Path("moved/file"));
}

TEST_F(MessageFoldersTest, StayKnownWithACopy)
{
    BMessage copy;
    {
        BMessage message;
        message.AddRef("refs", &fRef);
        copy = message;
        copy.AddInt32("more", 1); // data of its own
    }
    Forget();

    EXPECT_EQ(PathIn(copy), fTree.Path("kept/file"));
}

TEST_F(MessageFoldersTest, StayKnownWhenTakenFromBytes)
{
    BMessage message;
    message.AddRef("refs", &fRef);
    std::vector<char> bytes(static_cast<size_t>(message.FlattenedSize()));
    message.Flatten(bytes.data(), message.FlattenedSize());
    BMessage taken;
    ASSERT_EQ(taken.Unflatten(bytes.data(), message.FlattenedSize()), B_OK);
    message.MakeEmpty();
    Forget();

    EXPECT_EQ(PathIn(taken), fTree.Path("kept/file"));
}

TEST_F(MessageFoldersTest, StayKnownInsideOtherMessages)
{
    BMessage outermost;
    {
        BMessage inner;
        inner.AddRef("refs", &fRef);
        BMessage middle;
        middle.AddMessage("inner", &inner);
        outermost.AddMessage("middle", &middle);
    }
    Forget();

    BMessage middle;
    BMessage inner;
    ASSERT_EQ(outermost.FindMessage("middle", &middle), B_OK);
    ASSERT_EQ(middle.FindMessage("inner", &inner), B_OK);
    EXPECT_EQ(PathIn(inner), fTree.Path("kept/file"));
}

TEST_F(MessageFoldersTest, StayKnownOnTheClipboard)
{
    BClipboard clipboard("folders of refs");
    clipboard.Lock();
    clipboard.Clear();
    clipboard.Data()->AddRef("refs", &fRef);
    clipboard.Commit();
    clipboard.Unlock();
    Forget();

    clipboard.Lock();
    EXPECT_EQ(PathIn(*clipboard.Data()), fTree.Path("kept/file"));
    clipboard.Clear();
    clipboard.Commit();
    clipboard.Unlock();
}

TEST_F(MessageFoldersTest, StayKnownWithARefThatWasFound)
{
    entry_ref found;
    {
        BMessage message;
        message.AddRef("refs", &fRef);
        ASSERT_EQ(message.FindRef("refs", &found), B_OK);
    }
    Forget();

    EXPECT_TRUE(IsKnown());
}

TEST_F(MessageFoldersTest, AreLetGoWithTheirValue)
{
    BMessage replaced;
    replaced.AddRef("refs", &fRef);
    BMessage removed(replaced);
    removed.AddRef("refs", &fRef);
    const entry_ref other(1, 2, "other");
    replaced.ReplaceRef("refs", &other);
    removed.RemoveData("refs", 1);
    removed.ReplaceRef("refs", &other);
    Forget();

    EXPECT_FALSE(IsKnown());
}

TEST(MessageRefsTest, FindsRefsAgain)
{
    const entry_ref first(std::numeric_limits<dev_t>::max(), std::numeric_limits<ino_t>::max(),
                          "a");
    const entry_ref second(1, 2, "a longer name\nwith a line break and \xFF");
    BMessage message;

    EXPECT_EQ(message.AddRef("refs", &first), B_OK);
    EXPECT_EQ(message.AddRef("refs", &second), B_OK);

    entry_ref found;
    EXPECT_EQ(message.FindRef("refs", &found), B_OK);
    EXPECT_EQ(found, first);
    EXPECT_EQ(message.FindRef("refs", 1, &found), B_OK);
    EXPECT_EQ(found, second);
    EXPECT_TRUE(message.HasRef("refs", 1));
    EXPECT_FALSE(message.HasRef("refs", 2));
}

TEST(MessageRefsTest, ReplacesInPlace)
{
    const entry_ref first(1, 2, "first");
    const entry_ref second(3, 4, "a second one with a longer name");
    BMessage message;
    message.AddRef("refs", &first);
    message.AddRef("refs", &first);

    EXPECT_EQ(message.ReplaceRef("refs", &second), B_OK);
    EXPECT_EQ(message.ReplaceRef("refs", 2, &second), B_BAD_INDEX);

    entry_ref found;
    EXPECT_EQ(message.FindRef("refs", 0, &found), B_OK);
    EXPECT_EQ(found, second);
    EXPECT_EQ(message.FindRef("refs", 1, &found), B_OK);
    EXPECT_EQ(found, first);
}

TEST(MessageRefsTest, NameNoFolderThatGotTheNumbersOfAnother)
{
    TempTree files;
    entry_ref ref;
    BMessage message;
    BMessage outer;
    const bool isMade = MakeWithNumbersOfRemoved(files, [&](const entry_ref& before) {
        ref = before;
        message.MakeEmpty();
        message.AddRef("refs", &ref);
        outer.MakeEmpty();
        outer.AddMessage("inner", &message);
    });
    if (!isMade) {
        GTEST_SKIP() << "the file system of temporary files gives no number twice";
    }
    entry_ref other;
    get_ref_for_path(files.Path("a/file").c_str(), &other);
    message.AddRef("refs", &other);

    entry_ref first;
    entry_ref second;
    ASSERT_EQ(message.FindRef("refs", 0, &first), B_OK);
    ASSERT_EQ(message.FindRef("refs", 1, &second), B_OK);
    EXPECT_FALSE(BEntry(&first).Exists());
    EXPECT_TRUE(BEntry(&second).Exists());
    BMessage inner;
    ASSERT_EQ(outer.FindMessage("inner", &inner), B_OK);
    ASSERT_EQ(inner.FindRef("refs", &first), B_OK);
    EXPECT_FALSE(BEntry(&first).Exists());
    BMessage late; // the old ref, packed only now
    late.AddRef("refs", &ref);
    ASSERT_EQ(late.FindRef("refs", &first), B_OK);
    EXPECT_FALSE(BEntry(&first).Exists());
}

TEST(MessageRefsTest, TakesNoRefWithoutAName)
{
    const entry_ref nameless;
    BMessage message;

    EXPECT_EQ(message.AddRef("refs", &nameless), B_BAD_VALUE);
    EXPECT_EQ(message.AddRef("refs", nullptr), B_BAD_VALUE);

    EXPECT_TRUE(message.IsEmpty());
}

TEST(MessageRefsTest, FindsNoRefInBytesThatAreNone)
{
    BMessage message;
    AddBytes(message, "", 0);
    AddBytes(message, "", 1);
    AddBytes(message, "open", 4);
    AddBytes(message, "a/b", 4);
    AddBytes(message, "a\0b", 4);
    AddBytes(message, "good", 5);

    for (int32 i = 0; i < 5; i++) {
        entry_ref found(1, 2, "older");
        EXPECT_EQ(message.FindRef("refs", i, &found), B_BAD_VALUE) << "value " << i;
        EXPECT_EQ(found, entry_ref()) << "value " << i;
    }
    entry_ref found;
    EXPECT_EQ(message.FindRef("refs", 5, &found), B_OK);
    EXPECT_STREQ(found.name, "good");
}
