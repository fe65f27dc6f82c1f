#include <MessageFilter.h>

#include <List.h>

#include "RecordingLooper.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

constexpr uint32 kWanted = 1;
constexpr uint32 kOther = 2;

using Decision = std::function<filter_result(BMessage*, BHandler**)>;

class TestFilter : public BMessageFilter
{
public:
    TestFilter(uint32 what, Decision decide) : BMessageFilter(what), fDecide(std::move(decide)) {}
    explicit TestFilter(Decision decide)
        : BMessageFilter(B_ANY_DELIVERY, B_ANY_SOURCE), fDecide(std::move(decide))
    {
    }
    ~TestFilter() override
    {
        if (fEnd != nullptr) {
            fEnd->Happen();
        }
    }

    filter_result Filter(BMessage* message, BHandler** target) override
    {
        return fDecide(message, target);
    }

    void TellEndTo(Event& event) { fEnd = &event; }

private:
    Decision fDecide;
    Event* fEnd = nullptr;
};

filter_result Skip(BMessage*, BHandler**)
{
    return B_SKIP_MESSAGE;
}

class MessageFilterTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        fLooper->AddHandler(&fOne);
        fLooper->AddHandler(&fTwo);
        fLooper->Run();
        fLooper->Lock();
    }

    void TearDown() override { EndLooper(fLooper); }

    /// Posts to handler "one" and returns what was noted once all is handled.
    Record::Entries Post(std::initializer_list<uint32> whats)
    {
        for (const uint32 what : whats) {
            fLooper->PostMessage(what, &fOne);
        }
        EndLooper(fLooper);
        return fRecord.All();
    }

    Record fRecord;
    RecordingHandler fOne{"one", fRecord};
    RecordingHandler fTwo{"two", fRecord};
    RecordingLooper* fLooper = new RecordingLooper(fRecord);
};

TEST_F(MessageFilterTest, SwallowsWhatItWants)
{
    fOne.AddFilter(new TestFilter(kWanted, Skip));

    EXPECT_EQ(Post({kWanted, kOther}), (Record::Entries{{"one", kOther}}));
}

TEST_F(MessageFilterTest, OfTheLooperSeesEveryHandlersMessages)
{
    fLooper->AddCommonFilter(new TestFilter(kWanted, Skip));

    EXPECT_EQ(Post({kWanted, kOther}), (Record::Entries{{"one", kOther}}));
}

TEST_F(MessageFilterTest, OfTheLooperIsAskedFirst)
{
    std::string order;
    fOne.AddFilter(new TestFilter([&](BMessage*, BHandler**) {
        order += "handler ";
        return B_DISPATCH_MESSAGE;
    }));
    fLooper->AddCommonFilter(new TestFilter([&](BMessage*, BHandler**) {
        order += "looper ";
        return B_DISPATCH_MESSAGE;
    }));

    Post({kWanted});

    EXPECT_EQ(order, "looper handler ");
}

TEST_F(MessageFilterTest, MayChangeTheMessage)
{
    fOne.AddFilter(new TestFilter(kWanted, [](BMessage* message, BHandler**) {
        message->what = kOther;
        return B_DISPATCH_MESSAGE;
    }));

    EXPECT_EQ(Post({kWanted}), (Record::Entries{{"one", kOther}}));
}

TEST_F(MessageFilterTest, MayRedirectToAnotherHandler)
{
    fOne.AddFilter(new TestFilter(kWanted, [&](BMessage*, BHandler** target) {
        *target = &fTwo;
        return B_DISPATCH_MESSAGE;
    }));

    EXPECT_EQ(Post({kWanted}), (Record::Entries{{"two", kWanted}}));
}

TEST_F(MessageFilterTest, OfTheHandlerRedirectedToIsAskedToo)
{
    fOne.AddFilter(new TestFilter([&](BMessage*, BHandler** target) {
        *target = &fTwo;
        return B_DISPATCH_MESSAGE;
    }));
    fTwo.AddFilter(new TestFilter(kWanted, Skip));

    EXPECT_EQ(Post({kWanted, kOther}), (Record::Entries{{"two", kOther}}));
}

