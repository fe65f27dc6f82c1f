#include "ApplicationEnvironment.h"

#include "server/WindowServer.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using kits::WindowServer;

// Death tests run in a process of their own that starts anew: this one has threads.
class ServerThreadDeathTest : public ::testing::Test
{
protected:
    ServerThreadDeathTest() { ::testing::GTEST_FLAG(death_test_style) = "threadsafe"; }
};

TEST_F(ServerThreadDeathTest, AnExceptionOnItEndsTheProgram)
{
    EXPECT_DEATH(WindowServer::Get().Call([] { throw std::runtime_error("lost"); }),
                 "std::runtime_error: lost, on the thread \"window server\"");
}

#ifdef KITS_GUARDS

TEST_F(ServerThreadDeathTest, DoesNotWaitForItself)
{
    EXPECT_DEATH(WindowServer::Get().Call([] { WindowServer::Get().Call([] {}); }),
                 "server's thread waits for itself");
}

#endif

} // namespace
