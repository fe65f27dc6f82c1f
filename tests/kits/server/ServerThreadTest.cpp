#include "ApplicationEnvironment.h"

#include "server/WindowServer.h"

#include <gtest/gtest.h>

namespace {

using kits::WindowServer;

// Death tests run in a process of their own that starts anew: this one has threads.
class ServerThreadDeathTest : public ::testing::Test
{
protected:
    ServerThreadDeathTest() { ::testing::GTEST_FLAG(death_test_style) = "threadsafe"; }
};

#ifdef KITS_GUARDS

TEST_F(ServerThreadDeathTest, DoesNotWaitForItself)
{
    EXPECT_DEATH(WindowServer::Get().Call([] { WindowServer::Get().Call([] {}); }),
                 "server's thread waits for itself");
}

#endif

} // namespace
