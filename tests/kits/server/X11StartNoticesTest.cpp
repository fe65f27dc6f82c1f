#include "server/X11StartNotices.h"

#include "Variable.h"

#include <gtest/gtest.h>

namespace kits {

TEST(X11StartNoticesTest, SaysWhatStarts)
{
    EXPECT_EQ(StartMessage({"Pen", "a-pen", "Pen.Pen", "/share/pen.desktop"}, "n-1_TIME5"),
              "new: ID=\"n-1_TIME5\" NAME=\"Pen\" DESCRIPTION=\"Pen\" SCREEN=0 ICON=\"a-pen\" "
              "WMCLASS=\"Pen.Pen\" APPLICATION_ID=\"/share/pen.desktop\"");
    EXPECT_EQ(StartMessage({"A \"great\" pen\\", "", "", ""}, "n"),
              "new: ID=\"n\" NAME=\"A \\\"great\\\" pen\\\\\" "
              "DESCRIPTION=\"A \\\"great\\\" pen\\\\\" SCREEN=0");
}

TEST(X11StartNoticesTest, IsSentInPiecesWithAZeroAtTheEnd)
{
    EXPECT_EQ(PiecesOf("short"), std::vector<std::string>{std::string("short\0", 6)});
    const std::string twenty(20, 'x');
    EXPECT_EQ(PiecesOf(twenty), (std::vector<std::string>{twenty, std::string(1, '\0')}));
    EXPECT_EQ(PiecesOf(twenty + "y"), (std::vector<std::string>{twenty, std::string("y\0", 2)}));
}

TEST(X11StartNoticesTest, SaysNothingWithoutADisplay)
{
    const Variable display("DISPLAY", ":99999");
    EXPECT_EQ(X11StartNotices().Begin({"Pen", "", "", ""}), "");
}

} // namespace kits
