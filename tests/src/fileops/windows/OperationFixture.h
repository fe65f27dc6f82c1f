#pragma once

#include "ApplicationEnvironment.h"
#include "TempTree.h"
#include "Variable.h"
#include "fileops/engine/Operations.h"
#include "fileops/windows/CopyWin.h"

#include <AppDefs.h>
#include <Entry.h>
#include <Looper.h>
#include <StringView.h>

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <vector>

namespace norvane {

/// Counts the ends of operations.
class OperationListener : public BLooper
{
public:
    void MessageReceived(BMessage* message) override
    {
        void* window = nullptr;
        if (message->what == 511 && message->FindPointer("WindowHandle", &window) == B_OK &&
            window != nullptr) {
            ended++;
        }
    }

    std::atomic<int> ended{0};
};

/// Whole operations in their windows.
class OperationFixture : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fListener = new OperationListener;
        fListener->Run();
        fTree.MakeFolder("to");
    }

    void TearDown() override
    {
        Operations::Resume();
        EXPECT_TRUE(kits::testing::WaitForNoWindow("Copy"));
        if (fListener != nullptr && fListener->Lock()) {
            fListener->Quit();
        }
    }

    BMessage Request(const std::vector<std::string>& names, const char* type = "Copy")
    {
        BMessage request(B_SIMPLE_DATA);
        for (const std::string& name : names) {
            entry_ref ref;
            EXPECT_EQ(get_ref_for_path(fTree.Path(name).c_str(), &ref), B_OK);
            request.AddRef("refs", &ref);
        }
        request.AddString("TypeOfCopy", type);
        return request;
    }

    CopyWin* Start(BMessage request)
    {
        return new CopyWin(BRect(0, 0, 1000, 700), "Copy", fTree.Path("to").c_str(), &request,
                           fListener);
    }

    bool HasEnded()
    {
        return kits::testing::WaitFor([this] { return fListener->ended == 1; });
    }

    void Answer(const char* button)
    {
        BWindow* question = kits::testing::WaitForWindow("Item Exists");
        ASSERT_NE(question, nullptr);
        ASSERT_TRUE(kits::testing::WaitUntilAnswers(question));
        kits::testing::Click(kits::testing::FindView(question, button));
    }

    static std::string QuestionLine()
    {
        BWindow* question = kits::testing::WaitForWindow("Item Exists");
        const BStringView* line =
            dynamic_cast<BStringView*>(kits::testing::FindView(question, "OverwriteFile"));
        return line != nullptr ? line->Text() : "";
    }

    TempTree fTree;
    const Variable fDataHome{"XDG_DATA_HOME", fTree.Path("data").c_str()};
    OperationListener* fListener = nullptr; // deletes itself
};

} // namespace norvane
