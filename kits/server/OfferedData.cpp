#include "OfferedData.h"

#include "storage/FileAddresses.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace kits {

namespace {

constexpr char kTextType[] = "text/plain";
constexpr char kFilesType[] = "text/uri-list";
// How desktops tell files that were cut from files that were copied.
constexpr char kMarkedFilesType[] = "x-special/gnome-copied-files";
constexpr char kCutType[] = "application/x-kde-cutselection";

// Calls `take` for each address of a list, without its line end.
template<typename Take>
void ForEachLine(std::string_view list, Take take)
{
    while (!list.empty()) {
        const size_t end = list.find("\r\n");
        take(list.substr(0, end));
        list.remove_prefix(end == std::string_view::npos ? list.size() : end + 2);
    }
}

} // namespace

OfferedData::OfferedData(SharedText text, uint64 offer) : fText(std::move(text)), fOffer(offer) {}

OfferedData::OfferedData(std::shared_ptr<OfferedFiles> files, Mark mark, uint64 offer)
    : fFiles(std::move(files)), fMark(mark), fOffer(offer)
{
}

QStringList OfferedData::formats() const
{
    if (fFiles == nullptr) {
        return {QString::fromLatin1(kTextType)};
    }
    return {QString::fromLatin1(kFilesType), QString::fromLatin1(kMarkedFilesType),
            QString::fromLatin1(kCutType), QString::fromLatin1(kTextType)};
}

QVariant OfferedData::retrieveData(const QString& type, QMetaType) const
{
    if (!hasFormat(type)) {
        return QVariant();
    }
    if (fFiles == nullptr) {
        const std::string_view text = fText.View();
        return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    }
    const QByteArray files = Files(type);
    return type == QLatin1String(kTextType) ? QVariant(QString::fromUtf8(files)) : QVariant(files);
}

QByteArray OfferedData::Files(const QString& type) const
{
    const bool isCut = fMark == Mark::kCut;
    if (type == QLatin1String(kCutType)) {
        return isCut ? "1" : "0";
    }
    const std::string addresses = fFiles->Addresses();
    if (type == QLatin1String(kFilesType)) {
        return QByteArray::fromStdString(addresses);
    }
    const bool isText = type == QLatin1String(kTextType);
    std::string lines = isText ? "" : isCut ? "cut" : "copy";
    ForEachLine(addresses, [&](std::string_view address) {
        lines += lines.empty() ? "" : "\n";
        lines += isText ? PathOfAddress(address).value_or("") : std::string(address);
    });
    return QByteArray::fromStdString(lines);
}

} // namespace kits
