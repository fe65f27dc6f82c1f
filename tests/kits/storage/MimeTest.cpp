#include <Entry.h>
#include <Mime.h>

#include <TempTree.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace {

std::string TypeOf(const char* path)
{
    entry_ref ref;
    BMimeType type;
    get_ref_for_path(path, &ref);
    return BMimeType::GuessMimeType(&ref, &type) == B_OK ? type.Type() : "(none)";
}

} // namespace

TEST(MimeTest, KnowsValidTypes)
{
    for (const char* type : {"text", "text/plain", "application/x-vnd.test+xml"}) {
        EXPECT_TRUE(BMimeType::IsValid(type)) << type;
    }
    for (const char* type :
         {"", "/", "text/", "/plain", "a/b/c", "a b", "a\n", "a:b", "\xc3\xa4"}) {
        EXPECT_FALSE(BMimeType::IsValid(type)) << type;
    }
    EXPECT_FALSE(BMimeType::IsValid(nullptr));
    EXPECT_FALSE(BMimeType::IsValid(std::string(B_MIME_TYPE_LENGTH, 'a').c_str()));
}

TEST(MimeTest, TellsFamilies)
{
    const BMimeType text("text");
    BMimeType type("text/plain");

    EXPECT_TRUE(text.IsSupertypeOnly());
    EXPECT_FALSE(type.IsSupertypeOnly());
    EXPECT_TRUE(text.Contains(&type));
    EXPECT_FALSE(type.Contains(&text));
    EXPECT_TRUE(type == "TEXT/Plain");
    EXPECT_EQ(type.GetSupertype(&type), B_OK);
    EXPECT_TRUE(type == text);
    EXPECT_EQ(text.GetSupertype(&type), B_BAD_VALUE);
    EXPECT_EQ(BMimeType("a b").InitCheck(), B_BAD_VALUE);
    EXPECT_EQ(BMimeType("a b").Type(), nullptr);
}

TEST(MimeTest, GuessesByNameThenByContent)
{
    TempTree tree;
    tree.Write("a.png", "not a picture");
    tree.Write("unnamed", "\x89PNG\r\n\x1a\n0000IHDR");
    tree.MakeFolder("folder.png");
    tree.Link("link.png", "a.png");
    ASSERT_EQ(mkfifo(tree.Path("fifo").c_str(), 0600), 0);

    EXPECT_EQ(TypeOf(tree.Path("a.png").c_str()), "image/png");
    EXPECT_EQ(TypeOf(tree.Path("unnamed").c_str()), "image/png");
    EXPECT_EQ(TypeOf(tree.Path("folder.png").c_str()), "inode/directory");
    EXPECT_EQ(TypeOf(tree.Path("link.png").c_str()), "inode/symlink");
    EXPECT_EQ(TypeOf(tree.Path("fifo").c_str()), "inode/fifo");
    EXPECT_EQ(TypeOf(tree.Path("none").c_str()), "(none)");
}

TEST(MimeTest, KnowsWhatATypeIsAKindOf)
{
    EXPECT_TRUE(BMimeType("application/x-shellscript").Inherits("text/plain"));
    EXPECT_TRUE(BMimeType("application/json").Inherits("text/plain"));
    EXPECT_TRUE(BMimeType("x-no/such-type").Inherits("x-no/such-type"));
    EXPECT_FALSE(BMimeType("image/png").Inherits("text/plain"));
    EXPECT_FALSE(BMimeType("application/x-shellscript").Inherits(nullptr));
    EXPECT_FALSE(BMimeType().Inherits("text/plain"));
}

TEST(MimeTest, DescribesKnownTypes)
{
    char words[B_MIME_TYPE_LENGTH] = "";

    EXPECT_TRUE(BMimeType("image/png").IsInstalled());
    EXPECT_EQ(BMimeType("image/png").GetShortDescription(words), B_OK);
    EXPECT_STRNE(words, "");
    EXPECT_FALSE(BMimeType("x-no/such-type").IsInstalled());
    EXPECT_EQ(BMimeType("x-no/such-type").GetShortDescription(words), B_ENTRY_NOT_FOUND);
}
