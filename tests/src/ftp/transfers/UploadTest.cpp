#include "TransferFixture.h"

#include <cstdio>
#include <unistd.h>

namespace norvane {

class UploadTest : public TransferFixture
{
};

TEST_F(UploadTest, SendsAFileByteForByte)
{
    const std::string bytes = Bytes(300'000);
    fTree.Write("from/song", bytes);
    Upload({"from/song"});
    EXPECT_EQ(fRemote.Read("/pub/song"), bytes);
    EXPECT_EQ(fTree.Read("from/song"), bytes);
    EXPECT_EQ(Problems(), "");
    EXPECT_TRUE(HasSent("QUIT"));
}

TEST_F(UploadTest, ActiveModeDoesTheSame)
{
    fIsPassive = false;
    fTree.Write("from/song", "la");
    fTree.Write("from/album/b", "li");
    Upload({"from/song", "from/album"});
    EXPECT_EQ(fRemote.Read("/pub/song"), "la");
    EXPECT_EQ(fRemote.Read("/pub/album/b"), "li");
    EXPECT_EQ(fServer->CommandLog().find("PASV"), std::string::npos);
}

TEST_F(UploadTest, SendsAnEmptyFile)
{
    fTree.Write("from/empty", "");
    Upload({"from/empty"});
    EXPECT_EQ(fRemote.Read("/pub/empty"), "");
    EXPECT_EQ(Problems(), "");
}

TEST_F(UploadTest, NamesAreBytes)
{
    const std::vector<std::string> names = {
        "two words", " leading",  "trailing ", "Latin \xe4\xf6", "UTF \xc3\xa4", "quote\"s'",
        "-rf",       "tab\there", "a -> b",    "*?[x]",          "\\back",       "%41"};
    for (const std::string& name : names) {
        fTree.Write("from/album/" + name, "of " + name);
    }
    Upload({"from/album"});
    for (const std::string& name : names) {
        EXPECT_EQ(fRemote.Read("/pub/album/" + name), "of " + name);
    }
    EXPECT_EQ(Problems(), "");
}

TEST_F(UploadTest, NamesThatWouldBreakACommandAreTold)
{
    fTree.Write("from/album/a\nDELE b", "1");
    fTree.Write("from/album/c\r", "1");
    fTree.Write("from/album/d\ne/x", "1");
    fTree.Write("from/album/good", "2");
    Upload({"from/album"});
    EXPECT_EQ(fRemote.List(), "/\n/pub/\n/pub/album/\n/pub/album/good\n");
    ASSERT_EQ(fUI.problems.size(), 3u) << Problems();
    for (const auto& [name, reason] : fUI.problems) {
        EXPECT_EQ(reason, "its name cannot be sent to a server") << name;
    }
    EXPECT_EQ(fServer->CommandLog().find("DELE"), std::string::npos);
}

TEST_F(UploadTest, SendsATree)
{
    fTree.Write("from/album/one/a", "1");
    fTree.Write("from/album/one/deep/b", "2");
    fTree.Write("from/album/two/c", "3");
    fTree.MakeFolder("from/album/empty");
    fTree.Write("from/after", "4");
    Upload({"from/album", "from/after"});
    EXPECT_EQ(fRemote.List(), "/\n/pub/\n/pub/after\n/pub/album/\n/pub/album/empty/\n"
                              "/pub/album/one/\n/pub/album/one/a\n/pub/album/one/deep/\n"
                              "/pub/album/one/deep/b\n/pub/album/two/\n/pub/album/two/c\n");
    EXPECT_EQ(fRemote.Read("/pub/album/one/deep/b"), "2");
    EXPECT_EQ(Problems(), "");
    EXPECT_FALSE(HasSent("LIST")) << "new folders hold nothing";
}

TEST_F(UploadTest, ATreeMayBeDeep)
{
    std::string path = "from/d";
    for (int depth = 0; depth < 120; depth++) {
        path += "/d";
    }
    fTree.Write(path + "/last", "1");
    Upload({"from/d"});
    EXPECT_EQ(fRemote.Read("/pub/" + path.substr(5) + "/last"), "1");
    EXPECT_EQ(Problems(), "");
}

TEST_F(UploadTest, WhatIsNoFileIsTold)
{
    fTree.Write("from/album/a", "1");
    fTree.Link("from/album/link", "a");
    fTree.Link("from/top", "album");
    Upload({"from/album", "from/top"});
    EXPECT_EQ(fRemote.List(), "/\n/pub/\n/pub/album/\n/pub/album/a\n");
    EXPECT_EQ(Problems(), "link: it is neither a file nor a folder\n"
                          "top: it is neither a file nor a folder\n");
}

TEST_F(UploadTest, WhatCannotBeOpenedIsToldAndTheOthersAreSent)
{
    fTree.Write("from/a", "1");
    fTree.Write("from/b", "2");
    fTree.Write("from/album/c", "3");
    const BMessage request = UploadRequest({"from/a", "from/b", "from/album"});
    fTree.Remove("from/a");
    fTree.Remove("from/album");
    Run(request);
    EXPECT_EQ(fRemote.Read("/pub/b"), "2");
    EXPECT_EQ(fUI.notices,
              std::vector<std::string>{"The path, " + fTree.Path("from/a") +
                                       ", that you are trying to upload is not valid."});
    EXPECT_EQ(fUI.problems.size(), 2u) << "the next such alert goes into the list: " << Problems();
}

TEST_F(UploadTest, TellsHowFarItIs)
{
    fTree.Write("from/a", Bytes(100'000));
    fTree.Write("from/b", "12");
    Upload({"from/a", "from/b"});
    EXPECT_EQ(fUI.size.kind, OperationSize::Kind::kUpload);
    EXPECT_EQ(fUI.size.items, 2u);
    EXPECT_EQ(fUI.size.bytes, 100'002);
    ASSERT_GE(fUI.transfers.size(), 3u);
    const TransferStep& first = fUI.transfers.front();
    EXPECT_TRUE(first.isNew);
    EXPECT_EQ(first.from, fTree.Path("from/a"));
    EXPECT_EQ(first.to, fTree.Path("to"));
    const TransferStep& last = fUI.transfers.back();
    EXPECT_EQ(last.name, "b");
    EXPECT_EQ(last.percent, 100);
    EXPECT_EQ(last.bytes, 2);
    EXPECT_EQ(last.baseBytes, 100'000);
}

TEST_F(UploadTest, AFileThatGrowsMeanwhileIsTold)
{
    fTree.Write("from/a", "1234");
    fUI.onTransfer = [this](const TransferStep& step) {
        if (step.isNew) {
            fTree.Write("from/a", "123456");
        }
    };
    Upload({"from/a"});
    EXPECT_EQ(Problems(), "a: it changed while it was being sent\n");
}

} // namespace norvane
