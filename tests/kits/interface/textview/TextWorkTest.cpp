#include "TextViewFixture.h"

#include <interface/text/TextDecoding.h>

#include <functional>
#include <string>

namespace {

using namespace kits::testing;

constexpr size_t kMiB = 1 << 20;
/// What one event may decode, whatever the text's length: some pieces of a line.
constexpr int64 kMostBytes = 96 * 1024;

std::string Repeated(const std::string& part, size_t length)
{
    std::string text;
    while (text.size() < length) {
        text += part;
    }
    return text;
}

struct WorkCase
{
    const char* name;
    std::string part;
    bool wraps;
};

class TextWorkTest : public TextViewFixture, public ::testing::WithParamInterface<WorkCase>
{
protected:
    /// Shows one line of a MiB, the caret in its middle.
    void ShowLongLine()
    {
        ShowText("");
        const std::string line = Repeated(GetParam().part, kMiB);
        fText.assign(line);
        const int32 middle =
            static_cast<int32>(fText.size() / 2 / GetParam().part.size() * GetParam().part.size());
        Locked([&, this] {
            fView->SetWordWrap(GetParam().wraps);
            fView->SetText(fText.data(), static_cast<int32>(fText.size()));
            fView->Select(middle, middle);
            fView->ScrollToSelection();
            return 0;
        });
        Paint();
    }
    void Paint()
    {
        SyncServer();
        Locked([this] {
            fWindow->Sync(); // however soon after the last frame
            return 0;
        });
    }
    /// How many bytes are decoded for something, the painting included.
    int64 WorkOf(const std::function<void()>& event)
    {
        Paint();
        const int64 before = kits::CountDecodedBytes();
        event();
        Paint();
        return kits::CountDecodedBytes() - before;
    }
    int64 WorkOfKey(char key, uint32 modifiers = 0)
    {
        return WorkOf([=] { TypeKey(key, modifiers); });
    }

    std::string fText;
};

TEST_P(TextWorkTest, KeyInALongLineIsBounded)
{
    ShowLongLine();

    EXPECT_LE(WorkOf([] { TypeText("x"); }), kMostBytes);
    EXPECT_LE(WorkOfKey(B_BACKSPACE), kMostBytes);
    EXPECT_TRUE(Text() == fText);
    TypeKey(B_LEFT_ARROW);
    EXPECT_LE(WorkOfKey(B_DELETE), kMostBytes);
    EXPECT_LT(Text().size(), fText.size());
    EXPECT_LE(WorkOfKey('z', B_COMMAND_KEY), kMostBytes);
    EXPECT_TRUE(Text() == fText); // a MiB would fill the log
}

TEST_P(TextWorkTest, CaretInALongLineIsBounded)
{
    ShowLongLine();

    EXPECT_LE(WorkOfKey(B_LEFT_ARROW), kMostBytes);
    EXPECT_LE(WorkOfKey(B_RIGHT_ARROW), kMostBytes);
    EXPECT_LE(WorkOfKey(B_LEFT_ARROW, B_COMMAND_KEY), kMostBytes);
    EXPECT_LE(WorkOfKey(B_RIGHT_ARROW, B_COMMAND_KEY | B_SHIFT_KEY), kMostBytes);
    EXPECT_LE(WorkOfKey(B_UP_ARROW), kMostBytes);
    EXPECT_LE(WorkOfKey(B_END), kMostBytes);
    EXPECT_LE(WorkOfKey(B_HOME), kMostBytes);
    EXPECT_LE(WorkOfKey(B_END, B_COMMAND_KEY | B_SHIFT_KEY), kMostBytes);
}

TEST_P(TextWorkTest, MouseAndPaintingInALongLineAreBounded)
{
    ShowLongLine();
    const BPoint where = Locked([this] { return fView->Bounds().LeftTop() + BPoint(50, 20); });

    EXPECT_LE(WorkOf([&] { Click(fView, where, B_PRIMARY_MOUSE_BUTTON, 2); }), kMostBytes);
    EXPECT_LE(WorkOf([&] { Click(fView, where, B_PRIMARY_MOUSE_BUTTON, 3); }), kMostBytes);
    const int64 painting = WorkOf([this] {
        fWindow->Lock();
        fView->Invalidate();
        fWindow->Unlock();
    });
    EXPECT_LE(painting, kMostBytes);
    EXPECT_GT(painting, 0);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, TextWorkTest,
    ::testing::Values(WorkCase{"Ascii", "one line, {many: words} ", false},
                      WorkCase{"AsciiWrapped", "one line, {many: words} ", true},
                      WorkCase{"NoBlanks", "abc.", false},
                      WorkCase{"RightToLeft", "\xd7\x90\xd7\x91\xd7\x92 \xd7\x93\xd7\x94 ", false},
                      WorkCase{"RightToLeftWrapped", "\xd7\x90\xd7\x91\xd7\x92 \xd7\x93\xd7\x94 ",
                               true}),
    [](const auto& line) { return std::string(line.param.name); });

} // namespace
