#include "AppFixture.h"

namespace norvane {

/// What is said of settings that cannot be saved or read.
class UnsavedSettingsTest : public AppFixture
{
protected:
    std::vector<std::string> AlertsOfSaving()
    {
        return AnswerAlertsOf([this] { Locked([this] { fWindow->SaveSettings(); }); });
    }
};

TEST_F(UnsavedSettingsTest, ADanglingLinkIsToldOnceWithItsReason)
{
    fTree.MakeFolder("config/Norvane");
    fTree.Link("config/Norvane/Norvane.pref", fTree.Path("gone/Norvane.pref"));
    Open();
    const std::vector<std::string> texts = AlertsOfSaving();
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_EQ(texts[0], "The settings could not be saved.\n\nNorvane.pref: No such file or folder");
}

TEST_F(UnsavedSettingsTest, AFolderThatCannotBeMadeIsToldOnce)
{
    fTree.Write("config/Norvane", "a file where the folder should be");
    Open();
    const std::vector<std::string> texts = AlertsOfSaving();
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_EQ(texts[0].rfind("The settings could not be saved.\n\nNorvane.pref: ", 0), 0u)
        << texts[0];
}

TEST_F(UnsavedSettingsTest, WhatCannotBeReadIsToldOnceAtTheStart)
{
    fTree.MakeFolder("config/Norvane/Norvane.pref");
    const std::vector<std::string> texts = AnswerAlertsOf([this] {
        fWindow = new NorvaneWindow(BRect(10, 40, 809, 639), true);
        fWindow->Show();
    });
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_EQ(texts[0], "The settings could not be read.\n\nNorvane.pref: It is a folder");
    ASSERT_TRUE(kits::testing::WaitForFocus(fWindow));
    EXPECT_EQ(CountPanes(), 2);
    EXPECT_EQ(AlertsOfSaving().size(), 1u);
}

TEST_F(UnsavedSettingsTest, NothingIsSaidWhereAllIsWell)
{
    Open();
    EXPECT_TRUE(AlertsOfSaving().empty());
    EXPECT_EQ(Setting("NumPanes"), "2");
}

} // namespace norvane
