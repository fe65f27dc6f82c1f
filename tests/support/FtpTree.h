#pragma once

#include "FtpServer.h"

#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

/// What an ordinary FTP server serves: folders, files and links in memory.
///
///     FtpTree tree;
///     tree.AddFile("/music/song", "la la");
///     FtpServer server(tree.Handler());
///     clsFTP client(server.Host(), server.Port(), nullptr, 0, 2000, nullptr, nullptr);
///     client.Connect(FtpTree::kUser, FtpTree::kPassword, nullptr);
///
/// Outlives the servers that serve it. Thread: any.
class FtpTree
{
public:
    static constexpr const char* kUser = "anna";
    static constexpr const char* kPassword = "secret";

    /// How the server misbehaves.
    struct Habits
    {
        /// Asked before each command; what it returns is sent as it stands, "" is silence, and the
        /// command not carried out. It may wait: it runs on the connection's own thread.
        std::function<std::optional<std::string>(const std::string& command)> answer;
        std::string greeting = "220 Ready";
        /// Lines of listings; "ls -l" where nothing is returned.
        std::function<std::optional<std::string>(const std::string& folder)> listing;
        bool isTotalLineSent = true;
        /// RETR and STOR break the data connection after so many bytes, and answer 426.
        size_t breakAfter = std::string::npos;
        /// RETR and STOR wait so long before each 64 KiB.
        std::chrono::milliseconds pause{0};
    };

    FtpTree();
    FtpTree(const FtpTree&) = delete;
    FtpTree& operator=(const FtpTree&) = delete;

    /// Serves this tree: for FtpServer's constructor.
    FtpServer::Handler Handler();
    void SetHabits(Habits habits);

    // Paths begin with "/". Folders above are made.
    void AddFolder(const std::string& path);
    void AddFile(const std::string& path, std::string contents);
    void AddLink(const std::string& path, std::string target);
    void Remove(const std::string& path);
    bool Exists(const std::string& path) const;
    bool IsFolder(const std::string& path) const;
    /// "(missing)" when there is no such file.
    std::string Read(const std::string& path) const;
    /// All paths, in byte order, each with a line feed; folders end in "/".
    std::string List() const;

private:
    friend class FtpTreeSession;

    struct Node
    {
        char kind = '-'; // 'd', 'l'
        std::string contents;
    };

    std::string ListingOf(const std::string& folder) const;
    bool IsEmpty(const std::string& folder) const;

    mutable std::mutex fMutex; // guards all below
    std::map<std::string, Node> fNodes;
    Habits fHabits;
};
