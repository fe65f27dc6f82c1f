#pragma once

#include "TempTree.h"

#include <map>
#include <string>
#include <vector>

/// How a program was started.
struct StartRecord
{
    std::vector<std::string> arguments; // its own name first
    std::vector<std::string> variables; // "NAME=VALUE"
    std::map<std::string, std::string> facts;

    bool HasVariable(const std::string& name) const;
};

/// A desktop whose programs only write down how they were started, in place of this machine's own.
///
/// The desktop's library reads its folders once: so a test program has one such desktop, which
/// stays. Types and their programs:
///
///     text/plain       "text"     gets a path
///     application/pdf, text/html  "address"  gets an address
///     image/png        "bare"     says nothing of files, and begins in /usr
///     video/mp4        "missing"  is set and not installed
///     audio/mpeg       "broken"   is a script whose interpreter is missing
///                      "odd name" is set for nothing, and opens files
///     inode/directory  "self", the test program itself, is set; "folders" is there, too
class DesktopPrograms
{
public:
    /// Made at the first call, before anything is opened.
    static DesktopPrograms& Get();

    /// Forgets what was started before.
    void Clear();
    /// Waits for so many starts since then, ten seconds at most; in no order.
    std::vector<StartRecord> Await(size_t count = 1);
    /// How many there are now.
    size_t Count() const;

    /// Makes a copy of the program that writes down how it was started.
    static void CopyRecorder(const std::string& path);
    const TempTree& Tree() const { return fTree; }

private:
    DesktopPrograms();
    void AddProgram(const std::string& name, const std::string& command, const std::string& more);
    void AddTypes();

    TempTree fTree;
};
