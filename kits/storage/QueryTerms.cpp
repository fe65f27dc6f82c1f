#include "QueryTerms.h"

#include <Errors.h>

#include <algorithm>
#include <cctype>
#include <utility>

namespace kits {

namespace {

bool IsPlainWord(const std::string& word)
{
    return !word.empty() && std::all_of(word.begin(), word.end(), [](unsigned char byte) {
        return std::isalnum(byte) || byte == '_' || byte == ':' || byte == '.' || byte == '-';
    });
}

/// In quotes; escapes that are there stay, and what would end the text gets one.
std::string Quoted(const std::string& text)
{
    std::string quoted = "\"";
    for (size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '"') {
            quoted += '\\';
        }
        quoted += text[at];
        if (text[at] == '\\') {
            quoted += at + 1 < text.size() ? text[++at] : '\\';
        }
    }
    return quoted + '"';
}

} // namespace

void QueryTerms::PushAttribute(std::string name)
{
    fStack.push_back({Kind::kAttribute, IsPlainWord(name) ? std::move(name) : Quoted(name)});
}

void QueryTerms::PushNumber(std::string number)
{
    fStack.push_back({Kind::kNumber, std::move(number)});
}

void QueryTerms::PushText(std::string pattern)
{
    fStack.push_back({Kind::kText, std::move(pattern)});
}

void QueryTerms::PushComparison(const char* sign, const char* before, const char* after)
{
    const size_t count = fStack.size();
    const bool isText = count > 0 && fStack.back().kind == Kind::kText;
    const bool isValue = isText || (count > 0 && fStack.back().kind == Kind::kNumber);
    const bool needsText = before[0] != '\0' || after[0] != '\0';
    if (count < 2 || !isValue || fStack[count - 2].kind != Kind::kAttribute ||
        (needsText && !isText)) {
        fIsBroken = true;
        return;
    }
    const std::string value = std::exchange(fStack.back().text, {});
    fStack.pop_back();
    Operand& term = fStack.back();
    term.kind = Kind::kTerm;
    term.text = "(" + term.text + sign + (isText ? Quoted(before + value + after) : value) + ")";
}

bool QueryTerms::HasTerms(size_t count)
{
    const bool has =
        fStack.size() >= count &&
        std::all_of(fStack.end() - static_cast<ptrdiff_t>(count), fStack.end(),
                    [](const Operand& operand) { return operand.kind == Kind::kTerm; });
    fIsBroken = fIsBroken || !has;
    return has;
}

void QueryTerms::Join(const char* sign)
{
    if (!HasTerms(2)) {
        return;
    }
    const std::string right = std::exchange(fStack.back().text, {});
    fStack.pop_back();
    std::string& left = fStack.back().text;
    left = "(" + left + sign + right + ")";
}

void QueryTerms::PushNot()
{
    if (HasTerms(1)) {
        fStack.back().text = "(!" + fStack.back().text + ")";
    }
}

status_t QueryTerms::GetText(std::string* text) const
{
    if (fIsBroken || fStack.empty()) {
        return B_BAD_VALUE;
    }
    std::string joined;
    for (const Operand& term : fStack) {
        if (term.kind != Kind::kTerm) {
            return B_BAD_VALUE;
        }
        joined += term.text;
    }
    *text = std::move(joined);
    return B_OK;
}

} // namespace kits
