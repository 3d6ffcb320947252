// Applying properties of the edited feature type to other feature types:
// what the user chose (ApplySelection), and the key/value prompt that asks
// for it (ApplyPrompt) - its definition and default lines, and the reading
// of its answers. Model code: texts come in as narrow strings.
#ifndef VYR_FTPROPSDLG_APPLYSELECTION_H
#define VYR_FTPROPSDLG_APPLYSELECTION_H

#include "util/listpacking.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace vyr {

// Groups of General-page properties, as bits of a mask.
namespace general {
inline constexpr unsigned Name = 0x001;
inline constexpr unsigned Geometry = 0x002;
inline constexpr unsigned Dataset = 0x004;
inline constexpr unsigned DatabaseUser = 0x008;
inline constexpr unsigned Fanout = 0x010;
inline constexpr unsigned Merge = 0x020;
inline constexpr unsigned Dynamic = 0x040;
inline constexpr unsigned SchemaSources = 0x080;
inline constexpr unsigned DynamicSettings = 0x200;
inline constexpr unsigned AllDynamic = Dynamic | SchemaSources | DynamicSettings;
// Everything, for the feature type being edited.
inline constexpr unsigned All = 0x3FF;
} // namespace general

struct ApplySelection
{
    // Long names of the feature types to apply to, in the user's order.
    StringList targets;
    unsigned generalMask = 0;
    StringList attributes;
    StringList deleteAttributes;
    StringList formatAttributes;
    StringList deleteFormatAttributes;
    std::set<std::string> parameters;

    bool operator==(const ApplySelection &) const = default;
};

// What the prompt is built from.
struct ApplyPromptInput
{
    StringList otherFeatureTypes; // long names, in workspace order
    bool destination = false;
    bool database = false;
    bool hasUserAttributes = false;
    bool hasParameters = false;
    StringList pageAttributes; // user attributes as the page has them
    StringList recordAttributes; // user attributes as the schema has them
    StringList pageFormatAttributes;
    StringList recordFormatAttributes;
    // The format's parameters in its order: name and definition line.
    std::vector<std::pair<std::string, std::string>> parameterLines;
    // A parameter's prompt as the user reads it (the page shows it so);
    // as it stands when not given.
    std::function<std::string(const std::string &)> localisePrompt;
};

class ApplyPrompt
{
public:
    // `text` gives the narrow text of a string resource.
    ApplyPrompt(const ApplyPromptInput &input, const std::function<std::string(unsigned)> &text);

    const StringList &definitionLines() const { return m_definitions; }
    const StringList &defaultLines() const { return m_defaults; }

    // The selection the answers (key to value) stand for; a key that was not
    // asked leaves its part empty.
    ApplySelection read(const std::map<std::string, std::string> &answers) const;

private:
    void addList(const std::string &key, unsigned prompt, const StringList &choices, const std::string *defaultValue);
    void addChoice(const std::string &key, unsigned prompt);

    std::string m_yes;
    std::string m_no;
    std::function<std::string(unsigned)> m_text;
    StringList m_definitions;
    StringList m_defaults;
    std::map<std::string, unsigned> m_choiceMasks; // asked Yes/No keys
    std::set<std::string> m_listKeys;               // asked list keys
    std::map<std::string, std::string> m_parameterByPrompt;
};

// The names of `all` that are not in `kept`, in `all`'s order.
StringList NamesNotIn(const StringList &all, const StringList &kept);

} // namespace vyr

#endif // VYR_FTPROPSDLG_APPLYSELECTION_H
