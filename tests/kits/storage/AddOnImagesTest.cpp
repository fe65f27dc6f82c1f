#include <Errors.h>
#include <image.h>

#include "TempTree.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;

/// Libraries that are loaded into the program.
class AddOnImagesTest : public ::testing::Test
{
protected:
    image_id LoadText(const std::string& text)
    {
        fTree.Write("library", text);
        return load_add_on(fTree.Path("library").c_str());
    }

    std::string Copy()
    {
        std::ifstream in(ADD_ON_OTHER_SYMBOLS, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }

    TempTree fTree;
};

TEST_F(AddOnImagesTest, FindsWhatALibraryExportsByItsKind)
{
    const image_id image = load_add_on(ADD_ON_OTHER_SYMBOLS);
    ASSERT_GT(image, 0);
    void* found = nullptr;
    EXPECT_EQ(get_image_symbol(image, "do_nothing", B_SYMBOL_TYPE_TEXT, &found), B_OK);
    ASSERT_NE(found, nullptr);
    reinterpret_cast<void (*)()>(found)();
    EXPECT_EQ(get_image_symbol(image, "process_refs", B_SYMBOL_TYPE_DATA, &found), B_OK);
    EXPECT_EQ(*static_cast<int*>(found), 1);
    EXPECT_EQ(get_image_symbol(image, "do_nothing", B_SYMBOL_TYPE_ANY, &found), B_OK);
    EXPECT_EQ(get_image_symbol(image, "process_refs", B_SYMBOL_TYPE_ANY, &found), B_OK);
    EXPECT_EQ(unload_add_on(image), B_OK);
}

TEST_F(AddOnImagesTest, DataIsNoCodeAndCodeNoData)
{
    const image_id image = load_add_on(ADD_ON_OTHER_SYMBOLS);
    int mark = 0;
    void* found = &mark;
    EXPECT_EQ(get_image_symbol(image, "process_refs", B_SYMBOL_TYPE_TEXT, &found),
              B_MISSING_SYMBOL);
    EXPECT_EQ(get_image_symbol(image, "do_nothing", B_SYMBOL_TYPE_DATA, &found), B_MISSING_SYMBOL);
    EXPECT_EQ(get_image_symbol(image, "missing", B_SYMBOL_TYPE_ANY, &found), B_MISSING_SYMBOL);
    EXPECT_EQ(found, &mark);
    EXPECT_EQ(unload_add_on(image), B_OK);
}

TEST_F(AddOnImagesTest, WhatTheLibraryIsLinkedToDoesNotCount)
{
    const image_id image = load_add_on(ADD_ON_OTHER_SYMBOLS);
    void* found = nullptr;
    EXPECT_EQ(get_image_symbol(image, "malloc", B_SYMBOL_TYPE_TEXT, &found), B_MISSING_SYMBOL);
    EXPECT_EQ(unload_add_on(image), B_OK);
}

TEST_F(AddOnImagesTest, LoadedTwiceItIsOneAndGoesWithTheSecondUnloading)
{
    const image_id image = load_add_on(ADD_ON_OTHER_SYMBOLS);
    EXPECT_EQ(load_add_on(ADD_ON_OTHER_SYMBOLS), image);
    void* found = nullptr;
    EXPECT_EQ(unload_add_on(image), B_OK);
    EXPECT_EQ(get_image_symbol(image, "do_nothing", B_SYMBOL_TYPE_TEXT, &found), B_OK);
    EXPECT_EQ(unload_add_on(image), B_OK);
    EXPECT_EQ(get_image_symbol(image, "do_nothing", B_SYMBOL_TYPE_TEXT, &found), B_BAD_IMAGE_ID);
    EXPECT_EQ(unload_add_on(image), B_BAD_IMAGE_ID);
}

TEST_F(AddOnImagesTest, WhatIsNoLibraryIsRefused)
{
    EXPECT_EQ(load_add_on(nullptr), B_BAD_VALUE);
    EXPECT_EQ(load_add_on(fTree.Path("missing").c_str()), B_ENTRY_NOT_FOUND);
    EXPECT_EQ(load_add_on(fTree.Path().c_str()), B_NOT_AN_EXECUTABLE);
    EXPECT_EQ(LoadText(""), B_NOT_AN_EXECUTABLE);
    EXPECT_EQ(LoadText("a text"), B_NOT_AN_EXECUTABLE);
    ASSERT_EQ(::mkfifo(fTree.Path("fifo").c_str(), 0700), 0);
    EXPECT_EQ(load_add_on(fTree.Path("fifo").c_str()), B_NOT_AN_EXECUTABLE); // nor waits for it
}

/// Mapping such a file and reading behind its end would end the program.
TEST_F(AddOnImagesTest, ALibraryThatWasCutShortIsRefused)
{
    const std::string whole = Copy();
    for (size_t part = 0; part < 64; part++) {
        const size_t length = whole.size() * part / 64;
        const image_id image = LoadText(whole.substr(0, length));
        if (image > 0) {
            // Only what is not loaded may be missing: names and lines for debuggers.
            EXPECT_GT(part, 16u);
            EXPECT_EQ(unload_add_on(image), B_OK);
        } else {
            EXPECT_TRUE(image == B_NOT_AN_EXECUTABLE || image == B_MISSING_LIBRARY) << part;
        }
        fTree.Remove("library"); // it may be mapped still
    }
}

TEST_F(AddOnImagesTest, ALibraryForAnotherMachineIsRefused)
{
    std::string other = Copy();
    other[18] = static_cast<char>(other[18] ^ 0x55); // the machine
    EXPECT_LT(LoadText(other), 0);
    fTree.Remove("library");
    other = Copy();
    other[4] = other[4] == 2 ? 1 : 2; // the width of its addresses
    EXPECT_EQ(LoadText(other), B_NOT_AN_EXECUTABLE);
}

TEST_F(AddOnImagesTest, ALibraryThatNeedsAnotherIsToldFromOneThatIsNone)
{
    // It names the C library, whose name is changed to one that nobody has.
    std::string other = Copy();
    const size_t name = other.find("libc.so.6");
    ASSERT_NE(name, std::string::npos);
    other.replace(name, 9, "libc.no.6");
    EXPECT_EQ(LoadText(other), B_MISSING_LIBRARY);
}

} // namespace
