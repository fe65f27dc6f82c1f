#include <Errors.h>
#include <OS.h>
#include <image.h>

#include "DesktopPrograms.h"
#include "TempTree.h"
#include "Variable.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <filesystem>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

/// Programs that are started by their paths.
class LoadImageTest : public ::testing::Test
{
protected:
    void SetUp() override { fPrograms.Clear(); }

    std::string Recorder(const std::string& name)
    {
        fs::create_directories(fs::path(fTree.Path(name)).parent_path());
        DesktopPrograms::CopyRecorder(fTree.Path(name));
        return fTree.Path(name);
    }

    std::string Script(const std::string& name, const std::string& text)
    {
        fTree.Write(name, text);
        fs::permissions(fTree.Path(name), fs::perms::owner_all);
        return fTree.Path(name);
    }

    thread_id Load(const Words& words, Words environment = {})
    {
        environment.push_back("RECORD_FOLDER=" + fPrograms.Tree().Path("records"));
        std::vector<const char*> argv;
        std::vector<const char*> variables;
        for (const std::string& word : words) {
            argv.push_back(word.c_str());
        }
        for (const std::string& variable : environment) {
            variables.push_back(variable.c_str());
        }
        variables.push_back(nullptr);
        return load_image(static_cast<int32>(argv.size()), argv.data(), variables.data());
    }

    static status_t Start(thread_id image)
    {
        status_t status = B_ERROR;
        EXPECT_EQ(wait_for_thread(image, &status), B_OK);
        return status;
    }

    StartRecord Started()
    {
        const std::vector<StartRecord> records = fPrograms.Await();
        EXPECT_EQ(records.size(), 1u);
        return records.empty() ? StartRecord() : records.front();
    }

    DesktopPrograms& fPrograms = DesktopPrograms::Get();
    TempTree fTree;
};

TEST_F(LoadImageTest, AProgramGetsItsWordsAndVariablesAndNothingElse)
{
    const int open = ::open("/dev/null", O_RDWR); // not closed by itself
    const std::string program = Recorder("a program");
    const thread_id image = Load({program, "a b", "", "'c\n"}, {"ONE=1", "TWO="});
    ASSERT_GT(image, 0);
    EXPECT_EQ(Start(image), B_OK);
    ::close(open);
    StartRecord started = Started();
    EXPECT_EQ(started.arguments, (Words{program, "a b", "", "'c\n"}));
    EXPECT_EQ(started.variables,
              (Words{"ONE=1", "TWO=", "RECORD_FOLDER=" + fPrograms.Tree().Path("records")}));
    EXPECT_EQ(started.facts["descriptors"], "0 1 2 ");
    EXPECT_EQ(started.facts["input"], "/dev/null");
    EXPECT_EQ(started.facts["blocked"], "0000000000000000");
    EXPECT_EQ(started.facts["folder"], fs::current_path().string());
    EXPECT_NE(started.facts["session"], std::to_string(getsid(0)));
    EXPECT_NE(started.facts["parent"], std::to_string(getpid()));
}

TEST_F(LoadImageTest, NothingIsStartedBeforeItIsResumed)
{
    const thread_id image = Load({Recorder("program")});
    ASSERT_GT(image, 0);
    thread_info info;
    ASSERT_EQ(get_thread_info(image, &info), B_OK);
    EXPECT_EQ(info.state, B_THREAD_SUSPENDED);
    EXPECT_EQ(fPrograms.Count(), 0u);
    EXPECT_EQ(resume_thread(image), B_OK);
    EXPECT_EQ(Started().arguments.size(), 1u);
}

TEST_F(LoadImageTest, OfAVariableGivenTwiceTheLastCountsAndNoneSpeaksOfOurStart)
{
    const thread_id image =
        Load({Recorder("program")}, {"A=1", "DESKTOP_STARTUP_ID=ours", "AB=2", "A=3"});
    EXPECT_EQ(Start(image), B_OK);
    EXPECT_EQ(Started().variables,
              (Words{"AB=2", "A=3", "RECORD_FOLDER=" + fPrograms.Tree().Path("records")}));
}

