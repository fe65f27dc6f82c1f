#include "Disk.h"

#include <algorithm>

namespace {

int VolumeOf(const std::string& path)
{
    return path.starts_with("two") ? 1 : 0;
}

/// What is committed in order: all of an entry but its contents.
bool HasSameRecord(const SceneItem& a, const SceneItem& b)
{
    return a.node == b.node && a.kind == b.kind && a.mode == b.mode && a.note == b.note &&
           a.modifiedNs == b.modifiedNs;
}

} // namespace

Disk::Disk(const Recording& recording)
{
    fFloors[0].push_back(0);
    fFloors[1].push_back(0);
    Read(recording.before);
    const Snapshot* last = &recording.before;
    for (const Step& step : recording.steps) {
        ReadChanges(*last, step.after);
        Read(step.after);
        ReadSync(step);
        last = &step.after;
    }
}

int Disk::Number(const std::string& text)
{
    return fNumbers.emplace(text, static_cast<int>(fNumbers.size())).first->second;
}

int Disk::NumberOf(const std::string& text) const
{
    const auto found = fNumbers.find(text);
    return found == fNumbers.end() ? kDamaged : found->second;
}

/// The names and contents after one more step.
void Disk::Read(const Snapshot& state)
{
    const size_t steps = fNames.size();
    fNames.emplace_back();
    for (const auto& [path, item] : state) {
        const Node node = {VolumeOf(path), item.node};
        if (item.kind != 'f') {
            continue;
        }
        fNames.back()[path] = node;
        File& file = fFiles[node];
        file.texts.resize(steps, file.texts.empty() ? Number("") : file.texts.back());
        file.texts.push_back(Number(item.text));
    }
}

void Disk::ReadChanges(const Snapshot& from, const Snapshot& to)
{
    const size_t step = fNames.size() - 1;
    fChanges[0].push_back(false);
    fChanges[1].push_back(false);
    const auto change = [&](const std::string& path, const SceneItem& item) {
        fFiles[{VolumeOf(path), item.node}].lastChange = step + 1;
        fChanges[VolumeOf(path)][step] = true;
    };
    for (const auto& [path, item] : from) {
        const auto now = to.find(path);
        if (now == to.end() || !HasSameRecord(now->second, item)) {
            change(path, item);
        }
    }
    std::map<Node, const std::string*> texts;
    for (const auto& [path, item] : from) {
        texts[{VolumeOf(path), item.node}] = &item.text;
    }
    for (const auto& [path, item] : to) {
        const auto old = from.find(path);
        if (old == from.end() || !HasSameRecord(old->second, item)) {
            change(path, item);
        }
        const Node node = {VolumeOf(path), item.node};
        const auto text = texts.find(node);
        const bool isWritten =
            text == texts.end() ? !item.text.empty() : *text->second != item.text;
        if (item.kind == 'f' && isWritten) {
            fFiles[node].writes.push_back(step);
            fFiles[node].lastChange = step + 1;
        }
    }
}

void Disk::ReadSync(const Step& step)
{
    const size_t number = fNames.size() - 2;
    const int volume = step.volume == 't' ? 1 : 0;
    size_t floors[2] = {fFloors[0].back(), fFloors[1].back()};
    if (step.sync == Step::kVolume) {
        floors[volume] = number + 1;
        for (auto& [node, file] : fFiles) {
            if (node.first == volume) {
                file.syncs.push_back(number);
            }
        }
    } else if (step.sync == Step::kNode) {
        File& file = fFiles[{volume, step.node}];
        file.syncs.push_back(number);
        floors[volume] = std::max(floors[volume], file.lastChange);
    }
    fFloors[0].push_back(floors[0]);
    fFloors[1].push_back(floors[1]);
}

size_t Disk::Floor(int volume, size_t steps) const
{
    return fFloors[volume][steps];
}

bool Disk::Changes(int volume, size_t step) const
{
    return fChanges[volume][step];
}

std::vector<size_t> Disk::Unsynced(size_t steps) const
{
    std::vector<size_t> unsynced;
    for (const auto& [node, file] : fFiles) {
        for (const size_t write : file.writes) {
            const bool isSynced =
                std::any_of(file.syncs.begin(), file.syncs.end(),
                            [&](size_t sync) { return sync >= write && sync < steps; });
            if (write < steps && !isSynced) {
                unsynced.push_back(write);
            }
        }
    }
    std::sort(unsynced.begin(), unsynced.end());
    unsynced.erase(std::unique(unsynced.begin(), unsynced.end()), unsynced.end());
    return unsynced;
}

std::vector<std::pair<std::string_view, int>> Disk::Contents(const State& state) const
{
    std::vector<std::pair<std::string_view, int>> contents;
    for (int volume = 0; volume < 2; ++volume) {
        for (const auto& [path, node] : fNames[state.committed[volume]]) {
            if (node.first != volume) {
                continue;
            }
            const File& file = fFiles.at(node);
            const bool isDamaged =
                std::any_of(state.lost.begin(), state.lost.end(), [&](size_t write) {
                    return std::binary_search(file.writes.begin(), file.writes.end(), write);
                });
            const size_t last = std::min(state.steps, file.texts.size() - 1);
            contents.emplace_back(path, isDamaged ? kDamaged : file.texts[last]);
        }
    }
    return contents;
}
