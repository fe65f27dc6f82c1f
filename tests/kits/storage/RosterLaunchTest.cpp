#include <Entry.h>
#include <Message.h>
#include <Node.h>
#include <NodeInfo.h>
#include <Path.h>
#include <Roster.h>

#include "DesktopPrograms.h"
#include "TempTree.h"
#include "Variable.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

using Words = std::vector<std::string>;

class RosterLaunchTest : public ::testing::Test
{
protected:
    void SetUp() override { fPrograms.Clear(); }

    entry_ref Ref(const std::string& name) const
    {
        entry_ref ref;
        EXPECT_EQ(get_ref_for_path(fTree.Path(name).c_str(), &ref), B_OK);
        return ref;
    }

    status_t Launch(const std::string& name) const
    {
        const entry_ref ref = Ref(name);
        return be_roster->Launch(&ref);
    }

    status_t LaunchFixed(const char* program, const std::string& argument) const
    {
        entry_ref ref;
        EXPECT_EQ(get_ref_for_path(program, &ref), B_OK);
        const char* words = argument.c_str();
        return be_roster->Launch(&ref, 1, &words);
    }

    /// How the one program was started that was.
    StartRecord Started()
    {
        const std::vector<StartRecord> records = fPrograms.Await();
        EXPECT_EQ(records.size(), 1u);
        return records.empty() ? StartRecord() : records.front();
    }

    /// What it was given, without its own name. Whoever takes addresses may get plain paths, too,
    /// as the desktop's library thinks best.
    Words Arguments()
    {
        Words words = Started().arguments;
        if (!words.empty()) {
            words.erase(words.begin());
        }
        for (std::string& word : words) {
            word.erase(0, word.starts_with("file://") ? 7 : 0);
        }
        return words;
    }

    void WriteProgram(const std::string& name) const
    {
        std::filesystem::create_directories(std::filesystem::path(fTree.Path(name)).parent_path());
        DesktopPrograms::CopyRecorder(fTree.Path(name));
    }

    DesktopPrograms& fPrograms = DesktopPrograms::Get();
    // What a person's own settings say is nobody's business here.
    TempTree fTree;
    const Variable fConfig{"XDG_CONFIG_HOME", fTree.Path("config").c_str()};
    const Variable fData{"XDG_DATA_HOME", fTree.Path("data").c_str()};
};

TEST_F(RosterLaunchTest, OpensADocumentByTheProgramOfItsType)
{
    fTree.Write("a.txt", "text");
    EXPECT_EQ(Launch("a.txt"), B_OK);
    EXPECT_EQ(Arguments(), (Words{"text", fTree.Path("a.txt")}));
}

TEST_F(RosterLaunchTest, OpensByWhatTheTypeDerivesFrom)
{
    fTree.Write("a.py", "print()");
    EXPECT_EQ(Launch("a.py"), B_OK);
    EXPECT_EQ(Arguments(), (Words{"text", fTree.Path("a.py")}));
}

TEST_F(RosterLaunchTest, LooksAtTheContentWhereTheNameSaysNothing)
{
    fTree.Write("a", "%PDF-1.4\n");
    EXPECT_EQ(Launch("a"), B_OK);
    EXPECT_EQ(Arguments(), (Words{"address", fTree.Path("a")}));
}

TEST_F(RosterLaunchTest, GoesByTheTypeThatIsStored)
{
    fTree.Write("a.txt", "");
    BNode node(fTree.Path("a.txt").c_str());
    if (BNodeInfo(&node).SetType("application/pdf") == B_UNSUPPORTED) {
        GTEST_SKIP() << "no attributes here";
    }
    EXPECT_EQ(Launch("a.txt"), B_OK);
    EXPECT_EQ(Arguments(), (Words{"address", fTree.Path("a.txt")}));
}

TEST_F(RosterLaunchTest, OpensAnEmptyFileAsText)
{
    fTree.Write("empty", "");
    EXPECT_EQ(Launch("empty"), B_OK);
    EXPECT_EQ(Arguments(), (Words{"text", fTree.Path("empty")}));
}

TEST_F(RosterLaunchTest, AddsTheFileWhereACommandSaysNothing)
{
    fTree.Write("a.png", "");
    EXPECT_EQ(Launch("a.png"), B_OK);
    const StartRecord started = Started();
    EXPECT_EQ(started.arguments[1], "bare");
    EXPECT_EQ(started.arguments[2], fTree.Path("a.png"));
    EXPECT_EQ(started.facts.at("folder"), "/usr"); // as its entry says
}

