#include "ftprops/guiparameterline.h"

#include "util/wordsplitter.h"

#include <algorithm>
#include <array>

namespace vyr {

namespace {

constexpr std::array<std::string_view, 3> kFileLikeTypes{"FILENAME", "MULTIFILE", "ESRI_LAYER"};

constexpr std::array<std::string_view, 23> kChoiceTakingTypes{"CHOICE",
                                                              "ATTR",
                                                              "LISTBOX",
                                                              "FLOAT_OR_ATTR",
                                                              "INT_OR_ATTR",
                                                              "FILE_OR_ATTR",
                                                              "STRING_OR_ATTR",
                                                              "STRING_OR_CHOICE",
                                                              "INT_OR_CHOICE",
                                                              "FLOAT_OR_CHOICE",
                                                              "FONT_OR_ATTR",
                                                              "LISTBOX_OR_ATTR",
                                                              "STRING_OR_ATTR_ENCODED",
                                                              "FLOAT_OR_ATTR_ENCODED",
                                                              "INT_OR_ATTR_ENCODED",
                                                              "ATTR_ENCODED",
                                                              "ATTRLIST_ENCODED",
                                                              "ATTRLIST_COMMAS_ENCODED",
                                                              "ACTIVECHOICE",
                                                              "CHECKBOX",
                                                              "ACTIVECHECKBOX",
                                                              "ACTIVEGROUP",
                                                              "RADIO_GROUP"};

template <std::size_t N>
bool contains(const std::array<std::string_view, N> &types, std::string_view type)
{
    return std::find(types.begin(), types.end(), type) != types.end();
}

// Sets the flag a modifier names; false when the token is no modifier.
bool readModifier(const std::string &token, GuiParameterLine &line)
{
    const std::pair<const char *, bool GuiParameterLine::*> modifiers[] = {
        {"OPTIONAL", &GuiParameterLine::optional},          {"WHOLE_LINE", &GuiParameterLine::wholeLine},
        {"DISABLED_ONLY", &GuiParameterLine::disabledOnly}, {"ALWAYS_ENABLED", &GuiParameterLine::alwaysEnabled},
        {"FORCE_DEFS", &GuiParameterLine::forceDefaults},
    };
    for (const auto &[name, flag] : modifiers) {
        if (token == name) {
            line.*flag = true;
            return true;
        }
    }
    return false;
}

StringList choicesOf(const std::string &token)
{
    StringList choices;
    for (std::string &piece : splitList(token, '%')) {
        if (piece.empty())
            continue;
        if (piece.size() >= 2 && piece.front() == '"' && piece.back() == '"')
            piece = piece.substr(1, piece.size() - 2);
        choices.push_back(std::move(piece));
    }
    return choices;
}

} // namespace

bool isFileLikeGuiType(std::string_view type)
{
    return contains(kFileLikeTypes, type);
}

bool isChoiceTakingGuiType(std::string_view type)
{
    return contains(kChoiceTakingTypes, type);
}

GuiParameterLine ParseParameterLine(std::string_view text)
{
    GuiParameterLine line;
    StringList tokens;
    if (!splitWords(text, tokens, " ", true, false, false) || tokens.empty() || tokens.front() != "GUI")
        return line;
    std::size_t next = 1;
    while (next < tokens.size() && readModifier(tokens[next], line))
        ++next;
    const auto take = [&]() { return next < tokens.size() ? std::move(tokens[next++]) : std::string(); };
    line.type = take();
    line.name = take();
    if (isFileLikeGuiType(line.type) && next < tokens.size())
        line.qualifiers.push_back(take());
    else if (isChoiceTakingGuiType(line.type) && next < tokens.size())
        line.choices = choicesOf(take());
    for (; next < tokens.size(); ++next)
        line.prompt += tokens[next] + " ";
    while (!line.prompt.empty() && line.prompt.back() == ' ')
        line.prompt.pop_back();
    while (!line.prompt.empty() && line.prompt.front() == ' ')
        line.prompt.erase(0, 1);
    return line;
}

} // namespace vyr
