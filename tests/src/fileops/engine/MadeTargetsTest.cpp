#include "fileops/engine/MadeTargets.h"

#include <gtest/gtest.h>

namespace norvane {

TEST(MadeTargetsTest, KnowsNodes)
{
    MadeTargets made;
    made.Add(node_ref(1, 2));
    EXPECT_TRUE(made.Has(node_ref(1, 2)));
    EXPECT_FALSE(made.Has(node_ref(2, 1)));
    EXPECT_FALSE(made.HasName("/to", "a")) << "names are for volumes without node numbers";
}

TEST(MadeTargetsTest, KnowsNamesAsAVolumeThatFoldsThem)
{
    MadeTargets made;
    made.AddName("/to/Folder", "Same");
    EXPECT_TRUE(made.HasName("/to/Folder", "Same"));
    EXPECT_TRUE(made.HasName("/to/folder", "sAME"));
    EXPECT_FALSE(made.HasName("/to/folder", "other"));
    EXPECT_FALSE(made.HasName("/to", "Same"));
    made.AddName("/to", "\xc3\x84");
    EXPECT_TRUE(made.HasName("/to", "\xc3\xa4")) << "what case is beyond ASCII, the volume decides";
}

} // namespace norvane
