#include <Collator.h>

#include "locale/PlainOrder.h"

#include <QCollator>
#include <QLocale>
#include <QString>

#include <algorithm>
#include <numeric>
#include <optional>
#include <string>

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

/// What orders texts of which keys are made one by one.
struct PlainKeys
{
    std::string keys;
    std::vector<size_t> starts; // and the end of all
};

/// Nothing when a text is not plain, or the language's order is not known.
std::optional<PlainKeys> PlainKeysOf(const kits::PlainOrder& order,
                                     const std::vector<const char*>& texts)
{
    if (!order.IsKnown()) {
        return std::nullopt;
    }
    PlainKeys made;
    made.starts.reserve(texts.size() + 1);
    for (const char* text : texts) {
        made.starts.push_back(made.keys.size());
        if (text != nullptr && !order.AppendKey(text, made.keys)) {
            return std::nullopt;
        }
    }
    made.starts.push_back(made.keys.size());
    return made;
}

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
    if (texts.size() >= kManyTexts) {
        if (const std::optional<PlainKeys> plain = PlainKeysOf(fImpl->Plain(), texts)) {
            const std::string_view keys = plain->keys;
            const auto keyAt = [&](uint32 i) {
                return keys.substr(plain->starts[i], plain->starts[i + 1] - plain->starts[i]);
            };
            return RanksOf(kits::OrderOfKeys(plain->keys, plain->starts),
                           [&](uint32 a, uint32 b) { return keyAt(a) == keyAt(b); });
        }
    }
    std::vector<QCollatorSortKey> keys;
    keys.reserve(texts.size());
    for (const char* text : texts) {
        keys.push_back(fImpl->collator.sortKey(QString::fromUtf8(text)));
    }
    std::vector<uint32> order(texts.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(),
              [&keys](uint32 a, uint32 b) { return keys[a].compare(keys[b]) < 0; });
    return RanksOf(order, [&](uint32 a, uint32 b) { return keys[a].compare(keys[b]) == 0; });
}
