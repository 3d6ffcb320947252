#include "util/patterndfa_p.h"

#include "util/bytescan_p.h"

#include <algorithm>
#include <bit>
#include <map>

namespace vyr {
namespace {

// Building gives up past this many closure steps: a pattern that needs more
// is served by the Pike VM alone.
constexpr std::size_t kBuildBudget = 4'000'000;

// A state is a sorted set of instructions: those that read a byte, and the
// end assertions and matches reached without reading one.
using InstructionSet = std::vector<std::uint32_t>;

} // namespace

class PatternDfa::Builder
{
public:
    explicit Builder(const PatternProgram &program)
        : program_(program)
        , code_(program.instructions)
        , addedIn_(code_.size(), 0)
    {
        findByteClasses();
    }

    std::optional<PatternDfa> build(bool fromTheEnd)
    {
        InstructionSet start;
        close(0, true, start);
        const int startId = intern(std::move(start), true);
        // Live states in the order they were found; their sets in `sets_`.
        std::vector<std::array<int, 256>> transitions;
        for (std::size_t state = 0; state < sets_.size(); ++state) {
            if (sets_.size() + kFirstLive > 256 || work_ > kBuildBudget)
                return std::nullopt;
            std::vector<int> targetOfClass(representative_.size());
            for (unsigned cls = 0; cls < representative_.size(); ++cls)
                targetOfClass[cls] = intern(step(sets_[state], representative_[cls]), false);
            std::array<int, 256> row{};
            for (unsigned byte = 0; byte < 256; ++byte)
                row[byte] = targetOfClass[classOf_[byte]];
            transitions.push_back(row);
        }
        if (sets_.size() + kFirstLive > 256 || work_ > kBuildBudget)
            return std::nullopt;
        return assemble(transitions, startId, fromTheEnd);
    }

private:
    // Final states are told apart from live ones (numbered from 0 in
    // `sets_`) by these negative numbers until the states are numbered.
    static constexpr int kDeadMark = -1;
    static constexpr int kMatchedMark = -2;

    // Two bytes are alike when every instruction treats them alike; the
    // automaton is worked out once per class of alike bytes.
    void findByteClasses()
    {
        classOf_.fill(0);
        unsigned classes = 1;
        for (const PatternInstruction &instruction : code_) {
            if (instruction.op != PatternOp::Byte && instruction.op != PatternOp::Class)
                continue;
            std::map<std::pair<unsigned, bool>, unsigned> split;
            for (unsigned byte = 0; byte < 256; ++byte) {
                const auto key
                    = std::make_pair(classOf_[byte], program_.consumes(instruction, static_cast<unsigned char>(byte)));
                classOf_[byte] = split.try_emplace(key, static_cast<unsigned>(split.size())).first->second;
            }
            classes = static_cast<unsigned>(split.size());
        }
        representative_.assign(classes, 0);
        for (unsigned byte = 256; byte-- > 0;)
            representative_[classOf_[byte]] = static_cast<unsigned char>(byte);
    }

    // Follows every path from the instructions on the stack that reads no
    // byte: jumps, splits, start assertions when `atBegin`, end assertions
    // when `atEnd`. Calls `reached` with each instruction where a path
    // stops, once per generation.
    template <typename Reached>
    void followEmptyPaths(bool atBegin, bool atEnd, Reached reached)
    {
        while (!stack_.empty()) {
            const std::uint32_t at = stack_.back();
            stack_.pop_back();
            ++work_;
            if (addedIn_[at] == generation_)
                continue;
            addedIn_[at] = generation_;
            const PatternInstruction &instruction = code_[at];
            if (instruction.op == PatternOp::Jump) {
                stack_.push_back(instruction.next);
            } else if (instruction.op == PatternOp::Split) {
                stack_.push_back(instruction.alternative);
                stack_.push_back(instruction.next);
            } else if (instruction.op == PatternOp::AssertBegin) {
                if (atBegin)
                    stack_.push_back(at + 1);
            } else if (instruction.op == PatternOp::AssertEnd && atEnd) {
                stack_.push_back(at + 1);
            } else {
                reached(at);
            }
        }
    }

