#include "Checksums/SumLines.h"
#include "Checksums/Sha256.h"
#include "SumTool.h"

#include <gtest/gtest.h>

namespace checksums {

namespace {

const std::string kSum(64, 'a');
const std::string kCapitals(64, 'A');

/// "NAME|SUM's first digit", or "(none)".
std::string Read(const std::string& line)
{
    const std::optional<SumLine> read = ReadLine(line);
    return read ? read->name + "|" + read->sum.substr(0, 1) : "(none)";
}

std::string Joined(std::string_view name)
{
    const auto steps = StepsBelow(name);
    if (!steps) {
        return "(out)";
    }
    std::string joined;
    for (const std::string& step : *steps) {
        joined += step + ">";
    }
    return joined;
}

} // namespace

TEST(Sha256Test, KnowsTheSumsOfTheStandard)
{
    EXPECT_EQ(Sha256().Finish(),
              "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    Sha256 sum;
    sum.Add("a", 1);
    sum.Add("bc", 2);
    EXPECT_EQ(sum.Finish(), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
}

TEST(SumLinesTest, ReadsLinesOfAllKinds)
{
    EXPECT_EQ(Read(kSum + "  name"), "name|a");
    EXPECT_EQ(Read(kSum + " *name"), "name|a");
    EXPECT_EQ(Read(kCapitals + "  a b  c"), "a b  c|a");
    EXPECT_EQ(Read(kSum + "   leading"), " leading|a");
    EXPECT_EQ(Read("SHA256 (name) = " + kSum), "name|a");
    EXPECT_EQ(Read("SHA256 (odd) = (name) = " + kSum), "odd) = (name|a");
    EXPECT_EQ(Read("\\" + kSum + "  a\\nb\\\\c\\rd"), "a\nb\\c\rd|a");
    EXPECT_EQ(Read("\\SHA256 (a\\nb) = " + kSum), "a\nb|a");
    EXPECT_EQ(Read(kSum + "  a\\nb"), "a\\nb|a");
    EXPECT_EQ(Read(kSum + "  \xff\xfe"), "\xff\xfe|a");
}

TEST(SumLinesTest, RefusesWhatIsNoLine)
{
    for (const std::string& line :
         {std::string(), std::string("text"), kSum, kSum + "  ", kSum + " name", kSum + "\tname",
          kSum.substr(1) + "  name", kSum + "a  name", "g" + kSum.substr(1) + "  name",
          "\\" + kSum + "  a\\tb", "\\" + kSum + "  a\\", "SHA256 (name) = " + kSum + "0",
          "SHA1 (name) = " + kSum, "SHA256 () = " + kSum, std::string("SHA256 ("),
          std::string("SHA256 () =")}) {
        EXPECT_EQ(Read(line), "(none)") << line;
    }
    EXPECT_FALSE(ReadLine(kSum + "  a" + std::string(1, '\0') + "b").has_value());
}

TEST(SumLinesTest, ReadsWholeFiles)
{
    const SumFile file = ReadSums("# comment\n" + kSum + "  a\n\nodd\n" + kSum + "  b");
    ASSERT_EQ(file.lines.size(), 2u);
    EXPECT_EQ(file.lines[1].name, "b");
    EXPECT_EQ(file.others, 1u);
    EXPECT_EQ(ReadSums(kSum + "  a\r\n" + kSum + "  b\r\n").lines[0].name, "a");
    EXPECT_EQ(ReadSums(kSum + "  a\r\n" + kSum + "  b\n").lines[0].name, "a\r");
    EXPECT_TRUE(ReadSums("").lines.empty());
}

TEST(SumLinesTest, KnowsListsByTheirNames)
{
    for (const char* name : {"SHA256SUMS", "SHA256SUMS 2", "my-SHA256SUMS.txt", "a.iso.sha256"}) {
        EXPECT_TRUE(IsSumFileName(name)) << name;
    }
    for (const char* name : {"sums", ".sha256", "a.sha2567", "SHA1SUMS"}) {
        EXPECT_FALSE(IsSumFileName(name)) << name;
    }
}

TEST(SumLinesTest, TakesWhatIsPasted)
{
    EXPECT_EQ(ReadPastedSum(" " + kCapitals + "\n"), kSum);
    EXPECT_EQ(ReadPastedSum(kSum.substr(0, 32) + " " + kSum.substr(32)), kSum);
    EXPECT_EQ(ReadPastedSum("  " + kSum + "  some name\n" + std::string(64, 'b') + "  other"),
              kSum);
    EXPECT_EQ(ReadPastedSum("SHA256 (a) = " + kCapitals + "\r\n"), kSum);
    EXPECT_EQ(ReadPastedSum(kSum.substr(1)), "");
    EXPECT_EQ(ReadPastedSum(""), "");
}

TEST(SumLinesTest, LeadsNowhereElse)
{
    EXPECT_EQ(Joined("a"), "a>");
    EXPECT_EQ(Joined("./a//b/./c"), "a>b>c>");
    EXPECT_EQ(Joined("..a/b.."), "..a>b..>");
    for (const char* name : {"", "/a", "..", "../a", "a/../b", "a/..", ".", "./", "a/"}) {
        EXPECT_EQ(Joined(name), "(out)") << name;
    }
}

TEST(SumLinesTest, WritesAsTheToolDoes)
{
    TempTree tree;
    std::string expected;
    std::string arguments = "-- ";
    for (const std::string& name :
         {std::string("plain"), std::string("a b"), std::string("a\\b"), std::string("a\nb"),
          std::string("a\rb"), std::string("\xff\xfe"), std::string(" x ")}) {
        tree.Write(name, name);
        Sha256 sum;
        sum.Add(name.data(), name.size());
        expected += LineOf({name, sum.Finish()});
        arguments += "'" + name + "' ";
    }
    const std::string written = SumTool(tree, "", arguments);
    EXPECT_EQ(expected, written);
    const SumFile read = ReadSums(written);
    EXPECT_EQ(read.lines.size(), 7u);
    EXPECT_EQ(read.others, 0u);
}

} // namespace checksums
