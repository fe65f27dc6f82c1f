#include "outside/Terminal.h"

#include "AlertText.h"
#include "ApplicationEnvironment.h"
#include "DesktopPrograms.h"
#include "TempTree.h"
#include "Variable.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <future>

namespace norvane {

namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

/// The terminal, found and started.
class TerminalTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fPrograms.Clear();
        fTree.MakeFolder("bin");
    }

    void Install(const std::string& name)
    {
        DesktopPrograms::CopyRecorder(fTree.Path("bin/" + name));
    }

    /// What an alert says that comes while `work` is done; it is answered.
    template<class Work>
    static std::string AlertOf(const Work& work)
    {
        const std::future<void> done = std::async(std::launch::async, work);
        const std::string text = AlertText("Hey");
        EXPECT_TRUE(kits::testing::AnswerAlert("Damn!"));
        done.wait();
        return text;
    }

    DesktopPrograms& fPrograms = DesktopPrograms::Get();
    TempTree fTree;
    const Variable fPath{"PATH", fTree.Path("bin").c_str()};
    const Variable fChosen{"TERMINAL", nullptr};
    const Variable fShell{"SHELL", "/bin/sh"};
};

TEST_F(TerminalTest, TheWordsAreThoseOfThePlatform)
{
    Install("xterm");
    std::string words[kTerminalWords];
    EXPECT_TRUE(configure_argv(words));
    EXPECT_EQ(words[0], fTree.Path("bin/xterm"));
    EXPECT_EQ(words[1], "/boot/beos/bin/sh");
    EXPECT_EQ(words[2], "-login");
}

TEST_F(TerminalTest, SaysThatThereIsNone)
{
    bool isFound = true;
    EXPECT_EQ(AlertOf([&] {
                  std::string words[kTerminalWords];
                  isFound = configure_argv(words);
              }),
              "info: Couldn't locate the terminal [Damn!]*");
    EXPECT_FALSE(isFound);
    EXPECT_EQ(fPrograms.Count(), 0u);
}

TEST_F(TerminalTest, OnlyAProgramOfTheSignatureIsFound)
{
    std::string path = "unchanged";
    EXPECT_LT(get_app_from_sig("application/x-vnd.be-shel", &path), 0);
    EXPECT_LT(get_app_from_sig("application/x-vnd.nobody", &path), 0);
    EXPECT_LT(get_app_from_sig("text/plain", &path), 0);
    EXPECT_LT(get_app_from_sig("application/x-vnd.desktop.text", &path), 0)
        << "a desktop's program has no signature in its file";
    EXPECT_EQ(path, "unchanged");
    Install("xterm");
    EXPECT_EQ(get_app_from_sig("application/x-vnd.be-shel", &path), 0);
    EXPECT_EQ(path, fTree.Path("bin/xterm"));
}

TEST_F(TerminalTest, FilesThatOpenForReadingAreValid)
{
    fTree.Write("file", "");
    EXPECT_TRUE(valid_file(fTree.Path("file").c_str()));
    EXPECT_FALSE(valid_file(fTree.Path("missing").c_str()));
    EXPECT_FALSE(valid_file(fTree.Path().c_str()));
    EXPECT_FALSE(valid_file("/boot/beos/apps/Terminal"));
}

TEST_F(TerminalTest, AnEntryIsAddedToACopyOfTheEnvironment)
{
    const char* const environment[] = {"A=1", "B=2", nullptr};
    EXPECT_EQ(my_putenv(environment, "C=3"), (Words{"A=1", "B=2", "C=3"}));
    EXPECT_EQ(my_putenv(environment, "A=4"), (Words{"A=1", "B=2", "A=4"}));
    EXPECT_EQ(my_putenv(nullptr, "C=3"), (Words{"C=3"}));
}

TEST_F(TerminalTest, BeginsInTheFolderWithALoginShell)
{
    Install("xterm");
    const Variable outer("FOLDER_PATH", "/from another terminal");
    // Longer than what is put into a buffer, and of any bytes.
    const std::string folder = fTree.Path(
        "a\xff b/" + std::string(250, 'c') + "/" + std::string(250, 'd') + "/" +
        std::string(250, 'e') + "/" + std::string(250, 'f') + "/" + std::string(250, 'g'));
    fs::create_directories(folder);
    const std::string terminal = fTree.Path("bin/xterm");
    const char* words[] = {terminal.c_str(), "/boot/beos/bin/sh", "-login"};
    EXPECT_EQ(LaunchTerminal(3, words, folder.c_str()), 1);
    const std::vector<StartRecord> started = fPrograms.Await();
    ASSERT_EQ(started.size(), 1u);
    EXPECT_EQ(started[0].arguments, (Words{terminal, "-e", "/bin/sh", "-l"}));
    EXPECT_EQ(started[0].facts.at("folder"), folder);
    EXPECT_EQ(started[0].facts.at("descriptors"), "0 1 2 ");
    EXPECT_EQ(started[0].facts.at("blocked"), "0000000000000000");
    Words places;
    for (const std::string& variable : started[0].variables) {
        if (variable.starts_with("FOLDER_PATH=")) {
            places.push_back(variable);
        }
    }
    EXPECT_EQ(places, (Words{"FOLDER_PATH=" + folder}));
    EXPECT_TRUE(started[0].HasVariable("HOME"));
}

TEST_F(TerminalTest, SaysThatItCannotBeStarted)
{
    fTree.Write("bin/xterm", "#!/no/such/interpreter\n");
    fs::permissions(fTree.Path("bin/xterm"), fs::perms::owner_all);
    const std::string terminal = fTree.Path("bin/xterm");
    const char* words[] = {terminal.c_str(), "/boot/beos/bin/sh", "-login"};
    int result = 0;
    EXPECT_EQ(AlertOf([&] { result = LaunchTerminal(3, words, "/usr"); }),
              "info: Couldn't launch the terminal\n\nits program, or what that needs, is not "
              "installed [Damn!]*");
    EXPECT_EQ(result, -1);
    fs::permissions(terminal, fs::perms::owner_read);
    EXPECT_EQ(AlertOf([&] {
                  result = LaunchTerminal(3, words, "/usr");
              }).find("info: Couldn't launch the terminal\n\n"),
              0u);
}

} // namespace

} // namespace norvane
