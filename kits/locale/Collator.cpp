#include <Collator.h>

#include "locale/PlainOrder.h"

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

// For fewer texts it is not worth while to find out what a plain order needs.
constexpr size_t kManyTexts = 1000;
// Where more than one of so many texts is not plain, finding the others' places costs more than
// comparing all.
constexpr size_t kPlainForOther = 32;

/// The ranks of texts in an order, of which `isSame` says whether two stand together.
template<typename IsSame>
std::vector<uint32> RanksOf(const std::vector<uint32>& order, IsSame isSame)
{
    std::vector<uint32> ranks(order.size());
    uint32 rank = 0;
    for (size_t i = 0; i < order.size(); ++i) {
        if (i > 0 && !isSame(order[i - 1], order[i])) {
            rank = static_cast<uint32>(i);
        }
        ranks[order[i]] = rank;
    }
    return ranks;
}

QCollatorSortKey SortKeyOf(const QCollator& collator, const char* text)
{
    return collator.sortKey(QString::fromUtf8(text));
}

/// Many texts, most of which are plain. The others are compared as texts.
class MixedTexts
{
public:
    MixedTexts(const kits::PlainOrder& plain, const std::vector<const char*>& texts);

    size_t CountOthers() const { return fOthers.size(); }
    /// Call it once.
    std::vector<uint32> Ranks(const QCollator& collator);

private:
    bool IsBefore(const QCollator& collator, uint32 a, uint32 b) const
    {
        return SortKeyOf(collator, fTexts[a]).compare(SortKeyOf(collator, fTexts[b])) < 0;
    }

    const std::vector<const char*>& fTexts; // lent
    kits::PlainKeys fKeys;                  // of all; the others' are empty
    std::vector<uint32> fPlain;
    std::vector<uint32> fOthers;
    std::vector<bool> fIsOther;
};

MixedTexts::MixedTexts(const kits::PlainOrder& plain, const std::vector<const char*>& texts)
    : fTexts(texts), fIsOther(texts.size())
{
    constexpr size_t kUsualLength = 24;
    fKeys.keys.reserve(texts.size() * kUsualLength);
    fKeys.starts.reserve(texts.size() + 1);
    fPlain.reserve(texts.size());
    for (uint32 i = 0; i < texts.size(); ++i) {
        const size_t start = fKeys.keys.size();
        fKeys.starts.push_back(start);
        fIsOther[i] = texts[i] != nullptr && !plain.AppendKey(texts[i], fKeys.keys);
        if (fIsOther[i]) {
            fKeys.keys.resize(start);
        }
        (fIsOther[i] ? fOthers : fPlain).push_back(i);
    }
    fKeys.starts.push_back(fKeys.keys.size());
}

std::vector<uint32> MixedTexts::Ranks(const QCollator& collator)
{
    fKeys.Sort(fPlain);
    if (fOthers.empty()) {
        return RanksOf(fPlain, [&](uint32 a, uint32 b) { return fKeys.At(a) == fKeys.At(b); });
    }
    const auto isBefore = [&](uint32 a, uint32 b) {
        return IsBefore(collator, a, b);
    };
    std::sort(fOthers.begin(), fOthers.end(), isBefore);
    std::vector<uint32> order;
    order.reserve(fTexts.size());
    auto from = fPlain.cbegin();
    for (const uint32 other : fOthers) {
        const auto place = std::upper_bound(from, fPlain.cend(), other, isBefore);
        order.insert(order.end(), from, place);
        order.push_back(other);
        from = place;
    }
    order.insert(order.end(), from, fPlain.cend());
    // They are in order, so what is not before the next is the same.
    return RanksOf(order, [&](uint32 a, uint32 b) {
        return fIsOther[a] || fIsOther[b] ? !isBefore(a, b) : fKeys.At(a) == fKeys.At(b);
    });
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

    /// The same for all threads, made when it is first asked for.
    const kits::PlainOrder& Plain() const
    {
        if (collator.numericMode()) {
            static const kits::PlainOrder numeric(Impl(true).collator);
            return numeric;
        }
        static const kits::PlainOrder plain(Impl(false).collator);
        return plain;
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
// in a circle; an empty text is less to it than one of characters that count as nothing. Sorting
// needs one order.
int BCollator::Compare(const char* first, const char* second) const
{
    const QString left = QString::fromUtf8(first);
    const QString right = QString::fromUtf8(second);
    if (!left.isEmpty() && !right.isEmpty() && IsPlain(left) && IsPlain(right)) {
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
    if (texts.size() >= kManyTexts && fImpl->Plain().IsKnown()) {
        MixedTexts mixed(fImpl->Plain(), texts);
        if (mixed.CountOthers() * kPlainForOther <= texts.size()) {
            return mixed.Ranks(fImpl->collator);
        }
    }
    std::vector<uint32> order(texts.size());
    std::iota(order.begin(), order.end(), 0);
    std::vector<QCollatorSortKey> keys;
    keys.reserve(texts.size());
    for (const char* text : texts) {
        keys.push_back(SortKeyOf(fImpl->collator, text));
    }
    std::sort(order.begin(), order.end(),
              [&keys](uint32 a, uint32 b) { return keys[a].compare(keys[b]) < 0; });
    return RanksOf(order, [&](uint32 a, uint32 b) { return keys[a].compare(keys[b]) == 0; });
}
