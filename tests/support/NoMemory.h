#pragma once

/// While one lives, `new` fails on every thread, from the (`after` + 1)th time on.
class NoMemory
{
public:
    enum class Times { kOnce, kAlways };

    explicit NoMemory(int after, Times times = Times::kAlways);
    ~NoMemory();
    NoMemory(const NoMemory&) = delete;
    NoMemory& operator=(const NoMemory&) = delete;

    /// How often memory was asked for in vain.
    static int CountRefused();
};
