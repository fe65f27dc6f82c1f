#pragma once

#include <SupportDefs.h>

#include <string>
#include <sys/stat.h>

namespace norvane {

/// The permission bits of one entry or of several that may differ in them.
struct ModeMix
{
    mode_t set = 0;   // in all of them
    mode_t mixed = 0; // in some of them

    /// What all have and what some have, `mode` with them; `isFirst`: there was none before.
    void Add(mode_t mode, bool isFirst);
    /// In octal digits, "?" for each that is not the same in all: "0644", "06?4".
    std::string Octal() const;
    /// Nine letters, "?" for what differs: "rw-r--r--"; with s, S, t and T as people know them.
    std::string Letters() const;
};

/// Which permission bits a person gives and takes; all others stay as they are.
struct ModeChange
{
    mode_t given = 0;
    mode_t taken = 0;

    bool IsEmpty() const { return (given | taken) == 0; }
    /// What an entry with `mode` gets that the person chose itself. Links have no bits of their
    /// own: theirs stay.
    mode_t For(mode_t mode) const;
    /// The same for what lies in a chosen folder. To execute is given to a folder, and to any other
    /// entry only when somebody may execute it already; set-user-ID, set-group-ID and sticky are
    /// given to folders only. All of them are taken from everything.
    mode_t ForInside(mode_t mode) const;
};

} // namespace norvane
