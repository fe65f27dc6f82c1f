#include "IconDrawings.h"

#include <QPainter>
#include <QPolygonF>

#include <initializer_list>

namespace kits {

namespace {

// Shapes are given in units of a 32nd of the icon. Even numbers fall on whole pixels at every size
// in use, so edges stay crisp in the 16-pixel icons too.
constexpr qreal kUnits = 32;

constexpr QColor kOutline(88, 92, 102);
constexpr QColor kPaper(255, 255, 255);
constexpr QColor kPaperShade(214, 218, 226);
constexpr QColor kInk(120, 126, 138);
constexpr QColor kBlue(64, 120, 208);
constexpr QColor kDarkBlue(36, 72, 140);
constexpr QColor kSky(156, 204, 250);
constexpr QColor kGreen(80, 160, 64);
constexpr QColor kYellow(255, 214, 64);
constexpr QColor kRed(200, 60, 48);
constexpr QColor kDarkRed(132, 34, 28);
constexpr QColor kFolderEdge(150, 104, 24);
constexpr QColor kFolderBack(232, 176, 64);
constexpr QColor kFolderFront(252, 212, 112);
constexpr QColor kFolderLight(255, 238, 182);
constexpr QColor kMetal(176, 182, 192);
constexpr QColor kMetalLight(226, 230, 236);
constexpr QColor kBox(190, 138, 84);
constexpr QColor kBoxLight(222, 178, 124);
constexpr QColor kBoxEdge(112, 74, 36);
constexpr QColor kDark(48, 52, 62);

class Drawing
{
public:
    explicit Drawing(QPainter* painter) : fPainter(painter) {}

    void Box(qreal left, qreal top, qreal width, qreal height, const QColor& color)
    {
        fPainter->fillRect(QRectF(left, top, width, height), color);
    }

    void Shape(std::initializer_list<QPointF> corners, const QColor& color)
    {
        fPainter->setBrush(color);
        fPainter->drawPolygon(QPolygonF(QList<QPointF>(corners)));
    }

    void Disc(qreal left, qreal top, qreal width, qreal height, const QColor& color)
    {
        fPainter->setBrush(color);
        fPainter->drawEllipse(QRectF(left, top, width, height));
    }

