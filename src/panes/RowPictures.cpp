#include "panes/RowIcons.h"

#include "clv/PixelPicture.h"

#include <Bitmap.h>

// The program's own row pictures.

namespace norvane {

namespace {

constexpr const char* kUpArrow[] = {
    "................", //
    ".......k........", //
    "......kbk.......", //
    ".....kcbbk......", //
    "....kccbbbk.....", //
    "...kccbbbbbk....", //
    "..kccbbbbbbbk...", //
    ".kkkkkcbbkkkkk..", //
    ".....kcbbks.....", //
    ".....kcbbks.....", //
    ".....kcbbks.....", //
    ".....kcbbkkkkk..", //
    ".....kcbbbbbbks.", //
    ".....kccccccbks.", //
    ".....kkkkkkkkks.", //
    "......sssssssss.", //
};

constexpr const char* kFolder[] = {
    "................", //
    "................", //
    ".ddddd..........", //
    "dlllllld........", //
    "dlyyyyyoddddddd.", //
    "dyyyyyyyyyyyyyd.", //
    "dllllllllllllld.", //
    "dlyyyyyyyyyyyod.", //
    "dlyyyyyyyyyyyods", //
    "dlyyyyyyyyyyyods", //
    "dlyyyyyyyyyyyods", //
    "dlyyyyyyyyyyyods", //
    "dooooooooooooods", //
    "ddddddddddddddds", //
    "..ssssssssssssss", //
    "................", //
};

constexpr const char* kFile[] = {
    "..kkkkkkkk......", //
    "..kwwwwwwkk.....", //
    "..kwwwwwwkgk....", //
    "..kwwwwwwkggk...", //
    "..kwwwwwwkkkkk..", //
    "..kwwwwwwwwwwks.", //
    "..kwccccccccwks.", //
    "..kwwwwwwwwwwks.", //
    "..kwcccccccwwks.", //
    "..kwwwwwwwwwwks.", //
    "..kwccccccccwks.", //
    "..kwwwwwwwwwwks.", //
    "..kwccccwwwwwks.", //
    "..kwwwwwwwwwwks.", //
    "..kkkkkkkkkkkks.", //
    "...ssssssssssss.", //
};

constexpr const char* kManyFiles[] = {
    "....kkkkkkkk....", //
    "....kwwwwwwkk...", //
    "....kwwwwwwkgk..", //
    ".kkkkkkkwwwkkkk.", //
    ".kwwwwwkkwwwwwks", //
    ".kwwwwwkgkwwwwks", //
    ".kwwwwwkkkkcwwks", //
    ".kwwwwwwwwkwwwks", //
    ".kwccccccwkcwwks", //
    ".kwwwwwwwwkwwwks", //
    ".kwcccccwwkcwwks", //
    ".kwwwwwwwwkwwwks", //
    ".kwccccccwkkkkks", //
    ".kwwwwwwwwksssss", //
    ".kkkkkkkkkks....", //
    "..ssssssssss....", //
};

BBitmap* Make(std::span<const char* const> rows)
{
    const PixelPicture picture(rows);
    auto* bitmap = new BBitmap(BRect(0, 0, 15, 15), B_CMAP8); // kept for the program's life
    const std::vector<uint8> bits = picture.PaddedBits();
    bitmap->SetBits(bits.data(), static_cast<int32>(bits.size()), 0, B_CMAP8);
    const std::vector<uint8> large = picture.DoubleBits();
    bitmap->SetDoubleBits(large.data(), static_cast<int32>(large.size()), B_CMAP8);
    return bitmap;
}

} // namespace

const BBitmap* UpArrowIcon()
{
    static const BBitmap* const icon = Make(kUpArrow);
    return icon;
}

const BBitmap* RemoteFolderIcon()
{
    static const BBitmap* const icon = Make(kFolder);
    return icon;
}

const BBitmap* RemoteFileIcon()
{
    static const BBitmap* const icon = Make(kFile);
    return icon;
}

const BBitmap* ManyFilesIcon()
{
    static const BBitmap* const icon = Make(kManyFiles);
    return icon;
}

} // namespace norvane
