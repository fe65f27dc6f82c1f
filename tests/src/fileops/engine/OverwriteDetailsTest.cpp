#include "fileops/engine/OverwriteDetails.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

namespace norvane {

class OverwriteDetailsTest : public ::testing::TestWithParam<std::pair<int64, const char*>>
{
protected:
    void SetUp() override
    {
        setenv("TZ", "UTC", 1);
        tzset();
    }
};

TEST_P(OverwriteDetailsTest, TellsSizeAndDate)
{
    const auto& [sizeBytes, size] = GetParam();
    EXPECT_EQ(OverwriteDetails(sizeBytes, 741'476'948),
              std::string(size) + "  Wed Jun 30 21:49:08 1993");
}

INSTANTIATE_TEST_SUITE_P(
    Sizes, OverwriteDetailsTest,
    ::testing::Values(std::pair<int64, const char*>{0, "0 Bytes"},
                      std::pair<int64, const char*>{1024, "1024 Bytes"},
                      std::pair<int64, const char*>{1025, "1 K"},
                      std::pair<int64, const char*>{17'500, "17 K"},
                      std::pair<int64, const char*>{5'000'000'000, "4882812 K"}),
    [](const auto& tested) { return "Bytes" + std::to_string(tested.param.first); });

} // namespace norvane
