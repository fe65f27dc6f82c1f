#include "panes/PixelBitmap.h"
#include "panes/RowIcons.h"

// The pictures of entries that are neither files nor folders.

namespace norvane {

namespace {

// A pipe between two flanges.
constexpr const char* kPipe[] = {
    "................", //
    "................", //
    "................", //
    "kkk..........kkk", //
    "kck..........kck", //
    "kckkkkkkkkkkkkck", //
    "kcwwwwwwwwwwwwck", //
    "kccccccccccccccb", //
    "kbccccccccccccbk", //
    "kbbbbbbbbbbbbbbk", //
    "kbkkkkkkkkkkkkbk", //
    "kbkssssssssssskb", //
    "kkk..........kkk", //
    ".ss..........sss", //
    "................", //
    "................", //
};

// An outlet.
constexpr const char* kSocket[] = {
    "................", //
    ".kkkkkkkkkkkkk..", //
    "kwwwwwwwwwwwwwk.", //
    "kwwwwkkkkkwwwwks", //
    "kwwkkgggggkkwwks", //
    "kwwkgggggggkwwks", //
    "kwkgggggggggkwks", //
    "kwkgkkgggkkgkwks", //
    "kwkgkkgggkkgkwks", //
    "kwkgggggggggkwks", //
    "kwwkgggggggkwwks", //
    "kwwkkgggggkkwwks", //
    "kwwwwkkkkkwwwwks", //
    "kwwwwwwwwwwwwwks", //
    ".kkkkkkkkkkkkkss", //
    "..ssssssssssss..", //
};

// A drive.
constexpr const char* kDrive[] = {
    "................", //
    "................", //
    "................", //
    "..kkkkkkkkkkkk..", //
    ".kwwwwwwwwwwwwk.", //
    "kwwwwwwwwwwwwwwk", //
    "kkkkkkkkkkkkkkkk", //
    "kggggggggggggggk", //
    "kgkkkkkkkkkgggsk", //
    "kggggggggggggbsk", //
    "kgggggggggggggsk", //
    "kssssssssssssssk", //
    "kkkkkkkkkkkkkkkk", //
    ".ssssssssssssss.", //
    "................", //
    "................", //
};

// A screen that waits for what is typed.
constexpr const char* kTerminal[] = {
    "................", //
    ".kkkkkkkkkkkkkk.", //
    "kggggggggggggggk", //
    "kgkkkkkkkkkkkkgk", //
    "kgkbbbbbbbbbbkgk", //
    "kgkbwbbbbbbbbkgk", //
    "kgkbbwbbbbbbbkgk", //
    "kgkbwbbwwwbbbkgk", //
    "kgkbbbbbbbbbbkgk", //
    "kgkkkkkkkkkkkkgk", //
    "kggggggggggggggk", //
    ".kkkkkkkkkkkkkk.", //
    "....kggggggk....", //
    "..kkkkkkkkkkkk..", //
    "...ssssssssssss.", //
    "................", //
};

const BBitmap* PipeIcon()
{
    static const BBitmap* const icon = MakePixelBitmap(kPipe);
    return icon;
}

const BBitmap* SocketIcon()
{
    static const BBitmap* const icon = MakePixelBitmap(kSocket);
    return icon;
}

const BBitmap* DriveIcon()
{
    static const BBitmap* const icon = MakePixelBitmap(kDrive);
    return icon;
}

const BBitmap* TerminalIcon()
{
    static const BBitmap* const icon = MakePixelBitmap(kTerminal);
    return icon;
}

} // namespace

const BBitmap* NodeIcon(mode_t mode)
{
    if (S_ISFIFO(mode)) {
        return PipeIcon();
    }
    if (S_ISSOCK(mode)) {
        return SocketIcon();
    }
    if (S_ISBLK(mode)) {
        return DriveIcon();
    }
    return S_ISCHR(mode) ? TerminalIcon() : nullptr;
}

} // namespace norvane
