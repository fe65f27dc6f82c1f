#include "storage/MimeDatabase.h"

#include <QMimeDatabase>
#include <QMimeType>
#include <QString>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::string TypeInDatabase(const std::string& name)
{
    return QMimeDatabase()
        .mimeTypeForFile(QString::fromUtf8(name.c_str()), QMimeDatabase::MatchExtension)
        .name()
        .toStdString();
}

} // namespace

// Names for which rules of every kind speak, and those that only look like them.
TEST(MimeNamesTest, WhatIsRememberedIsWhatTheDatabaseSays)
{
    const std::vector<std::string> names = {
        "a.c",
        "b.c",
        "a.C",
        "a.txt",
        "b.TXT",
        "a.tar.gz",
        "b.tar.gz",
        "c.gz",
        "a.2024.txt",
        "a.tar",
        "a.unknown",
        "b.unknown",
        "unknown",
        "other",
        "",
        ".",
        "..",
        ".bashrc",
        ".c",
        "a.",
        "b.",
        "readme",
        "README",
        "README.txt",
        "readmore",
        "x.readme",
        "Makefile",
        "makefile.in",
        "xmakefile",
        "core",
        "Core",
        "core.c",
        "lib.so",
        "lib.so.1",
        "lib.so.1.2.3",
        "lib.so.x",
        "a.1",
        "b.1",
        "a.10",
        "a.x1",
        "page.anim3",
        "page.anim",
        "file~",
        "a.c~",
        "b.c~",
        "a,v",
        "a.c,v",
        "a.c%",
        "001.vdr",
        "0001.vdr",
        "x.vdr",
        "CMakeLists.txt",
        "xCMakeLists.txt",
        "meson.build",
        "a.build",
        "\xc3\xa4.c",
        "\xff.c",
        "a.\xff",
        "a.jpg.c",
        "settings.xml",
        "a.settings.xml",
        "gmon.out",
        "a.out",
        "a b.c",
        "a\nb.c",
        "[a].c",
        "a[1].txt",
        "*.c",
        "?",
        "INSTALL",
        "a.INSTALL",
    };
    for (int round = 0; round < 2; ++round) {
        for (const std::string& name : names) {
            EXPECT_EQ(kits::MimeTypeOfName(name.c_str()), TypeInDatabase(name)) << name;
        }
    }
}

TEST(MimeNamesTest, MoreEndingsThanAreKept)
{
    for (int i = 0; i < 3000; ++i) {
        const std::string name = "a." + std::to_string(i) + (i % 2 == 0 ? ".c" : ".txt");
        ASSERT_EQ(kits::MimeTypeOfName(name.c_str()), TypeInDatabase(name)) << name;
    }
}
