#include "panes/NamePatterns.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace {

using namespace norvane;

struct MatchCase
{
    const char* patterns;
    const char* name;
    bool matches;
    bool isFolder = false;
};

void PrintTo(const MatchCase& value, std::ostream* out)
{
    *out << '"' << value.patterns << "\" and \"" << value.name << '"';
}

class NamePatternsTest : public ::testing::TestWithParam<MatchCase>
{
};

TEST_P(NamePatternsTest, Match)
{
    const MatchCase& param = GetParam();
    EXPECT_EQ(NamePatterns(param.patterns).Matches(param.name, param.isFolder), param.matches);
}

INSTANTIATE_TEST_SUITE_P(
    Names, NamePatternsTest,
    ::testing::Values(
        MatchCase{"*.txt", "a.txt", true}, MatchCase{"*.txt", ".txt", true},
        MatchCase{"*.txt", "a.txt.gz", false}, MatchCase{"a", "a", true},
        MatchCase{"a", "ab", false}, MatchCase{"*", ".hidden", true},
        MatchCase{"a*b*c", "axxbyybzc", true}, MatchCase{"a*b*c", "axxbyybz", false},
        MatchCase{"**", "x", true}, MatchCase{"?", "ab", false},
        // One character, whatever its bytes.
        MatchCase{"?", "\xc3\xa4", true}, MatchCase{"?.c", "\xff.c", true},
        MatchCase{"a?b", "a\nb", true}, MatchCase{"*\xe2\x80\xae*", "x\xe2\x80\xaey", true},
        MatchCase{"\xff*", "\xffz", true}, MatchCase{"\xff*", "\xfez", false},
        // Case counts where a capital is typed.
        MatchCase{"*.txt", "A.TXT", true}, MatchCase{"*.TXT", "a.txt", false},
        MatchCase{"*.TXT", "a.TXT", true}, MatchCase{"\xc3\xa4*", "\xc3\x84rger", true},
        MatchCase{"\xc3\x84*", "\xc3\xa4rger", false}, MatchCase{"A*; b*", "BC", true},
        // One of several characters.
        MatchCase{"[a-c]1", "B1", true}, MatchCase{"[a-c]1", "d1", false},
        MatchCase{"[!a-c]1", "d1", true}, MatchCase{"[^a-c]1", "a1", false},
        MatchCase{"[]x]", "]", true}, MatchCase{"[a-]", "-", true}, MatchCase{"[;]", ";", true},
        MatchCase{"[a", "[a", true}, MatchCase{"[A-Z]*", "a", false},
        MatchCase{"[A-Z]*", "Ab", true}, MatchCase{"[\xc3\xa4-\xc3\xb6]", "\xc3\xb6", true},
        MatchCase{"[\\]]", "]", true},
        // Several patterns.
        MatchCase{"*.c;*.h", "a.h", true}, MatchCase{"*.c; *.h", "a.h", true},
        MatchCase{"*.c, *.h", "a.h", true}, MatchCase{"*.c,*.h", "a.h", false},
        MatchCase{"*.c,*.h", "a.c,b.h", true}, MatchCase{"a b", "a b", true},
        MatchCase{"a;;b;", "b", true}, MatchCase{"a,", "a", true},
        // Characters that mean nothing else.
        MatchCase{"\\*", "*", true}, MatchCase{"\\*", "a", false}, MatchCase{"a\\;b", "a;b", true},
        MatchCase{"a\\", "a\\", true}, MatchCase{"a\\ ; b", "a ", true},
        // Folders alone.
        MatchCase{"*/", "a", false}, MatchCase{"*/", "a", true, true},
        MatchCase{"*", "a", true, true}, MatchCase{"/", "a", false, true}),
    [](const auto& test) { return std::string("Case").append(std::to_string(test.index)); });

TEST(NamePatternsOfNothingTest, AreEmpty)
{
    for (const char* text : {"", " ", ";", " ; ", ", ", "/"}) {
        EXPECT_TRUE(NamePatterns(text).IsEmpty()) << text;
    }
    EXPECT_FALSE(NamePatterns("*").IsEmpty());
}

// A pattern that is tried again from each of a long name's letters ends soon.
TEST(NamePatternsOfNothingTest, AreFastWithManyStars)
{
    const std::string name(255, 'a');
    EXPECT_FALSE(NamePatterns("*a*a*a*a*a*a*a*a*a*a*b").Matches(name.c_str(), false));
}

} // namespace
