#include "TransferFixture.h"

namespace norvane {

class TransferRequestsTest : public TransferFixture
{
};

TEST_F(TransferRequestsTest, OtherRequestsAreNoTransfers)
{
    BMessage copy(kLocalEntries);
    entry_ref ref;
    ASSERT_EQ(get_ref_for_path(fTree.Path("to").c_str(), &ref), B_OK);
    copy.AddRef("refs", &ref);
    EXPECT_EQ(MakeTransfer(copy, "/", fUI), nullptr);
    BMessage remove(kDeleteRequest);
    EXPECT_EQ(MakeTransfer(remove, "/", fUI), nullptr);
    BMessage nothing(kLocalEntries);
    nothing.AddString("Session", "s");
    EXPECT_EQ(MakeTransfer(nothing, "/", fUI), nullptr);
}

TEST_F(TransferRequestsTest, AHostIsReadAsItWasWritten)
{
    const TransferHost host = HostOf(DownloadRequest({"a"}));
    EXPECT_EQ(host.host, "127.0.0.1");
    EXPECT_EQ(host.user, FtpTree::kUser);
    EXPECT_EQ(host.password, FtpTree::kPassword);
    EXPECT_EQ(host.path, "/pub");
    EXPECT_EQ(host.port, fServer->Port());
    EXPECT_TRUE(host.isPassive);
    EXPECT_FALSE(HostOf(BMessage(kRemoteEntries)).isPassive);
    EXPECT_EQ(HostOf(BMessage(kRemoteEntries)).port, 21u);
}

TEST_F(TransferRequestsTest, WhatWasListedComesBack)
{
    BMessage request(kLocalEntries);
    AddListed(&request, Listed("two words", "12", "Jan  5  2020"));
    AddListed(&request, Listed("Latin \xe4", "", "", "drwxr-xr-x"));
    RemoteEntry unusable = Listed("x", "1", "Jan  5  2020");
    unusable.commandName = "";
    AddListed(&request, unusable);

    const ListedEntries listed = ListedOf(request);

    ASSERT_EQ(listed.size(), 2u);
    EXPECT_EQ(listed.at("two words").size, "12");
    EXPECT_EQ(listed.at("two words").date, "Jan  5  2020");
    EXPECT_TRUE(listed.at("Latin \xe4").IsFolder());
}

TEST_F(TransferRequestsTest, AnEmptyDownloadDoesNothing)
{
    Download({});
    EXPECT_EQ(fServer->Connections(), 0);
    EXPECT_EQ(Problems(), "");
}

} // namespace norvane
