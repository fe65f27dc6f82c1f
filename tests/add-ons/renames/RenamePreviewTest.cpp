#include "PlanFixture.h"

#include <gtest/gtest.h>

namespace rename_many {

namespace {

/// Each new name, with the number of its fault when it has one.
std::string Previewed(const std::vector<std::string>& names, const Rules& rules,
                      const std::vector<std::string>& others = {}, bool foldsCase = false)
{
    ModelFolder folder(foldsCase);
    auto entries = std::make_shared<Entries>();
    for (const std::string& name : names) {
        Entry entry;
        entry.name = name;
        entry.isGone = name == "gone";
        entries->push_back(entry);
        if (!entry.isGone) {
            folder.Add(name);
        }
    }
    for (const std::string& other : others) {
        folder.Add(other);
    }
    const std::atomic<bool> isStopped = false;
    const auto preview = MakePreview(entries, folder.Known(), rules, isStopped);
    const char* const marks[] = {"", "!empty", "!dots", "!slash", "!long", "!taken", "!twice"};
    std::string text;
    for (size_t place = 0; place < names.size(); place++) {
        text += preview->names[place] + marks[static_cast<size_t>(preview->faults[place])] + " ";
    }
    return text;
}

Rules Pattern(const char* pattern)
{
    Rules rules;
    rules.pattern = pattern;
    return rules;
}

Rules Replacing(const char* search, const char* replacement)
{
    Rules rules;
    rules.search = search;
    rules.replacement = replacement;
    return rules;
}

} // namespace

TEST(RenamePreviewTest, MarksNamesThatAreNone)
{
    EXPECT_EQ(Previewed({"a"}, Pattern("")), "!empty ");
    EXPECT_EQ(Previewed({"a"}, Pattern(".")), ".!dots ");
    EXPECT_EQ(Previewed({"a"}, Pattern("..")), "..!dots ");
    EXPECT_EQ(Previewed({"a"}, Pattern("x/[N]")), "x/a!slash ");
    EXPECT_EQ(Previewed({"a"}, Pattern(std::string(255, 'x').c_str())),
              std::string(255, 'x') + " ");
    EXPECT_EQ(Previewed({"a"}, Pattern(std::string(256, 'x').c_str())),
              std::string(256, 'x') + "!long ");
}

TEST(RenamePreviewTest, MarksNamesThatAreTaken)
{
    EXPECT_EQ(Previewed({"a"}, Pattern("b"), {"b"}), "b!taken ");
    EXPECT_EQ(Previewed({"a"}, Pattern("b"), {"B"}), "b ");
    EXPECT_EQ(Previewed({"a"}, Pattern("b"), {"B"}, true), "b!taken ");
}

TEST(RenamePreviewTest, MarksNamesThatComeTwice)
{
    EXPECT_EQ(Previewed({"a", "b", "c"}, Replacing("b", "a")), "a!twice a!twice c ");
    EXPECT_EQ(Previewed({"a", "b"}, Pattern("x")), "x!twice x!twice ");
    EXPECT_EQ(Previewed({"a", "c"}, Replacing("c", "A"), {}, true), "a!twice A!twice ");
}

TEST(RenamePreviewTest, LetsNamesGoRound)
{
    Rules rules = Replacing("a(\\d)|b(\\d)", "");
    rules = Pattern("[C]");
    EXPECT_EQ(Previewed({"2", "1", "0"}, rules), "1 2 3 ");
    rules.letters = Letters::kCapitals;
    rules.pattern = "[N]";
    EXPECT_EQ(Previewed({"a"}, rules, {}, true), "A ");
}

TEST(RenamePreviewTest, LeavesOutWhatIsGone)
{
    EXPECT_EQ(Previewed({"gone", "a"}, Pattern("[C]")), "gone 2 ");
    EXPECT_EQ(Previewed({"gone", "a"}, Pattern("gone")), "gone gone ");
}

TEST(RenamePreviewTest, SaysWhatIsWrongWithTheRules)
{
    auto entries = std::make_shared<Entries>(1);
    (*entries)[0].name = std::string(60, 'a') + "b";
    const std::atomic<bool> isStopped = false;
    Rules rules = Replacing("(", "");
    rules.isExpression = true;
    const std::vector<FolderNames> folders(1);
    EXPECT_FALSE(MakePreview(entries, folders, rules, isStopped)->error.empty());
    EXPECT_FALSE(MakePreview(entries, folders, rules, isStopped)->CanRename());
    rules.search = "(a+)+$";
    EXPECT_EQ(MakePreview(entries, folders, rules, isStopped)->error,
              "it takes too long to be looked for");
}

TEST(RenamePreviewTest, EndsWhenItIsStopped)
{
    auto entries = std::make_shared<Entries>(3);
    const std::atomic<bool> isStopped = true;
    EXPECT_EQ(MakePreview(entries, std::vector<FolderNames>(1), Rules(), isStopped), nullptr);
}

} // namespace rename_many
