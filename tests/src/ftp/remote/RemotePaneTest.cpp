#include "RemotePaneFixture.h"

#include <Clipboard.h>

namespace norvane {

using kits::testing::AnswerAlert;
using kits::testing::TypeFunctionKey;
using kits::testing::TypeKey;
using kits::testing::TypeText;
using kits::testing::WaitFor;
using kits::testing::WaitForNoWindow;
using kits::testing::WaitForWindow;

class RemotePaneTest : public RemotePaneFixture
{
};

// Connecting

TEST_F(RemotePaneTest, ShowsTheServersFolderItsLogAndTheButton)
{
    Connect();

    EXPECT_EQ(Header(1), "ftp: /pub");
    EXPECT_EQ(Mode(1), kFtpMode);
    EXPECT_TRUE(HasView("ButtonDisconnect"));
    const std::string log = Log();
    EXPECT_NE(log.find("USER anna\n"), std::string::npos) << log;
    EXPECT_NE(log.find("PASS ******\n"), std::string::npos) << log;
    EXPECT_EQ(log.find(FtpTree::kPassword), std::string::npos) << log;
    EXPECT_EQ(log.find('\r'), std::string::npos);
    EXPECT_EQ(PanePath(1), fTree.Path("two")); // the one to come back to, and to save
}

TEST_F(RemotePaneTest, TheWindowLivesWhileTheServerIsSilent)
{
    Serve(FtpScript{ftp_script::Hang()});
    Begin();

    EXPECT_TRUE(WaitFor([this] { return Header(1) == "ftp: Connecting..."; }));
    EXPECT_EQ(Rows(1), "");
    EXPECT_TRUE(IsAlive());
    Send(kDisconnectFtp);
    EXPECT_TRUE(BecomesLocal(1));
    EXPECT_TRUE(WaitFor([this] { return !HasView("ButtonDisconnect"); }));
    EXPECT_TRUE(WaitFor([this] { return !HasView("StatusWindow"); }));
}

TEST_F(RemotePaneTest, EscapeEndsConnectingWithoutAWord)
{
    Serve(FtpScript{ftp_script::Hang()});
    Begin();
    ASSERT_TRUE(WaitFor([this] { return Header(1) == "ftp: Connecting..."; }));

    TypeKey(B_ESCAPE);

    EXPECT_TRUE(BecomesLocal(1));
    EXPECT_EQ(kits::testing::CountShown("Connect Failed"), 0);
}

TEST_F(RemotePaneTest, AWrongPasswordIsToldAndTheFolderComesBack)
{
    Serve();
    Begin("wrong");

    std::string text;
    ASSERT_TRUE(AnswerAlert("OK", &text));
    EXPECT_EQ(text, "The username or password supplied is incorrect.\nCheck your settings and try "
                    "to reconnect.");
    EXPECT_TRUE(BecomesLocal(1));
    EXPECT_TRUE(WaitFor([this] { return Header(1) == fTree.Path("two"); }));
}

TEST_F(RemotePaneTest, ARefusedConnectionIsTold)
{
    Serve();
    Begin();
    ASSERT_TRUE(Shows(1, ".. sub a b "));
    Send(kDisconnectFtp);
    ASSERT_TRUE(BecomesLocal(1));
    fServer.reset(); // nobody listens at that port any more
    Choose();

    std::string text;
    ASSERT_TRUE(AnswerAlert("OK", &text));
    EXPECT_EQ(text, "Failed to connect to ftp server.\nPlease check your internet connection");
    EXPECT_TRUE(BecomesLocal(1));
}

TEST_F(RemotePaneTest, AFailedFirstListingDisconnects)
{
    FtpTree::Habits habits;
    habits.answer = [](const std::string& command) -> std::optional<std::string> {
        return command.starts_with("LIST") ? std::optional<std::string>("550 No\r\n")
                                           : std::nullopt;
    };
    fServed.SetHabits(habits);
    Serve();
    Begin();

    std::string text;
    ASSERT_TRUE(AnswerAlert("OK", &text));
    EXPECT_EQ(text, "Could not get a directory listing");
    EXPECT_TRUE(BecomesLocal(1));
    EXPECT_TRUE(WaitFor([this] { return Header(1) == fTree.Path("two"); }));
}

TEST_F(RemotePaneTest, APasswordThatIsNotSavedIsAskedFor)
{
    Serve();
    Begin("");
    BWindow* prompt = WaitForWindow("Password");
    ASSERT_NE(prompt, nullptr);
    ASSERT_TRUE(kits::testing::WaitForFocus(prompt));
    ASSERT_TRUE(kits::testing::WaitUntilAnswers(prompt));
    TypeText(FtpTree::kPassword);
    TypeKey(B_ENTER);

    EXPECT_TRUE(Shows(1, ".. sub a b "));
    EXPECT_TRUE(WaitForNoWindow("Password"));
    EXPECT_EQ(fTree.Read("config/Norvane/test.ftp").find(FtpTree::kPassword), std::string::npos);
}

TEST_F(RemotePaneTest, NoPasswordIsNoConnection)
{
    Serve();
    Begin("");
    BWindow* prompt = WaitForWindow("Password");
    ASSERT_NE(prompt, nullptr);
    ASSERT_TRUE(kits::testing::WaitForFocus(prompt));
    ASSERT_TRUE(kits::testing::WaitUntilAnswers(prompt));
    TypeKey(B_ESCAPE);

    EXPECT_TRUE(WaitForNoWindow("Password"));
    EXPECT_TRUE(BecomesLocal(1));
}

// Walking

TEST_F(RemotePaneTest, EnterGoesIntoAFolderAndUpAgain)
{
    Connect();
    PressOn("sub", [] { TypeKey(B_ENTER); });
    EXPECT_TRUE(Shows(1, ".. deep "));
    EXPECT_EQ(Header(1), "ftp: /pub/sub");

    PressOn("..", [] { TypeKey(B_ENTER); });
    EXPECT_TRUE(Shows(1, ".. sub a b "));
    TypeKey(B_BACKSPACE);
    EXPECT_TRUE(Shows(1, "pub "));
    EXPECT_EQ(Header(1), "ftp: /");
    TypeKey(B_BACKSPACE); // there is nothing above
    ASSERT_TRUE(IsAlive());
    EXPECT_EQ(Header(1), "ftp: /");
}

TEST_F(RemotePaneTest, EnterOnAFileDoesNothing)
{
    Connect();
    PressOn("a", [] { TypeKey(B_ENTER); });
    ASSERT_TRUE(IsAlive());
    EXPECT_EQ(Rows(1), ".. sub a b ");
    EXPECT_EQ(Mode(1), kFtpMode);
}

TEST_F(RemotePaneTest, AFolderThatCannotBeEnteredLeavesThePaneAsItWas)
{
    FtpTree::Habits habits;
    habits.answer = [](const std::string& command) -> std::optional<std::string> {
        return command == "CWD sub" ? std::optional<std::string>("550 No\r\n") : std::nullopt;
    };
    fServed.SetHabits(habits);
    Connect();
    PressOn("sub", [] { TypeKey(B_ENTER); });

    std::string text;
    ASSERT_TRUE(AnswerAlert("OK", &text));
    EXPECT_EQ(text, "Could not get a directory listing");
    EXPECT_EQ(Rows(1), ".. sub a b ");
    EXPECT_EQ(Header(1), "ftp: /pub");
}

TEST_F(RemotePaneTest, WhatChangedThereIsSeenAfterF2)
{
    Connect();
    fServed.AddFile("/pub/new", "");
    Focus(1);
    TypeFunctionKey(B_F2_KEY);
    EXPECT_TRUE(Shows(1, ".. sub a b new "));
}

TEST_F(RemotePaneTest, TheViewerAndTheSideWaysAreRefused)
{
    Connect();
    PressOn("a", [] { TypeFunctionKey(B_F4_KEY); });
    std::string text;
    ASSERT_TRUE(AnswerAlert("OK", &text));
    EXPECT_EQ(text, "Sorry can't view a file on an FTP server.");
    ASSERT_TRUE(WaitForNoWindow("Foo"));
    PressOn("a", [] { TypeFunctionKey(B_F3_KEY); });
    ASSERT_TRUE(AnswerAlert("OK", &text));
    EXPECT_EQ(text, "Sorry can't view a file on an FTP server.");
    ASSERT_TRUE(WaitForNoWindow("Foo"));
    PressOn("sub", [this] { fWindow->PostMessage(kOpenInLeftPane); });
    ASSERT_TRUE(AnswerAlert("OK", &text));
    EXPECT_EQ(text, "Navigating this way is not supported.(Yet)");
}

// Leaving

TEST_F(RemotePaneTest, AnotherPathAsksFirst)
{
    Connect();
    Focus(1);
    BMessage typed(kFolderToGoTyped);
    typed.AddString("text", fTree.Path("three").c_str());
    fWindow->PostMessage(&typed);
    std::string text;
    ASSERT_TRUE(AnswerAlert("Cancel", &text));
    EXPECT_EQ(text, "Do you really want to disconnect from the ftp server?");
    ASSERT_TRUE(IsAlive());
    EXPECT_EQ(Rows(1), ".. sub a b ");
    EXPECT_TRUE(HasView("ButtonDisconnect"));

    ASSERT_TRUE(WaitForNoWindow("Sir?"));
    fWindow->PostMessage(&typed);
    ASSERT_TRUE(PressIn("Sir?", "Disconnect"));
    EXPECT_TRUE(BecomesLocal(1));
    EXPECT_EQ(Header(1), fTree.Path("three"));
    EXPECT_TRUE(WaitFor([this] { return !HasView("ButtonDisconnect"); }));
    EXPECT_TRUE(fServer->AwaitCommand("QUIT"));
}

TEST_F(RemotePaneTest, TheButtonDisconnects)
{
    Connect();
    BMessage pressed(MSG_FTP_DISCONNECT);
    fWindow->PostMessage(&pressed, Pane(1));
    EXPECT_TRUE(BecomesLocal(1));
    EXPECT_TRUE(WaitFor([this] { return Header(1) == fTree.Path("two"); }));
    EXPECT_TRUE(fServer->AwaitCommand("QUIT"));
}

// Changes

TEST_F(RemotePaneTest, ANewFolderIsMadeAndItsNameIsTyped)
{
    Connect();
    Focus(1);
    TypeFunctionKey(B_F7_KEY);
    ASSERT_TRUE(Shows(1, ".. New Folder sub a b "));
    ASSERT_TRUE(WaitFor([this] { return HasView("renamecontainer"); }));
    TypeText("x");
    TypeKey(B_ENTER);

    EXPECT_TRUE(Shows(1, ".. sub x a b "));
    EXPECT_TRUE(fServed.IsFolder("/pub/x"));
}

TEST_F(RemotePaneTest, ARenamedFileHasItsNewNameThere)
{
    Connect();
    PressOn("a", [] { TypeFunctionKey(B_F6_KEY, B_SHIFT_KEY); });
    ASSERT_TRUE(WaitFor([this] { return HasView("renamecontainer"); }));
    TypeText("c");
    TypeKey(B_ENTER);

    EXPECT_TRUE(Shows(1, ".. sub b c "));
    EXPECT_EQ(fServed.Read("/pub/c"), "aaa");
}

TEST_F(RemotePaneTest, ANameThatIsTakenIsRefused)
{
    Connect();
    PressOn("a", [] { TypeFunctionKey(B_F6_KEY, B_SHIFT_KEY); });
    ASSERT_TRUE(WaitFor([this] { return HasView("renamecontainer"); }));
    TypeText("b");
    TypeKey(B_ENTER);

    std::string text;
    ASSERT_TRUE(AnswerAlert("OK", &text));
    EXPECT_EQ(text.rfind("Could not rename: ", 0), 0U) << text;
    EXPECT_EQ(fServed.Read("/pub/a"), "aaa");
    EXPECT_EQ(fServed.Read("/pub/b"), "bb");
}

TEST_F(RemotePaneTest, AFileIsDeletedAfterAQuestion)
{
    Connect();
    PressOn("a", [] { TypeFunctionKey(B_F8_KEY); });
    ASSERT_TRUE(PressIn("Sir?", "Delete"));
    EXPECT_TRUE(Shows(1, ".. sub b "));
    EXPECT_FALSE(fServed.Exists("/pub/a"));
}

TEST_F(RemotePaneTest, AFolderThatIsNotEmptyIsDeletedWhicheverButtonIsPressed)
{
    fServed.AddFile("/pub/sub/below/x", "x");
    fServed.AddLink("/pub/sub/link", "/pub/b");
    Connect();
    PressOn("sub", [] { TypeFunctionKey(B_F8_KEY); });
    ASSERT_TRUE(PressIn("Sir?", "Delete"));
    ASSERT_TRUE(fServer->AwaitCommand("RMD sub")); // the first question is answered
    std::string text;
    ASSERT_TRUE(AnswerAlert("Cancel", &text));
    EXPECT_EQ(text, "The directory is not empty are you sure you want to delete it?");

    EXPECT_TRUE(Shows(1, ".. a b "));
    EXPECT_EQ(fServed.List(), "/\n/pub/\n/pub/a\n/pub/b\n");
}

TEST_F(RemotePaneTest, WhatCannotBeDeletedIsTold)
{
    FtpTree::Habits habits;
    habits.answer = [](const std::string& command) -> std::optional<std::string> {
        return command == "DELE a" ? std::optional<std::string>("550 Not yours\r\n") : std::nullopt;
    };
    fServed.SetHabits(habits);
    Connect();
    PressOn("a", [] { TypeFunctionKey(B_F8_KEY); });
    ASSERT_TRUE(PressIn("Sir?", "Delete"));
    std::string text;
    ASSERT_TRUE(AnswerAlert("OK", &text));
    EXPECT_NE(text.find("\ta: the server says \"550 Not yours\""), std::string::npos) << text;
}

// Carrying

TEST_F(RemotePaneTest, F5BringsWhatIsChosenHere)
{
    Connect();
    PressOn("sub", [] { TypeFunctionKey(B_F5_KEY); });
    EXPECT_TRUE(WaitFor([this] { return fTree.Read("one/sub/deep") == "deep"; }));
    EXPECT_TRUE(WaitForNoWindow("Download"));
    PressOn("a", [] { TypeFunctionKey(B_F5_KEY); });
    EXPECT_TRUE(WaitFor([this] { return fTree.Read("one/a") == "aaa"; }));
    EXPECT_TRUE(WaitForNoWindow("Download"));
}

TEST_F(RemotePaneTest, ARowThatIsOnlyShownIsToldOfAndTheRestComes)
{
    FtpTree::Habits habits;
    habits.listing = [](const std::string&) -> std::optional<std::string> {
        return "-rw-r--r--   1 anna     users           3 Jan  1 10:00 a\r\n"
               "-rw-r--r--   1 anna     users           3 Jan  1 10:00 ../up\r\n";
    };
    fServed.SetHabits(habits);
    Serve();
    Begin();
    ASSERT_TRUE(Shows(1, ".. a ../up ")) << Rows(1);
    Focus(1);
    Locked([this] { List(1)->Mark(1, 2); });
    TypeFunctionKey(B_F5_KEY);

    std::string text;
    ASSERT_TRUE(AnswerAlert("OK", &text));
    EXPECT_NE(text.find("\t../up: "), std::string::npos) << text;
    EXPECT_EQ(fTree.Read("one/a"), "aaa");
    EXPECT_TRUE(WaitForNoWindow("Download"));
}

TEST_F(RemotePaneTest, F5SendsWhatIsChosenThere)
{
    fTree.Write("one/sent", "from here");
    Connect();
    ASSERT_TRUE(Shows(0, ".. sent "));
    Focus(0);
    Select(0, "sent");
    TypeFunctionKey(B_F5_KEY);
    EXPECT_TRUE(Shows(1, ".. sub a b sent ")) << Rows(1);
    EXPECT_EQ(fServed.Read("/pub/sent"), "from here");
    EXPECT_TRUE(WaitForNoWindow("Upload"));
}

TEST_F(RemotePaneTest, AFileThatTheServerHasIsAskedAbout)
{
    fTree.Write("one/a", "from here");
    Connect();
    ASSERT_TRUE(Shows(0, ".. a "));
    Focus(0);
    Select(0, "a");
    TypeFunctionKey(B_F5_KEY);
    ASSERT_TRUE(AnswerAlert("Skip"));
    EXPECT_TRUE(WaitForNoWindow("Upload"));
    EXPECT_EQ(fServed.Read("/pub/a"), "aaa");
}

TEST_F(RemotePaneTest, FromOneServerToAnotherIsRefused)
{
    Connect();
    Focus(0);
    Choose();
    ASSERT_TRUE(Shows(0, ".. sub a b "));
    PressOn("a", [] { TypeFunctionKey(B_F5_KEY); });
    std::string text;
    ASSERT_TRUE(AnswerAlert("OK", &text));
    EXPECT_EQ(text, "Transferring from one Ftp server to another is not supported(Yet...we will "
                    "support this.");
}

// The end

TEST_F(RemotePaneTest, TheFolderToComeBackToIsSaved)
{
    Connect();
    Locked([this] { fWindow->SaveSettings(); });
    EXPECT_EQ(Setting("Pane1"), fTree.Path("two"));
    EXPECT_EQ(fTree.Read("config/Norvane/Norvane.pref").find("ftp:"), std::string::npos);
}

// What is dragged, or put on the clipboard, is for this program alone.
TEST_F(RemotePaneTest, OthersGetNeitherThePasswordNorTheHost)
{
    Connect();
    Focus(1);
    Select(1, "a");
    Locked([this] { List(1)->CopyEntries(); });
    be_clipboard->Lock();
    const BMessage* data = be_clipboard->Data();
    std::string text = data != nullptr ? std::to_string(data->CountNames(B_ANY_TYPE)) : "0";
    const bool hasPassword = data != nullptr && data->HasString("Password");
    be_clipboard->Unlock();
    EXPECT_FALSE(hasPassword) << text;
}

TEST_F(RemotePaneTest, QuittingWaitsForNoServer)
{
    FtpTree::Habits habits;
    habits.answer = [](const std::string& command) -> std::optional<std::string> {
        return command == "CWD sub" ? std::optional<std::string>("") : std::nullopt;
    };
    fServed.SetHabits(habits);
    Connect();
    PressOn("sub", [] { TypeKey(B_ENTER); });
    ASSERT_TRUE(fServer->AwaitCommand("CWD sub"));

    const bigtime_t begin = system_time();
    ASSERT_TRUE(fWindow->Lock());
    fWindow->Quit();
    fWindow = nullptr;
    EXPECT_LT(system_time() - begin, 1'000'000);
}

TEST_F(RemotePaneTest, EscapeEndsAListingAndKeepsTheConnection)
{
    std::atomic<bool> isSilent{true};
    FtpTree::Habits habits;
    habits.answer = [&isSilent](const std::string& command) -> std::optional<std::string> {
        return command == "CWD sub" && isSilent ? std::optional<std::string>("") : std::nullopt;
    };
    fServed.SetHabits(habits);
    Connect();
    PressOn("sub", [] { TypeKey(B_ENTER); });
    ASSERT_TRUE(fServer->AwaitCommand("CWD sub"));
    TypeKey(B_ESCAPE);
    ASSERT_TRUE(IsAlive());
    EXPECT_EQ(Rows(1), ".. sub a b ");
    EXPECT_EQ(Mode(1), kFtpMode);
}

} // namespace norvane
