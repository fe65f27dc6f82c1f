#include <Errors.h>
#include <SupportDefs.h>

#include "TempTree.h"
#include "Variable.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <vector>

namespace {

namespace fs = std::filesystem;

/// Launching on desktops of all kinds: each test makes its own, and a program that launches there.
class RosterDesktopTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fTree.MakeFolder("records");
        fTree.MakeFolder("share/applications");
        fTree.Link("share/mime", "/usr/share/mime");
        fTree.Link("bin/recorder", PROGRAM_RECORDER);
        fTree.Write("a b.txt", "text");
    }

    void AddProgram(const std::string& name, const std::string& lines)
    {
        fTree.Write("share/applications/" + name + ".desktop",
                    "[Desktop Entry]\nType=Application\nName=" + name + "\n" + lines + "\n");
    }

    void SetDefault(const std::string& type, const std::string& name)
    {
        fTree.Write("share/applications/mimeapps.list",
                    "[Default Applications]\n" + type + "=" + name + ".desktop\n");
        fTree.Write("share/applications/mimeinfo.cache",
                    "[MIME Cache]\n" + type + "=" + name + ".desktop\n");
    }

    /// The status of launching a path with an argument, in a program of its own.
    status_t Launch(const std::string& path, const std::string& argument = "")
    {
        std::string command = std::string("'") + PROGRAM_LAUNCHER + "' '" + path + "'";
        if (!argument.empty()) {
            command += " '" + argument + "'";
        }
        FILE* output = ::popen(command.c_str(), "r");
        int status = 1;
        const int read = output != nullptr ? std::fscanf(output, "%d %d", &status, &fTeam) : 0;
        EXPECT_EQ(read, 2);
        EXPECT_EQ(::pclose(output), 0);
        return status;
    }

    status_t Edit() { return Launch("/boot/apps/StyledEdit", fTree.Path("a b.txt")); }

    static bool Await(const std::function<bool()>& condition)
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (!condition() && std::chrono::steady_clock::now() < end) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return condition();
    }

    /// What the one program that was started was given, each word in brackets.
    std::string Given()
    {
        std::string record;
        EXPECT_TRUE(Await([&] {
            for (const auto& entry : fs::directory_iterator(fTree.Path("records"))) {
                if (entry.path().extension() == ".whole") {
                    record = fTree.Read("records/" + entry.path().filename().string());
                }
            }
            return !record.empty();
        }));
        std::string given;
        for (size_t at = 0; at < record.size(); at = record.find('\0', at) + 1) {
            const std::string line = record.c_str() + at;
            if (line.starts_with("argument=")) {
                given += "[" + line.substr(9) + "]";
            }
        }
        return given;
    }

    /// What the one program that was started knows of its start.
    std::string StartVariable()
    {
        for (const auto& entry : fs::directory_iterator(fTree.Path("records"))) {
            const std::string record = fTree.Read("records/" + entry.path().filename().string());
            const size_t at = record.find("variable=DESKTOP_STARTUP_ID=");
            if (at != std::string::npos) {
                return record.c_str() + at + std::strlen("variable=DESKTOP_STARTUP_ID=");
            }
        }
        return "none";
    }

    TempTree fTree;
    int fTeam = -1;

private:
    const Variable fVariables[7] = {
        {"XDG_DATA_DIRS", fTree.Path("share").c_str()},
        {"XDG_DATA_HOME", fTree.Path("data").c_str()},
        {"XDG_CONFIG_DIRS", fTree.Path("etc").c_str()},
        {"XDG_CONFIG_HOME", fTree.Path("config").c_str()},
        {"RECORD_FOLDER", fTree.Path("records").c_str()},
        {"DBUS_SESSION_BUS_ADDRESS", "disabled:"},
        {"PATH", (fTree.Path("bin") + ":/usr/bin:/bin").c_str()},
    };
};

// Editors

TEST_F(RosterDesktopTest, ThePersonsEditorRunsInTheirTerminal)
{
    const Variable terminal("TERMINAL", "recorder --hold");
    const Variable visual("VISUAL", "recorder '50% done'");
    const Variable editor("EDITOR", "missing");
    EXPECT_EQ(Edit(), B_OK);
    EXPECT_EQ(Given(), "[" + fTree.Path("bin/recorder") + "][--hold][-e][recorder][50% done][" +
                           fTree.Path("a b.txt") + "]");
}

