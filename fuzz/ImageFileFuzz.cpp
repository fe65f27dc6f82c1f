#include "server/ToolkitUse.h"

#include <Bitmap.h>
#include <TranslationErrors.h>
#include <TranslationUtils.h>

#include <QGuiApplication>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <string>
#include <unistd.h>

namespace {

constexpr int64_t kMostBytes = int64_t{512} * 1024 * 1024;

// What the readers do is not counted, so what came of a file stands for it: a way that was not seen
// before is worth going on from.
__attribute__((section("__libfuzzer_extra_counters"), used)) uint8_t gOutcomes[4096];

std::string PathOfImage()
{
    return "/dev/shm/fuzz-image-file." + std::to_string(getpid());
}

void WriteWhole(const uint8_t* data, size_t size)
{
    const int file = open(PathOfImage().c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (file < 0 || write(file, data, size) != static_cast<ssize_t>(size)) {
        std::perror("no file for the image");
        std::_Exit(1);
    }
    close(file);
}

void RemoveImage()
{
    unlink(PathOfImage().c_str());
}

void Note(const uint8_t* data, size_t size, status_t status, size_t outcome)
{
    const bool isRead = status != B_NO_TRANSLATOR && size >= 4;
    const size_t format = isRead ? data[0] ^ (data[1] << 2U) ^ (data[3] << 3U) : 0;
    gOutcomes[(format * 31 + outcome) % sizeof(gOutcomes)] = 1;
}

// Each row's ends: what was unpacked is there.
size_t LookAt(const BBitmap& bitmap)
{
    const auto* rows = static_cast<const uint8_t*>(bitmap.Bits());
    const int32 rowBytes = bitmap.BytesPerRow();
    const auto height = static_cast<int64_t>(bitmap.Bounds().Height()) + 1;
    if (rows == nullptr || height * rowBytes > kMostBytes) {
        std::abort();
    }
    size_t seen = 0;
    for (int64_t row = 0; row < height; row++) {
        seen += rows[row * rowBytes] + rows[(row + 1) * rowBytes - 1];
    }
    return seen % 64;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    setenv("QT_LOGGING_RULES", "*=false", 1);
    static QGuiApplication toolkit(*argc, *argv);
    kits::ToolkitUse::Open();
    std::atexit(RemoveImage);
    return 0;
}

// A file of any content, taken the whole way that a viewer's image takes: refused, or unpacked to
// what a bitmap may be.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    WriteWhole(data, size);
    status_t status = B_ERROR;
    const std::unique_ptr<BBitmap> bitmap(
        BTranslationUtils::GetBitmap(PathOfImage().c_str(), &status));
    if ((bitmap == nullptr) == (status == B_OK)) {
        std::abort();
    }
    const size_t failed = 64 + static_cast<uint32_t>(status) % 64;
    Note(data, size, status, bitmap != nullptr ? LookAt(*bitmap) : failed);
    return 0;
}
