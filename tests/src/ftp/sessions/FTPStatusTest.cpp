#include "ftp/sessions/FTPStatus.h"

#include "ApplicationEnvironment.h"
#include "MessageCodes.h"

#include <Autolock.h>
#include <Message.h>
#include <ScrollView.h>
#include <TextView.h>

#include <string>

namespace norvane {

namespace {

class FTPStatusTest : public ::testing::Test
{
protected:
    FTPStatusTest() : fWindow(new FTPStatus(BRect(100, 80, 700, 500)))
    {
        fWindow->Show();
        EXPECT_NE(kits::testing::WaitForWindow("Status"), nullptr);
    }
    ~FTPStatusTest() override
    {
        if (fWindow->Lock()) {
            fWindow->Quit();
        }
    }
    void Tell(const std::string& status)
    {
        BMessage message(MSG_FTP_STATUS);
        message.AddString("status", status.c_str());
        fWindow->PostMessage(&message);
        ASSERT_TRUE(kits::testing::Sync(fWindow));
    }
    BTextView* Log() const { return dynamic_cast<BTextView*>(fWindow->FindView("StatusWindow")); }

    BWindow* fWindow; // deletes itself
};

TEST_F(FTPStatusTest, FloatsAtTheRightEdge)
{
    const BAutolock lock(fWindow);
    EXPECT_EQ(fWindow->Frame(), BRect(500, 80, 700, 180));
    EXPECT_STREQ(fWindow->Title(), "Status");
    EXPECT_EQ(fWindow->Look(), B_FLOATING_WINDOW_LOOK);
    EXPECT_EQ(fWindow->Feel(), B_FLOATING_APP_WINDOW_FEEL);
    const uint32 fixed = B_NOT_RESIZABLE | B_NOT_ZOOMABLE | B_NOT_MINIMIZABLE;
    EXPECT_EQ(fWindow->Flags() & fixed, fixed);
    ASSERT_NE(Log(), nullptr);
    EXPECT_EQ(Log()->Bounds(), BRect(0, 0, 186, 100));
    EXPECT_TRUE(Log()->DoesWordWrap());
    EXPECT_NE(dynamic_cast<BScrollView*>(fWindow->FindView("ScrollContainer")), nullptr);
}

TEST_F(FTPStatusTest, AddsLinesAtTheEnd)
{
    Tell("first");
    {
        const BAutolock lock(fWindow);
        Log()->SelectAll();
    }
    Tell("second");

    const BAutolock lock(fWindow);
    EXPECT_STREQ(Log()->Text(), "\nfirst\nsecond");
}

TEST_F(FTPStatusTest, ShowsTheLastLine)
{
    for (int line = 0; line < 40; line++) {
        Tell("line");
    }

    const BAutolock lock(fWindow);
    const BPoint last = Log()->PointAt(Log()->TextLength());
    EXPECT_TRUE(Log()->Bounds().Contains(last));
    EXPECT_GT(Log()->Bounds().top, 0);
}

TEST_F(FTPStatusTest, AMessageWithoutTextAddsNothing)
{
    fWindow->PostMessage(MSG_FTP_STATUS);
    ASSERT_TRUE(kits::testing::Sync(fWindow));

    const BAutolock lock(fWindow);
    EXPECT_STREQ(Log()->Text(), "");
}

} // namespace

} // namespace norvane
