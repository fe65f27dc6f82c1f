#include "BesideMain.h"

#include <gtest/gtest.h>

int main(int argumentCount, char** arguments)
{
    testing::InitGoogleTest(&argumentCount, arguments);
    return RunBesideMain([] { return RUN_ALL_TESTS(); });
}