TEST_F(MessageFilterTest, TwoThatRedirectToEachOtherEnd)
{
    const auto sendTo = [](BHandler& handler) {
        return new TestFilter([&](BMessage*, BHandler** target) {
            *target = &handler;
            return B_DISPATCH_MESSAGE;
        });
    };
    fOne.AddFilter(sendTo(fTwo));
    fTwo.AddFilter(sendTo(fOne));

    EXPECT_EQ(Post({kWanted}).size(), 1u);
}

TEST_F(MessageFilterTest, MayNotRedirectToAStranger)
{
    RecordingHandler stranger("stranger", fRecord);
    fOne.AddFilter(new TestFilter([&](BMessage*, BHandler** target) {
        *target = &stranger;
        return B_DISPATCH_MESSAGE;
    }));

    EXPECT_TRUE(Post({kWanted}).empty());
}

TEST_F(MessageFilterTest, ForDroppedMessagesSeesNoPostedOnes)
{
    fOne.AddFilter(
        new BMessageFilter(B_DROPPED_DELIVERY, B_ANY_SOURCE,
                           [](BMessage*, BHandler**, BMessageFilter*) { return B_SKIP_MESSAGE; }));

    EXPECT_EQ(Post({kWanted}).size(), 1u);
}

TEST_F(MessageFilterTest, FunctionMayStandInForAClass)
{
    fOne.AddFilter(new BMessageFilter(kWanted, [](BMessage*, BHandler**, BMessageFilter* filter) {
        return filter->Command() == kWanted ? B_SKIP_MESSAGE : B_DISPATCH_MESSAGE;
    }));

    EXPECT_EQ(Post({kWanted, kOther}), (Record::Entries{{"one", kOther}}));
}

TEST_F(MessageFilterTest, RemovedOneBelongsToTheCaller)
{
    Event end;
    auto filter = std::make_unique<TestFilter>(kWanted, Skip);
    filter->TellEndTo(end);
    fOne.AddFilter(filter.get());
    EXPECT_EQ(filter->Looper(), fLooper);

    EXPECT_TRUE(fOne.RemoveFilter(filter.get()));
    EXPECT_FALSE(fOne.RemoveFilter(filter.get()));

    EXPECT_EQ(end.Count(), 0);
    EXPECT_EQ(filter->Looper(), nullptr);
    EXPECT_EQ(Post({kWanted}).size(), 1u);
}

TEST_F(MessageFilterTest, NewListReplacesAndDeletesTheFormerOne)
{
    Event end;
    auto* former = new TestFilter(kWanted, Skip);
    former->TellEndTo(end);
    fOne.AddFilter(former);
    auto* list = new BList;
    list->AddItem(new TestFilter(kOther, Skip));

    fOne.SetFilterList(list);

    EXPECT_EQ(end.Count(), 1);
    EXPECT_EQ(fOne.FilterList(), list);
    EXPECT_EQ(Post({kWanted, kOther}), (Record::Entries{{"one", kWanted}}));
}

TEST_F(MessageFilterTest, MayRemoveAnother)
{
    auto* filter = new TestFilter(kWanted, Skip);
    int asked = 0;
    fOne.AddFilter(new TestFilter([&](BMessage*, BHandler**) {
        ++asked;
        if (fOne.RemoveFilter(filter)) {
            delete filter;
        }
        return B_DISPATCH_MESSAGE;
    }));
    fOne.AddFilter(filter);

    EXPECT_EQ(Post({kWanted, kWanted}).size(), 2u);
    EXPECT_EQ(asked, 2);
}

TEST_F(MessageFilterTest, LooperLendsItsCommonFilters)
{
    EXPECT_EQ(fLooper->CommonFilterList(), nullptr);
    auto* filter = new TestFilter(kWanted, Skip);

    fLooper->AddCommonFilter(filter);

    ASSERT_NE(fLooper->CommonFilterList(), nullptr);
    EXPECT_EQ(fLooper->CommonFilterList()->FirstItem(), filter);
    EXPECT_TRUE(fLooper->RemoveCommonFilter(filter));
    delete filter;
}

} // namespace
