#pragma once

#include "ScreenWatch.h"

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

/// Notes when a window is painted, until it is let go.
class Paintings
{
public:
    explicit Paintings(Window window)
    {
        fThread = std::thread([this, window] {
            ScreenWatch screen;
            screen.WatchOnly(window);
            double last = 0;
            while (!fIsOver) {
                const double when = screen.FirstChange(100);
                // Rectangles of one frame come together.
                if (when >= 0 && when - last > kFrameMs) {
                    fTimes.push_back(when);
                }
                last = when >= 0 ? when : last;
            }
        });
    }
    ~Paintings() { End(); }
    Paintings(const Paintings&) = delete;
    Paintings& operator=(const Paintings&) = delete;

    /// How many there were in the busiest second.
    size_t MostInASecond()
    {
        End();
        size_t most = 0;
        size_t first = 0;
        for (size_t last = 0; last < fTimes.size(); last++) {
            while (fTimes[last] - fTimes[first] > 1000) {
                first++;
            }
            most = std::max(most, last - first + 1);
        }
        return most;
    }

    /// How many began in a time, which is over.
    size_t CountBetween(double beginMs, double endMs)
    {
        End();
        return static_cast<size_t>(
            std::count_if(fTimes.begin(), fTimes.end(), [beginMs, endMs](double when) {
                return when >= beginMs && when < endMs;
            }));
    }

private:
    void End()
    {
        fIsOver = true;
        if (fThread.joinable()) {
            fThread.join();
        }
    }

    static constexpr double kFrameMs = 3;
    std::atomic<bool> fIsOver = false;
    std::vector<double> fTimes; // the thread's until it has ended
    std::thread fThread;
};
