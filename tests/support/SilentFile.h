#pragma once

#include <string>

/// Reading from the file waits for as long as this lives, as on a disk that does not answer. One at
/// a time.
class SilentFile
{
public:
    explicit SilentFile(const std::string& path);
    ~SilentFile();
    SilentFile(const SilentFile&) = delete;
    SilentFile& operator=(const SilentFile&) = delete;

    /// Whether anybody has waited for it.
    static bool IsAwaited();
};
