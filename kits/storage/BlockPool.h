#pragma once

#include <cstddef>
#include <memory>

namespace kits {

/// The size of the blocks in which files are read ahead and written behind.
constexpr size_t kBlockBytes = size_t{256} * 1024;

struct BlockReturner
{
    void operator()(char* block) const;
};

/// A block of kBlockBytes; goes back to the pool when it is let go.
using Block = std::unique_ptr<char, BlockReturner>;

/// Takes a block from the pool; its contents are whatever they are. Thread: any.
/// A tree of small files would otherwise map and clear a block for each of them.
Block TakeBlock();

} // namespace kits
