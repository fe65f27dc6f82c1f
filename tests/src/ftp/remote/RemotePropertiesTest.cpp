#include "RemotePaneFixture.h"

#include "AlertText.h"
#include "MessageCodes.h"

namespace {

using RemotePropertiesTest = RemotePaneFixture;

TEST_F(RemotePropertiesTest, AServersEntriesHaveNone)
{
    Connect();
    fWindow->PostMessage(norvane::kShowProperties); // it waits for the answer

    EXPECT_NE(AlertText("foo").find("Properties are shown of local entries only."),
              std::string::npos);
    EXPECT_TRUE(kits::testing::AnswerAlert("OK"));
}

} // namespace
