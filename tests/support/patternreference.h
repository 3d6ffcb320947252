// A tiny backtracking matcher for the pattern syntax: exponential in the
// worst case, but simple enough to be obviously right. Tests and the fuzz
// target compare the real matcher's answers with its answers on small
// inputs. It assumes a valid pattern.
#ifndef VYR_TESTS_PATTERNREFERENCE_H
#define VYR_TESTS_PATTERNREFERENCE_H

#include <bitset>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vyr::testing {

class ReferencePattern
{
public:
    explicit ReferencePattern(std::string_view pattern)
    {
        std::size_t i = 0;
        while (i < pattern.size()) {
            const char c = pattern[i];
            if ((c == '*' || c == '+' || c == '?') && !atoms_.empty()) {
                atoms_.back().repeat = c;
                ++i;
                continue;
            }
            Atom atom;
            if (c == '^' || c == '$') {
                atom.anchor = c;
                ++i;
            } else if (c == '.') {
                atom.bytes.set();
                ++i;
            } else if (c == '[') {
                ++i;
                const bool negate = i < pattern.size() && pattern[i] == '^';
                if (negate)
                    ++i;
                bool first = true;
                while (i < pattern.size() && (first || pattern[i] != ']')) {
                    first = false;
                    const unsigned char low = readByte(pattern, i);
                    unsigned char high = low;
                    if (i + 1 < pattern.size() && pattern[i] == '-' && pattern[i + 1] != ']') {
                        ++i;
                        high = readByte(pattern, i);
                    }
                    for (unsigned b = low; b <= high; ++b)
                        atom.bytes.set(b);
                }
                ++i; // the closing bracket
                if (negate)
                    atom.bytes.flip();
            } else {
                atom.bytes.set(readByte(pattern, i));
            }
            atoms_.push_back(atom);
        }
    }

    std::optional<std::pair<std::size_t, std::size_t>> find(std::string_view text) const
    {
        for (std::size_t start = 0; start <= text.size(); ++start) {
            std::size_t end;
            if (matchHere(text, 0, start, end))
                return std::make_pair(start, end);
        }
        return std::nullopt;
    }

private:
    struct Atom
    {
        std::bitset<256> bytes;
        char anchor = 0;
        char repeat = 0;
    };

    static unsigned char readByte(std::string_view pattern, std::size_t &i)
    {
        if (pattern[i] != '\\')
            return static_cast<unsigned char>(pattern[i++]);
        const char letter = pattern[i + 1];
        i += 2;
        switch (letter) {
        case 'n': return '\n';
        case 't': return '\t';
        case 'r': return '\r';
        case 'f': return '\f';
        case 'v': return '\v';
        case 'a': return '\a';
        default: return static_cast<unsigned char>(letter);
        }
    }

    bool matchHere(std::string_view text, std::size_t atom, std::size_t at, std::size_t &end) const
    {
        if (atom == atoms_.size()) {
            end = at;
            return true;
        }
        const Atom &a = atoms_[atom];
        if (a.anchor == '^')
            return at == 0 && matchHere(text, atom + 1, at, end);
        if (a.anchor == '$')
            return at == text.size() && matchHere(text, atom + 1, at, end);
        std::size_t most = 0;
        const std::size_t limit = a.repeat == '*' || a.repeat == '+' ? text.size() - at : 1;
        while (most < limit && at + most < text.size() && a.bytes.test(static_cast<unsigned char>(text[at + most])))
            ++most;
        const std::size_t least = a.repeat == '*' || a.repeat == '?' ? 0 : 1;
        for (std::size_t count = most + 1; count-- > least;) {
            if (matchHere(text, atom + 1, at + count, end))
                return true;
        }
        return false;
    }

    std::vector<Atom> atoms_;
};

} // namespace vyr::testing

#endif // VYR_TESTS_PATTERNREFERENCE_H
