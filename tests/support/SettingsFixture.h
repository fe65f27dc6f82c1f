#pragma once

#include "TempTree.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

/// A settings directory of the test's own.
class SettingsFixture : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fTree.MakeFolder("config");
        setenv("XDG_CONFIG_HOME", fTree.Path("config").c_str(), 1);
    }

    void Write(const std::string& contents)
    {
        fTree.Write("config/Norvane/Norvane.pref", contents);
    }
    std::string Contents() const { return fTree.Read("config/Norvane/Norvane.pref"); }

    TempTree fTree;
};
