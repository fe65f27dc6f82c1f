#pragma once

#include <cstdint>
#include <random>
#include <string>

/// What a step does to a folder.
enum class Act : uint8_t {
    kMakeFile,
    kMakeFolder,
    kMakeLink, // a symbolic one
    kAddName,  // a hard link
    kRemove,
    kRename,
    kExchange,
    kMoveOut,
    kMoveIn,
    kWrite,
    kTruncate,
    kSetMode,
};

/// One change of a folder, made by names.
struct Step
{
    Act act = Act::kMakeFile;
    std::string name;
    std::string second; // the other name, of those that have two
    int value = 0;      // how much to write, which mode

    std::string Text() const;
};

/// Draws steps from a few names, so that they meet.
class Dice
{
public:
    explicit Dice(uint32_t seed) : fRandom(seed) {}

    int Below(int count) { return std::uniform_int_distribution<int>(0, count - 1)(fRandom); }
    Step NextStep();

private:
    std::string Name();

    std::mt19937 fRandom;
};

/// Does a step in `folder`; what moves in comes from `outside`, and what moves out goes there.
/// False when the kernel refused, and nothing changed.
bool Do(const Step& step, const std::string& folder, const std::string& outside);
