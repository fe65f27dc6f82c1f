#include "fileops/engine/NorvaneEntry.h"

#include "AlertText.h"
#include "ApplicationEnvironment.h"
#include "TempTree.h"
#include "fileops/windows/MessageBox.h"

#include <Entry.h>
#include <Errors.h>

#include <gtest/gtest.h>

#include <future>

namespace norvane {

struct ErrorText
{
    const char* name;
    status_t status;
    const char* text;
    const char* button;
};

class ShowErrorTest : public ::testing::TestWithParam<ErrorText>
{
};

TEST_P(ShowErrorTest, SaysWhatTheStatusMeans)
{
    TempTree tree;
    tree.Write("a", "");
    entry_ref ref;
    ASSERT_EQ(get_ref_for_path(tree.Path("a").c_str(), &ref), B_OK);
    const std::future<void> shown =
        std::async(std::launch::async, [&] { NorvaneEntry(&ref).ShowError(GetParam().status); });
    EXPECT_EQ(AlertText("Sorry Charley"),
              std::string("stop: ") + GetParam().text + " [" + GetParam().button + "]*");
    EXPECT_TRUE(kits::testing::AnswerAlert(GetParam().button));
}

INSTANTIATE_TEST_SUITE_P(
    Statuses, ShowErrorTest,
    ::testing::Values(
        ErrorText{"BadValue", B_BAD_VALUE, "Initialization for output incorrect.", "OK"},
        ErrorText{"Busy", B_BUSY, "The node is busy.", "OK"},
        ErrorText{"EntryNotFound", B_ENTRY_NOT_FOUND, "Couldn't create file.", "OK"},
        ErrorText{"FileError", B_FILE_ERROR, "A file system error prevented the operation.", "OK"},
        ErrorText{"FileExists", B_FILE_EXISTS, "Strange but this file exists.",
                  "Even Scotty Can't Fix it"},
        ErrorText{"LinkLimit", B_LINK_LIMIT, "A cyclic loop has been detected in the file system.",
                  "OK"},
        ErrorText{"NameTooLong", B_NAME_TOO_LONG, "The path specified is too long.", "OK"},
        ErrorText{"NoMemory", B_NO_MEMORY, "Out of Memory.", "OK"},
        ErrorText{"NoMoreFds", B_NO_MORE_FDS, "Too many files are open.", "OK"},
        ErrorText{"IsADirectory", B_IS_A_DIRECTORY, "Can't replace a directory with a file.", "OK"},
        ErrorText{"NotADirectory", B_NOT_A_DIRECTORY, "A portion of the path is not a directory.",
                  "OK"},
        ErrorText{"NotAllowed", B_NOT_ALLOWED, "This volume is read only.", "OK"},
        ErrorText{"ReadOnlyDevice", B_READ_ONLY_DEVICE, "This volume is read only.", "OK"},
        ErrorText{"PermissionDenied", B_PERMISSION_DENIED, "Permission denied.", "OK"},
        ErrorText{"DeviceFull", B_DEVICE_FULL, "Unknown Error.", "OK"}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST(MessageBoxTest, ReturnsTheIndexOfTheButton)
{
    const char* const labels[] = {"One", "Two", "Three"};
    for (int32 index = 0; index < 3; index++) {
        std::future<int32> answer = std::async(std::launch::async, [&labels] {
            return MessageBox("Which?", "A title", labels[0], labels[1], labels[2]);
        });
        EXPECT_NE(kits::testing::WaitForWindow("A title"), nullptr);
        std::string text;
        EXPECT_TRUE(kits::testing::AnswerAlert(labels[index], &text));
        EXPECT_EQ(text, "Which?");
        EXPECT_EQ(answer.get(), index);
    }
}

TEST(MessageBoxTest, HasOnlyTheButtonsNamed)
{
    std::future<int32> answer =
        std::async(std::launch::async, [] { return MessageBox("So.", "A title", "Fine"); });
    EXPECT_TRUE(kits::testing::AnswerAlert("Fine"));
    EXPECT_EQ(answer.get(), 0);
}

} // namespace norvane
