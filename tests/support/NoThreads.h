#pragma once

/// While one lives, the system has no threads left: starting one fails on every thread.
class NoThreads
{
public:
    NoThreads();
    ~NoThreads();
    NoThreads(const NoThreads&) = delete;
    NoThreads& operator=(const NoThreads&) = delete;

    /// How often a thread was asked for in vain.
    static int CountRefused();
};
