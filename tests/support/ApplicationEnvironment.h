#pragma once

#include <testing/Driver.h>

#include <gtest/gtest.h>

#include <memory>

/// Keeps an application running while the tests of this binary run; including the header is enough.
///
/// It is quit before the program ends: nobody may leave main() while the server thread lives.
class ApplicationEnvironment : public ::testing::Environment
{
public:
    void SetUp() override { fApplication = std::make_unique<kits::testing::HeadlessApplication>(); }
    void TearDown() override { fApplication.reset(); }

private:
    std::unique_ptr<kits::testing::HeadlessApplication> fApplication;
};

inline ::testing::Environment* const gApplicationEnvironment =
    ::testing::AddGlobalTestEnvironment(new ApplicationEnvironment);
