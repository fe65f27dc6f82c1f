#include "Checksums/SumJob.h"
#include "Checksums/SumFiles.h"
#include "Checksums/SumLines.h"
#include "Checksums/SumSaving.h"
#include "Checksums/SumTexts.h"
#include "SumTool.h"

#include <Entry.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sys/stat.h>

namespace checksums {

namespace {

constexpr bigtime_t kLimit = 20'000'000;

class SumJobTest : public ::testing::Test
{
protected:
    entry_ref Ref(const std::string& name)
    {
        entry_ref ref;
        EXPECT_EQ(get_ref_for_path(fTree.Path(name).c_str(), &ref), B_OK);
        return ref;
    }
    std::shared_ptr<SumJob> Run(const std::vector<std::string>& names)
    {
        std::vector<entry_ref> refs;
        for (const std::string& name : names) {
            refs.push_back(Ref(name));
        }
        auto job = std::make_shared<SumJob>(refs, BMessenger());
        EXPECT_EQ(job->Start(), B_OK);
        EXPECT_TRUE(job->WaitForEnd(kLimit));
        return job;
    }
    std::string Lines(const std::vector<std::string>& names) { return LinesOf(Run(names)->Rows()); }
    /// "NAME=TEXT;" of each row.
    static std::string States(const SumJob& job)
    {
        std::string states;
        for (const SumRow& row : job.Rows()) {
            states += row.name + "=" + TextOf(row) + ";";
        }
        return states;
    }
    std::string States(const std::vector<std::string>& names) { return States(*Run(names)); }

    TempTree fTree;
};

std::string RandomBytes(std::mt19937& random, size_t count)
{
    std::string bytes(count, '\0');
    std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<char>(random()); });
    return bytes;
}

} // namespace

TEST_F(SumJobTest, SumsFilesAsTheToolDoes)
{
    std::mt19937 random(7);
    std::vector<std::string> names;
    std::string arguments = "-- ";
    const size_t sizes[] = {0, 1, 63, 64, 65, 4096, 1024 * 1024 - 1, 1024 * 1024, 3'000'001};
    for (const size_t size : sizes) {
        names.push_back("file " + std::to_string(size) + "\n\\\xff");
        fTree.Write(names.back(), RandomBytes(random, size));
        arguments += "'" + names.back() + "' ";
    }
    EXPECT_EQ(Lines(names), SumTool(fTree, "", arguments));
}

TEST_F(SumJobTest, FindsAllFilesBelowFolders)
{
    fTree.Write("top/b", "1");
    fTree.Write("top/a/x", "2");
    fTree.Write("top/a/deep/er/y", "3");
    fTree.Write("top/z/w", "4");
    fTree.MakeFolder("top/empty");
    fTree.Write("outside/secret", "5");
    fTree.Link("top/link", fTree.Path("outside"));
    fTree.Link("top/file", fTree.Path("outside/secret"));
    ASSERT_EQ(mkfifo(fTree.Path("top/fifo").c_str(), 0600), 0);

    EXPECT_EQ(Lines({"top"}), SumTool(fTree, "", "top/b top/a/x top/a/deep/er/y top/z/w"));
}

TEST_F(SumJobTest, FollowsALinkThatWasChosenItself)
{
    fTree.Write("file", "contents");
    fTree.Link("link", "file");
    fTree.Link("broken", "nowhere");
    EXPECT_EQ(Lines({"link"}), SumTool(fTree, "", "link"));
    EXPECT_EQ(States({"broken"}), "broken=missing;");
}

TEST_F(SumJobTest, SaysWhatCannotBeRead)
{
    fTree.Write("file", "contents");
    ASSERT_EQ(mkfifo(fTree.Path("fifo").c_str(), 0600), 0);
    EXPECT_EQ(States({"fifo", "gone"}), "fifo=unreadable: no regular file;gone=missing;");
}

TEST_F(SumJobTest, NamesFilesOfSeveralFoldersByTheirPaths)
{
    fTree.Write("one/a", "1");
    fTree.Write("two/a", "2");
    EXPECT_EQ(Lines({"one/a", "two/a"}),
              SumTool(fTree, "", fTree.Path("one/a") + " " + fTree.Path("two/a")));
}

TEST_F(SumJobTest, VerifiesWhatTheToolWrote)
{
    std::string arguments = "-- ";
    for (const char* name : {"plain", "a b", "a\\b", "a\nb", "\xff", "sub/in"}) {
        fTree.Write(std::string("d/") + name, name);
        arguments += std::string("'") + name + "' ";
    }
    for (const char* kind : {"", "-b ", "--tag "}) {
        fTree.Write("d/SHA256SUMS", SumTool(fTree, "d", kind + arguments));
        const std::shared_ptr<SumJob> job = Run({"d/SHA256SUMS"});
        EXPECT_EQ(SummaryOf(*job), "6 files: 6 OK") << kind << States(*job);
    }
}

