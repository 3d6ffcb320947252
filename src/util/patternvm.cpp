// The Pike VM: the threads of the program run in step over the text, in
// priority order, so the first thread to match is the one a backtracking
// matcher would have found.
#include "util/patternprogram_p.h"

#include <cstring>

namespace vyr {
namespace {

struct Thread
{
    std::uint32_t pc;
    std::size_t start;
};

// The working memory of a search, kept per thread so that a search does not
// allocate once it has run with a program of the same size.
struct SearchScratch
{
    std::vector<Thread> current;
    std::vector<Thread> next;
    // The list generation that last added each instruction: each instruction
    // joins a list at most once per text position, which bounds the work.
    std::vector<std::uint64_t> addedIn;
    std::vector<std::uint32_t> stack;
    std::uint64_t generation = 0;

    void prepare(std::size_t programSize)
    {
        if (addedIn.size() < programSize) {
            addedIn.assign(programSize, 0);
            generation = 0;
        }
        current.clear();
        next.clear();
    }
};

class PikeVm
{
public:
    PikeVm(const PatternProgram &program, std::string_view text, SearchScratch &scratch)
        : code_(program.instructions)
        , program_(program)
        , text_(text)
        , s_(scratch)
    {}

    std::optional<PatternMatch> run()
    {
        s_.prepare(code_.size());
        std::optional<PatternMatch> found;
        const std::size_t size = text_.size();
        std::uint64_t currentGeneration = ++s_.generation;
        for (std::size_t position = 0; position <= size; ++position) {
            if (!found) {
                if (s_.current.empty()) {
                    if (program_.anchoredAtBegin && position > 0)
                        break;
                    position = skipToPossibleStart(position);
                    // Marks left by a list that came out empty were made for
                    // another position: start a fresh generation.
                    currentGeneration = ++s_.generation;
                }
                if (!program_.anchoredAtBegin || position == 0)
                    addThread(s_.current, currentGeneration, 0, position, position);
            }
            if (s_.current.empty()) {
                if (found)
                    break;
                continue; // nothing starts here; try the next position
            }
            const std::uint64_t nextGeneration = ++s_.generation;
            for (const Thread &thread : s_.current) {
                const PatternInstruction &instruction = code_[thread.pc];
                if (instruction.op == PatternOp::Match) {
                    found = PatternMatch{thread.start, position};
                    break; // the threads after this one have lower priority
                }
                if (position < size && program_.consumes(instruction, static_cast<unsigned char>(text_[position])))
                    addThread(s_.next, nextGeneration, thread.pc + 1, thread.start, position + 1);
            }
            std::swap(s_.current, s_.next);
            s_.next.clear();
            currentGeneration = nextGeneration;
            if (found && s_.current.empty())
                break;
        }
        return found;
    }

private:
    // The first position at or after `position` where a match may begin.
    std::size_t skipToPossibleStart(std::size_t position) const
    {
        if (!program_.hasFirstBytes)
            return position;
        const std::size_t size = text_.size();
        if (program_.firstBytes.count() == 1) {
            unsigned char only = 0;
            while (!program_.firstBytes.contains(only))
                ++only;
            const void *hit = std::memchr(text_.data() + position, only, size - position);
            return hit ? static_cast<std::size_t>(static_cast<const char *>(hit) - text_.data()) : size;
        }
        while (position < size && !program_.firstBytes.contains(static_cast<unsigned char>(text_[position])))
            ++position;
        return position;
    }

    // Adds the thread at `pc` to `list`, following jumps, splits and anchors
    // in priority order, as the threads that wait for the byte at `position`.
    void addThread(std::vector<Thread> &list, std::uint64_t generation, std::uint32_t pc, std::size_t start,
                   std::size_t position)
    {
        s_.stack.clear();
        s_.stack.push_back(pc);
        while (!s_.stack.empty()) {
            const std::uint32_t at = s_.stack.back();
            s_.stack.pop_back();
            if (s_.addedIn[at] == generation)
                continue;
            s_.addedIn[at] = generation;
            const PatternInstruction &instruction = code_[at];
            switch (instruction.op) {
            case PatternOp::Jump: s_.stack.push_back(instruction.next); break;
            case PatternOp::Split:
                s_.stack.push_back(instruction.alternative);
                s_.stack.push_back(instruction.next);
                break;
            case PatternOp::AssertBegin:
                if (position == 0)
                    s_.stack.push_back(at + 1);
                break;
            case PatternOp::AssertEnd:
                if (position == text_.size())
                    s_.stack.push_back(at + 1);
                break;
            default: list.push_back({at, start}); break;
            }
        }
    }

    const std::vector<PatternInstruction> &code_;
    const PatternProgram &program_;
    std::string_view text_;
    SearchScratch &s_;
};

} // namespace

std::optional<PatternMatch> runPikeVm(const PatternProgram &program, std::string_view text)
{
    thread_local SearchScratch scratch;
    return PikeVm(program, text, scratch).run();
}

} // namespace vyr
