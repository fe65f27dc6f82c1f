#include "ListOfRows.h"

#include "clv/CLVContainerView.h"
#include "clv/ColumnListView.h"
#include "panes/DatePattern.h"
#include "panes/FolderReader.h"
#include "panes/FolderSource.h"

#include <Font.h>
#include <Looper.h>
#include <NodeMonitor.h>
#include <OS.h>

#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <mutex>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

using namespace norvane;

namespace {

constexpr const char* kDates = "%Y-%m-%d %H:%M:%S";
constexpr bigtime_t kPatience = 10'000'000;

std::string LineOf(const std::string& folder, const DirListItem& row)
{
    struct stat st = {};
    lstat((folder + "/" + row.GetEntryName()).c_str(), &st);
    if (st.st_nlink > 1 && !S_ISDIR(st.st_mode)) {
        return row.GetEntryName();
    }
    return std::string(row.GetEntryName()) + (row.IsDir() ? " (folder) " : " ") + row.Text(2) +
           " " + row.Text(3) + " " + row.Text(4);
}

} // namespace

/// Keeps notices until they are asked for.
class NoticeLooper : public BLooper
{
public:
    NoticeLooper() : BLooper("notices") {}

    void MessageReceived(BMessage* message) override
    {
        if (message->what == B_NODE_MONITOR) {
            const std::lock_guard lock(fMutex);
            fNotices.push_back(*message);
        } else {
            BLooper::MessageReceived(message);
        }
    }

    std::vector<BMessage> Take()
    {
        const std::lock_guard lock(fMutex);
        return std::exchange(fNotices, {});
    }

private:
    std::mutex fMutex;
    std::vector<BMessage> fNotices; // guarded by fMutex
};

ListOfRows::ListOfRows(const std::string& folder) : fFolder(folder), fLooper(new NoticeLooper)
{
    CLVContainerView* container = nullptr;
    fList = new ColumnListView(BRect(0, 0, 299, 299), &container, "list", 0, 0,
                               B_SINGLE_SELECTION_LIST, false, true, true, B_NO_BORDER,
                               be_plain_font); // the container's
    fContainer.reset(container);
    fRows = std::make_unique<PaneRows>(*fList, static_cast<RowsListener&>(*this));
    fRows->SetDateFormat(kDates);
    fUpdates = std::make_unique<LiveUpdates>(*fRows);
    fLooper->Run();
    fWatcher = BMessenger(nullptr, fLooper);
    fSource = std::make_unique<FolderSource>(folder);
    if (fSource->Open({kDates, fWatcher}, *this) != B_OK) {
        std::fprintf(stderr, "rows-run: %s cannot be opened\n", folder.c_str());
    }
}

ListOfRows::~ListOfRows()
{
    fUpdates.reset();
    fRows->Clear();
    fWatcher.SendMessage(B_QUIT_REQUESTED);
}

void ListOfRows::Opened(RowSource& source, ListedRows rows)
{
    fRows->Fill(std::move(rows));
    fUpdates->Follow(source.Folder());
}

void ListOfRows::RowsLeave(const std::vector<DirListItem*>& rows)
{
    fMarks.Forget(rows);
}

void ListOfRows::Handle()
{
    for (const BMessage& notice : fLooper->Take()) {
        fUpdates->NodeChanged(notice);
    }
}

bool ListOfRows::HandleAll()
{
    const std::string name = "end-" + std::to_string(++fEnds);
    const std::string path = fFolder + "/" + name;
    close(open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
    const bigtime_t end = system_time() + kPatience;
    bool isListed = false;
    while (!isListed && system_time() < end) {
        Handle();
        isListed = fRows->FindRow(name.c_str()) != nullptr;
        if (!isListed) {
            snooze(200);
        }
    }
    unlink(path.c_str());
    while (isListed && system_time() < end) {
        Handle();
        if (fRows->FindRow(name.c_str()) == nullptr) {
            return true;
        }
        snooze(200);
    }
    return false;
}

void ListOfRows::Mark(int index)
{
    fMarks.Toggle(RowAt(index));
}

void ListOfRows::Select(int index)
{
    fList->Select(index + 1);
}

std::vector<std::string> ListOfRows::Names() const
{
    std::vector<std::string> names;
    for (int i = 0; i + 1 < CountRows(); i++) {
        names.emplace_back(RowAt(i)->GetEntryName());
    }
    return names;
}

std::vector<std::string> ListOfRows::Lines() const
{
    std::vector<std::string> lines;
    for (int i = 0; i + 1 < CountRows(); i++) {
        lines.push_back(LineOf(fFolder, *RowAt(i)));
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

std::vector<std::string> ListOfRows::MarkedNames() const
{
    std::vector<std::string> names;
    for (const DirListItem* row : fMarks.Rows()) {
        names.push_back(std::string(row->GetEntryName()) + (row->IsMarked() ? "" : " (unmarked)"));
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string ListOfRows::SelectedName() const
{
    const DirListItem* row = fRows->RowAt(fList->CurrentSelection());
    return row != nullptr ? row->GetEntryName() : "(none)";
}

std::vector<std::string> FreshLines(const std::string& folder, const std::string& text)
{
    FolderReader reader;
    std::vector<std::unique_ptr<DirListItem>> folders;
    std::vector<std::unique_ptr<DirListItem>> files;
    if (reader.Open(folder) != B_OK || reader.ReadNames() != B_OK) {
        return {"unreadable"};
    }
    while (reader.ReadMore()) {
    }
    LinkTargets links{BMessenger()};
    reader.TakeRows(DatePattern::For(kDates), links, folders, files);
    std::vector<std::string> lines;
    for (const auto* group : {&folders, &files}) {
        for (const auto& row : *group) {
            const std::string name = row->GetEntryName();
            if (!row->IsParent() && name.find(text) != std::string::npos) {
                lines.push_back(LineOf(folder, *row));
            }
        }
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}
