#pragma once

#include "ApplicationEnvironment.h"
#include "TempTree.h"
#include "panes/DirView.h"

#include <Message.h>
#include <NodeMonitor.h>
#include <ScrollView.h>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

/// A pane's list on a temporary tree, in no window and with settings of its own.
class ListFixture : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fTree.MakeFolder("config");
        fTree.MakeFolder("shown");
        setenv("XDG_CONFIG_HOME", fTree.Path("config").c_str(), 1);
        Build("shown");
    }

    void TearDown() override { fScroller.reset(); }

    void Build(const std::string& folder)
    {
        fScroller.reset();
        BScrollView* scroller = nullptr;
        fList = new norvane::DirView(BRect(0, 0, 299, 299), &scroller, fTree.Path(folder).c_str(),
                                     "1", nullptr); // its scroll view deletes it
        fScroller.reset(scroller);
    }

    int Show(const std::string& folder) { return fList->Populate(fTree.Path(folder).c_str()); }

    /// The names of all rows, each followed by a blank.
    std::string Names() const
    {
        std::string names;
        for (int32 i = 0; i < fList->CountItems(); i++) {
            names += fList->RowAt(i)->GetEntryName() + std::string(" ");
        }
        return names;
    }

    int32 IndexOf(const std::string& name) const
    {
        for (int32 i = 0; i < fList->CountItems(); i++) {
            if (fList->RowAt(i)->GetEntryName() == name) {
                return i;
            }
        }
        return -1;
    }

    norvane::DirListItem* Row(const std::string& name) const { return fList->RowAt(IndexOf(name)); }

    std::string MarkedNames() const
    {
        std::string names;
        for (const norvane::DirListItem* row : fList->Marks().Rows()) {
            names += row->GetEntryName() + std::string(" ");
        }
        return names;
    }

    std::string Selected() const
    {
        const norvane::DirListItem* row = fList->RowAt(fList->CurrentSelection());
        return row != nullptr ? row->GetEntryName() : "(none)";
    }

    void Key(const char* bytes)
    {
        fList->KeyDown(bytes, static_cast<int32>(std::string(bytes).size()));
    }

    /// The leaf names in the message that a command would carry; "(none)" without one.
    std::string Chosen(int32 index = -1)
    {
        const std::unique_ptr<BMessage> message(fList->GetRefMsg(index));
        if (message == nullptr) {
            return "(none)";
        }
        std::string names;
        entry_ref ref;
        for (int32 i = 0; message->FindRef("refs", i, &ref) == B_OK; i++) {
            names += ref.name + std::string(" ");
        }
        return names;
    }

    std::string Summary() const { return fList->GetFiles(); }

    ino_t NodeOf(const std::string& path) const
    {
        struct stat st = {};
        lstat(fTree.Path(path).c_str(), &st);
        return st.st_ino;
    }

    TempTree fTree;
    norvane::DirView* fList = nullptr; // a child of fScroller
    std::unique_ptr<BScrollView> fScroller;
};
