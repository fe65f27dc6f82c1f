#include "ApplicationEnvironment.h"

#include <Clipboard.h>
#include <Message.h>
#include <TypeConstants.h>

#include <testing/Native.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <string>

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

} // namespace
