// The pattern matcher on any pattern and text: compiling never fails
// without saying why, searching never fails, foundIn() agrees with find(),
// and on small inputs both agree with a backtracking matcher.
#include "support/patternreference.h"
#include "util/pattern.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    if (size == 0)
        return 0;
    // The first byte says how long the pattern is; the rest is the text.
    const std::size_t patternSize = std::min<std::size_t>(data[0], size - 1);
    const std::string_view source(reinterpret_cast<const char *>(data + 1), patternSize);
    const std::string_view text(reinterpret_cast<const char *>(data + 1 + patternSize), size - 1 - patternSize);
    const vyr::Pattern pattern(source);
    if (!pattern.ok()) {
        if (pattern.error().empty())
            std::abort();
        return 0;
    }
    const auto match = pattern.find(text);
    if (pattern.foundIn(text) != match.has_value())
        std::abort();
    if (match && (match->begin > match->end || match->end > text.size()))
        std::abort();
    // The backtracker is exponential: only on small inputs.
    const auto quantifiers
        = std::count_if(source.begin(), source.end(), [](char c) { return c == '*' || c == '+' || c == '?'; });
    if (quantifiers <= 4 && text.size() <= 24) {
        const auto expected = vyr::testing::ReferencePattern(source).find(text);
        if (expected.has_value() != match.has_value()
            || (match && (expected->first != match->begin || expected->second != match->end)))
            std::abort();
    }
    return 0;
}
