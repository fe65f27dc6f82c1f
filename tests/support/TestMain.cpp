#include <gtest/gtest.h>

#include <thread>

// The tests run beside the main thread: what a toolkit keeps for each thread is given back when a
// thread ends, and only the main thread never does. So what is left at the end has been leaked.
int main(int argumentCount, char** arguments)
{
    testing::InitGoogleTest(&argumentCount, arguments);
    int result = 1;
    std::thread([&result] { result = RUN_ALL_TESTS(); }).join();
    return result;
}
