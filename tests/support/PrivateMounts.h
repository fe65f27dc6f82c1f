#pragma once

#include <functional>
#include <string>

/// How work with private mounts ended.
enum class PrivateResult {
    kPassed,
    kFailed,      // `work` said false, or did not come back
    kUnavailable, // this system allows no private mounts
};

/// Runs `work` in a process of its own that may mount what it likes without anyone else seeing it.
///
/// That process runs the calling test from its start, so that it has threads and locks of its own:
/// a mere copy of this one would lack the threads, and might keep their locks for ever.
PrivateResult RunWithPrivateMounts(const std::function<bool()>& work);

/// The test passes as the work did, or is skipped where there are no private mounts.
void ExpectPassed(PrivateResult result);
/// For checks within RunWithPrivateMounts(), whose expectations nobody else hears of: says `what`
/// when it is not so, and returns whether it is.
bool Check(bool isTrue, const char* what);

/// Mounts an empty memory file system of `bytes` at `path`. Call within RunWithPrivateMounts().
bool MountMemory(const std::string& path, long bytes);
/// Mounts an empty file system that keeps no extended attributes. Call within
/// RunWithPrivateMounts().
bool MountWithoutAttributes(const std::string& path);
/// Makes the folder `from` appear at `path`, too. Call within RunWithPrivateMounts().
bool MountAlsoAt(const std::string& from, const std::string& path);
/// Makes the folder `path` read only for this process. Call within RunWithPrivateMounts().
bool MountReadOnly(const std::string& path);

/// Takes root's right to read and write everything from the calling thread for as long as it lives.
class WithoutFileRights
{
public:
    WithoutFileRights();
    ~WithoutFileRights();
    WithoutFileRights(const WithoutFileRights&) = delete;
    WithoutFileRights& operator=(const WithoutFileRights&) = delete;

private:
    unsigned fEffective[2] = {};
};
