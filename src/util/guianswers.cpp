#include "util/guianswers.h"

namespace vyr {

void readGuiAnswers(std::string_view text, AnswerReadMode mode, StringList &answers)
{
    StringList lines = splitList(text, '\n');
    // A final line feed ends the last line; it does not start another.
    if (!lines.empty() && lines.back().empty())
        lines.pop_back();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        switch (mode) {
        case AnswerReadMode::AllLines: answers.push_back(lines[i]); break;
        case AnswerReadMode::NonEmptyLines:
            if (!lines[i].empty())
                answers.push_back(lines[i]);
            break;
        case AnswerReadMode::Pairs:
            if (lines[i].empty())
                break;
            answers.push_back(lines[i]);
            answers.push_back(i + 1 < lines.size() ? lines[i + 1] : std::string());
            ++i;
            break;
        }
    }
}

} // namespace vyr
