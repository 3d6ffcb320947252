// The small regular expressions used throughout the system.
//
// Syntax: ordinary bytes match themselves; a backslash makes the next byte
// ordinary ("\n", "\t", "\r", "\f", "\v" and "\a" are the control
// characters); "." matches any byte; "[...]" matches one byte of a class of
// bytes and ranges, "[^...]" one byte outside it ("]" first in the class is
// ordinary, so is "-" first or last); "*", "+" and "?" repeat the piece
// before them (greedy); "^" and "$" match at the start and the end of the
// text. Parentheses, "|" and braces are ordinary bytes: there are no groups.
//
// A search finds the leftmost match, and among matches starting there the one
// a backtracking matcher would find first. It runs in time proportional to
// the pattern's length times the text's, whatever the input; asking only
// whether there is a match is, for all but very long patterns, a single
// pass over the text.
#ifndef VYR_UTIL_PATTERN_H
#define VYR_UTIL_PATTERN_H

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace vyr {

struct CompiledPattern;

struct PatternMatch
{
    std::size_t begin; // offset of the first byte matched
    std::size_t end; // offset after the last byte matched
};

// A compiled pattern. Compile once and keep it: searching allocates nothing
// per call. Copies share the compiled form.
class Pattern
{
public:
    explicit Pattern(std::string_view source);
    ~Pattern();
    Pattern(const Pattern &);
    Pattern &operator=(const Pattern &);
    Pattern(Pattern &&) noexcept;
    Pattern &operator=(Pattern &&) noexcept;

    // False when the source is not a valid pattern; error() says why.
    bool ok() const { return compiled_ != nullptr; }
    const std::string &error() const { return error_; }
    const std::string &source() const { return source_; }

    // The leftmost match in `text`; nothing when there is none or the pattern
    // is not valid.
    std::optional<PatternMatch> find(std::string_view text) const;
    // Whether there is a match at all; quicker than find().
    bool foundIn(std::string_view text) const;

private:
    std::string source_;
    std::string error_;
    std::shared_ptr<const CompiledPattern> compiled_;
};

} // namespace vyr

#endif // VYR_UTIL_PATTERN_H
