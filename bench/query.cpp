// query-rows FOLDER PREDICATE [TEXT]: searches the volume of the folder, as the query window does,
// makes rows of what it finds, as a pane does, and prints how many milliseconds that took and how
// many rows there are.

#include "panes/QuerySource.h"
#include "query/QuerySearch.h"

#include <Application.h>
#include <Looper.h>
#include <Message.h>
#include <OS.h>

#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>
#include <sys/stat.h>

namespace {

using namespace norvane;

/// Waits for the end of the search.
class Listener : public BLooper
{
public:
    void MessageReceived(BMessage*) override
    {
        const std::lock_guard lock(fMutex);
        fHasEnded = true;
        fEnd.notify_all();
    }
    void Wait()
    {
        std::unique_lock lock(fMutex);
        fEnd.wait(lock, [this] { return fHasEnded; });
    }

private:
    std::mutex fMutex;
    std::condition_variable fEnd;
    bool fHasEnded = false;
};

/// Takes the rows, as a list would.
class Taker : public RowTaker
{
public:
    void Counted(int32) override {}
    void Read(int32) override {}
    void Opened(RowSource&, ListedRows rows) override { fRows = std::move(rows); }
    void NotOpened(RowSource&, status_t) override {}
    void ReadAgain(RowSource&) override {}

    size_t Count() const { return fRows.folders.size() + fRows.files.size(); }

private:
    ListedRows fRows;
};

} // namespace

int main(int count, char** arguments)
{
    struct stat st = {};
    if (count < 3 || stat(arguments[1], &st) != 0) {
        std::fprintf(stderr, "query-rows FOLDER PREDICATE [TEXT]\n");
        return 2;
    }
    auto* listener = new Listener; // deletes itself
    listener->Run();
    QuerySearch::Order order{arguments[2], std::nullopt, BMessenger(nullptr, listener), 1,
                             st.st_dev};
    if (count > 3) {
        order.text = arguments[3];
    }
    const bigtime_t begin = system_time();
    QuerySearch search(order);
    listener->Wait();
    const bigtime_t searched = system_time();
    BMessage results(601);
    for (const entry_ref& hit : search.TakeHits()) {
        results.AddRef("ref", &hit);
    }
    results.AddString("QueryString", arguments[2]);
    // It goes to another window.
    BMessage sent(results);
    const bigtime_t told = system_time();
    QuerySource source(sent, "/");
    Taker taker;
    if (source.Open({"%D %R", BMessenger(), BMessenger()}, taker) != B_OK) {
        std::fprintf(stderr, "the hits cannot be read\n");
        return 1;
    }
    const bigtime_t end = system_time();
    std::printf("%.1f %zu\n", static_cast<double>(end - begin) / 1000, taker.Count());
    std::fprintf(stderr, "searched %.1f, told %.1f, rows %.1f\n",
                 static_cast<double>(searched - begin) / 1000,
                 static_cast<double>(told - searched) / 1000,
                 static_cast<double>(end - told) / 1000);
    std::fflush(nullptr);
    std::_Exit(taker.Count() > 0 ? 0 : 3);
}
