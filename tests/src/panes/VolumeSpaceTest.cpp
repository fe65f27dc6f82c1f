#include "panes/VolumeSpace.h"
#include "PaneWindowFixture.h"

#include <Looper.h>
#include <OS.h>
#include <fs_info.h>

#include <atomic>

namespace {

using namespace norvane;
using kits::testing::Picture;
using kits::testing::WaitFor;

constexpr dev_t kNoDevice = 0xFFFFFF; // nothing is mounted with this number

dev_t DeviceOf(const char* path)
{
    return static_cast<dev_t>(dev_for_path(path));
}

/// A pane's part: hands what comes to the space.
class Asker : public BLooper
{
public:
    Asker() : BLooper("asker") {}

    void MessageReceived(BMessage* message) override
    {
        if (message->what != kSpaceFound && message->what != kAskForSpace) {
            BLooper::MessageReceived(message);
            return;
        }
        answers += message->what == kSpaceFound ? 1 : 0;
        news += space.Take(*message) ? 1 : 0;
        text = space.ShortText();
    }

    VolumeSpace space;
    std::string text; // guarded by the looper, as the space
    std::atomic<int> answers{0};
    std::atomic<int> news{0};
};

class VolumeSpaceTest : public ::testing::Test
{
protected:
    void SetUp() override { fAsker->Run(); }
    void TearDown() override
    {
        fAsker->Lock();
        fAsker->Quit();
    }

    void Look(dev_t device, int times = 1)
    {
        const BAutolock lock(fAsker);
        for (int i = 0; i < times; i++) {
            fAsker->space.Look(device, BMessenger(fAsker));
        }
    }

    std::string Text()
    {
        const BAutolock lock(fAsker);
        return fAsker->space.ShortText();
    }

    Asker* fAsker = new Asker; // ends in TearDown()
};

TEST_F(VolumeSpaceTest, TellsWhatIsFreeAndOfWhatKindTheVolumeIs)
{
    Look(DeviceOf("/tmp"));
    ASSERT_TRUE(WaitFor([this] { return fAsker->answers == 1; }));
    ASSERT_TRUE(WaitFor([this] { return !Text().empty(); }));

    fs_info info;
    ASSERT_EQ(fs_stat_dev(DeviceOf("/tmp"), &info), B_OK);
    const std::string kind = info.fsh_name;
    EXPECT_NE(Text().find("B free, " + kind), std::string::npos) << Text();
    const BAutolock lock(fAsker);
    const std::string full = fAsker->space.LongText();
    EXPECT_NE(full.find("B free of "), std::string::npos) << full;
    EXPECT_NE(full.find(", " + kind + ", volume " + info.volume_name), std::string::npos) << full;
}

TEST_F(VolumeSpaceTest, ManyLooksAreOneQuestionNowAndOneLater)
{
    const bigtime_t begin = system_time();
    Look(DeviceOf("/tmp"), 100);
    ASSERT_TRUE(WaitFor([this] { return fAsker->answers == 1; }));
    Look(DeviceOf("/tmp"), 100);
    ASSERT_TRUE(WaitFor([this] { return fAsker->answers == 2; }));
    EXPECT_GE(system_time() - begin, 1'900'000);
    EXPECT_EQ(fAsker->news, 2);
}

TEST_F(VolumeSpaceTest, AnotherVolumeIsAskedAtOnceAndTheOldFigureGoes)
{
    Look(DeviceOf("/tmp"));
    ASSERT_TRUE(WaitFor([this] { return !Text().empty(); }));
    Look(DeviceOf("/proc"));
    EXPECT_EQ(Text(), "");
    ASSERT_TRUE(WaitFor([this] { return fAsker->answers == 2; }));
    EXPECT_EQ(Text(), ""); // it has no room to tell of
    Look(DeviceOf("/tmp"));
    const bigtime_t begin = system_time();
    ASSERT_TRUE(WaitFor([this] { return !Text().empty(); }));
    EXPECT_LT(system_time() - begin, 1'500'000);
}

TEST_F(VolumeSpaceTest, AnAnswerOfTheVolumeLeftIsDropped)
{
    {
        const BAutolock lock(fAsker); // answers wait
        fAsker->space.Look(DeviceOf("/tmp"), BMessenger(fAsker));
        fAsker->space.Look(kNoDevice, BMessenger(fAsker));
    }
    ASSERT_TRUE(WaitFor([this] { return fAsker->answers == 2; }));
    const BAutolock lock(fAsker);
    EXPECT_EQ(fAsker->news, 1); // of the second, of which nothing is known
    EXPECT_EQ(fAsker->text, "");
}

TEST_F(VolumeSpaceTest, NoVolumeHasNoText)
{
    Look(DeviceOf("/tmp"));
    ASSERT_TRUE(WaitFor([this] { return !Text().empty(); }));
    Look(0);
    EXPECT_EQ(Text(), "");
}

/// In a pane's footer.
class FooterSpaceTest : public PaneWindowFixture
{
protected:
    std::string Space()
    {
        return Locked([this] { return fPane->Footer()->Space(); });
    }

