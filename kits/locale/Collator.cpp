#include <Collator.h>

#include <QCollator>
#include <QLocale>
#include <QString>

#include <algorithm>
#include <numeric>

namespace {

bool IsPlain(const QString& text)
{
    return std::all_of(text.begin(), text.end(), [](QChar letter) { return letter < u'\x80'; });
}

/// The plain locale orders by bytes and knows no numbers.
QLocale CollationLocale()
{
    const QLocale locale = QLocale::system().collation();
    return locale.language() == QLocale::C ? QLocale(QLocale::English) : locale;
}

} // namespace

class BCollator::Impl
{
public:
    explicit Impl(bool isNumeric)
    {
        collator.setLocale(CollationLocale());
        collator.setCaseSensitivity(Qt::CaseInsensitive);
        collator.setNumericMode(isNumeric);
    }

    QCollator collator;
};

BCollator::BCollator() : fImpl(std::make_unique<Impl>(false)) {}

BCollator::~BCollator() = default;

// The toolkit's own copies share what they make when they are first asked, and that without a lock.
BCollator::BCollator(const BCollator& other)
    : fImpl(std::make_unique<Impl>(other.fImpl->collator.numericMode()))
{
}

BCollator& BCollator::operator=(const BCollator& other)
{
    fImpl = std::make_unique<Impl>(other.fImpl->collator.numericMode());
    return *this;
}

status_t BCollator::SetNumericSorting(bool isEnabled)
{
    fImpl = std::make_unique<Impl>(isEnabled);
    return B_OK;
}

// In some languages the library compares digits of other scripts otherwise than by their keys, and
// in a circle; sorting needs one order.
int BCollator::Compare(const char* first, const char* second) const
{
    const QString left = QString::fromUtf8(first);
    const QString right = QString::fromUtf8(second);
    if (IsPlain(left) && IsPlain(right)) {
        return fImpl->collator.compare(left, right);
    }
    return fImpl->collator.sortKey(left).compare(fImpl->collator.sortKey(right));
}

bool BCollator::Equal(const char* first, const char* second) const
{
    return Compare(first, second) == 0;
}

bool BCollator::Greater(const char* first, const char* second) const
{
    return Compare(first, second) > 0;
}

bool BCollator::GreaterOrEqual(const char* first, const char* second) const
{
    return Compare(first, second) >= 0;
}

std::vector<uint32> BCollator::Ranks(const std::vector<const char*>& texts) const
{
    std::vector<QCollatorSortKey> keys;
    keys.reserve(texts.size());
    for (const char* text : texts) {
        keys.push_back(fImpl->collator.sortKey(QString::fromUtf8(text)));
    }
    std::vector<uint32> order(texts.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(),
              [&keys](uint32 a, uint32 b) { return keys[a].compare(keys[b]) < 0; });
    std::vector<uint32> ranks(texts.size());
    uint32 rank = 0;
    for (size_t i = 0; i < order.size(); ++i) {
        if (i > 0 && keys[order[i - 1]].compare(keys[order[i]]) != 0) {
            rank = static_cast<uint32>(i);
        }
        ranks[order[i]] = rank;
    }
    return ranks;
}
