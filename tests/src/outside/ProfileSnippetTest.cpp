#include "outside/ProfileSnippet.h"

#include "TempTree.h"

#include <File.h>

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <vector>

namespace norvane {

namespace {

namespace fs = std::filesystem;

/// What login shells read to begin in a folder.
class ProfileSnippetTest : public ::testing::Test
{
protected:
    std::string After(const std::string& before)
    {
        fTree.Write(".profile", before);
        Add();
        return fTree.Read(".profile");
    }

    void Add() { AddProfileSnippet(fTree.Path(".profile")); }

    /// What a shell that reads the file says of itself.
    std::string Shell(const std::string& variables, const std::string& command)
    {
        const std::string line = "cd / && env HOME=" + fTree.Path() + " " + variables +
                                 " sh -c '. " + fTree.Path(".profile") + "; " + command + "' 2>&1";
        const std::unique_ptr<FILE, int (*)(FILE*)> shell(::popen(line.c_str(), "r"), &::pclose);
        std::string said;
        for (int letter = 0; (letter = std::fgetc(shell.get())) != EOF;) {
            said += static_cast<char>(letter);
        }
        return said;
    }

    TempTree fTree;
    const std::string fSnippet = kProfileSnippet;
};

TEST_F(ProfileSnippetTest, IsTheTextThatItIs)
{
    EXPECT_EQ(fSnippet, "if [ \"$FOLDER_PATH\" != \"\" ]; then \n"
                        "    cd \"$FOLDER_PATH\" \n"
                        "    unset -v FOLDER_PATH \n"
                        " else \n"
                        "    cd \"$HOME\" \n"
                        " fi \n");
}

TEST_F(ProfileSnippetTest, AMissingFileIsMadeWithItAlone)
{
    Add();
    EXPECT_EQ(fTree.Read(".profile"), fSnippet);
}

TEST_F(ProfileSnippetTest, IsAddedAtTheEndOnce)
{
    EXPECT_EQ(After("PATH=x\n"), "PATH=x\n" + fSnippet);
    Add();
    EXPECT_EQ(fTree.Read(".profile"), "PATH=x\n" + fSnippet);
}

TEST_F(ProfileSnippetTest, BeginsOnALineOfItsOwn)
{
    EXPECT_EQ(After("PATH=x"), "PATH=x\n" + fSnippet);
    EXPECT_EQ(After("\n\n"), "\n\n" + fSnippet);
    EXPECT_EQ(After(""), fSnippet);
}

TEST_F(ProfileSnippetTest, AFileThatHasItIsLeftAlone)
{
    const std::string text = "before" + fSnippet + "after";
    fTree.Write(".profile", text);
    fs::permissions(fTree.Path(".profile"), fs::perms::owner_read | fs::perms::owner_write);
    const auto written = fs::last_write_time(fTree.Path(".profile"));
    Add();
    EXPECT_EQ(fTree.Read(".profile"), text);
    EXPECT_EQ(fs::last_write_time(fTree.Path(".profile")), written);
}

TEST_F(ProfileSnippetTest, IsFoundAmongAnyBytesWhereverItLies)
{
    const std::string bytes("\0\xff\n", 3);
    EXPECT_EQ(After(bytes + fSnippet + bytes), bytes + fSnippet + bytes);
    // Around the ends of what is read at a time.
    for (const size_t before : {65536 - 200, 65536 - 50, 65536 - 1, 65536, 131072 - 60}) {
        const std::string text = std::string(before, 'a') + fSnippet + std::string(70000, 'b');
        EXPECT_EQ(After(text), text) << before;
    }
    const std::string changed = fSnippet.substr(0, fSnippet.size() - 1);
    EXPECT_EQ(After(changed), changed + "\n" + fSnippet); // nearly is not there
}

TEST_F(ProfileSnippetTest, AShellBeginsWhereItIsToldAndForgetsThat)
{
    fTree.MakeFolder("a 'b");
    Add();
    EXPECT_EQ(Shell("FOLDER_PATH=/usr", "pwd; echo \"[$FOLDER_PATH]\""), "/usr\n[]\n");
    EXPECT_EQ(Shell("", "pwd"), fTree.Path() + "\n");
}

TEST_F(ProfileSnippetTest, FollowsALinkAndLeavesItALink)
{
    fTree.Write("dotfiles/profile", "PATH=x\n");
    fTree.Link(".profile", "dotfiles/profile");
    Add();
    EXPECT_EQ(fTree.Read("dotfiles/profile"), "PATH=x\n" + fSnippet);
    EXPECT_EQ(fTree.ReadLink(".profile"), "dotfiles/profile");
}

TEST_F(ProfileSnippetTest, WhatIsNoFileIsLeftAlone)
{
    fTree.MakeFolder(".profile");
    Add();
    EXPECT_TRUE(fTree.IsFolder(".profile"));
    fTree.Remove(".profile");
    ASSERT_EQ(::mkfifo(fTree.Path(".profile").c_str(), 0600), 0);
    Add(); // nor waits for it
    EXPECT_TRUE(fTree.Exists(".profile"));
}

TEST_F(ProfileSnippetTest, AFileThatAnotherHoldsIsLeftToThatOne)
{
    fTree.Write(".profile", "PATH=x\n");
    BFile other(fTree.Path(".profile").c_str(), B_READ_WRITE);
    ASSERT_EQ(other.Lock(), B_OK);
    Add();
    EXPECT_EQ(fTree.Read(".profile"), "PATH=x\n");
}

TEST_F(ProfileSnippetTest, ManyAtOnceAddItOnce)
{
    for (int round = 0; round < 50; round++) {
        fTree.Write(".profile", "PATH=x");
        std::vector<std::thread> programs;
        for (int program = 0; program < 8; program++) {
            programs.emplace_back([this] { Add(); });
        }
        for (std::thread& program : programs) {
            program.join();
        }
        ASSERT_EQ(fTree.Read(".profile"), "PATH=x\n" + fSnippet) << round;
    }
}

/// Half of it would keep every login shell from reading on.
TEST_F(ProfileSnippetTest, IsThereWholeOrNotAtAll)
{
    ::signal(SIGXFSZ, SIG_IGN);
    rlimit before = {};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    fTree.Write(".profile", "PATH=x\n");
    for (size_t room = 0; room < fSnippet.size(); room += 7) {
        const rlimit small{7 + room, before.rlim_max};
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
        Add();
        ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
        EXPECT_EQ(fTree.Read(".profile"), "PATH=x\n") << room;
    }
    ::signal(SIGXFSZ, SIG_DFL);
}

} // namespace

} // namespace norvane
