// Reading the answer file that the prompter writes for a GUI definition.
#ifndef VYR_UTIL_GUIANSWERS_H
#define VYR_UTIL_GUIANSWERS_H

#include "util/listpacking.h"

#include <string_view>

namespace vyr {

enum class AnswerReadMode {
    AllLines, // every line, empty ones included
    NonEmptyLines, // only lines that are not empty
    Pairs, // a non-empty line and the line after it (which may be empty);
           // an empty line where a pair would start is skipped
};

// Appends the answers of `text` (lines ended by line feeds; a last line
// without one counts too) to `answers`, read in `mode`. In pairs mode the
// answers come as key, value, key, value...
void readGuiAnswers(std::string_view text, AnswerReadMode mode, StringList &answers);

} // namespace vyr

#endif // VYR_UTIL_GUIANSWERS_H