TEST_F(RosterLaunchTest, FollowsLinks)
{
    fTree.Write("there/a.txt", "text");
    fTree.Link("second", "there/a.txt");
    fTree.Link("first.png", "second");
    EXPECT_EQ(Launch("first.png"), B_OK);
    EXPECT_EQ(Arguments(), (Words{"text", fTree.Path("there/a.txt")}));
}

// Names

struct OddName
{
    const char* name;
    const char* bytes;
};

void PrintTo(const OddName& odd, std::ostream* out)
{
    *out << odd.name;
}

class RosterNamesTest : public RosterLaunchTest, public ::testing::WithParamInterface<OddName>
{
protected:
    const std::string fName = GetParam().bytes;
};

TEST_P(RosterNamesTest, ReachAProgramWhole)
{
    fTree.Write(fName + ".txt", "text");
    EXPECT_EQ(Launch(fName + ".txt"), B_OK);
    EXPECT_EQ(Arguments(), (Words{"text", fTree.Path(fName + ".txt")}));
}

TEST_P(RosterNamesTest, ReachTheEditorWhole)
{
    fTree.Write(fName, "text");
    EXPECT_EQ(LaunchFixed("/boot/apps/StyledEdit", fTree.Path(fName)), B_OK);
    EXPECT_EQ(Arguments(), (Words{"text", fTree.Path(fName)}));
}

TEST_P(RosterNamesTest, ReachARunningProgramWhole)
{
    WriteProgram("tool");
    const entry_ref ref = Ref("tool");
    const char* argument = fName.c_str();
    EXPECT_EQ(be_roster->Launch(&ref, 1, &argument), B_OK);
    EXPECT_EQ(Arguments(), (Words{fName}));
}

INSTANTIATE_TEST_SUITE_P(
    Odd, RosterNamesTest,
    ::testing::Values(OddName{"Blank", "two words"}, OddName{"Dash", "-rf"},
                      OddName{"LineBreak", "a\nb"}, OddName{"Codes", "per%20cent%f"},
                      OddName{"Quotes", "quo'te\"s"}, OddName{"Commands", "$(touch x)`y`;&|"},
                      OddName{"NoLetters", "\xff\xfe"}, OddName{"Umlaut", "h\xc3\xa4"},
                      OddName{"Backslash", "back\\slash"}, OddName{"Address", "#hash?ask"}),
    [](const auto& tested) { return std::string(tested.param.name); });

// Programs

TEST_F(RosterLaunchTest, RunsAProgramInItsOwnFolder)
{
    WriteProgram("bin/tool");
    EXPECT_EQ(Launch("bin/tool"), B_OK);
    const StartRecord started = Started();
    EXPECT_EQ(started.arguments, Words{fTree.Path("bin/tool")});
    EXPECT_EQ(started.facts.at("folder"), fTree.Path("bin"));
}

TEST_F(RosterLaunchTest, NeverRunsAScript)
{
    fTree.Write("script", "#!/bin/sh\ntouch '" + fTree.Path("was-run") + "'\n");
    std::filesystem::permissions(fTree.Path("script"), std::filesystem::perms::owner_all);
    EXPECT_EQ(Launch("script"), B_OK);
    EXPECT_EQ(Arguments(), (Words{"text", fTree.Path("script")}));
    EXPECT_FALSE(fTree.Exists("was-run"));
}

TEST_F(RosterLaunchTest, NeverRunsWhatIsNamedAsADocument)
{
    WriteProgram("invoice.pdf");
    EXPECT_EQ(Launch("invoice.pdf"), B_OK);
    EXPECT_EQ(Arguments(), (Words{"address", fTree.Path("invoice.pdf")}));
}

TEST_F(RosterLaunchTest, RunsNothingThatThePersonMayNotRun)
{
    WriteProgram("tool");
    std::filesystem::permissions(fTree.Path("tool"), std::filesystem::perms::owner_read);
    EXPECT_EQ(Launch("tool"), B_LAUNCH_FAILED_NO_PREFERRED_APP);
    EXPECT_EQ(fPrograms.Count(), 0u);
}

TEST_F(RosterLaunchTest, RunsNoLibrary)
{
    // A head of one for this kind of machine, with no table of what it is made of.
    std::string head("\x7f"
                     "ELF\2\1\1",
                     7);
    head.resize(64, '\0');
    head[16] = 3;
    head[54] = 56;
    fTree.Write("library", head);
    std::filesystem::permissions(fTree.Path("library"), std::filesystem::perms::owner_all);
    EXPECT_EQ(Launch("library"), B_LAUNCH_FAILED_NO_PREFERRED_APP);
}