TEST_F(SumJobTest, TellsWhatDiffersAndWhatIsMissing)
{
    for (const char* name : {"d/same", "d/other", "d/gone"}) {
        fTree.Write(name, name);
    }
    fTree.Write("d/my.sha256", SumTool(fTree, "d", "same other gone") + "this is no sum\n");
    fTree.Write("d/other", "d/othes");
    fTree.Remove("d/gone");
    const std::shared_ptr<SumJob> job = Run({"d/my.sha256"});
    EXPECT_EQ(States(*job), "same=OK;other=differs;gone=missing;");
    EXPECT_EQ(SummaryOf(*job), "3 files: 1 OK, 1 different, 1 missing. 1 line is no sum");
}

TEST_F(SumJobTest, StaysInTheFolderOfItsList)
{
    fTree.Write("secret", "x");
    fTree.Write("d/sub/in", "x");
    fTree.Link("d/up", "..");
    fTree.Link("d/link", "../secret");
    const std::string sum = SumTool(fTree, "", "secret").substr(0, 64);
    std::string list;
    for (const std::string& name :
         {std::string("../secret"), fTree.Path("secret"), std::string("sub/../../secret"),
          std::string("up/secret"), std::string("link"), std::string("./sub//in")}) {
        list += LineOf({name, sum});
    }
    fTree.Write("d/SHA256SUMS", list);
    EXPECT_EQ(States({"d/SHA256SUMS"}),
              "../secret=refused: leads out of the folder;" + fTree.Path("secret") +
                  "=refused: leads out of the folder;"
                  "sub/../../secret=refused: leads out of the folder;"
                  "up/secret=unreadable: something on the way to it is no folder;"
                  "link=unreadable: it is a link;./sub//in=OK;");
}

TEST_F(SumJobTest, SumsAListThatIsNone)
{
    fTree.Write("SHA256SUMS", "no sums here\n");
    EXPECT_EQ(Lines({"SHA256SUMS"}), SumTool(fTree, "", "SHA256SUMS"));
}

TEST_F(SumJobTest, NoticesAFileThatChanges)
{
    fTree.Write("file", std::string(3'000'000, 'x'));
    const std::atomic<bool> isStopped = false;
    const entry_ref ref = Ref("file");
    const auto change = [&](const std::function<void()>& work) {
        BFile file(&ref, B_READ_ONLY);
        bool isFirst = true;
        return SumOf(file, isStopped, [&](int64) {
            if (std::exchange(isFirst, false)) {
                work();
            }
        });
    };
    EXPECT_FALSE(change([] {}).hasChanged);
    EXPECT_TRUE(change([&] { fTree.Write("file", std::string(3'000'001, 'x')); }).hasChanged);
    EXPECT_TRUE(change([&] { fTree.Write("file", std::string(3'000'001, 'y')); }).hasChanged);
    EXPECT_EQ(change([&] { fTree.Write("file", "short"); }).sum, "");
}

TEST_F(SumJobTest, StopsWhenTold)
{
    fTree.Write("file", std::string(3'000'000, 'x'));
    std::atomic<bool> isStopped = false;
    const entry_ref ref = Ref("file");
    BFile file(&ref, B_READ_ONLY);
    int64 read = 0;
    const Summed summed = SumOf(file, isStopped, [&](int64 bytes) {
        read += bytes;
        isStopped = true;
    });
    EXPECT_EQ(summed.status, B_CANCELED);
    EXPECT_EQ(read, 1024 * 1024);

    auto job = std::make_shared<SumJob>(std::vector<entry_ref>{ref}, BMessenger());
    job->Stop();
    ASSERT_EQ(job->Start(), B_OK);
    ASSERT_TRUE(job->WaitForEnd(kLimit));
    EXPECT_EQ(SummaryOf(*job), "Stopped. 1 file: 1 not read");
}

TEST_F(SumJobTest, SavesUnderAFreeName)
{
    fTree.Write("d/file", "x");
    const entry_ref ref = Ref("d/file");
    std::string name;
    EXPECT_EQ(SaveSums(ref, "first\n", &name), B_OK);
    EXPECT_EQ(name, "SHA256SUMS");
    EXPECT_EQ(SaveSums(ref, "second\n", &name), B_OK);
    EXPECT_EQ(name, "SHA256SUMS 2");
    fTree.Link("d/SHA256SUMS 3", "nowhere");
    EXPECT_EQ(SaveSums(ref, "third\n", &name), B_OK);
    EXPECT_EQ(fTree.List("d"), "SHA256SUMS\nSHA256SUMS 2\nSHA256SUMS 3\nSHA256SUMS 4\nfile\n");
    EXPECT_EQ(fTree.Read("d/SHA256SUMS") + fTree.Read("d/SHA256SUMS 2") +
                  fTree.Read("d/SHA256SUMS 4"),
              "first\nsecond\nthird\n");
}

TEST_F(SumJobTest, TellsThatItCannotSave)
{
    fTree.Write("d/file", "x");
    const entry_ref ref = Ref("d/file");
    fTree.Remove("d/file");
    fTree.Remove("d");
    std::string name;
    EXPECT_EQ(SaveSums(ref, "first\n", &name), B_ENTRY_NOT_FOUND);
}

} // namespace checksums
