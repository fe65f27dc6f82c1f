#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <random>
#include <string>
#include <thread>
#include <vector>

/// The folders that the program is let loose on, and somebody else who changes them beside it.
class Scene
{
public:
    /// Makes the folders below `home`, and the thread that waits for changes to be asked for.
    Scene(const std::string& home, uint32_t seed);
    ~Scene();
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    const std::string& Root() const { return fRoot; }
    /// Some folders of it, whether they are there or not.
    const std::vector<std::string>& Folders() const { return fFolders; }
    /// Has that many more changes made, on the other thread.
    void AskForChanges(int count);
    /// Waits until the changes asked for are made.
    void AwaitChanges();
    /// Makes everything anew when little is left of it, or no room.
    void Renew();
    int CountRenewals() const { return fRenewals; }
    int64_t CountChanges() const { return fChanges; }

private:
    int Below(int limit) { return static_cast<int>(fDice() % static_cast<uint32_t>(limit)); }
    std::string SomeFolder() { return fFolders[static_cast<size_t>(Below(int(fFolders.size())))]; }
    std::string SomeEntry(const std::string& folder);
    void Build();
    void Fill(const std::string& folder, int files);
    void Work();
    void ChangeOne();

    const std::string fHome;
    const std::string fRoot;
    std::vector<std::string> fFolders;
    std::mt19937 fDice; // of whoever changes: the thread, or its maker while that waits
    int fRenewals = 0;
    std::atomic<int64_t> fChanges{0};

    std::mutex fMutex; // guards what follows
    std::condition_variable fNews;
    int fWanted = 0;
    bool fIsWorking = false;
    bool fEnds = false;
    std::thread fThread;
};
