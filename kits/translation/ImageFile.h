#pragma once

#include <File.h>

#include <QByteArray>
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
    /// The format that a file's ending stands for; empty without an ending.
    static QByteArray FormatOf(const char* path);

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
