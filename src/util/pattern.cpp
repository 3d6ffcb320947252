#include "util/pattern.h"

#include "util/patterndfa_p.h"
#include "util/patternprogram_p.h"

namespace vyr {

// A pattern's two engines: the Pike VM finds where a match is; the
// automaton, where it could be built, says quickly whether there is one.
struct CompiledPattern
{
    PatternProgram program;
    std::optional<PatternDfa> dfa;
};

Pattern::Pattern(std::string_view source)
    : source_(source)
{
    auto parsed = parsePattern(source);
    if (auto *error = std::get_if<std::string>(&parsed)) {
        error_ = std::move(*error);
        return;
    }
    const ParsedPattern &pattern = std::get<ParsedPattern>(parsed);
    auto compiled = std::make_shared<CompiledPattern>();
    compiled->program = emitPatternProgram(pattern, false);
    // A pattern that ends in "$" is decided from the end of the text.
    const bool fromTheEnd = !pattern.pieces.empty() && pattern.pieces.back().kind == PatternPiece::Kind::End;
    compiled->dfa = fromTheEnd ? PatternDfa::build(emitPatternProgram(pattern, true), true)
                               : PatternDfa::build(compiled->program, false);
    compiled_ = std::move(compiled);
}

Pattern::~Pattern() = default;
Pattern::Pattern(const Pattern &) = default;
Pattern &Pattern::operator=(const Pattern &) = default;
Pattern::Pattern(Pattern &&) noexcept = default;
Pattern &Pattern::operator=(Pattern &&) noexcept = default;

std::optional<PatternMatch> Pattern::find(std::string_view text) const
{
    if (!compiled_ || (compiled_->dfa && !compiled_->dfa->matches(text)))
        return std::nullopt;
    return runPikeVm(compiled_->program, text);
}

bool Pattern::foundIn(std::string_view text) const
{
    if (!compiled_)
        return false;
    if (compiled_->dfa)
        return compiled_->dfa->matches(text);
    return runPikeVm(compiled_->program, text).has_value();
}

} // namespace vyr
