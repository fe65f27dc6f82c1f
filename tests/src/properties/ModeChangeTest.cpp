#include "properties/ModeChange.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

using namespace norvane;

ModeMix MixOf(std::initializer_list<mode_t> modes)
{
    ModeMix mix;
    bool isFirst = true;
    for (const mode_t mode : modes) {
        mix.Add(mode, isFirst);
        isFirst = false;
    }
    return mix;
}

TEST(ModeMixTest, ShowsOneMode)
{
    const ModeMix mix = MixOf({S_IFREG | 0644});

    EXPECT_EQ(mix.mixed, 0u);
    EXPECT_EQ(mix.Octal(), "0644");
    EXPECT_EQ(mix.Letters(), "rw-r--r--");
}

TEST(ModeMixTest, MarksWhatDiffers)
{
    const ModeMix mix = MixOf({0644, 0755, 0744});

    EXPECT_EQ(mix.set, 0644u);
    EXPECT_EQ(mix.mixed, 0111u);
    EXPECT_EQ(mix.Octal(), "0???");
    EXPECT_EQ(mix.Letters(), "rw?r-?r-?");
}

TEST(ModeMixTest, ABitThatNoneHasIsOff)
{
    EXPECT_EQ(MixOf({0600, 0640}).mixed, 0040u);
    EXPECT_EQ(MixOf({0640, 0600, 0600}).Octal(), "06?0");
}

TEST(ModeMixTest, SpecialBitsHaveTheirLetters)
{
    EXPECT_EQ(MixOf({04755}).Letters(), "rwsr-xr-x");
    EXPECT_EQ(MixOf({02640}).Letters(), "rw-r-S---");
    EXPECT_EQ(MixOf({01777}).Letters(), "rwxrwxrwt");
    EXPECT_EQ(MixOf({01776}).Letters(), "rwxrwxrwT");
    EXPECT_EQ(MixOf({04755, 0755}).Letters(), "rw?r-xr-x");
    EXPECT_EQ(MixOf({04755}).Octal(), "4755");
}

TEST(ModeChangeTest, TouchesNoOtherBits)
{
    const ModeChange change = {0020, 0004};

    EXPECT_EQ(change.For(S_IFREG | 04755), mode_t(S_IFREG | 04771));
    EXPECT_EQ(change.For(S_IFREG | 0), mode_t(S_IFREG | 0020));
    EXPECT_TRUE(ModeChange().IsEmpty());
    EXPECT_FALSE(change.IsEmpty());
}

TEST(ModeChangeTest, LinksStayAsTheyAre)
{
    EXPECT_EQ((ModeChange{0, 0777}).For(S_IFLNK | 0777), mode_t(S_IFLNK | 0777));
    EXPECT_EQ((ModeChange{0, 0777}).ForInside(S_IFLNK | 0777), mode_t(S_IFLNK | 0777));
}

TEST(ModeChangeTest, ExecuteIsGivenToFoldersAndPrograms)
{
    const ModeChange change = {0011, 0};

    EXPECT_EQ(change.ForInside(S_IFDIR | 0700), mode_t(S_IFDIR | 0711));
    EXPECT_EQ(change.ForInside(S_IFREG | 0744), mode_t(S_IFREG | 0755));
    EXPECT_EQ(change.ForInside(S_IFREG | 0644), mode_t(S_IFREG | 0644));
    EXPECT_EQ(change.For(S_IFREG | 0644), mode_t(S_IFREG | 0655));
}

TEST(ModeChangeTest, SpecialBitsAreGivenToFoldersAndTakenFromAll)
{
    EXPECT_EQ((ModeChange{02000, 0}).ForInside(S_IFDIR | 0755), mode_t(S_IFDIR | 02755));
    EXPECT_EQ((ModeChange{06000, 0}).ForInside(S_IFREG | 0755), mode_t(S_IFREG | 0755));
    EXPECT_EQ((ModeChange{0, 06000}).ForInside(S_IFREG | 06755), mode_t(S_IFREG | 0755));
}

} // namespace