    /// Whether something is drawn in the quiet colour.
    bool IsDrawn()
    {
        EXPECT_TRUE(kits::testing::Sync(fWindow));
        const Picture picture = kits::testing::TakePicture(fWindow);
        const BRect footer = Locked([this] { return fPane->Footer()->Frame(); });
        const auto pixel = [&](float units) {
            return static_cast<int32>(units * picture.scale);
        };
        return picture.Count({112, 112, 112, 255}, 0, pixel(footer.top + 2), picture.width,
                             pixel(footer.bottom - 2)) > 0;
    }
};

TEST_F(FooterSpaceTest, IsShownWhereThereIsRoom)
{
    Open();
    ASSERT_TRUE(WaitFor([this] { return !Space().empty(); }));
    EXPECT_TRUE(WaitFor([this] { return IsDrawn(); }));
    Locked([this] {
        fPane->ResizeTo(280, 300);
        return 0;
    });
    EXPECT_FALSE(IsDrawn());
}

TEST_F(FooterSpaceTest, MarksGoFirst)
{
    fTree.Write("shown/a", "1");
    Open();
    ASSERT_TRUE(WaitFor([this] { return !Space().empty(); }));
    Locked([this] {
        fPane->ResizeTo(360, 300);
        return 0;
    });
    ASSERT_TRUE(WaitFor([this] { return IsDrawn(); }));
    kits::testing::TypeKey('+');
    EXPECT_TRUE(WaitFor([this] { return !IsDrawn(); }));
    kits::testing::TypeKey('-');
    EXPECT_TRUE(WaitFor([this] { return IsDrawn(); }));
}

TEST_F(FooterSpaceTest, HitsOfAQueryHaveNone)
{
    Open();
    ASSERT_TRUE(WaitFor([this] { return !Space().empty(); }));
    Locked([this] {
        BMessage results('hits');
        results.AddString("QueryString", "name=\"x\"");
        fList->Populate(&results);
        return 0;
    });
    EXPECT_TRUE(WaitFor([this] { return Space().empty(); }));
}

/// A path that has no room.
TEST_F(FooterSpaceTest, TheHeaderCutsAPathInItsMiddle)
{
    const std::string deep = "shown/" + std::string(90, 'i') + "/last";
    fTree.MakeFolder("shown/" + std::string(90, 'i'));
    fTree.MakeFolder(deep);
    Open(deep);
    const auto end = [this] { // how far right the text reaches
        EXPECT_TRUE(kits::testing::Sync(fWindow));
        const Picture picture = kits::testing::TakePicture(fWindow);
        int32 right = static_cast<int32>((500 - 2) * picture.scale); // left of the bevel
        while (right > 0 && picture.Count(DirPane::kWhite, right - 1, 4, right, 20) == 0) {
            right--;
        }
        return right;
    };
    EXPECT_TRUE(WaitFor([&] { return end() > 400 && end() <= 492; })) << end();
}

} // namespace