TEST_F(RosterLaunchTest, SaysThatTheMachineCannotRunIt)
{
    // For a processor that does not exist: no shell tries to read it then.
    std::string head("\x7f"
                     "ELF\2\1\1",
                     7);
    head.resize(64, '\0');
    head[16] = 2;
    head[18] = '\xee';
    head[54] = 56;
    fTree.Write("strange", head);
    std::filesystem::permissions(fTree.Path("strange"), std::filesystem::perms::owner_all);
    EXPECT_EQ(Launch("strange"), B_LAUNCH_FAILED_EXECUTABLE);
}

// What a program is started with

/// Started by the desktop's library, and by the kits themselves.
class RosterChildTest : public RosterLaunchTest, public ::testing::WithParamInterface<const char*>
{
protected:
    StartRecord StartIt()
    {
        fTree.Write("a.txt", "text");
        WriteProgram("tool");
        entry_ref ref = Ref(GetParam());
        EXPECT_EQ(be_roster->Launch(&ref, nullptr, &fTeam), B_OK);
        return Started();
    }

    team_id fTeam = -1;
};

TEST_P(RosterChildTest, GetsNoSignalsBlocked)
{
    sigset_t end;
    sigset_t before;
    sigemptyset(&end);
    sigaddset(&end, SIGTERM);
    sigaddset(&end, SIGINT);
    pthread_sigmask(SIG_BLOCK, &end, &before);
    const StartRecord started = StartIt();
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    EXPECT_EQ(started.facts.at("blocked"), "0000000000000000");
}

TEST_P(RosterChildTest, GetsTheDescriptorLimitOfTheStart)
{
    const char* first = std::getenv("FIRST_DESCRIPTOR_LIMIT");
    ASSERT_NE(first, nullptr);
    rlimit now = {};
    BEntry(fTree.Path().c_str()); // which raises it
    getrlimit(RLIMIT_NOFILE, &now);
    ASSERT_NE(std::to_string(now.rlim_cur), first);
    EXPECT_EQ(StartIt().facts.at("limit"), first);
}

TEST_P(RosterChildTest, GetsNoDescriptors)
{
    // One that its maker forgot to close in children.
    const int open = ::dup(STDERR_FILENO);
    ASSERT_GT(open, STDERR_FILENO);
    const StartRecord started = StartIt();
    ::close(open);
    EXPECT_EQ(started.facts.at("descriptors"), "0 1 2 ");
    EXPECT_EQ(started.facts.at("input"), "/dev/null");
}

TEST_P(RosterChildTest, HasASessionOfItsOwn)
{
    const StartRecord started = StartIt();
    EXPECT_EQ(started.facts.at("session"), started.facts.at("process"));
    EXPECT_EQ(started.facts.at("process"), std::to_string(fTeam));
}

