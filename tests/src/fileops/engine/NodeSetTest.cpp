#include "fileops/engine/NodeSet.h"

#include <gtest/gtest.h>

namespace norvane {
namespace {

TEST(NodeSetTest, HasWhatWasAdded)
{
    NodeSet set;
    EXPECT_FALSE(set.Has(node_ref(1, 2)));
    set.Add(node_ref(1, 2));
    set.Add(node_ref(1, 2));
    EXPECT_TRUE(set.Has(node_ref(1, 2)));
    EXPECT_FALSE(set.Has(node_ref(2, 1)));
    EXPECT_FALSE(set.Has(node_ref(1, 3)));
}

TEST(NodeSetTest, AnUnsetNodeIsNeverThere)
{
    NodeSet set;
    set.Add(node_ref());
    EXPECT_FALSE(set.Has(node_ref()));
    set.Add(node_ref(1, 2));
    set.Add(node_ref());
    EXPECT_FALSE(set.Has(node_ref()));
}

TEST(NodeSetTest, GrowsWithWhatIsAdded)
{
    NodeSet set;
    for (ino_t node = 1; node <= 100'000; node++) {
        set.Add(node_ref(node % 3 + 1, node * 64));
    }
    for (ino_t node = 1; node <= 100'000; node++) {
        ASSERT_TRUE(set.Has(node_ref(node % 3 + 1, node * 64))) << node;
        ASSERT_FALSE(set.Has(node_ref(node % 3 + 2, node * 64 + 1))) << node;
    }
}

} // namespace
} // namespace norvane
