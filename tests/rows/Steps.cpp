#include "Steps.h"

#include <array>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int kNames = 12;

struct Chance
{
    Act act;
    int weight;
};

constexpr std::array<Chance, 12> kChances = {{
    {Act::kMakeFile, 16},
    {Act::kMakeFolder, 6},
    {Act::kMakeLink, 3},
    {Act::kAddName, 3},
    {Act::kRemove, 16},
    {Act::kRename, 26},
    {Act::kExchange, 8},
    {Act::kMoveOut, 5},
    {Act::kMoveIn, 8},
    {Act::kWrite, 8},
    {Act::kTruncate, 3},
    {Act::kSetMode, 4},
}};

const char* NameOf(Act act)
{
    constexpr std::array<const char*, 12> kNamesOfActs = {
        "make file", "make folder", "make link", "add name", "remove",   "rename",
        "exchange",  "move out",    "move in",   "write",    "truncate", "set mode"};
    return kNamesOfActs[static_cast<size_t>(act)];
}

bool Close(int descriptor)
{
    return descriptor >= 0 && close(descriptor) == 0;
}

bool Write(const std::string& path, int bytes)
{
    const int file = open(path.c_str(), O_WRONLY | O_APPEND | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC);
    const std::string text(static_cast<size_t>(bytes), 'x');
    const bool isWritten = file >= 0 && write(file, text.data(), text.size()) > 0;
    Close(file);
    return isWritten;
}

bool IsLink(const std::string& path)
{
    struct stat st = {};
    return lstat(path.c_str(), &st) == 0 && S_ISLNK(st.st_mode);
}

} // namespace

std::string Step::Text() const
{
    return std::string(NameOf(act)) + " " + name + (second.empty() ? "" : " " + second);
}

std::string Dice::Name()
{
    // In an order other than that of their making, and of both cases.
    static constexpr std::array<const char*, kNames> kAll = {"m", "c", "B", "k", "z", "a",
                                                             "d", "Q", "e", "x", "f", "h"};
    return kAll[static_cast<size_t>(Below(kNames))];
}

Step Dice::NextStep()
{
    int sum = 0;
    for (const Chance& chance : kChances) {
        sum += chance.weight;
    }
    int drawn = Below(sum);
    size_t index = 0;
    while (drawn >= kChances[index].weight) {
        drawn -= kChances[index++].weight;
    }
    Step step{kChances[index].act, Name(), {}, 1 + Below(500)};
    const bool hasTwo =
        step.act == Act::kRename || step.act == Act::kExchange || step.act == Act::kAddName;
    while (hasTwo && (step.second.empty() || step.second == step.name)) {
        step.second = Name();
    }
    return step;
}

bool Do(const Step& step, const std::string& folder, const std::string& outside)
{
    const std::string path = folder + "/" + step.name;
    const std::string second = folder + "/" + step.second;
    const std::string there = outside + "/" + step.name;
    switch (step.act) {
    case Act::kMakeFile:
        return Close(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644));
    case Act::kMakeFolder:
        return mkdir(path.c_str(), 0755) == 0;
    case Act::kMakeLink:
        return symlink(step.value % 2 == 0 ? "/usr" : "/etc/passwd", path.c_str()) == 0;
    case Act::kAddName:
        return link(path.c_str(), second.c_str()) == 0;
    case Act::kRemove:
        return remove(path.c_str()) == 0;
    case Act::kRename:
        return rename(path.c_str(), second.c_str()) == 0;
    case Act::kExchange:
        return renameat2(AT_FDCWD, path.c_str(), AT_FDCWD, second.c_str(), RENAME_EXCHANGE) == 0;
    case Act::kMoveOut:
        return rename(path.c_str(), there.c_str()) == 0;
    case Act::kMoveIn:
        // Now and then nothing is left outside to move in.
        Close(open(there.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
        return rename(there.c_str(), path.c_str()) == 0;
    case Act::kWrite:
        return Write(path, step.value);
    case Act::kTruncate:
        return !IsLink(path) && truncate(path.c_str(), step.value) == 0;
    case Act::kSetMode:
        return !IsLink(path) &&
               chmod(path.c_str(), 0400 + static_cast<mode_t>(step.value) % 0377) == 0;
    }
    return false;
}
