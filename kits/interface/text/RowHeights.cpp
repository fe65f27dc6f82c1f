#include "RowHeights.h"

#include <algorithm>
#include <numeric>

namespace kits {

namespace {

constexpr size_t kFullBlock = 1024; // a block that grows beyond is split
constexpr size_t kNewBlock = 512;

} // namespace

double RowHeights::Total() const
{
    return Top(fCount);
}

void RowHeights::Clear()
{
    fCount = 0;
    fExtent = 0;
    fBlocks.clear();
    fIsSummed = false;
}

void RowHeights::Insert(int32 index, int32 count, double extent)
{
    if (count <= 0) {
        return;
    }
    index = std::clamp(index, 0, fCount);
    if (fCount == 0) {
        fExtent = extent;
        fCount = count;
        return;
    }
    if (fBlocks.empty()) {
        if (extent == fExtent) {
            fCount += count;
            return;
        }
        MakeBlocks();
    }
    InsertIntoBlocks(index, count, extent);
    fCount += count;
    fIsSummed = false;
}

void RowHeights::Remove(int32 index, int32 count)
{
    index = std::max(index, 0);
    count = std::min(count, fCount - index);
    if (count <= 0) {
        return;
    }
    if (count == fCount) {
        Clear();
        return;
    }
    if (!fBlocks.empty()) {
        Place place = Find(index);
        int32 left = count;
        while (left > 0) {
            Block& block = fBlocks[place.block];
            const auto first = block.extents.begin() + static_cast<std::ptrdiff_t>(place.inBlock);
            const auto taken = std::min<std::ptrdiff_t>(left, block.extents.end() - first);
            block.extents.erase(first, first + taken);
            block.sum = std::accumulate(block.extents.begin(), block.extents.end(), 0.0);
            left -= static_cast<int32>(taken);
            if (block.extents.empty()) {
                fBlocks.erase(fBlocks.begin() + static_cast<std::ptrdiff_t>(place.block));
            } else {
                place.block++;
            }
            place.inBlock = 0;
        }
    }
    fCount -= count;
    fIsSummed = false;
}

void RowHeights::Set(int32 index, double extent)
{
    if (index < 0 || index >= fCount || Extent(index) == extent) {
        return;
    }
    if (fCount == 1) {
        Clear();
        Insert(0, 1, extent);
        return;
    }
    if (fBlocks.empty()) {
        MakeBlocks();
    }
    const Place place = Find(index);
    Block& block = fBlocks[place.block];
    block.extents[place.inBlock] = extent;
    block.sum = std::accumulate(block.extents.begin(), block.extents.end(), 0.0);
    fIsSummed = false;
}

double RowHeights::Extent(int32 index) const
{
    if (index < 0 || index >= fCount) {
        return 0;
    }
    if (fBlocks.empty()) {
        return fExtent;
    }
    const Place place = Find(index);
    return fBlocks[place.block].extents[place.inBlock];
}

double RowHeights::Top(int32 index) const
{
    index = std::clamp(index, 0, fCount);
    if (fBlocks.empty()) {
        return fExtent * index;
    }
    Sum();
    if (index == fCount) {
        return fTops.back() + fBlocks.back().sum;
    }
    const Place place = Find(index);
    const std::vector<double>& extents = fBlocks[place.block].extents;
    return std::accumulate(extents.begin(),
                           extents.begin() + static_cast<std::ptrdiff_t>(place.inBlock),
                           fTops[place.block]);
}

int32 RowHeights::RowAt(double position) const
{
    if (position < 0 || position >= Total()) {
        return -1;
    }
    if (fBlocks.empty()) {
        return std::min(static_cast<int32>(position / fExtent), fCount - 1);
    }
    const auto after = std::upper_bound(fTops.begin(), fTops.end(), position);
    const auto block = static_cast<size_t>(after - fTops.begin()) - 1;
    double bottom = fTops[block];
    int32 row = fFirstRows[block];
    for (double extent : fBlocks[block].extents) {
        bottom += extent;
        if (position < bottom) {
            return row;
        }
        row++;
    }
    return row - 1; // the sums of block and rows may differ in their last digit
}

void RowHeights::MakeBlocks()
{
    for (int32 made = 0; made < fCount;) {
        const int32 count = std::min<int32>(kNewBlock, fCount - made);
        Block block;
        block.extents.assign(static_cast<size_t>(count), fExtent);
        block.sum = fExtent * count;
        fBlocks.push_back(std::move(block));
        made += count;
    }
    fIsSummed = false;
}

void RowHeights::InsertIntoBlocks(int32 index, int32 count, double extent)
{
    Place place;
    if (index == fCount) {
        place.block = fBlocks.size() - 1;
        place.inBlock = fBlocks.back().extents.size();
    } else {
        place = Find(index);
    }
    Block& block = fBlocks[place.block];
    block.extents.insert(block.extents.begin() + static_cast<std::ptrdiff_t>(place.inBlock),
                         static_cast<size_t>(count), extent);
    block.sum += extent * count;
    if (block.extents.size() > kFullBlock) {
        SplitBlock(place.block);
    }
}

void RowHeights::SplitBlock(size_t index)
{
    const std::vector<double> extents = std::move(fBlocks[index].extents);
    std::vector<Block> parts;
    for (size_t begin = 0; begin < extents.size(); begin += kNewBlock) {
        const size_t end = std::min(begin + kNewBlock, extents.size());
        Block part;
        part.extents.assign(extents.begin() + static_cast<std::ptrdiff_t>(begin),
                            extents.begin() + static_cast<std::ptrdiff_t>(end));
        part.sum = std::accumulate(part.extents.begin(), part.extents.end(), 0.0);
        parts.push_back(std::move(part));
    }
    const auto place = fBlocks.begin() + static_cast<std::ptrdiff_t>(index);
    fBlocks.insert(fBlocks.erase(place), std::make_move_iterator(parts.begin()),
                   std::make_move_iterator(parts.end()));
}

RowHeights::Place RowHeights::Find(int32 index) const
{
    Sum();
    const auto after = std::upper_bound(fFirstRows.begin(), fFirstRows.end(), index);
    const auto block = static_cast<size_t>(after - fFirstRows.begin()) - 1;
    return {block, static_cast<size_t>(index - fFirstRows[block])};
}

void RowHeights::Sum() const
{
    if (fIsSummed) {
        return;
    }
    fFirstRows.clear();
    fTops.clear();
    int32 row = 0;
    double top = 0;
    for (const Block& block : fBlocks) {
        fFirstRows.push_back(row);
        fTops.push_back(top);
        row += static_cast<int32>(block.extents.size());
        top += block.sum;
    }
    fIsSummed = true;
}

} // namespace kits
