#include "util/wordsplitter.h"

#include "util/stringconverter.h"

#include <algorithm>

namespace vyr {
namespace {

// Stand-ins for characters that must not cut or close anything while the
// text is taken apart.
constexpr char kQuotedBlank = '\x01';
constexpr char kEscapedQuote = '\x02';
constexpr char kQuotedOpenParen = '\x03';
constexpr char kQuotedCloseParen = '\x04';
constexpr char kQuotedTab = '\x05';

bool holdsPlaceholder(std::string_view text)
{
    return std::any_of(text.begin(), text.end(), [](char c) { return c >= '\x01' && c <= '\x05'; });
}

// Escaped quotes and everything inside quotes become placeholders; false when
// a quote is left open.
bool protectQuotedText(std::string &text)
{
    std::string out;
    out.reserve(text.size());
    bool quoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char c = text[i];
        if (c == '\\' && i + 1 < text.size() && text[i + 1] == '"') {
            out.push_back(kEscapedQuote);
            ++i;
            continue;
        }
        if (c == '"') {
            quoted = !quoted;
        } else if (quoted) {
            switch (c) {
            case ' ': c = kQuotedBlank; break;
            case '\t': c = kQuotedTab; break;
            case '(': c = kQuotedOpenParen; break;
            case ')': c = kQuotedCloseParen; break;
            default: break;
            }
        }
        out.push_back(c);
    }
    text = std::move(out);
    return !quoted;
}

// Drops blanks inside parentheses; false when they do not balance.
bool closeUpParentheses(std::string &text)
{
    std::string out;
    out.reserve(text.size());
    int depth = 0;
    for (char c : text) {
        if (c == '(') {
            ++depth;
        } else if (c == ')') {
            if (depth == 0)
                return false;
            --depth;
        } else if (c == ' ' && depth > 0) {
            continue;
        }
        out.push_back(c);
    }
    text = std::move(out);
    return depth == 0;
}

std::string restoreWord(std::string_view word, bool keepEscapedQuotes)
{
    std::string out;
    out.reserve(word.size());
    for (char c : word) {
        switch (c) {
        case kQuotedBlank: out.push_back(' '); break;
        case kQuotedTab: out.push_back('\t'); break;
        case kQuotedOpenParen: out.push_back('('); break;
        case kQuotedCloseParen: out.push_back(')'); break;
        case '"': break;
        case kEscapedQuote:
            if (keepEscapedQuotes)
                out.push_back('\\');
            out.push_back('"');
            break;
        default: out.push_back(c); break;
        }
    }
    return out;
}

} // namespace

bool splitWords(std::string_view text, std::vector<std::string> &words, std::string_view delimiters, bool skipEmpty,
                bool checkParentheses, bool keepEscapedQuotes)
{
    if (holdsPlaceholder(text))
        return false;
    std::string work = ansiToUtf8(text);
    if (!protectQuotedText(work))
        return false;
    if (checkParentheses && !closeUpParentheses(work))
        return false;

    std::vector<std::string> found;
    const std::string_view all(work);
    std::size_t start = all.find_first_not_of(delimiters);
    while (start != std::string_view::npos) {
        std::size_t end = all.find_first_of(delimiters, start);
        if (end == std::string_view::npos)
            end = all.size();
        std::string word = restoreWord(all.substr(start, end - start), keepEscapedQuotes);
        if (!word.empty() || !skipEmpty)
            found.push_back(utf8ToAnsi(word));
        start = all.find_first_not_of(delimiters, end);
    }
    words.insert(words.end(), std::make_move_iterator(found.begin()), std::make_move_iterator(found.end()));
    return true;
}

} // namespace vyr
