#include "guidefinition.h"

#include "util/asciitext.h"
#include "util/macrovalues.h"
#include "util/wordsplitter.h"

#include <algorithm>

namespace vyr::services {

namespace {

constexpr std::string_view kSelectionBoxKey = "SELECTION_BOX_ONLY";

std::string unquoted(std::string_view text)
{
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"')
        text = text.substr(1, text.size() - 2);
    return std::string(text);
}

// The choices after a key. Lines are joined with single blanks, so a second
// blank right after the key stands for an empty list of choices.
std::string_view takeChoices(std::string_view &rest)
{
    if (!rest.empty() && rest.front() == ' ') {
        rest.remove_prefix(1);
        return {};
    }
    return takeMacroToken(rest);
}

void readPrompt(std::string_view kind, std::string_view rest, bool optional, GuiDefinition &definition)
{
    GuiPrompt prompt;
    prompt.optional = optional;
    std::string_view choices;
    if (kind == "LISTBOX" || kind == "CHOICE") {
        prompt.kind = kind == "LISTBOX" ? GuiPromptKind::ListBox : GuiPromptKind::Choice;
        prompt.key = std::string(takeMacroToken(rest));
        choices = takeChoices(rest);
    } else if (kind == kSelectionBoxKey) {
        prompt.kind = GuiPromptKind::SelectionBox;
        prompt.key = std::string(kSelectionBoxKey);
        choices = takeMacroToken(rest);
    } else if (kind == "ICONPICKONLY") {
        prompt.kind = GuiPromptKind::IconPick;
        prompt.key = std::string(takeMacroToken(rest));
    } else if (kind == "DIVIDER") {
        prompt.kind = GuiPromptKind::Divider;
    } else {
        return;
    }
    if (prompt.kind != GuiPromptKind::Divider && prompt.key.empty())
        return;
    prompt.choices = splitMacroValues(choices);
    prompt.rawChoices = splitMacroValues(choices, true);
    prompt.prompt = std::string(trimWhitespace(rest));
    definition.prompts.push_back(std::move(prompt));
}

} // namespace

GuiDefinition parseGuiDefinition(std::string_view text)
{
    GuiDefinition definition;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
        if (!line.empty() && line.back() == '\r')
            line.remove_suffix(1);

        std::string_view rest = line;
        const std::string_view first = takeMacroToken(rest);
        if (first == "DEFAULT_MACRO") {
            const std::string key(takeMacroToken(rest));
            if (!key.empty())
                definition.defaults[key] = std::string(rest);
            continue;
        }
        if (first != "GUI")
            continue;
        std::string_view kind = takeMacroToken(rest);
        if (kind == "TITLE") {
            definition.title = std::string(trimWhitespace(rest));
        } else if (kind == "HELP") {
            definition.help = unquoted(trimWhitespace(rest));
        } else {
            const bool optional = kind == "OPTIONAL";
            if (optional)
                kind = takeMacroToken(rest);
            readPrompt(kind, rest, optional, definition);
        }
    }
    return definition;
}

StringList defaultValues(const GuiDefinition &definition, const GuiPrompt &prompt)
{
    const auto found = definition.defaults.find(prompt.key);
    if (found == definition.defaults.end())
        return {};
    const std::string_view value = found->second;
    switch (prompt.kind) {
    case GuiPromptKind::ListBox: {
        StringList words;
        if (!splitWords(value, words, " ", true, false, false))
            return {};
        return words;
    }
    case GuiPromptKind::SelectionBox: return splitMacroValues(trimWhitespace(value));
    case GuiPromptKind::Choice: {
        const std::string_view wanted = trimWhitespace(value);
        for (std::size_t i = 0; i < prompt.rawChoices.size(); ++i) {
            if (prompt.rawChoices[i] == wanted || prompt.choices[i] == wanted)
                return {prompt.choices[i]};
        }
        return {};
    }
    case GuiPromptKind::IconPick: return {std::string(trimWhitespace(value))};
    case GuiPromptKind::Divider: break;
    }
    return {};
}

std::string writeGuiAnswers(const GuiDefinition &definition, const std::map<std::string, StringList> &answers)
{
    std::string file;
    for (const GuiPrompt &prompt : definition.prompts) {
        if (prompt.kind == GuiPromptKind::Divider)
            continue;
        const auto found = answers.find(prompt.key);
        const StringList values = found == answers.end() ? StringList() : found->second;
        if (prompt.kind == GuiPromptKind::SelectionBox) {
            for (const std::string &value : values)
                file += value + "\n";
            continue;
        }
        std::string answer;
        if (prompt.kind == GuiPromptKind::ListBox) {
            for (const std::string &value : values)
                answer += (answer.empty() ? "" : " ") + quoteMacroValue(value);
        } else if (prompt.kind == GuiPromptKind::Choice && !values.empty()) {
            const auto at = std::find(prompt.choices.begin(), prompt.choices.end(), values.front());
            answer = at == prompt.choices.end() ? values.front() : prompt.rawChoices[at - prompt.choices.begin()];
        } else if (!values.empty()) {
            answer = values.front();
        }
        file += prompt.key + "\n" + answer + "\n";
    }
    return file;
}

} // namespace vyr::services
