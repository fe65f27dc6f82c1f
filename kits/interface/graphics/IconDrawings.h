#pragma once

#include <SupportDefs.h>

#include <QImage>

namespace kits {

/// The pictures of the program's own icon set.
enum class IconKind : uint8 {
    kGeneric,
    kFolder,
    kHome,
    kTrash,
    kText,
    kImage,
    kSound,
    kVideo,
    kArchive,
    kProgram,
    kLink,
    kDisk,
};

constexpr int32 kIconKinds = 12;

/// Draws an icon, `size` pixels square, on a transparent ground. Thread: any.
QImage DrawIcon(IconKind kind, int32 size);

} // namespace kits
