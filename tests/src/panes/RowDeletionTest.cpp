#include "ListFixture.h"

#include "Event.h"

#include <OS.h>

#include <List.h>

#include <mutex>
#include <set>

namespace {

using namespace norvane;

/// Where rows were deleted.
struct Deletions
{
    Event event;
    std::mutex mutex;
    std::set<thread_id> threads; // guarded by mutex
};

/// A row that notes its end.
class NotingRow : public DirListItem
{
public:
    explicit NotingRow(Deletions& deletions) : fDeletions(deletions) {}
    ~NotingRow() override
    {
        {
            const std::lock_guard lock(fDeletions.mutex);
            fDeletions.threads.insert(find_thread(nullptr));
        }
        fDeletions.event.Happen();
    }

private:
    Deletions& fDeletions;
};

/// The rows of a folder that is left.
class RowDeletionTest : public ListFixture
{
protected:
    // Far more than can be deleted while a person waits for nothing to happen.
    static constexpr int kMany = 20'001;

    void Fill(int count)
    {
        BList rows(count);
        for (int i = 0; i < count; i++) {
            rows.AddItem(new NotingRow(fDeletions)); // the list's from now on
        }
        ASSERT_TRUE(fList->AddList(&rows));
    }

    bool DeletedHere()
    {
        const std::lock_guard lock(fDeletions.mutex);
        return fDeletions.threads.contains(find_thread(nullptr));
    }

    Deletions fDeletions;
};

TEST_F(RowDeletionTest, FewRowsAreGoneAtOnce)
{
    Fill(100);
    Show("shown");
    EXPECT_EQ(fDeletions.event.Count(), 100);
    EXPECT_TRUE(DeletedHere());
}

TEST_F(RowDeletionTest, ManyRowsAreDeletedOnAThreadOfTheirOwn)
{
    Fill(kMany);
    Show("shown");
    EXPECT_EQ(Names(), ".. ");
    ASSERT_TRUE(fDeletions.event.Await(kMany));
    EXPECT_FALSE(DeletedHere());
}

TEST_F(RowDeletionTest, ManyRowsAreDeletedThoughTheListIsGone)
{
    Fill(kMany);
    fScroller.reset();
    ASSERT_TRUE(fDeletions.event.Await(kMany));
    EXPECT_FALSE(DeletedHere());
}

} // namespace
