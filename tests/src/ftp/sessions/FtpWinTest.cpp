#include "SessionsFixture.h"

#include "MessageCodes.h"

#include <Button.h>
#include <CheckBox.h>
#include <InterfaceDefs.h>
#include <StringView.h>

#include <sys/stat.h>

namespace norvane {

namespace {

using kits::testing::CountShown;
using kits::testing::TypeKey;
using kits::testing::TypeText;
using kits::testing::WaitForNoWindow;

constexpr char kEditor[] = "Ftp Connection";
constexpr char kHome[] = "Host=here\nPort=2121\nUser=me\nPass=secret\nRemoteDir=/r\nLocalDir=/l\n";

class FtpWinTest : public SessionsFixture
{
protected:
    FtpWinTest() { fTree.MakeFolder("config"); }

    /// An editor whose four fields that are needed are filled.
    BWindow* OpenFilled(const char* name)
    {
        BWindow* editor = OpenEditor(nullptr);
        Enter(editor, "text1", name);
        Enter(editor, "text2", "host");
        Enter(editor, "text4", "user");
        return editor;
    }
    /// Presses OK, and returns the alert that comes, which is answered.
    static std::string RefusalBy(BWindow* editor)
    {
        Press(editor, "bOK");
        const std::string text = AlertText("Info");
        EXPECT_TRUE(Answer("Info", "OK"));
        return text;
    }
    static BCheckBox* PassiveOf(BWindow* editor)
    {
        return dynamic_cast<BCheckBox*>(kits::testing::FindView(editor, "Passive Mode"));
    }
    static int32 PassiveIn(BWindow* editor)
    {
        return Locked(editor, [=] { return PassiveOf(editor)->Value(); });
    }
};

TEST_F(FtpWinTest, HasItsViews)
{
    BWindow* editor = OpenEditor(nullptr);

    struct
    {
        const char* name;
        const char* label;
        const char* text;
    } const kFields[] = {{"text1", "Session:", ""},  {"text2", "Host:", ""},
                         {"text3", "Port:", "21"},   {"text4", "User Name:", ""},
                         {"text5", "Password:", ""}, {"text6", "Remote Dir:", ""},
                         {"text7", "Local Dir:", ""}};
    for (const auto& [name, label, text] : kFields) {
        const BTextControl* field = FieldOf(editor, name);
        ASSERT_NE(field, nullptr) << name;
        EXPECT_STREQ(field->Label(), label);
        EXPECT_EQ(TextIn(editor, name), text);
    }
    const auto* warning = dynamic_cast<BStringView*>(kits::testing::FindView(editor, "label6"));
    ASSERT_NE(warning, nullptr);
    EXPECT_STREQ(warning->Text(), "Warning! storing password is insecure.");
    EXPECT_NE(kits::testing::FindView(editor, "FtpConContainer"), nullptr);
    const auto* accept = dynamic_cast<BButton*>(kits::testing::FindView(editor, "bOK"));
    const auto* cancel = dynamic_cast<BButton*>(kits::testing::FindView(editor, "bCancel"));
    EXPECT_STREQ(accept->Label(), "OK");
    EXPECT_STREQ(cancel->Label(), "Cancel");
    EXPECT_EQ(accept->Message()->what, 203u);
    EXPECT_EQ(cancel->Message()->what, 204u);
    EXPECT_EQ(PassiveIn(editor), B_CONTROL_OFF);
    EXPECT_TRUE(HasFocus(editor, "text1"));
}

TEST_F(FtpWinTest, ShowsTheSession)
{
    WriteSession("a.b.ftp", std::string(kHome) + "Passive=1\n");

    BWindow* editor = OpenEditor("a.b.ftp");

    EXPECT_TRUE(Shows(editor, "text7", "/l"));
    EXPECT_EQ(TextIn(editor, "text1"), "a.b");
    EXPECT_EQ(TextIn(editor, "text2"), "here");
    EXPECT_EQ(TextIn(editor, "text3"), "2121");
    EXPECT_EQ(TextIn(editor, "text4"), "me");
    EXPECT_EQ(TextIn(editor, "text5"), "secret");
    EXPECT_EQ(TextIn(editor, "text6"), "/r");
    EXPECT_EQ(PassiveIn(editor), B_CONTROL_ON);
}

TEST_F(FtpWinTest, WithoutAPortItIs21)
{
    WriteSession("none.ftp", "Host=here\n");
    WriteSession("empty.ftp", "Host=here\nPort=\n");
    for (const char* session : {"none.ftp", "empty.ftp"}) {
        BWindow* editor = OpenEditor(session);
        EXPECT_TRUE(Shows(editor, "text2", "here"));
        EXPECT_EQ(TextIn(editor, "text3"), "21");
        TypeKey(B_ESCAPE);
        ASSERT_TRUE(WaitForNoWindow(kEditor));
    }
}

TEST_F(FtpWinTest, SavesWhatIsTyped)
{
    BWindow* editor = OpenEditor(nullptr);
    for (const char* text : {"home", "ftp.here", "", "", "anna", "pw", "/pub", "/tmp"}) {
        TypeText(text);
        TypeKey(B_TAB);
    }

    Press(editor, "bOK");

    ASSERT_TRUE(WaitForNoWindow(kEditor));
    EXPECT_EQ(ReadSession("home.ftp"),
              "Host=ftp.here\nPort=21\nUser=anna\nPass=pw\nRemoteDir=/pub\nLocalDir=/tmp\n");
    struct stat st = {};
    ASSERT_EQ(stat(fTree.Path(File("home.ftp")).c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 0777u, 0600u);
}

TEST_F(FtpWinTest, PasswordAndFoldersMayBeEmpty)
{
    BWindow* editor = OpenFilled("home");

    Press(editor, "bOK");

    ASSERT_TRUE(WaitForNoWindow(kEditor));
    EXPECT_EQ(ReadSession("home.ftp"),
              "Host=host\nPort=21\nUser=user\nPass=\nRemoteDir=\nLocalDir=\n");
}

TEST_F(FtpWinTest, EnterSaves)
{
    OpenFilled("home");

    TypeKey(B_ENTER);

    ASSERT_TRUE(WaitForNoWindow(kEditor));
    EXPECT_TRUE(HasSession("home.ftp"));
}

TEST_F(FtpWinTest, EscapeSavesNothing)
{
    OpenFilled("home");

    TypeKey(B_ESCAPE);

    ASSERT_TRUE(WaitForNoWindow(kEditor));
    EXPECT_FALSE(HasSession("home.ftp"));
}

TEST_F(FtpWinTest, CancelSavesNothing)
{
    BWindow* editor = OpenFilled("home");

    Press(editor, "bCancel");

    ASSERT_TRUE(WaitForNoWindow(kEditor));
    EXPECT_FALSE(HasSession("home.ftp"));
}

TEST_F(FtpWinTest, SavesPassiveMode)
{
    BWindow* editor = OpenFilled("home");

    kits::testing::Click(PassiveOf(editor));
    Press(editor, "bOK");

    ASSERT_TRUE(WaitForNoWindow(kEditor));
    EXPECT_NE(ReadSession("home.ftp").find("\nPassive=1\n"), std::string::npos);
}

TEST_F(FtpWinTest, AsksForEachFieldInTurn)
{
    BWindow* editor = OpenEditor(nullptr);
    Enter(editor, "text3", "");
    struct
    {
        const char* field;
        const char* text;
        const char* value;
    } const kSteps[] = {
        {"text1", "warning: You must assign a session name to this connection. [OK]*", "home"},
        {"text2", "warning: You must assign a host to this connection. [OK]*", "host"},
        {"text3", "warning: You must assign a port to this connection. [OK]*", "21"},
        {"text4", "warning: You must assign a user name to this connection. [OK]*", "user"}};
    for (const auto& [field, text, value] : kSteps) {
        EXPECT_EQ(RefusalBy(editor), text);
        EXPECT_TRUE(HasFocus(editor, field)) << field;
        Enter(editor, field, value);
    }
    EXPECT_FALSE(HasSession("home.ftp"));

    Press(editor, "bOK");

    ASSERT_TRUE(WaitForNoWindow(kEditor));
    EXPECT_TRUE(HasSession("home.ftp"));
}

TEST_F(FtpWinTest, RefusesNamesThatNoFileCanHave)
{
    BWindow* editor = OpenFilled("");
    struct
    {
        std::string name;
        const char* reason;
    } const kNames[] = {{".", "this name stands for a folder already"},
                        {"..", "this name stands for a folder already"},
                        {"/", "a name cannot hold \"/\""},
                        {"../home", "a name cannot hold \"/\""},
                        {"a\nb", "a name cannot hold a line break"},
                        {std::string(252, 'n'), "the name is too long"}};
    for (const auto& [name, reason] : kNames) {
        Enter(editor, "text1", name);
        EXPECT_EQ(RefusalBy(editor),
                  std::string("warning: This session name cannot be used: ") + reason + ". [OK]*");
        EXPECT_TRUE(HasFocus(editor, "text1"));
        EXPECT_EQ(TextIn(editor, "text1"), name);
    }
    EXPECT_EQ(fTree.List("config/Norvane"), "");
}

TEST_F(FtpWinTest, RefusesPortsThatAreNone)
{
    BWindow* editor = OpenFilled("home");
    for (const char* port : {"0", "65536", "ftp", "-1", " 21"}) {
        Enter(editor, "text3", port);
        EXPECT_EQ(RefusalBy(editor), "warning: The port must be a number from 1 to 65535. [OK]*");
        EXPECT_TRUE(HasFocus(editor, "text3"));
    }
    EXPECT_FALSE(HasSession("home.ftp"));
}

TEST_F(FtpWinTest, RefusesValuesThatCannotBeKept)
{
    BWindow* editor = OpenFilled("home");
    struct
    {
        const char* field;
        const char* thing;
    } const kFields[] = {{"text2", "host"},
                         {"text4", "user name"},
                         {"text5", "password"},
                         {"text6", "remote directory"},
                         {"text7", "local directory"}};
    for (const auto& [field, thing] : kFields) {
        for (const std::string& value : {std::string("a\nb"), std::string(260, 'v')}) {
            Enter(editor, field, value);
            EXPECT_EQ(RefusalBy(editor),
                      std::string("warning: This ") + thing +
                          " cannot be saved: it is too long or holds a line break. [OK]*");
            EXPECT_TRUE(HasFocus(editor, field));
            EXPECT_EQ(TextIn(editor, field), value);
        }
        Enter(editor, field, "good");
    }
    EXPECT_FALSE(HasSession("home.ftp"));
}

TEST_F(FtpWinTest, RenamingLeavesTheOldSession)
{
    WriteSession("old.ftp", kHome);
    BWindow* editor = OpenEditor("old.ftp");
    ASSERT_TRUE(Shows(editor, "text7", "/l"));

    Enter(editor, "text1", "new");
    Press(editor, "bOK");

    ASSERT_TRUE(WaitForNoWindow(kEditor));
    EXPECT_EQ(ReadSession("old.ftp"), kHome);
    EXPECT_EQ(ReadSession("new.ftp"), kHome);
}

TEST_F(FtpWinTest, EditingAsksNothing)
{
    WriteSession("home.ftp", std::string(kHome) + "Colour=blue\n");
    BWindow* editor = OpenEditor("home.ftp");
    ASSERT_TRUE(Shows(editor, "text7", "/l"));

    Enter(editor, "text2", "a.much.longer.host");
    Press(editor, "bOK");

    ASSERT_TRUE(WaitForNoWindow(kEditor));
    const std::string contents = ReadSession("home.ftp");
    EXPECT_NE(contents.find("Host=a.much.longer.host\n"), std::string::npos) << contents;
    EXPECT_NE(contents.find("\nColour=blue\n"), std::string::npos) << contents;
    EXPECT_NE(contents.find("\nPass=secret\n"), std::string::npos) << contents;
}

TEST_F(FtpWinTest, AsksBeforeItReplacesAnotherSession)
{
    WriteSession("home.ftp", kHome);
    BWindow* editor = OpenFilled("home");

    Press(editor, "bOK");
    EXPECT_EQ(AlertText("Hey"), "warning: There is a session home already. Do you want to replace "
                                "it? [Cancel] [Replace]*");
    ASSERT_TRUE(Answer("Hey", "Cancel"));
    EXPECT_EQ(ReadSession("home.ftp"), kHome);
    EXPECT_EQ(CountShown(kEditor), 1);

    Press(editor, "bOK");
    ASSERT_TRUE(Answer("Hey", "Replace"));

    ASSERT_TRUE(WaitForNoWindow(kEditor));
    EXPECT_EQ(ReadSession("home.ftp").substr(0, 10), "Host=host\n");
}

TEST_F(FtpWinTest, AVanishedSessionIsMadeAnew)
{
    BWindow* editor = OpenEditor("gone.ftp");
    ASSERT_TRUE(kits::testing::Sync(editor));
    EXPECT_EQ(TextIn(editor, "text1"), "gone");
    EXPECT_EQ(TextIn(editor, "text3"), "21");
    Enter(editor, "text2", "host");
    Enter(editor, "text4", "user");

    Press(editor, "bOK");

    ASSERT_TRUE(WaitForNoWindow(kEditor));
    EXPECT_TRUE(HasSession("gone.ftp"));
    EXPECT_EQ(CountShown("Err"), 0);
}

TEST_F(FtpWinTest, TellsOfASessionThatCannotBeRead)
{
    fTree.MakeFolder(File("home.ftp"));
    BWindow* editor = new FtpWin(fOwner->Frame(), fOwner, "home.ftp");
    editor->Show();

    EXPECT_EQ(AlertText("Err"), "info: Could not read the session home: its file is none that a "
                                "session can be in [OK]*");
    ASSERT_TRUE(Answer("Err", "OK"));

    EXPECT_EQ(TextIn(editor, "text1"), "home");
    EXPECT_EQ(TextIn(editor, "text2"), "");
    EXPECT_EQ(TextIn(editor, "text3"), "21");
}

TEST_F(FtpWinTest, StaysOpenWhenItCannotSave)
{
    BWindow* editor = OpenFilled("home");
    fTree.Write("config/Norvane", "in the way");

    Press(editor, "bOK");

    const std::string text = AlertText("Err");
    EXPECT_EQ(text.substr(0, 39), "info: Could not save the session home: ") << text;
    ASSERT_TRUE(Answer("Err", "OK"));
    EXPECT_EQ(TextIn(editor, "text2"), "host");
    fTree.Remove("config/Norvane");
    Press(editor, "bOK");
    ASSERT_TRUE(WaitForNoWindow(kEditor));
    EXPECT_TRUE(HasSession("home.ftp"));
}

TEST_F(FtpWinTest, WaitsWithSavingUntilTheSessionIsRead)
{
    WriteSession("home.ftp", kHome);
    BWindow* editor = new FtpWin(fOwner->Frame(), fOwner, "home.ftp");
    editor->PostMessage(203); // before anything that was read can come

    editor->Show();

    ASSERT_TRUE(WaitForNoWindow(kEditor));
    EXPECT_EQ(ReadSession("home.ftp"), kHome);
    EXPECT_EQ(CountShown("Info"), 0);
}

TEST_F(FtpWinTest, KeepsWhatWasTypedBeforeTheSessionWasRead)
{
    BWindow* editor = OpenEditor(nullptr);
    Enter(editor, "text2", "typed");
    BMessage read(kSessionRead);
    read.AddInt32("status", B_OK);
    read.AddString("host", "saved");
    read.AddString("user", "me");

    editor->PostMessage(&read);

    EXPECT_TRUE(Shows(editor, "text4", "me"));
    EXPECT_EQ(TextIn(editor, "text2"), "typed");
}

TEST_F(FtpWinTest, TwoEditorsSaveTheirOwn)
{
    BWindow* first = OpenFilled("first");
    BWindow* second = OpenFilled("second");
    Enter(first, "text2", "one");
    Enter(second, "text2", "two");

    Press(second, "bOK");
    ASSERT_TRUE(kits::testing::WaitFor([] { return CountShown(kEditor) == 1; }));
    Press(first, "bOK");

    ASSERT_TRUE(WaitForNoWindow(kEditor));
    EXPECT_EQ(ReadSession("first.ftp").substr(0, 9), "Host=one\n");
    EXPECT_EQ(ReadSession("second.ftp").substr(0, 9), "Host=two\n");
}

TEST_F(FtpWinTest, TabWalksTheFieldsFromTopToBottom)
{
    BWindow* editor = OpenEditor(nullptr);
    std::string walked;
    for (int step = 0; step < 10; step++) {
        ASSERT_TRUE(kits::testing::Sync(editor));
        walked += Locked(editor, [=]() -> std::string {
            BView* focus = editor->CurrentFocus();
            return dynamic_cast<BTextView*>(focus) != nullptr ? focus->Parent()->Name()
                                                              : focus->Name();
        });
        walked += " ";
        TypeKey(B_TAB);
    }

    EXPECT_EQ(walked, "text1 text2 text3 Passive text4 text5 text6 text7 bCancel bOK ");
}

TEST_F(FtpWinTest, FieldsBeginInOneColumnAndGrowWithTheWindow)
{
    BWindow* editor = OpenEditor(nullptr);
    const auto right = [=](const char* name) {
        return Locked(editor, [=] { return FieldOf(editor, name)->Frame().right; });
    };
    for (const char* name : {"text2", "text3", "text4", "text5", "text6", "text7"}) {
        Locked(editor, [=] {
            const BTextControl* field = FieldOf(editor, name);
            EXPECT_EQ(field->Frame().left, FieldOf(editor, "text1")->Frame().left) << name;
            EXPECT_EQ(field->Divider(), FieldOf(editor, "text1")->Divider()) << name;
            EXPECT_GE(field->Divider(), field->StringWidth(field->Label())) << name;
            return 0;
        });
    }
    const float before = right("text6");
    const float portBefore = right("text3");

    kits::testing::ResizeWindow(editor, 600, 100);
    ASSERT_TRUE(kits::testing::Sync(editor));

    EXPECT_EQ(right("text6"), before + 600 - 340);
    EXPECT_EQ(right("text3"), portBefore);
}

} // namespace

} // namespace norvane
