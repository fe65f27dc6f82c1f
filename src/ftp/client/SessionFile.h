#pragma once

#include <SupportDefs.h>

#include <string>
#include <vector>

namespace norvane {

/// What session files are called, behind the session's name.
inline constexpr char kSessionExtension[] = ".ftp";

/// A saved connection. All of it is text as a person typed it.
struct FtpSession
{
    std::string name; // of the session; that of its file has the extension, too
    std::string host;
    std::string port;
    std::string user;
    std::string password;
    std::string remoteDir;
    std::string localDir;
    bool isPassive = false;
};

/// The file that one session is kept in, a profile file in the program's settings folder.
///
/// Thread: any; every call waits for the disk. Nothing is told to anybody but by what is returned.
class SessionFile
{
public:
    /// `fileName`: the session's name with the extension.
    explicit SessionFile(std::string fileName);

    /// The session's name: that of the file up to its last ".".
    std::string Name() const;
    const std::string& FileName() const { return fFileName; }
    /// Reads what the file has; what it has not is empty.
    /// Errors: B_ENTRY_NOT_FOUND; B_BAD_TYPE for what is no file, or too large for a session; those
    /// of reading. `session` stays as it was then.
    [[nodiscard]] status_t Read(FtpSession* session) const;
    /// Makes the file, empty and its owner's alone, for the first Write().
    /// Errors: B_FILE_EXISTS when there is anything of that name, B_BAD_VALUE for a name that no
    /// session can have, those of making it.
    [[nodiscard]] status_t Create() const;
    /// Writes all of `session` but its name into the file, which is its owner's alone from its
    /// first byte on. Whatever else it holds stays.
    /// Errors: B_BAD_VALUE for a name or a value that cannot be kept (nothing is written then),
    /// B_BAD_TYPE as above, those of reading and writing.
    [[nodiscard]] status_t Write(const FtpSession& session) const;
    /// Errors: those of removing an entry.
    [[nodiscard]] status_t Remove() const;

    /// The program's settings folder, where the files are. It is made when it is missing.
    /// Errors: those of finding and making it.
    [[nodiscard]] static status_t GetFolder(std::string* path);
    /// The names of all sessions, sorted.
    /// Errors: those of GetFolder() and of reading it.
    [[nodiscard]] static status_t List(std::vector<std::string>* names);

    /// "name.ftp".
    static std::string FileNameOf(const std::string& sessionName);
    /// Why there can be no session of this name; null when there can.
    static const char* ReasonAgainstName(const std::string& sessionName);
    /// Whether `port` is a number from 1 to 65535.
    static bool IsPort(const std::string& port);
    /// The value of `session` that cannot be kept, since it is too long or holds a line break, as
    /// the key that it is kept under; null when there is none.
    static const char* KeyThatCannotBeKept(const FtpSession& session);

private:
    status_t Look() const;
    status_t ReadKeys(std::vector<std::string>* keys) const;
    std::string Path() const;

    const std::string fFileName;
};

} // namespace norvane
