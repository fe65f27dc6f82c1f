#pragma once

#include <Entry.h>

#include <atomic>
#include <memory>
#include <string>
#include <string_view>

namespace norvane {

/// Looks for a text in files, byte by byte, in pieces of 10240 bytes that overlap by what a text
/// across a border needs. Each piece counts only up to its first zero byte.
///
/// Thread: one object for each.
class ContentSearch
{
public:
    enum class Result : uint8 { kFound, kNotFound, kUnreadable };

    /// Gives up with kNotFound once `isCancelled` is true, and counts `pieces` as it reads; both
    /// borrowed.
    ContentSearch(std::string text, const std::atomic<bool>& isCancelled,
                  std::atomic<int64>& pieces);

    /// Regular files alone are opened: all else does not hold the text, nor what is gone by now.
    Result Look(const entry_ref& file);

private:
    bool HasText(std::string_view bytes) const;

    const std::string fText;
    const std::atomic<bool>& fIsCancelled;
    std::atomic<int64>& fPieces;
    const size_t fPieceBytes;
    const size_t fOverlap;
    const size_t fReadBytes; // of one call: some pieces
    const std::unique_ptr<char[]> fBuffer;
};

} // namespace norvane
