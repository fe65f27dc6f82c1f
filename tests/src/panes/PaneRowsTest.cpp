#include "PaneRowsFixture.h"

#include <random>

namespace {

using namespace norvane;

class PaneRowsTest : public PaneRowsFixture
{
protected:
    static constexpr int kMany = 100'000;
};

TEST_F(PaneRowsTest, ShowsWhatItIsFilledWith)
{
    Fill({"m"}, {"a", "b"});
    EXPECT_EQ(Names(), ".. m a b ");
    EXPECT_EQ(fRows->Totals().files, 2);
    EXPECT_EQ(fRows->Totals().bytes, 200);
    EXPECT_EQ(fTold, "");
}

TEST_F(PaneRowsTest, FindsRowsByPlaceNameAndNode)
{
    Fill({"m"}, {"a", "b"});
    EXPECT_EQ(fRows->Find("b"), 3);
    EXPECT_EQ(fRows->Find("c"), -1);
    EXPECT_EQ(fRows->IndexOf(Row("a")), 2);
    EXPECT_EQ(fRows->Find({7, 3}, "b"), Row("b"));
    EXPECT_EQ(fRows->Find({7, 3}, "a"), nullptr);
    EXPECT_EQ(fRows->RowAt(4), nullptr);
    EXPECT_EQ(fRows->RowAt(-1), nullptr);
}

TEST_F(PaneRowsTest, PutsARowInItsPlaceAndSaysSo)
{
    Fill({"m"}, {"a", "c"});
    fRows->Insert(Make("b", false, 9, 50));
    fRows->Insert(Make("z", true, 10));
    EXPECT_EQ(Names(), ".. m z a b c ");
    EXPECT_EQ(fRows->Totals().bytes, 250);
    EXPECT_EQ(fRows->Find({7, 9}, "b"), Row("b"));
    EXPECT_EQ(fTold, "changed changed ");
}

TEST_F(PaneRowsTest, TellsOfARowBeforeItGoes)
{
    Fill({}, {"a", "b", "c"});
    fList->Select(2);
    fRows->Remove(Row("b"));
    EXPECT_EQ(Names(), ".. a c ");
    EXPECT_EQ(fTold, "-b changed ");
    EXPECT_EQ(fList->CurrentSelection(), 2);
    EXPECT_EQ(fRows->Totals().files, 2);
    EXPECT_EQ(fRows->FindAny({7, 2}), nullptr);
}

TEST_F(PaneRowsTest, TellsOfAllRowsBeforeTheyGo)
{
    Fill({}, {"a", "b"});
    fRows->Clear();
    EXPECT_EQ(Names(), "");
    EXPECT_EQ(fTold, "none ");
    EXPECT_EQ(fRows->Totals().files, 0);
    EXPECT_EQ(fRows->FindAny({7, 1}), nullptr);
}

TEST_F(PaneRowsTest, RowsOfAServerCostNoSearch)
{
    ListedRows rows;
    for (int i = 0; i < kMany; i++) {
        rows.files.push_back(std::make_unique<DirListItem>(std::to_string(i).c_str(), "1",
                                                           "Jan 1 10:00", "-rw-r--r--"));
    }
    fRows->Fill(std::move(rows));
    EXPECT_EQ(fRows->CountRows(), kMany);
    EXPECT_EQ(fRows->Totals().files, kMany);
    EXPECT_EQ(fRows->Nodes().CountProbes(), 0u);
    // They have no node by which a notice could mean them.
    EXPECT_EQ(fRows->FindAny({0, 0}), nullptr);
    fRows->Remove(fRows->RowAt(kMany / 2));
    EXPECT_EQ(fRows->Totals().files, kMany - 1);
}

TEST_F(PaneRowsTest, LocalRowsCostAFewStepsEach)
{
    ListedRows rows;
    for (int i = 1; i <= kMany; i++) {
        rows.files.push_back(Make(std::to_string(i), false, static_cast<ino_t>(i)));
    }
    fRows->Fill(std::move(rows));
    EXPECT_EQ(fRows->Nodes().Count(), static_cast<size_t>(kMany));
    EXPECT_LT(fRows->Nodes().CountProbes(), static_cast<size_t>(4 * kMany));
}

TEST_F(PaneRowsTest, ChangesTogetherAreToldOnce)
{
    Fill({"m"}, {"b", "d", "f"});
    fList->Select(3);
    fRows->BeginChanges();
    fRows->Insert(Make("a", false, 11));
    fRows->Insert(Make("k", true, 12));
    fRows->Insert(Make("gone", false, 13));
    fRows->Remove(fRows->FindRow("gone"));
    fRows->Remove(fRows->FindRow("d"));
    BEntryRecord file;
    file.mode = S_IFREG;
    fRows->Rebuild(fRows->FindRow("f"), "c", file);
    EXPECT_EQ(fRows->FindRow("d"), nullptr);
    EXPECT_NE(fRows->FindRow("a"), nullptr);
    EXPECT_EQ(fRows->FindAny({7, 13}), nullptr);
    EXPECT_NE(fRows->FindAny({7, 12}), nullptr);
    EXPECT_EQ(Names(), ".. m b d c "); // as the list still has them
    fRows->EndChanges();
    EXPECT_EQ(Names(), ".. k m a b c ");
    EXPECT_EQ(fTold, "-gone -d changed ");
    EXPECT_EQ(fList->CurrentSelection(),
              5); // the row that came into the place of the one that went
    EXPECT_EQ(fRows->Totals().files, 3);
}

// Whatever is put in, taken out and renamed: together it comes to the same as one by one.
TEST_F(PaneRowsTest, ChangesTogetherAgreeWithSingleOnes)
{
    std::mt19937 random(5);
    std::string together;
    std::string single;
    for (const bool areTogether : {true, false}) {
        random.seed(5);
        fRows->Clear();
        Fill({"b", "q"}, {"c", "f", "k", "x"});
        for (int round = 0; round < 200; round++) {
            if (areTogether) {
                fRows->BeginChanges();
            }
            for (int step = 0; step < 20; step++) {
                const std::string name(1, static_cast<char>('a' + random() % 26));
                DirListItem* row = fRows->FindRow(name.c_str());
                if (row != nullptr) {
                    fRows->Remove(row);
                } else {
                    fRows->Insert(Make(name, random() % 3 == 0, 100 + random() % 50));
                }
            }
            if (areTogether) {
                fRows->EndChanges();
            }
            (areTogether ? together : single) += Names() + "\n";
        }
    }
    EXPECT_EQ(together, single);
}

// A fresh listing of the same folder

class FreshRowsTest : public PaneRowsFixture
{
protected:
    void Become(const std::vector<std::pair<std::string, int64>>& folders,
                const std::vector<std::pair<std::string, int64>>& files)
    {
        norvane::ListedRows rows;
        rows.folders.push_back(std::make_unique<norvane::DirListItem>());
        for (const auto& [name, node] : folders) {
            rows.folders.push_back(Make(name, true, static_cast<ino_t>(node)));
        }
        for (const auto& [name, node] : files) {
            rows.files.push_back(Make(name, false, static_cast<ino_t>(node), 100 * node));
        }
        fRows->Become(std::move(rows));
    }
};

TEST_F(FreshRowsTest, RowsThatAreStillThereStay)
{
    Fill({"m"}, {"a", "b", "c"});
    const DirListItem* kept = Row("c");
    fList->Select(4);
    Row("a")->Mark(true);

    Become({{"m", 1}, {"n", 9}}, {{"a", 2}, {"aa", 8}, {"c", 4}});

    EXPECT_EQ(Names(), ".. m n a aa c ");
    EXPECT_EQ(Row("c"), kept);
    EXPECT_TRUE(Row("c")->IsSelected());
    EXPECT_TRUE(Row("a")->IsMarked());
    EXPECT_EQ(fTold, "-b changed ");
    EXPECT_EQ(fRows->Totals().bytes, 200 + 800 + 400);
    EXPECT_EQ(fRows->Find({7, 9}, "n"), Row("n"));
}

TEST_F(FreshRowsTest, NothingIsToldWhereNothingChanged)
{
    Fill({}, {});
    Become({{"m", 1}}, {{"a", 2}});
    fTold.clear();

    Become({{"m", 1}}, {{"a", 2}});

    EXPECT_EQ(fTold, "");
    EXPECT_EQ(Names(), ".. m a ");
}

TEST_F(FreshRowsTest, ARowOfAnotherEntryShowsThat)
{
    Fill({}, {});
    Become({}, {{"a", 1}, {"b", 2}});
    const DirListItem* row = Row("a");
    EXPECT_STREQ(row->Text(2), "100 Bytes");
    fTold.clear();

    Become({{"b", 3}}, {{"a", 5}});

    EXPECT_EQ(Row("a"), row);
    EXPECT_STREQ(row->Text(2), "500 Bytes");
    EXPECT_TRUE(Row("b")->IsDir());
    EXPECT_EQ(fRows->Totals().bytes, 500);
    EXPECT_EQ(fRows->FindAny({7, 1}), nullptr);
    EXPECT_EQ(fTold, "changed ");
}

class DotNamesTest : public FreshRowsTest
{
protected:
    BEntryRecord File(ino_t node)
    {
        BEntryRecord record;
        record.mode = S_IFREG | 0644;
        record.node = node;
        record.size = 10;
        return record;
    }
};

TEST_F(DotNamesTest, AreLeftOutAsTheyCome)
{
    fRows->SetLeavesOutDotNames(true);

    Fill({".m", "m"}, {".a", "a"});
    fRows->Insert(Make(".b", false, 9));

    EXPECT_EQ(Names(), ".. m a ");
    EXPECT_EQ(fRows->Totals().files, 1);
    EXPECT_EQ(fRows->FindRow(".b"), nullptr);
    EXPECT_EQ(fTold, "");

    Become({{".m", 1}, {"m", 2}}, {{".a", 3}, {"a", 4}, {"b", 5}});
    EXPECT_EQ(Names(), ".. m a b ");
}

TEST_F(DotNamesTest, GoWhenTheyAreLeftOut)
{
    Fill({".m", "m"}, {".a", "a"});
    fList->Select(3);

    fRows->SetLeavesOutDotNames(true);

    EXPECT_EQ(Names(), ".. m a ");
    EXPECT_EQ(fRows->Totals().files, 1);
    EXPECT_NE(fTold.find("-.a "), std::string::npos) << fTold;
    fTold.clear();
    fRows->SetLeavesOutDotNames(true);
    EXPECT_EQ(fTold, "");
}

TEST_F(DotNamesTest, RowThatGetsOneGoes)
{
    fRows->SetLeavesOutDotNames(true);
    Fill({}, {"a", "b", "read"});

    fRows->Rebuild(Row("a"), ".a", File(1));
    fRows->Rebuild(Row("read"), entry_ref(7, 8, ".read"));
    EXPECT_EQ(Names(), ".. b ");

    fRows->BeginChanges();
    fRows->Rebuild(Row("b"), "c", File(2));
    fRows->Rebuild(fRows->FindRow("c"), ".b", File(2));
    fRows->EndChanges();
    EXPECT_EQ(Names(), ".. ");
    EXPECT_EQ(fRows->Totals().files, 0);
}

} // namespace
