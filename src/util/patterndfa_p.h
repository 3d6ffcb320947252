// A deterministic automaton that answers one question of a pattern: does it
// match somewhere in a text?
//
// Built once from the pattern's program by subset construction, immutable
// afterwards (so shared freely between threads), it reads each byte with one
// table look-up, and skips through runs of bytes that leave its state as it
// is eight bytes a step. A pattern ending in "$" is read from the end of
// the text with its reversed program: every match then starts where reading
// starts, and most texts are decided after a few bytes.
#ifndef VYR_UTIL_PATTERNDFA_P_H
#define VYR_UTIL_PATTERNDFA_P_H

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "util/patternprogram_p.h"

namespace vyr {

class PatternDfa
{
public:
    // The automaton of `program`, which texts are read into forwards, or
    // with `fromTheEnd` backwards; nothing when it would need more states
    // than a state number holds, or too much work to build.
    static std::optional<PatternDfa> build(const PatternProgram &program, bool fromTheEnd);

    bool matches(std::string_view text) const;

private:
    class Builder;

    // State numbers: two final states that no byte leaves, then the live
    // states, those that may skip ahead last.
    static constexpr std::uint8_t kDead = 0;
    static constexpr std::uint8_t kMatched = 1;
    static constexpr std::uint8_t kFirstLive = 2;

    struct Skip
    {
        // The bytes that leave the state (at most three); every other byte
        // keeps it.
        std::array<unsigned char, 3> exits{};
        std::uint8_t count = 0;
    };

    std::size_t skipForward(std::string_view text, std::size_t from, const Skip &skip) const;
    std::size_t skipBackward(std::string_view text, std::size_t end, const Skip &skip) const;

    std::vector<std::uint8_t> next_; // [state * 256 + byte]
    std::vector<std::uint8_t> matchesAtEnd_; // [state]: matched when the text ends here
    std::vector<Skip> skips_; // [state - firstSkipping_]
    std::uint8_t start_ = kDead;
    std::uint8_t firstSkipping_ = 0;
    bool fromTheEnd_ = false;
};

} // namespace vyr

#endif // VYR_UTIL_PATTERNDFA_P_H
