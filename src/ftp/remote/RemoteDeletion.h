#pragma once

#include "fileops/engine/ProblemList.h"
#include "ftp/client/RemoteEntry.h"
#include "ftp/remote/RemoteConnection.h"

#include <functional>
#include <string>
#include <vector>

namespace norvane {

/// Deletes entries of a server's folder, folders with all below them, from the bottom up.
///
/// A folder is listed and emptied only when the server let it be entered and names it as another
/// one than before; what was refused is told at the end. A stack of its own: a server that lists
/// folders in folders without an end is left at a depth that nobody's folders have. Thread: the
/// connection's.
class RemoteDeletion
{
public:
    /// `tellNotEmpty` is called before a chosen folder is emptied. Ownership: borrows all for its
    /// own life.
    RemoteDeletion(RemoteConnection::Desk& desk, std::function<void()> tellNotEmpty);

    /// These have no names that could be sent.
    void LeaveAlone(const std::vector<std::string>& shownNames);
    /// Of the folder where the connection is.
    void DeleteFiles(const std::vector<std::string>& names);
    void DeleteFolders(const std::vector<std::string>& names);

    /// What is still there, and why.
    const ProblemList& Problems() const { return fProblems; }

private:
    /// A folder that is being emptied.
    struct Level
    {
        std::string name;
        std::string above; // the folder that it was entered from
        std::vector<std::string> folders;
        size_t next = 0; // of them
    };

    bool MayGoOn() const { return fIsUsable && !fDesk.isCancelled; }
    int Do(int code);
    void DeleteFile(const std::string& name);
    bool RemoveFolder(const std::string& name);
    void Empty(const std::string& name);
    bool Enter(const std::string& name);
    void DeleteContents();
    void Leave();
    void Note(const std::string& name, int code);

    RemoteConnection::Desk& fDesk;
    const std::function<void()> fTellNotEmpty;
    ProblemList fProblems;
    std::vector<Level> fLevels;
    bool fIsUsable = true; // it is known where the connection is
};

} // namespace norvane