    /// A sheet of paper with its upper right corner folded; what a document shows goes on it.
    void Page()
    {
        Shape({{4, 2}, {20, 2}, {28, 10}, {28, 30}, {4, 30}}, kOutline);
        Shape({{6, 4}, {19, 4}, {26, 11}, {26, 28}, {6, 28}}, kPaper);
        Shape({{18, 2}, {20, 2}, {28, 10}, {28, 12}, {18, 12}}, kOutline);
        Shape({{20, 5}, {25, 10}, {20, 10}}, kPaperShade);
    }

private:
    QPainter* fPainter;
};

void DrawFolder(Drawing& icon)
{
    icon.Shape({{2, 6}, {4, 4}, {12, 4}, {14, 8}, {30, 8}, {30, 28}, {2, 28}}, kFolderEdge);
    icon.Shape({{4, 7}, {5, 6}, {11, 6}, {13, 10}, {28, 10}, {28, 26}, {4, 26}}, kFolderBack);
    icon.Box(4, 12, 24, 14, kFolderFront);
    icon.Box(4, 12, 24, 2, kFolderLight);
}

void DrawHome(Drawing& icon)
{
    icon.Box(6, 14, 20, 16, kOutline);
    icon.Box(8, 14, 16, 14, kPaper);
    icon.Shape({{16, 2}, {31, 17}, {27, 19}, {16, 8}, {5, 19}, {1, 17}}, kDarkRed);
    icon.Shape({{16, 4}, {28, 16}, {26, 17}, {16, 7}, {6, 17}, {4, 16}}, kRed);
    icon.Box(22, 4, 4, 6, kDarkRed);
    icon.Box(14, 18, 6, 10, kBoxEdge);
    icon.Box(16, 20, 2, 8, kBox);
    icon.Box(10, 18, 2, 4, kBlue);
    icon.Box(22, 18, 2, 4, kBlue);
}

void DrawTrash(Drawing& icon)
{
    icon.Box(12, 2, 8, 4, kOutline);
    icon.Box(14, 4, 4, 2, kMetalLight);
    icon.Box(4, 6, 24, 4, kOutline);
    icon.Box(6, 6, 20, 2, kMetalLight);
    icon.Shape({{6, 10}, {26, 10}, {24, 30}, {8, 30}}, kOutline);
    icon.Shape({{8, 12}, {24, 12}, {22, 28}, {10, 28}}, kMetal);
    for (const qreal left : {10.0, 14.0, 18.0}) {
        icon.Box(left, 12, 2, 16, kMetalLight);
    }
}

void DrawText(Drawing& icon)
{
    icon.Page();
    icon.Box(8, 8, 8, 2, kInk);
    for (const qreal top : {14.0, 18.0, 22.0}) {
        icon.Box(8, top, 16, 2, kInk);
    }
    icon.Box(8, 26, 10, 1, kInk);
}

void DrawImage(Drawing& icon)
{
    icon.Page();
    icon.Box(8, 14, 16, 12, kDarkBlue);
    icon.Box(9, 15, 14, 10, kSky);
    icon.Disc(18, 15, 4, 4, kYellow);
    icon.Shape({{9, 25}, {9, 22}, {13, 18}, {18, 22}, {20, 20}, {23, 23}, {23, 25}}, kGreen);
}

void DrawSound(Drawing& icon)
{
    icon.Page();
    icon.Disc(8, 22, 6, 4, kDarkBlue);
    icon.Disc(18, 20, 6, 4, kDarkBlue);
    icon.Box(12, 14, 2, 10, kDarkBlue);
    icon.Box(22, 12, 2, 10, kDarkBlue);
    icon.Shape({{12, 14}, {24, 12}, {24, 15}, {12, 17}}, kDarkBlue);
}

void DrawVideo(Drawing& icon)
{
    icon.Page();
    icon.Box(8, 14, 16, 12, kDark);
    for (const qreal left : {9.0, 13.0, 17.0, 21.0}) {
        icon.Box(left, 15, 2, 1, kPaper);
        icon.Box(left, 24, 2, 1, kPaper);
    }
    icon.Shape({{14, 17}, {20, 20}, {14, 23}}, kPaper);
}

void DrawArchive(Drawing& icon)
{
    icon.Shape({{6, 4}, {26, 4}, {30, 10}, {30, 28}, {2, 28}, {2, 10}}, kBoxEdge);
    icon.Shape({{7, 6}, {25, 6}, {28, 10}, {4, 10}}, kBoxLight);
    icon.Box(4, 12, 24, 14, kBox);
    icon.Shape({{14, 6}, {18, 6}, {19, 10}, {13, 10}}, kPaper);
    icon.Box(12, 12, 8, 6, kPaper);
    icon.Box(8, 22, 6, 2, kBoxEdge);
}

void DrawProgram(Drawing& icon)
{
    icon.Box(2, 4, 28, 24, kOutline);
    icon.Box(4, 6, 24, 4, kBlue);
    icon.Box(6, 7, 2, 2, kPaper);
    icon.Box(4, 12, 24, 14, kPaper);
    icon.Shape({{6, 14}, {8, 14}, {13, 18}, {8, 22}, {6, 22}, {10, 18}}, kDark);
    icon.Box(14, 22, 8, 2, kDark);
}

void DrawLink(Drawing& icon)
{
    icon.Page();
    icon.Shape({{14, 14}, {24, 14}, {24, 24}, {20, 20}, {11, 26}, {9, 23}, {18, 18}}, kDarkBlue);
}

void DrawDisk(Drawing& icon)
{
    icon.Shape({{6, 8}, {26, 8}, {30, 18}, {30, 26}, {2, 26}, {2, 18}}, kOutline);
    icon.Shape({{7, 10}, {25, 10}, {28, 17}, {4, 17}}, kMetalLight);
    icon.Box(4, 18, 24, 6, kMetal);
    icon.Box(6, 20, 12, 2, kOutline);
    icon.Box(24, 20, 2, 2, kGreen);
}

void DrawKind(Drawing& icon, IconKind kind)
{
    switch (kind) {
    case IconKind::kGeneric:
        icon.Page();
        break;
    case IconKind::kFolder:
        DrawFolder(icon);
        break;
    case IconKind::kHome:
        DrawHome(icon);
        break;
    case IconKind::kTrash:
        DrawTrash(icon);
        break;
    case IconKind::kText:
        DrawText(icon);
        break;
    case IconKind::kImage:
        DrawImage(icon);
        break;
    case IconKind::kSound:
        DrawSound(icon);
        break;
    case IconKind::kVideo:
        DrawVideo(icon);
        break;
    case IconKind::kArchive:
        DrawArchive(icon);
        break;
    case IconKind::kProgram:
        DrawProgram(icon);
        break;
    case IconKind::kLink:
        DrawLink(icon);
        break;
    case IconKind::kDisk:
        DrawDisk(icon);
        break;
    }
}

} // namespace

QImage DrawIcon(IconKind kind, int32 size)
{
    QImage picture(size, size, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.scale(size / kUnits, size / kUnits);
    Drawing drawing(&painter);
    DrawKind(drawing, kind);
    return picture;
}

} // namespace kits
