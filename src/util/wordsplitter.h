// Reading the words of a text: blank- or comma-separated words where double
// quotes group delimiters, blanks, tabs and parentheses into one word.
#ifndef VYR_UTIL_WORDSPLITTER_H
#define VYR_UTIL_WORDSPLITTER_H

#include <string>
#include <string_view>
#include <vector>

namespace vyr {

// Appends the words of `text` (narrow code page) to `words`.
//
// The text is cut at any of `delimiters`; runs of delimiters count as one and
// leading or trailing ones give no word. Inside double quotes nothing cuts;
// the quotes themselves are dropped. A backslash before a double quote makes
// it part of the word: as a plain quote, or with `keepEscapedQuotes` as the
// backslash and quote. With `checkParentheses`, blanks inside parentheses are
// removed, so "x(1, 2)" is the one word "x(1,2)". An empty word (from "")
// is kept unless `skipEmpty`.
//
// Returns false, leaving `words` unchanged, when the quotes or (with
// `checkParentheses`) the parentheses do not balance, or when the text holds
// one of the characters 1 to 5, which the splitter reserves for itself.
bool splitWords(std::string_view text, std::vector<std::string> &words, std::string_view delimiters, bool skipEmpty,
                bool checkParentheses, bool keepEscapedQuotes);

} // namespace vyr

#endif // VYR_UTIL_WORDSPLITTER_H
