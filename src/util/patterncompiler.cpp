#include "util/patternprogram_p.h"

#include <algorithm>
#include <optional>

namespace vyr {
namespace {

unsigned char escapedByte(char letter)
{
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

class Parser
{
public:
    explicit Parser(std::string_view source)
        : source_(source)
    {}

    std::optional<std::vector<PatternPiece>> parse()
    {
        std::vector<PatternPiece> pieces;
        while (at_ < source_.size()) {
            const char c = source_[at_];
            if (c == '*' || c == '+' || c == '?') {
                if (pieces.empty() || pieces.back().repeat || pieces.back().kind == PatternPiece::Kind::Begin
                    || pieces.back().kind == PatternPiece::Kind::End)
                    return fail(std::string("nothing to repeat before \"") + c + "\"");
                pieces.back().repeat = c;
                ++at_;
                continue;
            }
            PatternPiece piece{PatternPiece::Kind::Byte};
            switch (c) {
            case '.':
                piece.kind = PatternPiece::Kind::AnyByte;
                ++at_;
                break;
            case '^':
                piece.kind = PatternPiece::Kind::Begin;
                ++at_;
                break;
            case '$':
                piece.kind = PatternPiece::Kind::End;
                ++at_;
                break;
            case '[':
                if (!parseClass(piece))
                    return std::nullopt;
                break;
            default: {
                auto byte = readByte();
                if (!byte)
                    return std::nullopt;
                piece.byte = *byte;
                break;
            }
            }
            pieces.push_back(piece);
        }
        return pieces;
    }

    std::vector<ByteSet> takeClasses() { return std::move(classes_); }
    const std::string &error() const { return error_; }

private:
    std::nullopt_t fail(std::string message)
    {
        error_ = message + " at offset " + std::to_string(at_);
        return std::nullopt;
    }

    // One byte, resolving a backslash escape.
    std::optional<unsigned char> readByte()
    {
        if (source_[at_] != '\\')
            return static_cast<unsigned char>(source_[at_++]);
        if (at_ + 1 >= source_.size())
            return fail("trailing backslash");
        at_ += 2;
        return escapedByte(source_[at_ - 1]);
    }

    bool parseClass(PatternPiece &piece)
    {
        const std::size_t open = at_++;
        ByteSet set;
        const bool negated = at_ < source_.size() && source_[at_] == '^';
        if (negated)
            ++at_;
        bool first = true;
        for (;;) {
            if (at_ >= source_.size()) {
                at_ = open;
                fail("unterminated character class");
                return false;
            }
            if (source_[at_] == ']' && !first) {
                ++at_;
                break;
            }
            first = false;
            const auto low = readByte();
            if (!low)
                return false;
            if (at_ + 1 < source_.size() && source_[at_] == '-' && source_[at_ + 1] != ']') {
                ++at_;
                const auto high = readByte();
                if (!high)
                    return false;
                if (*high < *low) {
                    fail("inverted range in character class");
                    return false;
                }
                set.addRange(*low, *high);
            } else {
                set.add(*low);
            }
        }
        if (negated)
            set.invert();
        piece.kind = PatternPiece::Kind::Class;
        piece.classIndex = static_cast<std::uint32_t>(classes_.size());
        classes_.push_back(set);
        return true;
    }

    std::string_view source_;
    std::size_t at_ = 0;
    std::vector<ByteSet> classes_;
    std::string error_;
};

PatternInstruction atomInstruction(const PatternPiece &piece)
{
    switch (piece.kind) {
    case PatternPiece::Kind::Byte: return {PatternOp::Byte, piece.byte};
    case PatternPiece::Kind::Class: return {PatternOp::Class, 0, 0, 0, piece.classIndex};
    case PatternPiece::Kind::AnyByte: return {PatternOp::AnyByte};
    case PatternPiece::Kind::Begin: return {PatternOp::AssertBegin};
    case PatternPiece::Kind::End: return {PatternOp::AssertEnd};
    }
    return {PatternOp::Match};
}

std::vector<PatternInstruction> emit(const std::vector<PatternPiece> &pieces)
{
    std::vector<PatternInstruction> code;
    auto here = [&] { return static_cast<std::uint32_t>(code.size()); };
    for (const PatternPiece &piece : pieces) {
        const PatternInstruction atom = atomInstruction(piece);
        switch (piece.repeat) {
        case '*': { // L: split A, out; A: atom; jump L; out:
            const std::uint32_t loop = here();
            code.push_back({PatternOp::Split, 0, loop + 1, loop + 3});
            code.push_back(atom);
            code.push_back({PatternOp::Jump, 0, loop});
            break;
        }
        case '+': { // A: atom; split A, out; out:
            const std::uint32_t start = here();
            code.push_back(atom);
            code.push_back({PatternOp::Split, 0, start, start + 2});
            break;
        }
        case '?': { // split A, out; A: atom; out:
            const std::uint32_t split = here();
            code.push_back({PatternOp::Split, 0, split + 1, split + 2});
            code.push_back(atom);
            break;
        }
        default: code.push_back(atom); break;
        }
    }
    code.push_back({PatternOp::Match});
    return code;
}

// The bytes that can start a match, found by following every empty path
// from the first instruction; none when a match can be empty.
void findFirstBytes(PatternProgram &program)
{
    const auto &code = program.instructions;
    std::vector<bool> seen(code.size());
    std::vector<std::uint32_t> pending{0};
    ByteSet first;
    while (!pending.empty()) {
        const std::uint32_t pc = pending.back();
        pending.pop_back();
        if (seen[pc])
            continue;
        seen[pc] = true;
        const PatternInstruction &instruction = code[pc];
        switch (instruction.op) {
        case PatternOp::Byte: first.add(instruction.byte); break;
        case PatternOp::Class: first.addAll(program.classes[instruction.classIndex]); break;
        case PatternOp::AnyByte:
        case PatternOp::Match: return;
        case PatternOp::Split:
            pending.push_back(instruction.alternative);
            pending.push_back(instruction.next);
            break;
        case PatternOp::Jump: pending.push_back(instruction.next); break;
        case PatternOp::AssertBegin:
        case PatternOp::AssertEnd: pending.push_back(pc + 1); break;
        }
    }
    program.hasFirstBytes = true;
    program.firstBytes = first;
}

} // namespace

std::variant<ParsedPattern, std::string> parsePattern(std::string_view source)
{
    Parser parser(source);
    auto pieces = parser.parse();
    if (!pieces)
        return parser.error();
    return ParsedPattern{std::move(*pieces), parser.takeClasses()};
}

PatternProgram emitPatternProgram(const ParsedPattern &parsed, bool reversed)
{
    std::vector<PatternPiece> pieces = parsed.pieces;
    if (reversed) {
        std::reverse(pieces.begin(), pieces.end());
        for (PatternPiece &piece : pieces) {
            if (piece.kind == PatternPiece::Kind::Begin)
                piece.kind = PatternPiece::Kind::End;
            else if (piece.kind == PatternPiece::Kind::End)
                piece.kind = PatternPiece::Kind::Begin;
        }
    }
    PatternProgram program;
    program.classes = parsed.classes;
    program.instructions = emit(pieces);
    program.anchoredAtBegin = !pieces.empty() && pieces.front().kind == PatternPiece::Kind::Begin;
    findFirstBytes(program);
    return program;
}

} // namespace vyr
