#include "PictureShrinking.h"

#include <SupportDefs.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace kits {

namespace {

constexpr int kMostSamples = 6; // to a side, of what one pixel stands for
constexpr double kWhole = 256;  // the weight of a pixel that belongs to it altogether

struct Sample
{
    int place;
    uint32 weight;
};

/// What one pixel stands for along one side.
struct Span
{
    std::array<Sample, kMostSamples + 2> samples;
    int count = 0;
    uint32 weight = 0; // of all
};

class Axis
{
public:
    /// `length` pixels of the picture, of which there are `room`, from `start` on become `size`;
    /// those from `first` on are wanted, `count` of them.
    Axis(double start, double length, int size, int room, int first, int count)
    {
        const double ratio = length / size;
        fSpans.reserve(static_cast<size_t>(count));
        for (int i = first; i < first + count; ++i) {
            const double from = start + i * ratio;
            fSpans.push_back(ratio > kMostSamples ? Spread(from, ratio, room)
                                                  : Cover(from, from + ratio, room));
        }
    }

    const std::vector<Span>& Spans() const { return fSpans; }

private:
    static void Add(Span& span, int place, int room, double share)
    {
        const uint32 weight = static_cast<uint32>(std::lround(share * kWhole));
        if (weight > 0 && span.count < static_cast<int>(span.samples.size())) {
            span.samples[static_cast<size_t>(span.count++)] = {std::clamp(place, 0, room - 1),
                                                               weight};
            span.weight += weight;
        }
    }

    static Span Cover(double from, double to, int room)
    {
        Span span;
        for (int place = static_cast<int>(std::floor(from)); place < to; ++place) {
            Add(span, place, room, std::min(to, place + 1.0) - std::max(from, double{1} * place));
        }
        if (span.count == 0) {
            Add(span, static_cast<int>(std::floor((from + to) / 2)), room, 1);
        }
        return span;
    }

    static Span Spread(double from, double ratio, int room)
    {
        Span span;
        for (int i = 0; i < kMostSamples; ++i) {
            Add(span, static_cast<int>(from + (i + 0.5) * ratio / kMostSamples), room, 1);
        }
        return span;
    }

    std::vector<Span> fSpans;
};

using Channels = std::array<uint64, 4>; // blue, green, red, alpha; each multiplied by weights

void AddPixel(Channels& sum, QRgb pixel, uint64 weight, bool hasAlpha)
{
    const QRgb color = hasAlpha ? qPremultiply(pixel) : pixel;
    sum[0] += weight * (color & 0xff);
    sum[1] += weight * (color >> 8 & 0xff);
    sum[2] += weight * (color >> 16 & 0xff);
    sum[3] += weight * (color >> 24);
}

void AddRow(std::vector<Channels>& sums, const QRgb* pixels, uint64 weight, const Axis& across,
            bool hasAlpha)
{
    for (size_t x = 0; x < sums.size(); ++x) {
        const Span& columns = across.Spans()[x];
        for (int i = 0; i < columns.count; ++i) {
            const Sample& column = columns.samples[static_cast<size_t>(i)];
            AddPixel(sums[x], pixels[column.place], weight * column.weight, hasAlpha);
        }
    }
}

QRgb Average(const Channels& sum, uint64 weight)
{
    const auto part = [&](size_t channel) {
        return static_cast<QRgb>((sum[channel] + weight / 2) / weight);
    };
    return part(3) << 24 | part(2) << 16 | part(1) << 8 | part(0);
}

} // namespace

bool IsShrunk(const QImage& picture, const QRectF& source, const QRect& target)
{
    const bool isKnown =
        picture.format() == QImage::Format_RGB32 || picture.format() == QImage::Format_ARGB32;
    return isKnown && (source.width() > target.width() || source.height() > target.height());
}

QImage ShrinkPicture(const QImage& picture, const QRectF& source, const QRect& target,
                     const QRect& part)
{
    const bool hasAlpha = picture.hasAlphaChannel();
    QImage shrunk(part.size(),
                  hasAlpha ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    if (shrunk.isNull()) {
        return shrunk;
    }
    const Axis across(source.left(), source.width(), target.width(), picture.width(),
                      part.left() - target.left(), part.width());
    const Axis down(source.top(), source.height(), target.height(), picture.height(),
                    part.top() - target.top(), part.height());
    std::vector<Channels> sums(static_cast<size_t>(part.width()));
    for (int y = 0; y < part.height(); ++y) {
        const Span& rows = down.Spans()[static_cast<size_t>(y)];
        std::fill(sums.begin(), sums.end(), Channels{});
        for (int i = 0; i < rows.count; ++i) {
            const Sample& row = rows.samples[static_cast<size_t>(i)];
            AddRow(sums, reinterpret_cast<const QRgb*>(picture.constScanLine(row.place)),
                   row.weight, across, hasAlpha);
        }
        auto* line = reinterpret_cast<QRgb*>(shrunk.scanLine(y));
        for (size_t x = 0; x < sums.size(); ++x) {
            const uint64 weight = across.Spans()[x].weight;
            line[x] = Average(sums[x], weight * rows.weight);
        }
    }
    return shrunk;
}

} // namespace kits
