#include "locale/PlainOrder.h"

#include <QCollator>
#include <QString>

#include <algorithm>
#include <bit>
#include <numeric>
#include <utility>

namespace kits {

namespace {

constexpr char kFirstPlain = ' ';
constexpr char kLastPlain = '~';
// The library takes longer runs of digits for several numbers.
constexpr size_t kMostDigits = 200;

bool IsDigit(char letter)
{
    return letter >= '0' && letter <= '9';
}

size_t IndexOf(char letter)
{
    return static_cast<uint8>(letter);
}

QCollatorSortKey KeyOf(const QCollator& collator, const std::string& text)
{
    return collator.sortKey(QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size())));
}

/// Every two characters beside each other, each alone, and some numbers. Capitals are left out:
/// they count as small letters, which FindLetters() has seen.
std::vector<std::string> Samples()
{
    std::vector<std::string> samples = {"100", "99", "1000", "0999", "000", "a10b", "a9c", "a010b"};
    for (char first = kFirstPlain; first <= kLastPlain; ++first) {
        samples.emplace_back(1, first);
        for (char second = kFirstPlain; second <= kLastPlain; ++second) {
            const auto isCapital = [](char letter) {
                return letter >= 'A' && letter <= 'Z';
            };
            if (!isCapital(first) && !isCapital(second)) {
                samples.push_back({first, second});
            }
        }
    }
    return samples;
}

/// The beginning of a key behind what all keys have in common.
struct Beginning
{
    uint64 number = 0;
    uint32 index = 0;
};

constexpr size_t kBeginningBytes = sizeof(uint64);

/// Bytes as a number that is ordered as they are; what is not there counts least.
uint64 NumberOf(std::string_view bytes)
{
    uint64 number = 0;
    for (size_t i = 0; i < kBeginningBytes; ++i) {
        number = number << 8 | (i < bytes.size() ? static_cast<uint8>(bytes[i]) : 0);
    }
    return number;
}

constexpr int kDigitBits = 8; // of one pass: its counts stay in the processor's nearest memory
constexpr uint64 kDigit = (uint64{1} << kDigitBits) - 1;

/// Sorts by one digit of the numbers; what has the same keeps its order.
void SortByDigit(std::vector<Beginning>& sorted, std::vector<Beginning>& other, int shift)
{
    std::array<uint32, kDigit + 1> places = {};
    for (const Beginning& beginning : sorted) {
        ++places[beginning.number >> shift & kDigit];
    }
    uint32 place = 0;
    for (uint32& count : places) {
        place += std::exchange(count, place);
    }
    for (const Beginning& beginning : sorted) {
        other[places[beginning.number >> shift & kDigit]++] = beginning;
    }
    sorted.swap(other);
}

/// Passes over all of them, for the bits in which they differ alone: less than comparing costs.
void SortByNumber(std::vector<Beginning>& sorted)
{
    uint64 differing = 0;
    for (const Beginning& beginning : sorted) {
        differing |= beginning.number ^ sorted.front().number;
    }
    std::vector<Beginning> other(sorted.size());
    int shift = 0;
    while (shift < 64 && differing >> shift != 0) {
        shift += std::countr_zero(differing >> shift);
        SortByDigit(sorted, other, shift);
        shift += kDigitBits;
    }
}

size_t CountInCommon(std::string_view a, std::string_view b)
{
    const size_t shorter = std::min(a.size(), b.size());
    const auto end = a.begin() + static_cast<std::ptrdiff_t>(shorter);
    return static_cast<size_t>(std::mismatch(a.begin(), end, b.begin()).first - a.begin());
}

} // namespace

PlainOrder::PlainOrder(const QCollator& collator) : fIsNumeric(collator.numericMode())
{
    fIsKnown = FindLetters(collator) && Agrees(collator);
}