    // Adds to `set` the instructions reachable from `pc` without reading a
    // byte; end assertions are kept, not passed.
    void close(std::uint32_t pc, bool atBegin, InstructionSet &set)
    {
        stack_.assign(1, pc);
        followEmptyPaths(atBegin, false, [&set](std::uint32_t at) { set.push_back(at); });
    }

    // The set after reading `byte` in the state of set `from`.
    InstructionSet step(const InstructionSet &from, unsigned char byte)
    {
        InstructionSet to;
        ++generation_;
        for (const std::uint32_t pc : from) {
            if (program_.consumes(code_[pc], byte))
                close(pc + 1, false, to);
        }
        // An unanchored search may start a match at every position.
        if (!program_.anchoredAtBegin)
            close(0, false, to);
        return to;
    }

    // Whether a state of set `set` matches when the text ends there.
    bool matchesAtEnd(const InstructionSet &set, bool atBegin)
    {
        ++generation_;
        stack_.clear();
        for (const std::uint32_t pc : set) {
            if (code_[pc].op == PatternOp::AssertEnd)
                stack_.push_back(pc);
        }
        bool matched = false;
        followEmptyPaths(atBegin, true,
                         [&](std::uint32_t at) { matched = matched || code_[at].op == PatternOp::Match; });
        return matched;
    }

    int intern(InstructionSet set, bool atBegin)
    {
        std::sort(set.begin(), set.end());
        set.erase(std::unique(set.begin(), set.end()), set.end());
        if (set.empty())
            return kDeadMark;
        if (std::any_of(set.begin(), set.end(), [this](std::uint32_t pc) { return code_[pc].op == PatternOp::Match; }))
            return kMatchedMark;
        // Only the start state is at the beginning; the flag in its key keeps
        // it apart from a later state with the same instructions.
        InstructionSet key = set;
        if (atBegin)
            key.push_back(UINT32_MAX);
        const auto [found, added] = ids_.try_emplace(std::move(key), static_cast<int>(sets_.size()));
        if (added) {
            endMatches_.push_back(matchesAtEnd(set, atBegin));
            sets_.push_back(std::move(set));
        }
        return found->second;
    }

    // Numbers the states, the skipping ones last, and fills the tables.
    PatternDfa assemble(const std::vector<std::array<int, 256>> &transitions, int startId, bool fromTheEnd)
    {
        const std::size_t live = transitions.size();
        std::vector<Skip> skipOf(live);
        std::vector<bool> skipping(live);
        for (std::size_t state = 0; state < live; ++state) {
            for (unsigned byte = 0; byte < 256; ++byte) {
                if (transitions[state][byte] == static_cast<int>(state))
                    continue;
                if (skipOf[state].count == skipOf[state].exits.size()) {
                    skipOf[state].count = UINT8_MAX; // too many ways out
                    break;
                }
                skipOf[state].exits[skipOf[state].count++] = static_cast<unsigned char>(byte);
            }
            skipping[state] = skipOf[state].count != UINT8_MAX;
        }
        // The states counted in a std::size_t: with every number in use the
        // count is 256, which a state number cannot hold.
        std::vector<std::uint8_t> number(live);
        std::size_t next = kFirstLive;
        for (const bool wanted : {false, true}) {
            for (std::size_t state = 0; state < live; ++state) {
                if (skipping[state] == wanted)
                    number[state] = static_cast<std::uint8_t>(next++);
            }
        }
        auto numberOf = [&](int id) -> std::uint8_t {
            return id == kDeadMark ? kDead : id == kMatchedMark ? kMatched : number[static_cast<std::size_t>(id)];
        };

        PatternDfa dfa;
        dfa.fromTheEnd_ = fromTheEnd;
        dfa.start_ = numberOf(startId);
        dfa.firstSkipping_
            = static_cast<std::uint8_t>(kFirstLive + std::count(skipping.begin(), skipping.end(), false));
        dfa.next_.assign(next * 256, kDead);
        dfa.matchesAtEnd_.assign(next, 0);
        dfa.matchesAtEnd_[kMatched] = 1;
        dfa.skips_.resize(next - dfa.firstSkipping_);
        for (std::size_t state = 0; state < live; ++state) {
            const std::uint8_t n = number[state];
            for (unsigned byte = 0; byte < 256; ++byte)
                dfa.next_[n * 256u + byte] = numberOf(transitions[state][byte]);
            dfa.matchesAtEnd_[n] = endMatches_[state];
            if (skipping[state])
                dfa.skips_[n - dfa.firstSkipping_] = skipOf[state];
        }
        return dfa;
    }

