// The inner forms of a pattern: its parse (a sequence of pieces, since there
// are no groups or alternatives) and its instruction array for a Pike VM.
#ifndef VYR_UTIL_PATTERNPROGRAM_P_H
#define VYR_UTIL_PATTERNPROGRAM_P_H

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "util/pattern.h"

namespace vyr {

// A set of bytes.
class ByteSet
{
public:
    void add(unsigned char byte) { bits_[byte >> 6] |= std::uint64_t(1) << (byte & 63); }
    void addRange(unsigned char low, unsigned char high)
    {
        for (unsigned byte = low; byte <= high; ++byte)
            add(static_cast<unsigned char>(byte));
    }
    void addAll(const ByteSet &other)
    {
        for (std::size_t i = 0; i < bits_.size(); ++i)
            bits_[i] |= other.bits_[i];
    }
    void invert()
    {
        for (auto &word : bits_)
            word = ~word;
    }
    bool contains(unsigned char byte) const { return (bits_[byte >> 6] >> (byte & 63)) & 1; }
    int count() const
    {
        int total = 0;
        for (auto word : bits_)
            total += __builtin_popcountll(word);
        return total;
    }

private:
    std::array<std::uint64_t, 4> bits_{};
};

// One element of a pattern: an atom and how often it may repeat.
struct PatternPiece
{
    enum class Kind { Byte, Class, AnyByte, Begin, End } kind;
    unsigned char byte = 0;
    std::uint32_t classIndex = 0;
    char repeat = 0; // 0, '*', '+' or '?'
};

struct ParsedPattern
{
    std::vector<PatternPiece> pieces;
    std::vector<ByteSet> classes;
};

// The parse of `source`, or the reason it is not a valid pattern.
std::variant<ParsedPattern, std::string> parsePattern(std::string_view source);

enum class PatternOp : std::uint8_t {
    Byte, // consume `byte`
    Class, // consume a byte of classes[classIndex]
    AnyByte, // consume any byte
    Split, // continue at `next` first, then at `alternative`
    Jump, // continue at `next`
    AssertBegin, // continue at pc + 1 at the start of the text only
    AssertEnd, // continue at pc + 1 at the end of the text only
    Match,
};

struct PatternInstruction
{
    PatternOp op;
    unsigned char byte = 0;
    std::uint32_t next = 0;
    std::uint32_t alternative = 0;
    std::uint32_t classIndex = 0;
};

struct PatternProgram
{
    std::vector<PatternInstruction> instructions;
    std::vector<ByteSet> classes;
    bool anchoredAtBegin = false; // every match starts at offset 0
    // The bytes a match can start with, when every match starts with a byte;
    // lets the search skip text where no match can begin.
    bool hasFirstBytes = false;
    ByteSet firstBytes;

    // Whether the instruction at `pc` consumes `byte`.
    bool consumes(const PatternInstruction &instruction, unsigned char byte) const
    {
        switch (instruction.op) {
        case PatternOp::Byte: return instruction.byte == byte;
        case PatternOp::Class: return classes[instruction.classIndex].contains(byte);
        case PatternOp::AnyByte: return true;
        default: return false;
        }
    }
};

// The program of a parsed pattern; with `reversed`, of the pattern read
// backwards (pieces in reverse order, "^" and "$" swapped), which matches
// the reversed text.
PatternProgram emitPatternProgram(const ParsedPattern &parsed, bool reversed);

// The leftmost match by a Pike VM: every thread runs in step, each
// instruction is visited at most once per text position.
std::optional<PatternMatch> runPikeVm(const PatternProgram &program, std::string_view text);

} // namespace vyr

#endif // VYR_UTIL_PATTERNPROGRAM_P_H