/// False when the letters have no such order: one is nothing by itself, or digits lie apart.
bool PlainOrder::FindLetters(const QCollator& collator)
{
    std::vector<std::pair<QCollatorSortKey, char>> letters;
    for (char letter = kFirstPlain; letter <= kLastPlain; ++letter) {
        letters.emplace_back(KeyOf(collator, std::string(1, letter)), letter);
    }
    std::sort(letters.begin(), letters.end(),
              [](const auto& a, const auto& b) { return a.first.compare(b.first) < 0; });
    const QCollatorSortKey nothing = KeyOf(collator, "");
    if (nothing.compare(letters.front().first) >= 0) {
        return false;
    }
    char place = 1;
    for (size_t i = 0; i < letters.size(); ++i) {
        if (i > 0 && letters[i - 1].first.compare(letters[i].first) != 0) {
            ++place;
        }
        fLetters[IndexOf(letters[i].second)] = place;
    }
    for (char digit = '1'; digit <= '9'; ++digit) {
        if (fLetters[IndexOf(digit)] != fLetters[static_cast<size_t>(digit - 1)] + 1) {
            return false;
        }
    }
    for (char letter = 'a'; letter <= 'z'; ++letter) {
        if (fLetters[IndexOf(letter)] != fLetters[IndexOf(letter) - 'a' + 'A']) {
            return false;
        }
    }
    return true;
}

bool PlainOrder::Agrees(const QCollator& collator) const
{
    std::vector<std::pair<std::string, std::string>> samples; // with their keys before them
    for (const std::string& text : Samples()) {
        std::string key;
        AppendKey(text, key);
        samples.emplace_back(key, text);
    }
    std::sort(samples.begin(), samples.end());
    QCollatorSortKey last = KeyOf(collator, samples.front().second);
    for (size_t i = 1; i < samples.size(); ++i) {
        QCollatorSortKey next = KeyOf(collator, samples[i].second);
        const int order = last.compare(next);
        if (samples[i - 1].first == samples[i].first ? order != 0 : order >= 0) {
            return false;
        }
        last = std::move(next);
    }
    return true;
}

bool PlainOrder::AppendKey(std::string_view text, std::string& keys) const
{
    for (size_t i = 0; i < text.size(); ++i) {
        const char letter = text[i];
        if (letter < kFirstPlain || letter > kLastPlain) {
            return false;
        }
        if (!fIsNumeric || !IsDigit(letter)) {
            keys.push_back(fLetters[IndexOf(letter)]);
            continue;
        }
        size_t end = i + 1;
        while (end < text.size() && IsDigit(text[end])) {
            ++end;
        }
        if (!AppendNumber(text.substr(i, end - i), keys)) {
            return false;
        }
        i = end - 1;
    }
    return true;
}

/// Numbers of more digits are greater; zeros in front do not count.
bool PlainOrder::AppendNumber(std::string_view digits, std::string& keys) const
{
    while (digits.size() > 1 && digits.front() == '0') {
        digits.remove_prefix(1);
    }
    if (digits.size() > kMostDigits) {
        return false;
    }
    keys.push_back(fLetters['0']);
    keys.push_back(static_cast<char>(digits.size()));
    for (size_t i = 0; i < digits.size(); i += 2) {
        const int second = i + 1 < digits.size() ? digits[i + 1] - '0' : 0;
        keys.push_back(static_cast<char>((digits[i] - '0') * 10 + second + 1));
    }
    return true;
}

void PlainKeys::Sort(std::vector<uint32>& indices) const
{
    if (indices.empty()) {
        return;
    }
    const std::string_view first = At(indices.front());
    size_t common = first.size();
    for (const uint32 index : indices) {
        common = CountInCommon(first.substr(0, common), At(index));
    }
    std::vector<Beginning> sorted;
    sorted.reserve(indices.size());
    for (const uint32 index : indices) {
        sorted.push_back({NumberOf(At(index).substr(common)), index});
    }
    SortByNumber(sorted);
    const auto rest = [&](const Beginning& beginning) {
        const std::string_view key = At(beginning.index);
        return key.substr(std::min(key.size(), common + kBeginningBytes));
    };
    for (auto begin = sorted.begin(); begin != sorted.end();) {
        const auto end = std::find_if(begin, sorted.end(), [&](const Beginning& beginning) {
            return beginning.number != begin->number;
        });
        std::sort(begin, end,
                  [&](const Beginning& a, const Beginning& b) { return rest(a) < rest(b); });
        begin = end;
    }
    std::transform(sorted.begin(), sorted.end(), indices.begin(),
                   [](const Beginning& beginning) { return beginning.index; });
}

} // namespace kits
