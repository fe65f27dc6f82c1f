#include <Application.h>
#include <Entry.h>
#include <Path.h>
#include <Roster.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <unistd.h>

namespace {

constexpr const char* kSignature = "application/x-vnd.test";

TEST(ApplicationInfoTest, NamesTheProgramsOwnFile)
{
    BApplication application(kSignature);
    app_info info;

    ASSERT_EQ(application.GetAppInfo(&info), B_OK);

    EXPECT_EQ(std::string(BPath(&info.ref).Path()),
              std::filesystem::read_symlink("/proc/self/exe").string());
    EXPECT_STREQ(info.signature, kSignature);
    EXPECT_EQ(info.team, ::getpid());
    EXPECT_EQ(application.GetAppInfo(nullptr), B_BAD_VALUE);
}

TEST(ApplicationInfoTest, CutsALongSignature)
{
    const std::string longName(1000, 'a');
    BApplication application(longName.c_str());
    app_info info;

    ASSERT_EQ(application.GetAppInfo(&info), B_OK);

    EXPECT_EQ(std::string(info.signature), longName.substr(0, B_MIME_TYPE_LENGTH - 1));
}

TEST(ApplicationInfoTest, RosterKnowsThisProgramOnly)
{
    app_info info;
    EXPECT_EQ(be_roster->GetRunningAppInfo(::getpid(), &info), B_BAD_TEAM_ID);
    BApplication application(kSignature);

    EXPECT_EQ(be_roster->GetRunningAppInfo(::getpid(), &info), B_OK);
    EXPECT_STREQ(info.signature, kSignature);
    EXPECT_EQ(be_roster->GetRunningAppInfo(::getppid(), &info), B_BAD_TEAM_ID);
}

} // namespace
