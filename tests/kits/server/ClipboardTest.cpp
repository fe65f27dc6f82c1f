#include "ApplicationEnvironment.h"

#include "TempTree.h"

#include <AppDefs.h>
#include <Clipboard.h>
#include <Entry.h>
#include <Looper.h>
#include <Message.h>
#include <Messenger.h>
#include <TypeConstants.h>

#include <testing/Native.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <algorithm>
#include <mutex>
#include <string>
#include <vector>

namespace {

using namespace kits::testing;

void Put(const std::string& text)
{
    be_clipboard->Lock();
    be_clipboard->Clear();
    be_clipboard->Data()->AddData("text/plain", B_MIME_TYPE, text.data(),
                                  static_cast<ssize_t>(text.size()));
    be_clipboard->Data()->AddInt32("more", 7);
    be_clipboard->Commit();
    be_clipboard->Unlock();
}

std::string Get(int32* more = nullptr)
{
    be_clipboard->Lock();
    const void* data = nullptr;
    ssize_t size = 0;
    std::string text = "(none)";
    if (be_clipboard->Data()->FindData("text/plain", B_MIME_TYPE, &data, &size) == B_OK) {
        text.assign(static_cast<const char*>(data), static_cast<size_t>(size));
    }
    if (more != nullptr) {
        *more = be_clipboard->Data()->GetInt32("more", 0);
    }
    be_clipboard->Unlock();
    return text;
}

QString OnDesktop()
{
    QString text;
    OnServer([&] { text = QGuiApplication::clipboard()->text(); });
    return text;
}

TEST(DesktopClipboardTest, OtherProgramsGetWhatIsCommitted)
{
    Put("na\xc3\xafve");

    EXPECT_EQ(OnDesktop().toStdU16String(), u"na\u00efve");
}

TEST(DesktopClipboardTest, OwnDataComesBackWhole)
{
    int32 more = 0;
    Put("a\xff"
        "b");

    EXPECT_EQ(Get(&more), "a\xff"
                          "b");
    EXPECT_EQ(more, 7);
}

TEST(DesktopClipboardTest, WhatAnotherProgramOffersReplacesIt)
{
    Put("ours");
    OnServer([] { QGuiApplication::clipboard()->setText(QStringLiteral("theirs")); });

    int32 more = -1;
    EXPECT_EQ(Get(&more), "theirs");
    EXPECT_EQ(more, 0);
}

TEST(DesktopClipboardTest, WhatAnotherProgramOffersIsCountedAndHasNoSource)
{
    Put("ours");
    const uint32 before = be_clipboard->SystemCount();
    OnServer([] { QGuiApplication::clipboard()->setText(QStringLiteral("theirs")); });

    be_clipboard->Lock();
    EXPECT_FALSE(be_clipboard->DataSource().IsValid());
    be_clipboard->Unlock();
    EXPECT_EQ(be_clipboard->SystemCount(), before + 1);
    Get(); // the same again
    EXPECT_EQ(be_clipboard->SystemCount(), before + 1);
}

TEST(DesktopClipboardTest, DataWithoutTextIsNone)
{
    OnServer([] {
        auto* picture = new QMimeData;
        picture->setData(QStringLiteral("image/png"), "picture");
        QGuiApplication::clipboard()->setMimeData(picture); // adopted
    });

    EXPECT_EQ(Get(), "(none)");
}

// Files

std::string NamesIn(const BMessage& message)
{
    std::string names;
    entry_ref ref;
    for (int32 i = 0; message.FindRef("refs", i, &ref) == B_OK; i++) {
        names += std::string(ref.name) + "\n";
    }
    return names;
}

/// Keeps what it is sent.
class Receiver : public BLooper
{
public:
    Receiver() : BLooper("receiver") {}

    void MessageReceived(BMessage* message) override
    {
        const std::lock_guard lock(fMutex);
        fReceived.push_back(*message);
    }
    int CountOf(uint32 what)
    {
        const std::lock_guard lock(fMutex);
        return static_cast<int>(
            std::count_if(fReceived.begin(), fReceived.end(),
                          [what](const BMessage& message) { return message.what == what; }));
    }
    std::string NamesOf(uint32 what)
    {
        const std::lock_guard lock(fMutex);
        for (const BMessage& message : fReceived) {
            if (message.what == what) {
                return NamesIn(message);
            }
        }
        return "(none)";
    }

private:
    std::mutex fMutex;
    std::vector<BMessage> fReceived;
};

class ClipboardFilesTest : public testing::Test
{
protected:
    void SetUp() override
    {
        fTree.Write("a b", "");
        fTree.Write("c", "");
        fAddresses = {"file://" + fTree.Path("a%20b"), "file://" + fTree.Path("c")};
    }

    void PutFiles(int32 action)
    {
        be_clipboard->Lock();
        be_clipboard->Clear();
        for (const char* name : {"a b", "c"}) {
            entry_ref ref;
            ASSERT_EQ(get_ref_for_path(fTree.Path(name).c_str(), &ref), B_OK);
            be_clipboard->Data()->AddRef("refs", &ref);
        }
        be_clipboard->Data()->AddInt32("be:actions", action);
        be_clipboard->Data()->AddString("From", "here");
        be_clipboard->Commit();
        be_clipboard->Unlock();
    }

