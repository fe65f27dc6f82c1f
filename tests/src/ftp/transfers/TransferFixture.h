#pragma once

#include "FtpServer.h"
#include "FtpTree.h"
#include "MessageCodes.h"
#include "ScriptedUI.h"
#include "TempTree.h"
#include "fileops/engine/Operation.h"
#include "ftp/transfers/TransferHost.h"
#include "ftp/transfers/TransferRequests.h"

#include <Entry.h>
#include <Message.h>

#include <gtest/gtest.h>

#include <ctime>
#include <memory>
#include <string>
#include <vector>

namespace norvane {

/// Transfers between a temporary tree and a server in memory, with a script in place of windows.
class TransferFixture : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fTree.MakeFolder("to");
        fRemote.AddFolder("/pub");
        fServer = std::make_unique<FtpServer>(fRemote.Handler());
    }

    void AddHost(BMessage* request, const std::string& path = "/pub") const
    {
        request->AddString("Host", fServer->Host());
        request->AddString("User", FtpTree::kUser);
        request->AddString("Password", FtpTree::kPassword);
        request->AddString("FtpPath", path.c_str());
        request->AddInt32("Port", static_cast<int32>(fServer->Port()));
        request->AddBool("Passive", fIsPassive);
    }

    BMessage DownloadRequest(const std::vector<std::string>& files,
                             const std::vector<std::string>& folders = {}) const
    {
        BMessage request(kRemoteEntries);
        AddHost(&request);
        for (const std::string& file : files) {
            request.AddString("FtpFile", file.c_str());
        }
        for (const std::string& folder : folders) {
            request.AddString("FtpDir", folder.c_str());
        }
        return request;
    }

    /// `names` of the temporary tree.
    BMessage UploadRequest(const std::vector<std::string>& names) const
    {
        BMessage request(kLocalEntries);
        AddHost(&request);
        request.AddString("Session", "here");
        for (const std::string& name : names) {
            entry_ref ref;
            EXPECT_EQ(get_ref_for_path(fTree.Path(name).c_str(), &ref), B_OK) << name;
            request.AddRef("refs", &ref);
        }
        return request;
    }

    static RemoteEntry Listed(const std::string& name, const std::string& size,
                              const std::string& date, const std::string& kind = "-rw-r--r--")
    {
        RemoteEntry entry;
        entry.name = name;
        entry.commandName = name;
        entry.size = size;
        entry.date = date;
        entry.permissions = kind;
        return entry;
    }

    void Run(const BMessage& request)
    {
        const auto operation = MakeTransfer(request, fTree.Path("to").c_str(), fUI);
        ASSERT_NE(operation, nullptr);
        operation->Run();
    }

    void Download(const std::vector<std::string>& files,
                  const std::vector<std::string>& folders = {})
    {
        Run(DownloadRequest(files, folders));
    }
    void Upload(const std::vector<std::string>& names) { Run(UploadRequest(names)); }

    /// Every byte there is, many times.
    static std::string Bytes(size_t count)
    {
        std::string bytes(count, '\0');
        uint32 state = 1;
        for (char& byte : bytes) {
            state = state * 1664525 + 1013904223;
            byte = static_cast<char>(state >> 24);
        }
        return bytes;
    }

    std::string Problems() const
    {
        std::string text;
        for (const auto& [name, reason] : fUI.problems) {
            text += name + ": " + reason + "\n";
        }
        return text;
    }

    bool HasSent(const std::string& command) const
    {
        return ("\n" + fServer->CommandLog()).find("\n" + command + "\n") != std::string::npos;
    }

    TempTree fTree;
    FtpTree fRemote;
    std::unique_ptr<FtpServer> fServer;
    bool fIsPassive = true;
    ScriptedUI fUI;
};

} // namespace norvane
