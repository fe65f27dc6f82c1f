#pragma once

#include "ftp/client/RemoteFolder.h"
#include "ftp/client/clsFTP.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// A server under test.
struct Site
{
    std::string host;
    unsigned int port = 0;
    std::string user;
    std::string password;
    bool isPassive = false;
    std::string folder; // on this machine: what a login leads to
};

/// A client at a server, and what a job finds wrong there.
class Visit
{
public:
    explicit Visit(Site site);

    const Site& At() const { return fSite; }
    norvane::clsFTP& Client() { return fClient; }
    norvane::RemoteFolder& Folder() { return fFolder; }
    int LogIn();
    /// Goes to the folder that a login leads to, and into the empty folder `name` there, made anew.
    bool StartIn(const std::string& name);
    /// The path on this machine of something in the folder of StartIn().
    std::string Path(const std::string& name) const { return fPath + "/" + name; }

    /// Notes a fault unless all is well; returns whether it is.
    bool Check(bool isWell, const std::string& fault);
    /// Notes a fault unless the code is 0 or one of success.
    bool CheckAgreed(int code, const std::string& what);
    /// Notes a fault unless the server said no, and is where it was.
    void CheckRefused(int code, const std::string& what);
    /// Notes a fault unless the next command is answered, and the server is where it was.
    void CheckInStep(const std::string& after);
    /// Notes what this server does not do.
    void NoteMissing(const std::string& what) { fMissing.push_back(what); }
    void Clear();

    bool Store(const std::string& name, std::string_view bytes);
    int Fetch(const std::string& name, std::string* bytes);

    /// Called at each step of a transfer; its result is the callback's.
    std::function<int()> atStep;
    const std::vector<std::string>& Faults() const { return fFaults; }
    const std::vector<std::string>& Missing() const { return fMissing; }
    const std::string& Log() const { return fLog; }

private:
    static int Told(int percent, int bytes, char* text, void* visit);

    const Site fSite;
    norvane::clsFTP fClient;
    norvane::RemoteFolder fFolder;
    std::string fTop;  // as the server names it
    std::string fPath; // of the job's folder
    std::vector<std::string> fFaults;
    std::vector<std::string> fMissing;
    std::string fLog;
};

/// All in a file, or nothing when it cannot be read.
std::string ReadFile(const std::string& path);
void WriteFile(const std::string& path, std::string_view bytes);
/// Bytes of every value, always the same for a count.
std::string AnyBytes(size_t count);
