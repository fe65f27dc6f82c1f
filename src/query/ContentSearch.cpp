#include "query/ContentSearch.h"

#include <File.h>

#include <algorithm>
#include <cstring>
#include <sys/stat.h>
#include <utility>

namespace norvane {

namespace {

constexpr size_t kLeastPieceBytes = 10240;
// Pieces that are read by one call.
constexpr size_t kPiecesPerRead = 25;

} // namespace

ContentSearch::ContentSearch(std::string text, const std::atomic<bool>& isCancelled,
                             std::atomic<int64>& pieces)
    : fText(std::move(text)), fIsCancelled(isCancelled), fPieces(pieces),
      fPieceBytes(std::max(kLeastPieceBytes, 2 * fText.size())),
      fOverlap(fText.empty() ? 0 : fText.size() - 1),
      fReadBytes(kPiecesPerRead * (fPieceBytes - fOverlap) + fOverlap),
      fBuffer(std::make_unique_for_overwrite<char[]>(fReadBytes))
{
}

ContentSearch::Result ContentSearch::Look(const entry_ref& file)
{
    const BEntry entry(&file);
    struct stat st = {};
    if (entry.GetStat(&st) != B_OK || !S_ISREG(st.st_mode)) {
        return Result::kNotFound;
    }
    BFile contents;
    const status_t status = contents.SetTo(&entry, B_READ_ONLY | B_NO_TRAVERSE);
    if (status != B_OK) {
        // It may have become a link or a pipe meanwhile.
        const bool isOther = status == B_ENTRY_NOT_FOUND || status == B_LINK_LIMIT ||
                             status == B_BAD_VALUE || status == B_IS_A_DIRECTORY;
        return isOther ? Result::kNotFound : Result::kUnreadable;
    }
    for (off_t at = 0; !fIsCancelled; at += static_cast<off_t>(fReadBytes - fOverlap)) {
        const ssize_t length = contents.ReadAt(at, fBuffer.get(), fReadBytes);
        if (length < 0) {
            return Result::kUnreadable;
        }
        fPieces.fetch_add(1, std::memory_order_relaxed);
        if (HasText({fBuffer.get(), static_cast<size_t>(length)})) {
            return Result::kFound;
        }
        if (static_cast<size_t>(length) < fReadBytes) {
            break;
        }
    }
    return Result::kNotFound;
}

bool ContentSearch::HasText(std::string_view bytes) const
{
    do {
        std::string_view piece = bytes.substr(0, fPieceBytes);
        piece = piece.substr(0, piece.find('\0'));
        if (::memmem(piece.data(), piece.size(), fText.data(), fText.size()) != nullptr) {
            return true;
        }
        bytes.remove_prefix(std::min(fPieceBytes - fOverlap, bytes.size()));
    } while (bytes.size() > fOverlap);
    return false;
}

} // namespace norvane
