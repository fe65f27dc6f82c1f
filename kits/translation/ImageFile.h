#pragma once

#include <File.h>

#include <QIODevice>

namespace kits {

/// A regular file as what images are read from. What is none is never opened.
///
/// Thread: one at a time.
class ImageFile : public QIODevice
{
public:
    /// Opens it; Status() tells what became of that.
    explicit ImageFile(const char* path);

    /// Of opening, or of the first read that failed.
    status_t Status() const { return fStatus; }

    // QIODevice
    qint64 size() const override { return fSize; }

protected:
    qint64 readData(char* data, qint64 most) override;
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    BFile fFile;
    off_t fSize = 0;
    status_t fStatus;
};

} // namespace kits
