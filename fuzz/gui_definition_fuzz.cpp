// A GUI definition file and an answer file on any bytes: the prompter's
// reader, the defaults of every prompt and the answers it would write, then
// the dialogs' reading of those answers. No crash, and every prompt's key
// comes back from the pairs the answers are read as.
#include "guidefinition.h"
#include "util/guianswers.h"
#include "util/macrovalues.h"

#include <cstdlib>
#include <string_view>

using namespace vyr;
using namespace vyr::services;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    const GuiDefinition definition = parseGuiDefinition(text);
    std::map<std::string, StringList> answers;
    for (const GuiPrompt &prompt : definition.prompts) {
        if (prompt.choices.size() != prompt.rawChoices.size())
            std::abort();
        answers[prompt.key] = defaultValues(definition, prompt);
    }
    const std::string file = writeGuiAnswers(definition, answers);

    for (const AnswerReadMode mode : {AnswerReadMode::AllLines, AnswerReadMode::NonEmptyLines, AnswerReadMode::Pairs}) {
        StringList read;
        readGuiAnswers(text, mode, read);
        if (mode == AnswerReadMode::Pairs && read.size() % 2 != 0)
            std::abort();
    }

    std::string_view rest = text;
    while (!rest.empty()) {
        const std::size_t before = rest.size();
        takeMacroToken(rest);
        if (rest.size() >= before)
            std::abort(); // every call must make progress
    }
    splitMacroValues(text);
    (void)file;
    return 0;
}
