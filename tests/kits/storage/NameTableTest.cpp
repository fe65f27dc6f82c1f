#include "storage/NameTable.h"

#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string>

using kits::NameTable;

TEST(NameTableTest, MatchesAMapUnderRandomCalls)
{
    NameTable table;
    std::map<std::string, ino_t> model;
    std::minstd_rand random(1);
    for (int i = 0; i < 200'000; ++i) {
        const std::string name = std::to_string(random() % 3000) + std::string(random() % 3, 'n');
        ino_t node = 0;
        if (random() % 2 == 0) {
            node = random();
            table.Set(name, node);
            model[name] = node;
        } else {
            const auto found = model.find(name);
            ASSERT_EQ(table.Remove(name, &node), found != model.end());
            if (found != model.end()) {
                ASSERT_EQ(node, found->second);
                model.erase(found);
            }
        }
    }

    EXPECT_EQ(table.Count(), model.size());
    for (const auto& [name, node] : model) {
        ino_t found = 0;
        ASSERT_TRUE(table.Find(name, &found)) << name;
        EXPECT_EQ(found, node);
    }
}

TEST(NameTableTest, StaysSmall)
{
    NameTable table;
    for (int i = 0; i < 100'000; ++i) {
        table.Set("some-file-name-" + std::to_string(i) + ".txt", static_cast<ino_t>(i));
    }

    EXPECT_LT(table.MemoryBytes(), 100'000u * 150);
}

TEST(NameTableTest, GivesRoomBackWhenNamesChangeForLong)
{
    NameTable table;
    ino_t node = 0;
    for (int i = 0; i < 500'000; ++i) {
        table.Set("temporary-" + std::to_string(i), 1);
        table.Remove("temporary-" + std::to_string(i), &node);
    }

    EXPECT_EQ(table.Count(), 0u);
    EXPECT_LT(table.MemoryBytes(), 1'000'000u);
}
