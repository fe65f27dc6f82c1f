#pragma once

#include "OfferedFiles.h"

#include "support/SharedText.h"

#include <SupportDefs.h>

#include <QMetaType>
#include <QMimeData>
#include <QStringList>
#include <QVariant>

#include <memory>

namespace kits {

/// What this program has on the clipboard, for others: text or files. Bytes that are not UTF-8 stay
/// as they are within the program; for others a text is converted when they ask for it.
/// Thread: the server's.
class OfferedData : public QMimeData
{
public:
    OfferedData(SharedText text, uint64 offer);
    /// Files, which were cut or copied.
    enum class Mark : uint8 { kCopied, kCut };
    OfferedData(std::shared_ptr<OfferedFiles> files, Mark mark, uint64 offer);

    const SharedText& Text() const { return fText; }
    uint64 Offer() const { return fOffer; }

    // QMimeData
    bool hasFormat(const QString& type) const override { return formats().contains(type); }
    QStringList formats() const override;

protected:
    QVariant retrieveData(const QString& type, QMetaType metaType) const override;

private:
    QByteArray Files(const QString& type) const;

    const SharedText fText;
    const std::shared_ptr<OfferedFiles> fFiles; // null for a text
    const Mark fMark = Mark::kCopied;
    const uint64 fOffer;
};

} // namespace kits
