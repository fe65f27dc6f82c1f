#include "Extract/Extractor.h"

#include "common/Progress.h"

#include <archive.h>
#include <archive_entry.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <unistd.h>
#include <utility>

namespace add_ons {

namespace {

constexpr size_t kBlockBytes = size_t{256} * 1024;
constexpr int64 kCheckEvery = int64{8} * 1024 * 1024; // bytes between two looks at the volume
constexpr int64 kMostReserve = int64{64} * 1024 * 1024;
constexpr size_t kCheckEntries = 256;

bool IsFull(int error)
{
    return error == ENOSPC || error == EDQUOT;
}

/// Writes at a place that an archive names; `end` is where that ends.
int WriteAt(int file, const void* bytes, size_t count, off_t place, off_t* end)
{
    if (place < 0 || __builtin_add_overflow(place, count, end)) {
        return EINVAL;
    }
    const ssize_t written = ::pwrite(file, bytes, count, place);
    if (written < 0) {
        return errno;
    }
    return static_cast<size_t>(written) == count ? 0 : ENOSPC;
}

std::string ReasonOf(int error)
{
    switch (error) {
    case EEXIST:
        return "the archive has that name twice, or it is taken";
    case ENOTDIR:
    case ELOOP:
        return "the archive has a file where this needs a folder";
    case ENAMETOOLONG:
        return "its name is too long";
    case ENOSPC:
    case EDQUOT:
        return "the volume is full";
    default:
        return ::strerrordesc_np(error);
    }
}

std::optional<timespec> ModifiedOf(archive_entry* entry)
{
    if (archive_entry_mtime_is_set(entry) == 0) {
        return std::nullopt;
    }
    const long nanoseconds = archive_entry_mtime_nsec(entry);
    return timespec{archive_entry_mtime(entry),
                    nanoseconds >= 0 && nanoseconds < 1'000'000'000 ? nanoseconds : 0};
}

std::string Text(const char* bytes)
{
    return bytes != nullptr ? bytes : "";
}

std::string RawPath(archive_entry* entry)
{
    const char* path = archive_entry_pathname(entry);
    return Text(path != nullptr ? path : archive_entry_pathname_utf8(entry));
}

/// All that is read here itself: no kind that names other files, none that starts programs.
void ChooseKinds(archive* reader)
{
    archive_read_support_filter_bzip2(reader);
    archive_read_support_filter_compress(reader);
    archive_read_support_filter_gzip(reader);
    archive_read_support_filter_lz4(reader);
    archive_read_support_filter_lzip(reader);
    archive_read_support_filter_lzma(reader);
    archive_read_support_filter_xz(reader);
    archive_read_support_filter_zstd(reader);
    archive_read_support_format_7zip(reader);
    archive_read_support_format_ar(reader);
    archive_read_support_format_cab(reader);
    archive_read_support_format_cpio(reader);
    archive_read_support_format_gnutar(reader);
    archive_read_support_format_iso9660(reader);
    archive_read_support_format_lha(reader);
    archive_read_support_format_rar(reader);
    archive_read_support_format_rar5(reader);
    archive_read_support_format_tar(reader);
    archive_read_support_format_xar(reader);
    archive_read_support_format_zip(reader);
    archive_read_support_format_raw(reader); // one packed file
}

} // namespace

Extractor::Extractor(BFile& archive, std::string name, SafeTree& tree, Progress* progress)
    : fArchive(archive), fName(std::move(name)), fTree(tree), fProgress(progress),
      fFreeBytes([&tree] { return tree.FreeBytes(); }), fBlock(kBlockBytes)
{
}

Extractor::~Extractor()
{
    archive_read_free(fReader);
}

// Reading

ssize_t Extractor::ReadBytes(archive* reader, void* self, const void** bytes)
{
    auto* extractor = static_cast<Extractor*>(self);
    const ssize_t count =
        extractor->fArchive.ReadAt(extractor->fPosition, extractor->fBlock.data(), kBlockBytes);
    if (count < 0) {
        archive_set_error(reader, EIO, "the archive cannot be read");
        return -1;
    }
    *bytes = extractor->fBlock.data();
    extractor->fPosition += count;
    return count;
}

int64_t Extractor::SkipBytes(archive*, void* self, int64_t count)
{
    auto* extractor = static_cast<Extractor*>(self);
    off_t size = 0;
    if (extractor->fArchive.GetSize(&size) != B_OK) {
        return 0;
    }
    const off_t skipped =
        std::clamp<off_t>(count, 0, std::max<off_t>(size - extractor->fPosition, 0));
    extractor->fPosition += skipped;
    return skipped;
}

int64_t Extractor::SeekTo(archive*, void* self, int64_t offset, int whence)
{
    auto* extractor = static_cast<Extractor*>(self);
    off_t size = 0;
    if (extractor->fArchive.GetSize(&size) != B_OK) {
        return ARCHIVE_FATAL;
    }
    const off_t from = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? extractor->fPosition : size;
    off_t place = 0;
    if (__builtin_add_overflow(from, offset, &place) || place < 0) {
        return ARCHIVE_FATAL;
    }
    extractor->fPosition = place;
    return place;
}

bool Extractor::Open()
{
    fReader = archive_read_new();
    if (fReader == nullptr) {
        return false;
    }
    ChooseKinds(fReader);
    archive_read_set_read_callback(fReader, &Extractor::ReadBytes);
    archive_read_set_skip_callback(fReader, &Extractor::SkipBytes);
    archive_read_set_seek_callback(fReader, &Extractor::SeekTo);
    archive_read_set_callback_data(fReader, this);
    return archive_read_open1(fReader) == ARCHIVE_OK;
}

Extractor::End Extractor::Run()
{
    fReserve = std::min(kMostReserve, fTree.VolumeBytes() / 20);
    if (!Open()) {
        fDamage = Text(archive_error_string(fReader));
        return End::kNoArchive;
    }
    const End end = ReadAll();
    if (end != End::kNoArchive && end != End::kStopped) {
        MakeLinks();
        FinishFolders();
    }
    return end;
}

Extractor::End Extractor::ReadAll()
{
    archive_entry* entry = nullptr;
    for (;;) {
        if (fProgress->WasStopped()) {
            return End::kStopped;
        }
        const int result = archive_read_next_header(fReader, &entry);
        if (result == ARCHIVE_EOF) {
            return End::kWhole;
        }
        if (result != ARCHIVE_OK && result != ARCHIVE_WARN) {
            fDamage = Text(archive_error_string(fReader));
            return fMade.empty() && fLinks.All().empty() && fProblems.IsEmpty() ? End::kNoArchive
                                                                                : End::kDamaged;
        }
        // Whatever is no archive is one raw file, were it not asked for its packing.
        if (archive_format(fReader) == ARCHIVE_FORMAT_RAW && archive_filter_count(fReader) < 2) {
            return End::kNoArchive;
        }
        if (const std::optional<End> end = TakeEntry(entry)) {
            return *end;
        }
    }
}

void Extractor::TellPosition()
{
    const off_t read = archive_filter_bytes(fReader, -1);
    if (read > fTold) {
        fProgress->Advance(read - fTold);
        fTold = read;
    }
}

// Entries

std::optional<Extractor::End> Extractor::TakeEntry(archive_entry* entry)
{
    const bool isRaw = archive_format(fReader) == ARCHIVE_FORMAT_RAW;
    const std::string path = isRaw ? fName : RawPath(entry);
    fProgress->At(path);
    TellPosition();
    Steps steps;
    if (!ReadSteps(path, &steps)) {
        fProblems.Add(path, "it leads out of the folder");
        return std::nullopt;
    }
    const std::string file = Text(archive_entry_hardlink(entry));
    const mode_t kind = archive_entry_filetype(entry);
    if (!file.empty()) {
        TakeSecondName(steps, file);
    } else if (kind == AE_IFDIR) {
        TakeFolder(steps, entry);
    } else if (kind == AE_IFLNK) {
        if (steps.empty() || !fLinks.Add(steps, Text(archive_entry_symlink(entry)))) {
            fProblems.Add(path, ReasonOf(EEXIST));
        }
    } else if (kind == AE_IFREG || kind == 0) {
        return TakeFile(steps, entry);
    } else {
        fProblems.Add(path, "it is a device, a pipe or a socket");
    }
    return std::nullopt;
}

void Extractor::NoteMade(Made made)
{
    fMade.push_back(std::move(made));
}

void Extractor::TakeFolder(const Steps& steps, archive_entry* entry)
{
    const int error = fTree.MakeFolder(steps);
    if (error != 0) {
        fProblems.Add(PathOf(steps), ReasonOf(error));
    } else if (!steps.empty()) {
        NoteMade({steps, true, archive_entry_perm(entry), ModifiedOf(entry)});
    }
}

void Extractor::TakeSecondName(const Steps& steps, const std::string& file)
{
    Steps first;
    const int error =
        ReadSteps(file, &first) ? fTree.MakeSecondName(steps, first) : static_cast<int>(ENOENT);
    if (error != 0) {
        fProblems.Add(PathOf(steps), error == ENOENT ? "the file that it is another name of is not "
                                                       "there"
                                                     : ReasonOf(error));
    } else {
        NoteMade({steps, false, 0, std::nullopt});
    }
}

std::optional<Extractor::End> Extractor::TakeFile(const Steps& steps, archive_entry* entry)
{
    if (archive_entry_is_data_encrypted(entry) != 0) {
        fProblems.Add(PathOf(steps), "it is encrypted");
        return std::nullopt;
    }
    if (fMade.size() % kCheckEntries == 0 &&
        fTree.FreeEntries() <= static_cast<int64>(kCheckEntries)) {
        return End::kVolumeFull;
    }
    int file = -1;
    const int error = fTree.MakeFile(steps, &file);
    if (error != 0) {
        fProblems.Add(PathOf(steps), ReasonOf(error));
        return IsFull(error) ? std::optional(End::kVolumeFull) : std::nullopt;
    }
    NoteMade({steps, false, 0, std::nullopt});
    const std::optional<End> end = WriteContents(file, steps, entry);
    const std::optional<timespec> modified = ModifiedOf(entry);
    const bool isRaw = archive_format(fReader) == ARCHIVE_FORMAT_RAW;
    SafeTree::SetFile(file, isRaw ? 0666 : archive_entry_perm(entry),
                      modified ? &*modified : nullptr);
    ::close(file);
    return end;
}

bool Extractor::HasRoom()
{
    if (fUnchecked < kCheckEvery) {
        return true;
    }
    fUnchecked = 0;
    return fFreeBytes() > fReserve + kCheckEvery;
}

std::optional<Extractor::End> Extractor::WriteContents(int file, const Steps& steps,
                                                       archive_entry* entry)
{
    off_t end = 0;
    for (;;) {
        const void* bytes = nullptr;
        size_t count = 0;
        la_int64_t place = 0;
        const int result = archive_read_data_block(fReader, &bytes, &count, &place);
        if (fProgress->WasStopped()) {
            return End::kStopped;
        }
        TellPosition();
        if (result == ARCHIVE_EOF) {
            break;
        }
        if (result != ARCHIVE_OK && result != ARCHIVE_WARN) {
            fDamage = Text(archive_error_string(fReader));
            fProblems.Add(PathOf(steps), "it is not whole");
            return result == ARCHIVE_FATAL ? std::optional(End::kDamaged) : std::nullopt;
        }
        fUnchecked += static_cast<int64>(count);
        const int error = HasRoom() ? WriteAt(file, bytes, count, place, &end) : ENOSPC;
        if (error != 0) {
            fProblems.Add(PathOf(steps), "it is not whole");
            return IsFull(error) ? std::optional(End::kVolumeFull) : std::nullopt;
        }
    }
    // A hole at the end.
    if (archive_entry_sparse_count(entry) > 0 && archive_entry_size(entry) > end &&
        ::ftruncate(file, archive_entry_size(entry)) != 0) {
        fProblems.Add(PathOf(steps), ReasonOf(errno));
    }
    return std::nullopt;
}

// The end

/// Last: while anything is written there is no link in the folder to be written through.
void Extractor::MakeLinks()
{
    for (const auto& [steps, text] : fLinks.All()) {
        if (!fLinks.StaysInside(steps)) {
            fProblems.Add(PathOf(steps), "it leads out of the folder");
            continue;
        }
        const int error = fTree.MakeLink(steps, text);
        if (error != 0) {
            fProblems.Add(PathOf(steps), ReasonOf(error));
        } else {
            NoteMade({steps, false, 0, std::nullopt});
        }
    }
}

void Extractor::FinishFolders()
{
    for (auto made = fMade.rbegin(); made != fMade.rend(); ++made) {
        if (made->isFolder) {
            fTree.SetFolder(made->steps, made->mode, made->modified ? &*made->modified : nullptr);
        }
    }
}

std::string Extractor::OnlyFolder() const
{
    std::string only;
    for (const Made& made : fMade) {
        if (!only.empty() && made.steps.front() != only) {
            return {};
        }
        if (made.steps.size() == 1 && !made.isFolder) {
            return {};
        }
        only = made.steps.front();
    }
    return only;
}

void Extractor::TakeBack()
{
    for (auto made = fMade.rbegin(); made != fMade.rend(); ++made) {
        fTree.Remove(made->steps);
        // The folders above that no entry of the archive spoke of.
        for (Steps above = made->steps; above.size() > 1;) {
            above.pop_back();
            if (fTree.Remove(above) != 0) {
                break;
            }
        }
    }
    fMade.clear();
}

} // namespace add_ons
