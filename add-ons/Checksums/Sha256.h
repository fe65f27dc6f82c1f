#pragma once

#include <cstddef>
#include <memory>
#include <string>

namespace checksums {

/// How many hexadecimal digits a sum has.
constexpr size_t kSumDigits = 64;

/// Works out the SHA-256 sum of bytes that come one after the other. Thread: one at a time.
class Sha256
{
public:
    Sha256();
    Sha256(const Sha256&) = delete;
    Sha256& operator=(const Sha256&) = delete;
    ~Sha256();

    /// Takes more bytes.
    void Add(const void* bytes, size_t count);
    /// The sum of all bytes, in small hexadecimal digits; empty when it could not be worked out.
    /// Nothing is added afterwards.
    std::string Finish();

private:
    struct Context;

    std::unique_ptr<Context> fContext; // never null
};

} // namespace checksums
