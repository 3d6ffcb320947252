#include "ftpropsdlg/applyselection.h"

#include "ftprops/guiparameterline.h"
#include "util/macrovalues.h"
#include "util/resourceids.h"
#include "util/wordsplitter.h"

#include <algorithm>
#include <set>
#include <unordered_set>

namespace vyr {
namespace {

// Blank-separated items where double quotes group; empty on bad quoting or
// parentheses.
StringList splitItems(const std::string &answer)
{
    StringList items;
    if (!splitWords(answer, items, " ", false, true, false))
        items.clear();
    return items;
}

// Pieces cut at every blank, "%" and line feed outside double quotes; a
// piece loses quotes that enclose it whole. The prompter quotes a chosen
// name that holds a blank, which formats allow: cut inside the quotes, the
// attribute the person chose would reach no feature type.
StringList splitPieces(const std::string &answer)
{
    StringList pieces;
    std::string piece;
    bool quoted = false;
    const auto flush = [&] {
        if (piece.size() >= 2 && piece.front() == '"' && piece.back() == '"')
            piece = piece.substr(1, piece.size() - 2);
        if (!piece.empty())
            pieces.push_back(piece);
        piece.clear();
    };
    for (const char c : answer) {
        if (c == '"')
            quoted = !quoted;
        if (!quoted && (c == ' ' || c == '%' || c == '\n'))
            flush();
        else
            piece += c;
    }
    flush();
    return pieces;
}

// The answer to a list that was asked; answers to anything else stand for nothing.
const std::string *answerOf(const std::map<std::string, std::string> &answers, const std::set<std::string> &asked,
                            const char *key)
{
    if (!asked.contains(key))
        return nullptr;
    const auto it = answers.find(key);
    return it == answers.end() ? nullptr : &it->second;
}

} // namespace

StringList NamesNotIn(const StringList &all, const StringList &kept)
{
    const std::unordered_set<std::string> keptSet(kept.begin(), kept.end());
    StringList rest;
    for (const std::string &name : all) {
        if (!keptSet.contains(name))
            rest.push_back(name);
    }
    return rest;
}

ApplyPrompt::ApplyPrompt(const ApplyPromptInput &input, const std::function<std::string(unsigned)> &text)
    : m_yes(quoteMacroValue(text(res::Yes)))
    , m_no(quoteMacroValue(text(res::No)))
    , m_text(text)
{
    std::string everyone;
    for (const std::string &name : input.otherFeatureTypes)
        everyone += quoteMacroValue(name) + " ";
    addList("FEAT_TYPES", res::ApplyFeatureTypes, input.otherFeatureTypes, &everyone);
    m_definitions.push_back("GUI DIVIDER");

    if (input.destination) {
        addChoice("DATASET", res::ApplyDataset);
        addChoice("GEOM", res::ApplyGeometry);
    }
    if (input.database)
        addChoice("DB_USER", res::ApplyDatabaseUser);
    if (input.destination)
        addChoice("FANOUT", res::ApplyFanout);
    else
        addChoice("MERGE", res::ApplyMerge);

    const std::string none;
    if (input.hasUserAttributes && input.destination) {
        if (!input.pageAttributes.empty())
            addList("ATTRIBUTES", res::ApplyAttributes, input.pageAttributes, &none);
        const StringList removed = NamesNotIn(input.recordAttributes, input.pageAttributes);
        if (!removed.empty())
            addList("DELETE_ATTRIBUTES", res::ApplyDeleteAttributes, removed, &none);
    }
    if (!input.pageFormatAttributes.empty())
        addList("FORMAT_ATTRIBUTES", res::ApplyFormatAttributes, input.pageFormatAttributes, &none);
    const StringList unexposed = NamesNotIn(input.recordFormatAttributes, input.pageFormatAttributes);
    if (!unexposed.empty())
        addList("DELETE_FORMAT_ATTRIBUTES", res::ApplyDeleteFormatAttributes, unexposed, &none);

    if (input.hasParameters) {
        StringList prompts;
        for (const auto &[name, line] : input.parameterLines) {
            const std::string raw = ParseParameterLine(line).prompt;
            const std::string prompt = input.localisePrompt ? input.localisePrompt(raw) : raw;
            prompts.push_back(prompt);
            m_parameterByPrompt[prompt] = name;
        }
        addList("PARAMETERS", res::ApplyParameters, prompts, nullptr);
    }
    if (input.destination)
        addChoice("DYNAMIC_SETTINGS", res::ApplyDynamicSettings);
}

void ApplyPrompt::addList(const std::string &key, unsigned prompt, const StringList &choices,
                          const std::string *defaultValue)
{
    m_listKeys.insert(key);
    m_definitions.push_back("GUI LISTBOX " + key + " " + joinMacroValues(choices) + " " + m_text(prompt));
    if (defaultValue)
        m_defaults.push_back("DEFAULT_MACRO " + key + " " + *defaultValue);
}

void ApplyPrompt::addChoice(const std::string &key, unsigned prompt)
{
    static const std::map<std::string, unsigned> masks{
        {"DATASET", general::Dataset}, {"GEOM", general::Geometry}, {"DB_USER", general::DatabaseUser},
        {"FANOUT", general::Fanout},   {"MERGE", general::Merge},   {"DYNAMIC_SETTINGS", general::AllDynamic},
    };
    m_definitions.push_back("GUI CHOICE " + key + " " + m_yes + "%" + m_no + " " + m_text(prompt));
    m_defaults.push_back("DEFAULT_MACRO " + key + " " + m_no);
    m_choiceMasks[key] = masks.at(key);
}

ApplySelection ApplyPrompt::read(const std::map<std::string, std::string> &answers) const
{
    ApplySelection selection;
    if (const std::string *answer = answerOf(answers, m_listKeys, "FEAT_TYPES"))
        selection.targets = splitItems(*answer);
    for (const auto &[key, mask] : m_choiceMasks) {
        const auto it = answers.find(key);
        if (it != answers.end() && it->second == m_yes)
            selection.generalMask |= mask;
    }
    const std::pair<const char *, StringList *> lists[] = {
        {"ATTRIBUTES", &selection.attributes},
        {"DELETE_ATTRIBUTES", &selection.deleteAttributes},
        {"FORMAT_ATTRIBUTES", &selection.formatAttributes},
        {"DELETE_FORMAT_ATTRIBUTES", &selection.deleteFormatAttributes},
    };
    for (const auto &[key, list] : lists) {
        if (const std::string *answer = answerOf(answers, m_listKeys, key))
            *list = splitPieces(*answer);
    }
    if (const std::string *answer = answerOf(answers, m_listKeys, "PARAMETERS")) {
        for (const std::string &item : splitItems(*answer)) {
            const auto it = m_parameterByPrompt.find(item);
            if (it != m_parameterByPrompt.end())
                selection.parameters.insert(it->second);
        }
    }
    return selection;
}

} // namespace vyr