TEST_P(RosterChildTest, LeavesNothingToWaitFor)
{
    const StartRecord started = StartIt();
    EXPECT_NE(started.facts.at("parent"), std::to_string(::getpid()));
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST_P(RosterChildTest, GetsNothingOfThisProgramsOwnStart)
{
    const Variable first("DESKTOP_STARTUP_ID", "first");
    const Variable second("XDG_ACTIVATION_TOKEN", "second");
    const Variable kept("KEPT_VARIABLE", "third");
    const StartRecord started = StartIt();
    EXPECT_FALSE(started.HasVariable("DESKTOP_STARTUP_ID"));
    EXPECT_FALSE(started.HasVariable("XDG_ACTIVATION_TOKEN"));
    EXPECT_TRUE(started.HasVariable("KEPT_VARIABLE"));
}

INSTANTIATE_TEST_SUITE_P(Both, RosterChildTest, ::testing::Values("a.txt", "tool"),
                         [](const auto& tested) {
                             return std::string(tested.param) == "tool" ? "Run" : "ByType";
                         });

TEST_F(RosterLaunchTest, ProgramsForDocumentsBeginInTheHomeFolder)
{
    const Variable home("HOME", fTree.Path().c_str());
    fTree.Write("there/a.txt", "text");
    EXPECT_EQ(Launch("there/a.txt"), B_OK);
    EXPECT_EQ(Started().facts.at("folder"), fTree.Path());
}

TEST_F(RosterLaunchTest, WorksOnSeveralThreadsAtOnce)
{
    constexpr size_t kThreads = 8;
    fTree.Write("a.txt", "text");
    WriteProgram("tool");
    std::vector<std::thread> threads;
    for (size_t index = 0; index < kThreads; index++) {
        threads.emplace_back(
            [this, index] { EXPECT_EQ(Launch(index % 2 == 0 ? "a.txt" : "tool"), B_OK); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(fPrograms.Await(kThreads).size(), kThreads);
}

// What stands at fixed paths

TEST_F(RosterLaunchTest, HasAProgramForFoldersThatIsNotThisOne)
{
    EXPECT_EQ(LaunchFixed("/boot/beos/system/Tracker", fTree.Path()), B_OK);
    EXPECT_EQ(Arguments(), (Words{"folders", fTree.Path()}));
}

TEST_F(RosterLaunchTest, OpensAFolderByIt)
{
    fTree.MakeFolder("folder");
    EXPECT_EQ(Launch("folder"), B_OK);
    EXPECT_EQ(Arguments(), (Words{"folders", fTree.Path("folder")}));
}

TEST_F(RosterLaunchTest, KnowsFixedProgramsAsEntries)
{
    const BEntry entry("/boot/apps/StyledEdit", true);
    entry_ref ref;
    EXPECT_EQ(entry.InitCheck(), B_OK);
    EXPECT_FALSE(entry.Exists());
    ASSERT_EQ(entry.GetRef(&ref), B_OK);
    EXPECT_STREQ(ref.name, "StyledEdit");
    EXPECT_EQ(BEntry(&ref), entry);
    EXPECT_NE(BEntry("/boot/beos/system/Tracker"), entry);
    EXPECT_NE(BEntry("/boot/apps/Other").InitCheck(), B_OK);
}

// What cannot be opened

TEST_F(RosterLaunchTest, SaysThatNoProgramIsThere)
{
    fTree.Write("a.mp4", "film");
    fTree.Write("a.unheard-of", std::string("\0\1\2", 3));
    EXPECT_EQ(Launch("a.mp4"), B_LAUNCH_FAILED_NO_PREFERRED_APP);
    EXPECT_EQ(Launch("a.unheard-of"), B_LAUNCH_FAILED_NO_PREFERRED_APP);
}

TEST_F(RosterLaunchTest, SaysThatWhatAProgramNeedsIsMissing)
{
    fTree.Write("a.mp3", "song");
    EXPECT_EQ(Launch("a.mp3"), B_LAUNCH_FAILED_APP_NOT_FOUND);
}

TEST_F(RosterLaunchTest, SaysThatALinkLeadsNowhere)
{
    fTree.Write("file", "");
    fTree.Link("broken", "nowhere");
    fTree.Link("through", "file/below");
    fTree.Link("circle", "circle");
    EXPECT_EQ(Launch("broken"), B_LAUNCH_FAILED_NO_RESOLVE_LINK);
    EXPECT_EQ(Launch("through"), B_LAUNCH_FAILED_NO_RESOLVE_LINK);
    EXPECT_EQ(Launch("circle"), B_LINK_LIMIT);
}

TEST_F(RosterLaunchTest, OpensNoOtherKindOfNode)
{
    ASSERT_EQ(::mkfifo(fTree.Path("fifo.txt").c_str(), 0600), 0);
    fTree.Link("link", "fifo.txt");
    EXPECT_EQ(Launch("fifo.txt"), B_BAD_TYPE);
    EXPECT_EQ(Launch("link"), B_BAD_TYPE);
    EXPECT_EQ(fPrograms.Count(), 0u);
}

TEST_F(RosterLaunchTest, RefusesWhatCannotBe)
{
    fTree.Write("a.txt", "text");
    const entry_ref file = Ref("a.txt");
    const entry_ref gone = Ref("gone");
    const BMessage message('mess');
    const char* noWord = nullptr;
    EXPECT_EQ(be_roster->Launch(nullptr), B_BAD_VALUE);
    EXPECT_EQ(be_roster->Launch(&file, &message), B_BAD_VALUE);
    EXPECT_EQ(be_roster->Launch(&file, 1, nullptr), B_BAD_VALUE);
    EXPECT_EQ(be_roster->Launch(&file, 1, &noWord), B_BAD_VALUE);
    EXPECT_EQ(be_roster->Launch(&gone), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(LaunchFixed("/boot/apps/StyledEdit", "relative"), B_BAD_VALUE);
    EXPECT_EQ(fPrograms.Count(), 0u);
}

} // namespace