    static std::string OnDesktopAs(const char* type)
    {
        std::string bytes;
        OnServer([&] {
            bytes = QGuiApplication::clipboard()
                        ->mimeData()
                        ->data(QString::fromLatin1(type))
                        .toStdString();
        });
        return bytes;
    }

    static void TheyPut(const char* type, const std::string& bytes)
    {
        OnServer([&] {
            auto* data = new QMimeData;
            data->setData(QString::fromLatin1(type), QByteArray::fromStdString(bytes));
            QGuiApplication::clipboard()->setMimeData(data); // adopted
        });
    }

    TempTree fTree;
    std::vector<std::string> fAddresses;
};

BMessage CopyOfData()
{
    be_clipboard->Lock();
    BMessage data = *be_clipboard->Data();
    be_clipboard->Unlock();
    return data;
}

TEST_F(ClipboardFilesTest, OtherProgramsGetThemInEveryWayTheyKnow)
{
    PutFiles(B_COPY_TARGET);

    EXPECT_EQ(OnDesktopAs("text/uri-list"), fAddresses[0] + "\r\n" + fAddresses[1] + "\r\n");
    EXPECT_EQ(OnDesktopAs("x-special/gnome-copied-files"),
              "copy\n" + fAddresses[0] + "\n" + fAddresses[1]);
    EXPECT_EQ(OnDesktopAs("application/x-kde-cutselection"), "0");
    EXPECT_EQ(OnDesktop().toStdString(), fTree.Path("a b") + "\n" + fTree.Path("c"));
}

TEST_F(ClipboardFilesTest, OtherProgramsAreToldWhenTheyWereCut)
{
    PutFiles(B_MOVE_TARGET);

    EXPECT_EQ(OnDesktopAs("x-special/gnome-copied-files"),
              "cut\n" + fAddresses[0] + "\n" + fAddresses[1]);
    EXPECT_EQ(OnDesktopAs("application/x-kde-cutselection"), "1");
}

TEST_F(ClipboardFilesTest, OwnOnesComeBackWhole)
{
    PutFiles(B_MOVE_TARGET);

    const BMessage data = CopyOfData();
    EXPECT_EQ(NamesIn(data), "a b\nc\n");
    EXPECT_EQ(data.GetInt32("be:actions", 0), B_MOVE_TARGET);
    EXPECT_STREQ(data.GetString("From", ""), "here");
}

TEST_F(ClipboardFilesTest, TheirsComeAsRefs)
{
    TheyPut("text/uri-list", fAddresses[0] + "\r\n" + fAddresses[1] + "\r\n");
    BMessage data = CopyOfData();
    EXPECT_EQ(NamesIn(data), "a b\nc\n");
    EXPECT_EQ(data.GetInt32("be:actions", 0), B_COPY_TARGET);

    TheyPut("x-special/gnome-copied-files", "cut\n" + fAddresses[1]);
    data = CopyOfData();
    EXPECT_EQ(NamesIn(data), "c\n");
    EXPECT_EQ(data.GetInt32("be:actions", 0), B_MOVE_TARGET);
}

TEST_F(ClipboardFilesTest, DataIsSentToWhoeverAsks)
{
    auto* looper = new Receiver; // deletes itself
    looper->Run();
    PutFiles(B_COPY_TARGET);
    EXPECT_EQ(be_clipboard->SendData(BMessenger(nullptr, looper), 'ours'), B_OK);
    EXPECT_TRUE(WaitFor([&] { return looper->NamesOf('ours') == "a b\nc\n"; }));

    TheyPut("text/uri-list", fAddresses[1]);
    EXPECT_EQ(be_clipboard->SendData(BMessenger(nullptr, looper), 'them'), B_OK);
    EXPECT_TRUE(WaitFor([&] { return looper->NamesOf('them') == "c\n"; }));

    EXPECT_EQ(be_clipboard->SendData(BMessenger(), 'none'), B_BAD_VALUE);
    looper->Lock();
    looper->Quit();
}

TEST_F(ClipboardFilesTest, WhoWatchesHearsOfBothSides)
{
    auto* looper = new Receiver; // deletes itself
    looper->Run();
    const BMessenger listener(nullptr, looper);
    be_clipboard->StartWatching(listener);
    const uint32 before = be_clipboard->SystemCount();

    PutFiles(B_COPY_TARGET);
    EXPECT_TRUE(WaitFor([&] { return looper->CountOf(B_CLIPBOARD_CHANGED) == 1; }));
    SyncServer();
    TheyPut("text/uri-list", fAddresses[1]);
    EXPECT_TRUE(WaitFor([&] { return looper->CountOf(B_CLIPBOARD_CHANGED) == 2; }));

    EXPECT_EQ(be_clipboard->SystemCount(), before + 2);
    be_clipboard->StopWatching(listener);
    looper->Lock();
    looper->Quit();
}

} // namespace
