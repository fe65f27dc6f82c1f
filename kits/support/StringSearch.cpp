#include <String.h>

#include "support/AsciiCase.h"

#include <algorithm>
#include <cstring>
#include <string_view>

// Comparing, finding and replacing.

namespace {

using kits::ToLowerAscii;

enum class CaseRule : uint8 {
    kExact,
    kIgnored,
};

std::string_view ViewOf(const char* text)
{
    return text == nullptr ? std::string_view() : std::string_view(text);
}

std::string_view ViewOf(const BString& text)
{
    return std::string_view(text.String(), static_cast<size_t>(text.Length()));
}

std::string_view FirstBytes(std::string_view text, int32 count)
{
    return text.substr(0, static_cast<size_t>(std::max<int32>(count, 0)));
}

int CompareViews(std::string_view a, std::string_view b)
{
    return a.compare(b);
}

int CompareViewsIgnoringCase(std::string_view a, std::string_view b)
{
    const size_t common = std::min(a.size(), b.size());
    for (size_t i = 0; i < common; i++) {
        const unsigned char left = static_cast<unsigned char>(ToLowerAscii(a[i]));
        const unsigned char right = static_cast<unsigned char>(ToLowerAscii(b[i]));
        if (left != right) {
            return left < right ? -1 : 1;
        }
    }
    return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

bool AreSameIgnoringCase(char a, char b)
{
    return ToLowerAscii(a) == ToLowerAscii(b);
}

int32 FindForward(std::string_view text, std::string_view wanted, int32 from, CaseRule rule)
{
    if (from < 0 || static_cast<size_t>(from) > text.size()) {
        return B_ERROR;
    }
    if (rule == CaseRule::kExact) {
        const size_t found = text.find(wanted, static_cast<size_t>(from));
        return found == std::string_view::npos ? B_ERROR : static_cast<int32>(found);
    }
    const auto found = std::search(text.begin() + from, text.end(), wanted.begin(), wanted.end(),
                                   AreSameIgnoringCase);
    if (found == text.end() && !wanted.empty()) {
        return B_ERROR;
    }
    return static_cast<int32>(found - text.begin());
}

int32 FindBackward(std::string_view text, std::string_view wanted, int32 before, CaseRule rule)
{
    if (before < 0 || static_cast<size_t>(before) > text.size()) {
        return B_ERROR;
    }
    const std::string_view searched = text.substr(0, static_cast<size_t>(before));
    if (rule == CaseRule::kExact) {
        const size_t found = searched.rfind(wanted);
        return found == std::string_view::npos ? B_ERROR : static_cast<int32>(found);
    }
    const auto found = std::find_end(searched.begin(), searched.end(), wanted.begin(), wanted.end(),
                                     AreSameIgnoringCase);
    if (found == searched.end() && !wanted.empty()) {
        return B_ERROR;
    }
    return static_cast<int32>(found - searched.begin());
}

/// Rebuilds `text` with up to `maxCount` occurrences replaced, in one pass however many there are.
void ReplaceInto(BString& text, const char* replaceThis, const char* withThis, int32 maxCount,
                 int32 fromOffset, CaseRule rule)
{
    const std::string_view wanted = ViewOf(replaceThis);
    if (wanted.empty() || maxCount <= 0) {
        return;
    }
    const std::string_view whole = ViewOf(text);
    int32 found = FindForward(whole, wanted, std::max<int32>(fromOffset, 0), rule);
    if (found < 0) {
        return;
    }
    BString result;
    int32 copied = 0;
    for (; found >= 0 && maxCount > 0; maxCount--) {
        result.Append(text.String() + copied, found - copied);
        result.Append(withThis);
        copied = found + static_cast<int32>(wanted.size());
        found = FindForward(whole, wanted, copied, rule);
    }
    result.Append(text.String() + copied, text.Length() - copied);
    text.Adopt(result);
}

void ReplaceLastOf(BString& text, const char* replaceThis, const char* withThis, CaseRule rule)
{
    const std::string_view wanted = ViewOf(replaceThis);
    if (wanted.empty()) {
        return;
    }
    const int32 found = FindBackward(ViewOf(text), wanted, text.Length(), rule);
    if (found >= 0) {
        const BString replacement(withThis); // a copy, as it may be a part of the text
        text.Remove(found, static_cast<int32>(wanted.size()));
        text.Insert(replacement, found);
    }
}

} // namespace

int BString::Compare(const BString& other) const
{
    return CompareViews(ViewOf(*this), ViewOf(other));
}

int BString::Compare(const char* other) const
{
    return CompareViews(ViewOf(*this), ViewOf(other));
}

int BString::Compare(const BString& other, int32 count) const
{
    return CompareViews(FirstBytes(ViewOf(*this), count), FirstBytes(ViewOf(other), count));
}

int BString::Compare(const char* other, int32 count) const
{
    return CompareViews(FirstBytes(ViewOf(*this), count), FirstBytes(ViewOf(other), count));
}

int BString::ICompare(const BString& other) const
{
    return CompareViewsIgnoringCase(ViewOf(*this), ViewOf(other));
}

int BString::ICompare(const char* other) const
{
    return CompareViewsIgnoringCase(ViewOf(*this), ViewOf(other));
}

int BString::ICompare(const BString& other, int32 count) const
{
    return CompareViewsIgnoringCase(FirstBytes(ViewOf(*this), count),
                                    FirstBytes(ViewOf(other), count));
}

int BString::ICompare(const char* other, int32 count) const
{
    return CompareViewsIgnoringCase(FirstBytes(ViewOf(*this), count),
                                    FirstBytes(ViewOf(other), count));
}

int32 BString::FindFirst(const BString& text) const
{
    return FindFirst(text, 0);
}

int32 BString::FindFirst(const BString& text, int32 fromOffset) const
{
    return FindForward(ViewOf(*this), ViewOf(text), fromOffset, CaseRule::kExact);
}

int32 BString::FindFirst(const char* text) const
{
    return FindFirst(text, 0);
}

int32 BString::FindFirst(const char* text, int32 fromOffset) const
{
    return FindForward(ViewOf(*this), ViewOf(text), fromOffset, CaseRule::kExact);
}

int32 BString::FindFirst(char character) const
{
    return FindFirst(character, 0);
}

int32 BString::FindFirst(char character, int32 fromOffset) const
{
    const std::string_view wanted(&character, 1);
    return FindForward(ViewOf(*this), wanted, fromOffset, CaseRule::kExact);
}

int32 BString::FindLast(const BString& text) const
{
    return FindLast(text, fLength);
}

int32 BString::FindLast(const BString& text, int32 beforeOffset) const
{
    return FindBackward(ViewOf(*this), ViewOf(text), beforeOffset, CaseRule::kExact);
}

int32 BString::FindLast(const char* text) const
{
    return FindLast(text, fLength);
}

int32 BString::FindLast(const char* text, int32 beforeOffset) const
{
    return FindBackward(ViewOf(*this), ViewOf(text), beforeOffset, CaseRule::kExact);
}

int32 BString::FindLast(char character) const
{
    return FindLast(character, fLength);
}

int32 BString::FindLast(char character, int32 beforeOffset) const
{
    const std::string_view wanted(&character, 1);
    return FindBackward(ViewOf(*this), wanted, beforeOffset, CaseRule::kExact);
}

int32 BString::IFindFirst(const BString& text) const
{
    return IFindFirst(text, 0);
}

int32 BString::IFindFirst(const BString& text, int32 fromOffset) const
{
    return FindForward(ViewOf(*this), ViewOf(text), fromOffset, CaseRule::kIgnored);
}

int32 BString::IFindLast(const BString& text) const
{
    return IFindLast(text, fLength);
}

int32 BString::IFindLast(const BString& text, int32 beforeOffset) const
{
    return FindBackward(ViewOf(*this), ViewOf(text), beforeOffset, CaseRule::kIgnored);
}

BString& BString::ReplaceFirst(char replaceThis, char withThis)
{
    return Replace(replaceThis, withThis, 1);
}

BString& BString::ReplaceLast(char replaceThis, char withThis)
{
    const int32 found = FindLast(replaceThis);
    if (found >= 0) {
        fText[found] = withThis;
    }
    return *this;
}

BString& BString::ReplaceAll(char replaceThis, char withThis, int32 fromOffset)
{
    return Replace(replaceThis, withThis, INT32_MAX, fromOffset);
}

BString& BString::Replace(char replaceThis, char withThis, int32 maxCount, int32 fromOffset)
{
    for (int32 i = std::max<int32>(fromOffset, 0); i < fLength && maxCount > 0; i++) {
        if (fText[i] == replaceThis) {
            fText[i] = withThis;
            maxCount--;
        }
    }
    return *this;
}

BString& BString::ReplaceFirst(const char* replaceThis, const char* withThis)
{
    return Replace(replaceThis, withThis, 1);
}

BString& BString::ReplaceLast(const char* replaceThis, const char* withThis)
{
    ReplaceLastOf(*this, replaceThis, withThis, CaseRule::kExact);
    return *this;
}

BString& BString::ReplaceAll(const char* replaceThis, const char* withThis, int32 fromOffset)
{
    return Replace(replaceThis, withThis, INT32_MAX, fromOffset);
}

BString& BString::Replace(const char* replaceThis, const char* withThis, int32 maxCount,
                          int32 fromOffset)
{
    ReplaceInto(*this, replaceThis, withThis, maxCount, fromOffset, CaseRule::kExact);
    return *this;
}

BString& BString::IReplaceFirst(const char* replaceThis, const char* withThis)
{
    return IReplace(replaceThis, withThis, 1);
}

BString& BString::IReplaceLast(const char* replaceThis, const char* withThis)
{
    ReplaceLastOf(*this, replaceThis, withThis, CaseRule::kIgnored);
    return *this;
}

BString& BString::IReplaceAll(const char* replaceThis, const char* withThis, int32 fromOffset)
{
    return IReplace(replaceThis, withThis, INT32_MAX, fromOffset);
}

BString& BString::IReplace(const char* replaceThis, const char* withThis, int32 maxCount,
                           int32 fromOffset)
{
    ReplaceInto(*this, replaceThis, withThis, maxCount, fromOffset, CaseRule::kIgnored);
    return *this;
}