    const PatternProgram &program_;
    const std::vector<PatternInstruction> &code_;
    std::vector<std::uint64_t> addedIn_;
    std::uint64_t generation_ = 1;
    std::vector<std::uint32_t> stack_;
    std::size_t work_ = 0;
    std::array<unsigned, 256> classOf_{};
    std::vector<unsigned char> representative_;
    std::map<InstructionSet, int> ids_;
    std::vector<InstructionSet> sets_;
    std::vector<bool> endMatches_;
};

std::optional<PatternDfa> PatternDfa::build(const PatternProgram &program, bool fromTheEnd)
{
    return Builder(program).build(fromTheEnd);
}

std::size_t PatternDfa::skipForward(std::string_view text, std::size_t from, const Skip &skip) const
{
    std::size_t i = from;
    for (; i + 8 <= text.size(); i += 8) {
        const std::uint64_t word = bytescan::loadWord(text.data() + i);
        std::uint64_t exits = 0;
        for (std::uint8_t k = 0; k < skip.count; ++k)
            exits |= bytescan::bytesEqual(word, skip.exits[k]);
        if (exits)
            return i + static_cast<std::size_t>(std::countr_zero(exits)) / 8;
    }
    for (; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (std::find(skip.exits.begin(), skip.exits.begin() + skip.count, byte) != skip.exits.begin() + skip.count)
            return i;
    }
    return i;
}

std::size_t PatternDfa::skipBackward(std::string_view text, std::size_t end, const Skip &skip) const
{
    std::size_t i = end;
    for (; i >= 8; i -= 8) {
        const std::uint64_t word = bytescan::loadWord(text.data() + i - 8);
        std::uint64_t exits = 0;
        for (std::uint8_t k = 0; k < skip.count; ++k)
            exits |= bytescan::bytesEqual(word, skip.exits[k]);
        if (exits)
            return i - 8 + static_cast<std::size_t>(63 - std::countl_zero(exits)) / 8 + 1;
    }
    for (; i > 0; --i) {
        const auto byte = static_cast<unsigned char>(text[i - 1]);
        if (std::find(skip.exits.begin(), skip.exits.begin() + skip.count, byte) != skip.exits.begin() + skip.count)
            return i;
    }
    return i;
}

bool PatternDfa::matches(std::string_view text) const
{
    std::uint8_t state = start_;
    if (state < kFirstLive)
        return state == kMatched;
    if (!fromTheEnd_) {
        for (std::size_t i = 0; i < text.size();) {
            if (state >= firstSkipping_) {
                i = skipForward(text, i, skips_[state - firstSkipping_]);
                if (i == text.size())
                    break;
            }
            state = next_[state * 256u + static_cast<unsigned char>(text[i++])];
            if (state < kFirstLive)
                return state == kMatched;
        }
    } else {
        for (std::size_t i = text.size(); i > 0;) {
            if (state >= firstSkipping_) {
                i = skipBackward(text, i, skips_[state - firstSkipping_]);
                if (i == 0)
                    break;
            }
            state = next_[state * 256u + static_cast<unsigned char>(text[--i])];
            if (state < kFirstLive)
                return state == kMatched;
        }
    }
    return matchesAtEnd_[state];
}

} // namespace vyr
