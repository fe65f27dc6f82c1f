#include "FtpTree.h"
#include "OperationFixture.h"

#include <StatusBar.h>

#include <memory>

namespace norvane {

using kits::testing::Click;
using kits::testing::FindView;
using kits::testing::WaitForNoWindow;
using kits::testing::WaitForWindow;

/// Transfers in their windows.
class CopyWinTransferTest : public OperationFixture
{
protected:
    void SetUp() override
    {
        OperationFixture::SetUp();
        fRemote.AddFolder("/pub");
        fServer = std::make_unique<FtpServer>(fRemote.Handler());
    }

    BMessage Carry(BMessage request) const
    {
        request.AddString("Host", fServer->Host());
        request.AddString("User", FtpTree::kUser);
        request.AddString("Password", FtpTree::kPassword);
        request.AddString("FtpPath", "/pub");
        request.AddInt32("Port", static_cast<int32>(fServer->Port()));
        return request;
    }

    BMessage Download(const std::vector<std::string>& files) const
    {
        BMessage request(kRemoteEntries);
        for (const std::string& file : files) {
            request.AddString("FtpFile", file.c_str());
        }
        return Carry(request);
    }

    /// The operation holds its window's lock, so the views are looked at without it.
    static BView* ViewOf(BWindow* window, int32 index)
    {
        return window->ChildAt(0)->ChildAt(index);
    }

    static BStatusBar* Bar(BWindow* window, const char* name)
    {
        auto* file = dynamic_cast<BStatusBar*>(ViewOf(window, 4));
        auto* whole = dynamic_cast<BStatusBar*>(ViewOf(window, 5));
        return std::string(file->Name()) == name ? file : whole;
    }

    static std::string Line(BWindow* window, int32 index)
    {
        return dynamic_cast<BStringView*>(ViewOf(window, index))->Text();
    }

    static void AnswerAlert(const char* title, const char* button)
    {
        BWindow* alert = WaitForWindow(title);
        ASSERT_NE(alert, nullptr);
        ASSERT_TRUE(kits::testing::WaitUntilAnswers(alert));
        Click(FindView(alert, button));
    }

    FtpTree fRemote;
    std::unique_ptr<FtpServer> fServer;
};

TEST_F(CopyWinTransferTest, DownloadsTellsAndGoes)
{
    fRemote.AddFile("/pub/a", "1");
    BMessage request = Download({"a"});
    request.AddString("FtpDir", "album");
    fRemote.AddFile("/pub/album/b", "2");
    Start(request);
    EXPECT_TRUE(HasEnded());
    EXPECT_EQ(fTree.Read("to/a"), "1");
    EXPECT_EQ(fTree.Read("to/album/b"), "2");
    EXPECT_TRUE(WaitForNoWindow("Copy"));
}

TEST_F(CopyWinTransferTest, UploadsTellsAndGoes)
{
    fTree.Write("from/a", "1");
    fTree.Write("from/album/b", "2");
    BMessage request = Request({"from/a", "from/album"});
    request.AddString("Session", "here");
    Start(Carry(request));
    EXPECT_TRUE(HasEnded());
    EXPECT_EQ(fRemote.Read("/pub/a"), "1");
    EXPECT_EQ(fRemote.Read("/pub/album/b"), "2");
    EXPECT_EQ(fTree.List("to"), "");
}

TEST_F(CopyWinTransferTest, ADownloadShowsPercentsAndBytes)
{
    fRemote.AddFile("/pub/a", std::string(5000, 'x'));
    fRemote.AddFile("/pub/b", "new");
    fTree.Write("to/b", "old");
    CopyWin* window = Start(Download({"a", "b"}));
    ASSERT_NE(WaitForWindow("Item Exists"), nullptr);
    EXPECT_EQ(window->Frame(), BRect(350, 302, 650, 366));
    EXPECT_EQ(Line(window, 2), "/pub");
    EXPECT_EQ(Line(window, 3), fTree.Path("to"));
    const BStatusBar* file = Bar(window, "fileprogress");
    EXPECT_EQ(file->MaxValue(), 100);
    EXPECT_EQ(file->CurrentValue(), 100);
    EXPECT_STREQ(file->Label(), "a");
    EXPECT_STREQ(file->TrailingText(), "5000 Bytes");
    const BStatusBar* whole = Bar(window, "mainprogress");
    EXPECT_EQ(whole->MaxValue(), 100);
    EXPECT_EQ(whole->CurrentValue(), 100);
    EXPECT_STREQ(whole->Text(), "5000");
    Answer("Overwrite");
    EXPECT_TRUE(HasEnded());
    EXPECT_EQ(fTree.Read("to/b"), "new");
}

TEST_F(CopyWinTransferTest, ADownloadSaysHowManyThereAre)
{
    fRemote.AddFile("/pub/b", "new");
    fTree.Write("to/b", "old");
    CopyWin* window = Start(Download({"b", "c"}));
    ASSERT_NE(WaitForWindow("Item Exists"), nullptr);
    EXPECT_STREQ(Bar(window, "mainprogress")->Text(), "2 Files or Directories");
    Answer("Cancel");
    EXPECT_TRUE(HasEnded());
}

TEST_F(CopyWinTransferTest, AFailedConnectionIsToldAtTheEnd)
{
    const BMessage request = Download({"a"});
    fServer.reset();
    Start(request);
    AnswerAlert("Err", "OK");
    EXPECT_TRUE(HasEnded());
}

TEST_F(CopyWinTransferTest, EscapeEndsTheWaitForASilentServer)
{
    fRemote.AddFile("/pub/a", "1");
    FtpTree::Habits habits;
    habits.answer = [](const std::string& said) -> std::optional<std::string> {
        return said == "RETR a" ? std::optional<std::string>("") : std::nullopt;
    };
    fRemote.SetHabits(habits);
    CopyWin* window = Start(Download({"a"}));
    ASSERT_TRUE(fServer->AwaitCommand("RETR a"));
    window->PostMessage(kAskToStop);
    AnswerAlert("Sir?", "Stop");
    EXPECT_TRUE(HasEnded());
    EXPECT_EQ(fTree.List("to"), "");
}

TEST_F(CopyWinTransferTest, AnUploadOfAMissingFolderIsToldAtOnce)
{
    fTree.MakeFolder("from/album");
    BMessage request = Request({"from/album"});
    request.AddString("Session", "here");
    fTree.Remove("from/album");
    Start(Carry(request));
    AnswerAlert("Err", "OK");
    EXPECT_TRUE(HasEnded());
    EXPECT_EQ(fRemote.List(), "/\n/pub/\n");
}

} // namespace norvane