TEST_F(RosterDesktopTest, AnEditorRunsInTheSystemsTerminal)
{
    const Variable terminal("TERMINAL", "missing");
    const Variable visual("VISUAL", nullptr);
    const Variable editor("EDITOR", "recorder");
    fTree.Link("bin/x-terminal-emulator", PROGRAM_RECORDER);
    EXPECT_EQ(Edit(), B_OK);
    EXPECT_EQ(Given(), "[" + fTree.Path("bin/x-terminal-emulator") + "][-e][recorder][" +
                           fTree.Path("a b.txt") + "]");
}

TEST_F(RosterDesktopTest, AProgramWithABlankInItsPathIsFound)
{
    fTree.Link("a program/recorder", PROGRAM_RECORDER);
    AddProgram("text", "Exec=\"" + fTree.Path("a program/recorder") + "\" %f");
    SetDefault("text/plain", "text");
    EXPECT_EQ(Launch(fTree.Path("a b.txt")), B_OK);
    EXPECT_EQ(Given(), "[" + fTree.Path("a program/recorder") + "][" + fTree.Path("a b.txt") + "]");
}

TEST_F(RosterDesktopTest, TheProgramForTextComesBeforeEditors)
{
    const Variable visual("VISUAL", "missing");
    AddProgram("text", "Exec=recorder text %f");
    SetDefault("text/plain", "text");
    EXPECT_EQ(Edit(), B_OK);
    EXPECT_EQ(Given(), "[recorder][text][" + fTree.Path("a b.txt") + "]");
}

TEST_F(RosterDesktopTest, SaysThatThereIsNoEditor)
{
    const Variable visual("VISUAL", nullptr);
    const Variable editor("EDITOR", "");
    EXPECT_EQ(Edit(), B_LAUNCH_FAILED_NO_PREFERRED_APP);
    EXPECT_EQ(fTeam, -1);
}

TEST_F(RosterDesktopTest, SaysThatTheEditorIsMissing)
{
    const Variable visual("VISUAL", "missing -nw");
    EXPECT_EQ(Edit(), B_LAUNCH_FAILED_APP_NOT_FOUND);
}

TEST_F(RosterDesktopTest, AProgramForTerminalsGetsOne)
{
    fTree.Link("bin/gnome-terminal", PROGRAM_RECORDER); // the first that the library looks for
    fTree.Link("bin/xdg-terminal-exec", PROGRAM_RECORDER);
    AddProgram("text", "Terminal=true\nExec=recorder text %f");
    SetDefault("text/plain", "text");
    EXPECT_EQ(Launch(fTree.Path("a b.txt")), B_OK);
    const std::string given = Given();
    EXPECT_NE(given.find("terminal"), std::string::npos);
    EXPECT_NE(given.find("[recorder][text][" + fTree.Path("a b.txt") + "]"), std::string::npos);
}

// The desktop is told

TEST_F(RosterDesktopTest, TheDesktopIsToldOfAProgramThatAnswers)
{
    const Variable notices("NOTICES", fTree.Path("notices").c_str());
    const Variable own("DESKTOP_STARTUP_ID", "of the launcher");
    AddProgram("text", "StartupNotify=true\nIcon=a-pen\nStartupWMClass=Pen\nExec=recorder text %f");
    SetDefault("text/plain", "text");
    EXPECT_EQ(Launch(fTree.Path("a b.txt")), B_OK);
    EXPECT_NE(Given(), "");
    EXPECT_EQ(StartVariable(), "notice-1");
    EXPECT_EQ(fTree.Read("notices"), "begin [text][a-pen][Pen]");
}

TEST_F(RosterDesktopTest, TheDesktopIsNotToldOfOneThatDoesNot)
{
    const Variable notices("NOTICES", fTree.Path("notices").c_str());
    const Variable own("DESKTOP_STARTUP_ID", "of the launcher");
    AddProgram("text", "Exec=recorder text %f");
    SetDefault("text/plain", "text");
    EXPECT_EQ(Launch(fTree.Path("a b.txt")), B_OK);
    EXPECT_NE(Given(), "");
    EXPECT_EQ(StartVariable(), "none");
    EXPECT_EQ(fTree.Read("notices"), "");
}

// Programs for folders

struct SelfCommand
{
    const char* name;
    const char* command; // SELF stands for the program's own file
};

void PrintTo(const SelfCommand& self, std::ostream* out)
{
    *out << self.name;
}

class RosterSelfTest : public RosterDesktopTest, public ::testing::WithParamInterface<SelfCommand>
{
};

