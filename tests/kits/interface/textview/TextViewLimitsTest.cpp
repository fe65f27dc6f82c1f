#include "TextViewFixture.h"

#include <Clipboard.h>
#include <TypeConstants.h>

#include <string>

namespace {

using namespace kits::testing;

using TextViewLimitsTest = TextViewFixture;

TEST_F(TextViewLimitsTest, MaxBytesCutsBetweenCharacters)
{
    ShowText("ab");
    Locked([this] {
        fView->SetMaxBytes(5);
        fView->Select(2, 2);
        return 0;
    });

    TypeText("\xe2\x82\xac"); // three bytes: there is room
    EXPECT_EQ(Text(), "ab\xe2\x82\xac");
    TypeText("z");
    EXPECT_EQ(Text(), "ab\xe2\x82\xac");

    Select(0, 2);
    TypeText("\xe2\x82\xac"); // two are free
    EXPECT_EQ(Text(), "ab\xe2\x82\xac");
    TypeText("\xc3\xa9");
    EXPECT_EQ(Text(), "\xc3\xa9\xe2\x82\xac");
}

TEST_F(TextViewLimitsTest, DisallowedCharactersAreLeftOut)
{
    ShowText("");
    Locked([this] {
        fView->DisallowChar('/');
        fView->DisallowChar(0x20ac);
        return 0;
    });

    TypeText("a/b\xe2\x82\xac"
             "c");
    EXPECT_EQ(Text(), "abc");

    Locked([this] {
        fView->AllowChar('/');
        return 0;
    });
    TypeText("/");
    EXPECT_EQ(Text(), "abc/");
}

TEST_F(TextViewLimitsTest, SingleLineTakesNoBreaks)
{
    ShowText("a\nb"); // what is set stays
    Locked([this] {
        fView->SetSingleLine(true);
        fView->Select(3, 3);
        return 0;
    });
    be_clipboard->Lock();
    be_clipboard->Clear();
    be_clipboard->Data()->AddData("text/plain", B_MIME_TYPE, "/a\n/b\n", 6);
    be_clipboard->Commit();
    be_clipboard->Unlock();

    TypeKey('v', B_COMMAND_KEY);
    TypeKey(B_ENTER);

    EXPECT_EQ(Text(), "a\nb/a /b");
    EXPECT_EQ(Locked([this] { return fView->CountLines(); }), 1);
}

TEST_F(TextViewLimitsTest, SingleLineTakesNoMoreThanStaysQuick)
{
    ShowText("");
    Locked([this] {
        fView->SetSingleLine(true);
        return 0;
    });
    const std::string much(100'000, 'm');
    be_clipboard->Lock();
    be_clipboard->Clear();
    be_clipboard->Data()->AddData("text/plain", B_MIME_TYPE, much.data(),
                                  static_cast<ssize_t>(much.size()));
    be_clipboard->Commit();
    be_clipboard->Unlock();

    TypeKey('v', B_COMMAND_KEY);

    EXPECT_EQ(Text().size(), 64u * 1024);
}

TEST_F(TextViewLimitsTest, HooksSeeEveryChange)
{
    class Counter : public BTextView
    {
    public:
        using BTextView::BTextView;
        std::string log;

    protected:
        void InsertText(const char* text, int32 length, int32 offset,
                        const text_run_array* runs) override
        {
            log += "+" + std::string(text, static_cast<size_t>(length));
            BTextView::InsertText(text, length, offset, runs);
        }
        void DeleteText(int32 start, int32 end) override
        {
            log += "-" + std::to_string(end - start);
            BTextView::DeleteText(start, end);
        }
    };
    auto* view = new Counter(BRect(10, 10, 209, 109), "text", BRect(2, 2, 190, 90),
                             B_FOLLOW_LEFT | B_FOLLOW_TOP);
    Add(view);
    Show();
    Focus(view);
    fView = view;

    TypeText("ab");
    TypeKey(B_BACKSPACE);
    TypeKey('z', B_COMMAND_KEY);
    Select(0, 2);
    TypeText("x");

    EXPECT_EQ(Locked([=] { return view->log; }), "+a+b-1+b-2+x");
}

TEST_F(TextViewLimitsTest, InsertAndDeleteWorkAnywhere)
{
    ShowText("one two");

    const std::string text = Locked([this] {
        fView->Select(4, 4);
        fView->Insert(0, "<<", 2);
        fView->Delete(2, 3);
        fView->Insert(">");
        fView->Delete(90, 95);
        return std::string(fView->Text());
    });

    EXPECT_EQ(text, "<<ne >two");
    EXPECT_EQ(Selection(), "6-6");
    char part[4] = "";
    Locked([&] {
        fView->GetText(2, 2, part);
        return 0;
    });
    EXPECT_STREQ(part, "ne");
}

} // namespace
