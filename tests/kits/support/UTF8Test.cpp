#include <UTF8.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using namespace std::literals;

struct Converted
{
    std::string text;
    int32 taken;
};

Converted Convert(uint32 encoding, std::string_view source, int32 room = 1000)
{
    std::string target(static_cast<size_t>(room) + 1, '#');
    auto taken = static_cast<int32>(source.size());
    int32 written = room;
    int32 state = 0;
    EXPECT_EQ(convert_to_utf8(encoding, source.data(), &taken, target.data(), &written, &state),
              B_OK);
    EXPECT_EQ(target[static_cast<size_t>(written)], '#');
    return {target.substr(0, static_cast<size_t>(written)), taken};
}

TEST(UTF8Test, ConvertsLatin)
{
    const Converted all = Convert(B_ISO1_CONVERSION, "a\0\x7f\x80\xe4\xff"sv);

    EXPECT_EQ(all.text, "a\0\x7f\xc2\x80\xc3\xa4\xc3\xbf"sv);
    EXPECT_EQ(all.taken, 6);
}

TEST(UTF8Test, ConvertsUnicode)
{
    const Converted all = Convert(B_UNICODE_CONVERSION, "\0a\0\xe4\x20\xac\xd8\x3d\xde\0\0\0"sv);

    EXPECT_EQ(all.text, "a\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80\0"sv);
    EXPECT_EQ(all.taken, 12);
}

TEST(UTF8Test, LoneSurrogatesAreSubstituted)
{
    EXPECT_EQ(Convert(B_UNICODE_CONVERSION, "\xde\0\0a\xd8\x3d\0b"sv).text, "\x1a"
                                                                            "a\x1a"
                                                                            "b");
}

TEST(UTF8Test, LeavesWhatTheEndCuts)
{
    for (const std::string_view cut : {"\0"sv, "\xd8\x3d"sv, "\xd8\x3d\xde"sv}) {
        const Converted found = Convert(B_UNICODE_CONVERSION, "\0a"s + std::string(cut));

        EXPECT_EQ(found.text, "a");
        EXPECT_EQ(found.taken, 2);
    }
}

TEST(UTF8Test, WritesNothingBeyondTheRoomThereIs)
{
    const Converted found = Convert(B_ISO1_CONVERSION, "ab\xe4", 3);

    EXPECT_EQ(found.text, "ab");
    EXPECT_EQ(found.taken, 2);
    EXPECT_EQ(Convert(B_UNICODE_CONVERSION, "\xd8\x3d\xde\0"sv, 3).taken, 0);
    EXPECT_EQ(Convert(B_ISO1_CONVERSION, "a", 0).taken, 0);
}

TEST(UTF8Test, RefusesOtherEncodings)
{
    int32 taken = 1;
    int32 written = 1;
    char target = '#';

    EXPECT_EQ(convert_to_utf8(99, "a", &taken, &target, &written, nullptr), B_BAD_VALUE);
    EXPECT_EQ(taken, 1);
    EXPECT_EQ(written, 1);
    EXPECT_EQ(target, '#');
}

} // namespace