TEST_F(LoadImageTest, AScriptIsRunByWhatItsFirstLineNames)
{
    const std::string script = Script("script", "#!" + Recorder("interpreter") + "\n");
    EXPECT_EQ(Start(Load({script, "word"})), B_OK);
    EXPECT_EQ(Started().arguments, (Words{fTree.Path("interpreter"), script, "word"}));
}

TEST_F(LoadImageTest, SaysWhenAScriptsInterpreterIsMissing)
{
    EXPECT_EQ(Start(Load({Script("script", "#!/no/such/interpreter\n")})),
              B_LAUNCH_FAILED_APP_NOT_FOUND);
}

TEST_F(LoadImageTest, RefusesWhatCannotBeRun)
{
    fTree.Write("text", "echo harm\n");
    EXPECT_EQ(Load({fTree.Path("missing")}), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(Load({fTree.Path("text")}), B_PERMISSION_DENIED);
    EXPECT_EQ(Load({Script("plain", "echo harm\n")}), B_NOT_AN_EXECUTABLE);
    EXPECT_EQ(Load({Script("empty", "")}), B_NOT_AN_EXECUTABLE);
    EXPECT_EQ(Load({fTree.Path()}), B_NOT_AN_EXECUTABLE);
    ASSERT_EQ(::mkfifo(fTree.Path("fifo").c_str(), 0700), 0);
    EXPECT_EQ(Load({fTree.Path("fifo")}), B_NOT_AN_EXECUTABLE); // nor waits for it
    const char* none[] = {nullptr};
    EXPECT_EQ(load_image(0, none, none), B_BAD_VALUE);
    EXPECT_EQ(load_image(1, none, none), B_BAD_VALUE);
    EXPECT_EQ(load_image(1, nullptr, none), B_BAD_VALUE);
}

// The terminal

TEST_F(LoadImageTest, TheTerminalRunsThePersonsShellInTheFolder)
{
    const std::string terminal = Recorder("bin/xterm");
    const Variable chosen("TERMINAL", (terminal + " -title 'a b'").c_str());
    const Variable shell("SHELL", "/bin/sh");
    fTree.MakeFolder("there \xff");
    const std::string folder = fTree.Path("there \xff");
    EXPECT_EQ(Start(Load({terminal, "/boot/beos/bin/sh", "-login"}, {"FOLDER_PATH=" + folder})),
              B_OK);
    StartRecord started = Started();
    EXPECT_EQ(started.arguments, (Words{terminal, "-title", "a b", "-e", "/bin/sh", "-l"}));
    EXPECT_EQ(started.facts["folder"], folder);
    EXPECT_TRUE(started.HasVariable("FOLDER_PATH"));
}

TEST_F(LoadImageTest, EachTerminalIsToldInItsOwnWay)
{
    const std::string terminal = Recorder("bin/gnome-terminal");
    const Variable chosen("TERMINAL", terminal.c_str());
    const Variable shell("SHELL", "/no/such/shell");
    EXPECT_EQ(Start(Load({terminal, "/boot/beos/bin/sh", "-login"}, {"FOLDER_PATH=/usr"})), B_OK);
    const Words words = Started().arguments;
    ASSERT_EQ(words.size(), 4u);
    EXPECT_EQ(words[1], "--");
    EXPECT_EQ(words[2].front(), '/') << "the shell of the system's list of users";
    EXPECT_EQ(words[3], "-l");
}

TEST_F(LoadImageTest, AnotherProgramGetsThePlatformsWordsAsTheyAre)
{
    const std::string terminal = Recorder("bin/xterm");
    const Variable chosen("TERMINAL", terminal.c_str());
    EXPECT_EQ(Start(Load({Recorder("other"), "/boot/beos/bin/sh", "-login"})), B_OK);
    EXPECT_EQ(Started().arguments, (Words{fTree.Path("other"), "/boot/beos/bin/sh", "-login"}));
}

} // namespace