TEST_P(RosterSelfTest, IsNeverTheProgramForFolders)
{
    std::string command = GetParam().command;
    const size_t place = command.find("SELF");
    command.replace(place, 4, PROGRAM_LAUNCHER);
    fTree.Link("bin/nickname", PROGRAM_LAUNCHER);
    AddProgram("self", "Exec=" + command + " %F");
    SetDefault("inode/directory", "self");
    EXPECT_EQ(Launch("/boot/beos/system/Tracker", fTree.Path()), B_LAUNCH_FAILED_NO_PREFERRED_APP);
    EXPECT_EQ(Launch(fTree.Path("share")), B_LAUNCH_FAILED_NO_PREFERRED_APP);
}

INSTANTIATE_TEST_SUITE_P(Commands, RosterSelfTest,
                         ::testing::Values(SelfCommand{"Plain", "SELF"},
                                           SelfCommand{"ByAnother", "env A=b SELF"},
                                           SelfCommand{"Quoted", "\"SELF\" --panes 2"},
                                           SelfCommand{"ByLink", "nickname --no-SELF-here"}),
                         [](const auto& tested) { return std::string(tested.param.name); });

// The session's bus

class RosterBusTest : public RosterDesktopTest
{
protected:
    void SetUp() override
    {
        RosterDesktopTest::SetUp();
        fTree.Write("bus.conf",
                    "<busconfig><type>session</type><listen>unix:dir=" + fTree.Path() +
                        "</listen><servicedir>" + fTree.Path("services") +
                        "</servicedir><policy context='default'><allow send_destination='*' "
                        "eavesdrop='true'/><allow eavesdrop='true'/><allow own='*'/>"
                        "</policy></busconfig>");
        fTree.MakeFolder("services");
        AddProgram("org.norvane.Reader", "DBusActivatable=true\nExec=recorder text %f");
        SetDefault("text/plain", "org.norvane.Reader");
        const std::string command = "dbus-daemon --config-file='" + fTree.Path("bus.conf") +
                                    "' --fork --print-address=1 --print-pid=1";
        FILE* output = ::popen(command.c_str(), "r");
        char address[1024] = "";
        ASSERT_EQ(std::fscanf(output, "%1023s %d", address, &fBus), 2);
        ::pclose(output);
        fAddress = std::make_unique<Variable>("DBUS_SESSION_BUS_ADDRESS", address);
    }

    void TearDown() override
    {
        if (fBus > 0) {
            ::kill(fBus, SIGTERM);
        }
    }

    void AddService(const std::string& command)
    {
        fTree.Write("services/org.norvane.Reader.service",
                    "[D-BUS Service]\nName=org.norvane.Reader\nExec=" + command + "\n");
    }

    int fBus = -1;
    std::unique_ptr<Variable> fAddress;
};

TEST_F(RosterBusTest, StartsAProgramThatWantsToBeStartedByIt)
{
    AddService(std::string(PROGRAM_BUS_READER) + " " + fTree.Path("opened"));
    EXPECT_EQ(Launch(fTree.Path("a b.txt")), B_OK);
    EXPECT_EQ(fTeam, 0);
    EXPECT_EQ(fTree.Read("opened"), "file://" + fTree.Path("a%20b.txt") + "\n");
}

TEST_F(RosterBusTest, TellsTheProgramOfTheNotice)
{
    const Variable notices("NOTICES", fTree.Path("notices").c_str());
    AddProgram("org.norvane.Reader",
               "StartupNotify=true\nDBusActivatable=true\nExec=recorder text %f");
    AddService(std::string(PROGRAM_BUS_READER) + " " + fTree.Path("opened"));
    EXPECT_EQ(Launch(fTree.Path("a b.txt")), B_OK);
    EXPECT_EQ(fTree.Read("opened"), "file://" + fTree.Path("a%20b.txt") + "\nnotice-1\n");
}

TEST_F(RosterBusTest, TheDesktopIsToldThatAProgramDidNotStart)
{
    const Variable notices("NOTICES", fTree.Path("notices").c_str());
    AddProgram("org.norvane.Reader",
               "StartupNotify=true\nDBusActivatable=true\nExec=recorder text %f");
    AddService("/bin/false");
    EXPECT_EQ(Launch(fTree.Path("a b.txt")), B_LAUNCH_FAILED);
    EXPECT_EQ(fTree.Read("notices"), "begin [org.norvane.Reader][][]fail [notice-1]");
}

TEST_F(RosterBusTest, SaysThatTheProgramDidNotStart)
{
    AddService("/bin/false");
    EXPECT_EQ(Launch(fTree.Path("a b.txt")), B_LAUNCH_FAILED);
    EXPECT_EQ(fTeam, -1);
}

TEST_F(RosterBusTest, SaysThatNobodyIsToStart)
{
    EXPECT_EQ(Launch(fTree.Path("a b.txt")), B_LAUNCH_FAILED_APP_NOT_FOUND);
}

} // namespace
