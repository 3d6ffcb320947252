#include "ftprops/schemareview.h"

#include "attrtypes/datatypemappings.h"
#include "ftprops/listelements.h"
#include "stringobjects/vyrrwstringimp.h"
#include "util/stringconverter.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iterator>
#include <set>
#include <unordered_map>
#include <string_view>
#include <unordered_set>

namespace vyr {

namespace {

const ReviewTexts kEnglish;

struct UserAttribute
{
    std::string name;
    std::string type;
    std::string generic;
};

std::vector<UserAttribute> userAttributes(const FTPropsSchemaInfo &schema, const FTPropsFormatInfo &format)
{
    std::vector<UserAttribute> attributes;
    for (std::string &name : schema.getAttributeNames(true, false)) {
        std::string type = schema.getAttributeType(name);
        std::string generic = schema.getGenericAttributeType(name);
        // A record that keeps no generic type has the one its format maps
        // the type to.
        if (generic.empty())
            generic = format.getDataTypeMappings()->genericText(type, format.getTypeListMode());
        attributes.push_back({std::move(name), std::move(type), std::move(generic)});
    }
    return attributes;
}

// Reviewing one schema against another: the changes of each group appended
// in turn.
class Review
{
public:
    explicit Review(const SchemaReviewInput &input)
        : m_input(input)
        , m_formatBefore(input.formatBefore ? *input.formatBefore : input.format)
        , m_texts(input.texts ? *input.texts : kEnglish)
    {}

    std::vector<ReviewChange> run()
    {
        reviewGeneral();
        reviewUserAttributes();
        reviewFormatAttributes();
        reviewParameters();
        return std::move(m_changes);
    }

private:
    void add(ReviewGroup group, ReviewKind kind, std::string key, std::string subject, std::string oldValue,
             std::string newValue)
    {
        m_changes.push_back(
            {group, kind, std::move(key), std::move(subject), std::move(oldValue), std::move(newValue), {}, {}, {}});
    }

    std::string flag(bool value) const { return value ? m_texts.yes : m_texts.no; }

    void reviewGeneral();
    void reviewUserAttributes();
    void reviewFormatAttributes();
    void reviewParameters();

    const SchemaReviewInput &m_input;
    const FTPropsFormatInfo &m_formatBefore;
    const ReviewTexts &m_texts;
    std::vector<ReviewChange> m_changes;
};

// A database format's feature type name is "owner.table": the owner is
// reviewed as the database user, the rest as the name.
std::pair<std::string, std::string> nameAndOwner(const FTPropsSchemaInfo &schema, const FTPropsFormatInfo &format)
{
    std::string name = schema.getName();
    const std::size_t dot = name.find('.');
    if (!format.isDatabase() || dot == std::string::npos)
        return {name, {}};
    return {name.substr(dot + 1), name.substr(0, dot)};
}

// `line` with each {word} of `values` replaced; other braces are kept.
std::string fill(std::string_view line, const std::vector<std::pair<std::string_view, std::string_view>> &values)
{
    std::string filled;
    std::size_t at = 0;
    while (at < line.size()) {
        bool replaced = false;
        if (line[at] == '{') {
            for (const auto &[word, value] : values) {
                if (line.substr(at + 1, word.size()) == word && line.substr(at + 1 + word.size(), 1) == "}") {
                    filled += value;
                    at += word.size() + 2;
                    replaced = true;
                    break;
                }
            }
        }
        if (!replaced)
            filled += line[at++];
    }
    return filled;
}

// The settings as the words of `texts` say them. A text goes with an
// option that is not 0 only: the dynamic schema dialog keeps the others
// unused.
std::string dynamicSettingsText(const DynamicSchemaInfo &settings, const ReviewTexts &texts)
{
    if (settings.isDefault())
        return texts.dynamicDefault;
    VYRRWStringImp values[3];
    settings.getText1(values[0]);
    settings.getText2(values[1]);
    settings.getText3(values[2]);
    const std::int32_t options[3] = {settings.getOption1(), settings.getOption2(), settings.getOption3()};
    const std::vector<std::string> *phrases[3]
        = {&texts.dynamicNames, &texts.dynamicGeometry, &texts.dynamicAttributes};
    std::string shown;
    for (int i = 0; i < 3; ++i) {
        const std::string option = std::to_string(options[i]);
        const std::string_view text = options[i] != 0 ? values[i].c_str() : "";
        const bool known = options[i] >= 0 && std::size_t(options[i]) < phrases[i]->size();
        shown += (i ? "; " : "")
            + fill(known ? (*phrases[i])[std::size_t(options[i])] : texts.dynamicOther,
                   {{"option", option}, {"text", text}});
    }
    return shown;
}

std::string mergeKindText(int kind, const ReviewTexts &texts)
{
    return kind >= 0 && std::size_t(kind) < texts.mergeKinds.size() ? texts.mergeKinds[std::size_t(kind)]
                                                                    : std::to_string(kind);
}

std::string joined(const StringList &names)
{
    std::string shown;
    for (const std::string &name : names)
        shown += (shown.empty() ? "" : ", ") + name;
    return shown;
}

void Review::reviewGeneral()
{
    const FTPropsSchemaInfo &before = m_input.before;
    const FTPropsSchemaInfo &after = m_input.after;
    const auto [nameBefore, ownerBefore] = nameAndOwner(before, m_formatBefore);
    const auto [nameAfter, ownerAfter] = nameAndOwner(after, m_input.format);
    // The dataset is shown as the dialog lists it: by its format's long
    // name, where both formats are known.
    const bool formatsKnown = m_input.formatBefore != nullptr;
    const std::pair<std::string, std::string> settings[] = {
        {nameBefore, nameAfter},
        {ownerBefore, ownerAfter},
        {formatsKnown ? m_formatBefore.getFormatLongName() : before.getFormatId(),
         formatsKnown ? m_input.format.getFormatLongName() : after.getFormatId()},
        {before.getGeometry(), after.getGeometry()},
        {flag(before.isMerged()), flag(after.isMerged())},
        {before.getMergeFilter(), after.getMergeFilter()},
        {mergeKindText(before.getMergeKind(), m_texts), mergeKindText(after.getMergeKind(), m_texts)},
        {flag(before.getMergeOption()), flag(after.getMergeOption())},
        {flag(before.isFanout()), flag(after.isFanout())},
        {before.getFanoutAttribute(), after.getFanoutAttribute()},
        {flag(before.isDynamic()), flag(after.isDynamic())},
        {joined(before.getSchemaSources()), joined(after.getSchemaSources())},
        {joined(before.getAdditionalNames()), joined(after.getAdditionalNames())},
        {dynamicSettingsText(before.getDynamicSchemaInfo(), m_texts),
         dynamicSettingsText(after.getDynamicSchemaInfo(), m_texts)},
    };
    static_assert(std::size(settings) == std::size(ReviewGeneralKeys));
    const bool datasetMoved = before.getFormatId() != after.getFormatId();
    for (std::size_t i = 0; i < std::size(settings); ++i) {
        const auto &[oldValue, newValue] = settings[i];
        // Two formats may share a long name: the dataset changed when the
        // id did.
        const bool dataset = std::string_view(ReviewGeneralKeys[i]) == "dataset";
        if (dataset ? !datasetMoved : oldValue == newValue)
            continue;
        const std::string label = i < m_texts.generalLabels.size() ? m_texts.generalLabels[i] : ReviewGeneralKeys[i];
        add(ReviewGroup::General, ReviewKind::Changed, ReviewGeneralKeys[i], label, oldValue, newValue);
    }
}

void Review::reviewUserAttributes()
{
    const std::vector<UserAttribute> before = userAttributes(m_input.before, m_formatBefore);
    const std::vector<UserAttribute> after = userAttributes(m_input.after, m_input.format);
    std::unordered_map<std::string, std::size_t> afterIndex;
    for (std::size_t i = 0; i < after.size(); ++i)
        afterIndex.emplace(after[i].name, i);
    std::unordered_map<std::string, std::string> legalNames;
    for (const NameLegalisation &legalisation : m_input.legalised)
        legalNames.emplace(legalisation.typed, legalisation.legal);

    // What each attribute before became: the index of its attribute after,
    // if any. An attribute after is the continuation of one before at most.
    std::vector<std::optional<std::size_t>> became(before.size());
    std::vector<std::optional<std::size_t>> cameFrom(after.size());
    for (std::size_t i = 0; i < before.size(); ++i) {
        std::optional<std::string> now = before[i].name;
        if (m_input.rows) {
            if (const auto row = m_input.rows->find(before[i].name); row != m_input.rows->end())
                now = row->second;
        }
        if (!now)
            continue;
        // Only a name that is nobody's after was typed and made legal: a
        // row that keeps a name someone else typed keeps its attribute.
        if (const auto legal = legalNames.find(*now); legal != legalNames.end() && !afterIndex.contains(*now))
            now = legal->second;
        const auto found = afterIndex.find(*now);
        if (found == afterIndex.end() || cameFrom[found->second])
            continue;
        became[i] = found->second;
        cameFrom[found->second] = i;
    }

    const auto typedChange = [&](ReviewKind kind, const UserAttribute *old, const UserAttribute *now) {
        const UserAttribute &named = now ? *now : *old;
        ReviewChange change{ReviewGroup::UserAttributes, kind, named.name, named.name, {}, {}, {}, {}, {}};
        if (old) {
            change.oldValue = old->type;
            change.oldGeneric = old->generic;
        }
        if (now) {
            change.newValue = now->type;
            change.newGeneric = now->generic;
        }
        m_changes.push_back(std::move(change));
    };
    for (std::size_t j = 0; j < after.size(); ++j) {
        if (!cameFrom[j])
            typedChange(ReviewKind::Added, nullptr, &after[j]);
    }
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (!became[i])
            typedChange(ReviewKind::Removed, &before[i], nullptr);
    }
    for (std::size_t j = 0; j < after.size(); ++j) {
        if (cameFrom[j] && before[*cameFrom[j]].name != after[j].name)
            add(ReviewGroup::UserAttributes, ReviewKind::Renamed, after[j].name, after[j].name,
                before[*cameFrom[j]].name, after[j].name);
    }
    for (std::size_t j = 0; j < after.size(); ++j) {
        if (!cameFrom[j])
            continue;
        const UserAttribute &old = before[*cameFrom[j]];
        if (old.type != after[j].type || old.generic != after[j].generic)
            typedChange(ReviewKind::Retyped, &old, &after[j]);
    }
    // Positions among the attributes kept, so that one added or removed
    // moves no other.
    std::vector<std::size_t> oldPosition(after.size());
    std::size_t kept = 0;
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (became[i])
            oldPosition[*became[i]] = ++kept;
    }
    std::size_t newPosition = 0;
    for (std::size_t j = 0; j < after.size(); ++j) {
        if (!cameFrom[j])
            continue;
        if (oldPosition[j] != ++newPosition)
            add(ReviewGroup::UserAttributes, ReviewKind::Moved, after[j].name, after[j].name,
                std::to_string(oldPosition[j]), std::to_string(newPosition));
    }
    for (const NameLegalisation &legalisation : m_input.legalised) {
        if (legalisation.typed == legalisation.legal)
            continue;
        ReviewChange change{ReviewGroup::UserAttributes,
                            ReviewKind::Legalised,
                            legalisation.legal,
                            legalisation.typed,
                            legalisation.typed,
                            legalisation.legal,
                            {},
                            {},
                            legalisation.rule};
        m_changes.push_back(std::move(change));
    }
}

void Review::reviewFormatAttributes()
{
    const StringList before = m_input.before.getAttributeNames(false, true);
    const StringList after = m_input.after.getAttributeNames(false, true);
    // Looked up once per name: a feature type may expose tens of thousands.
    const std::unordered_set<std::string_view> exposedBefore(before.begin(), before.end());
    const std::unordered_set<std::string_view> exposedAfter(after.begin(), after.end());
    const auto exposure = [&](const std::string &name) {
        const bool was = exposedBefore.contains(name);
        const bool is = exposedAfter.contains(name);
        if (was && !is)
            add(ReviewGroup::FormatAttributes, ReviewKind::Unexposed, name, name, m_input.before.getAttributeType(name),
                {});
        else if (is && !was)
            add(ReviewGroup::FormatAttributes, ReviewKind::Exposed, name, name, {},
                m_input.after.getAttributeType(name));
    };
    std::vector<ListElements> lists;
    std::set<std::string> known;
    for (const std::string &name : m_input.format.getFormatAttrNames()) {
        if (!known.insert(name).second)
            continue;
        if (ListElements::isList(name)) {
            const ListElements &elements = lists.emplace_back(name);
            const int was = elements.countIn(before);
            const int is = elements.countIn(after);
            if (was != is)
                add(ReviewGroup::FormatAttributes, ReviewKind::ListCount, name, name, std::to_string(was),
                    std::to_string(is));
        }
        exposure(name);
    }
    // Elements of a list are reviewed by the list's count.
    const auto unknown = [&](const std::string &name) {
        return !known.contains(name)
            && std::none_of(lists.begin(), lists.end(), [&](const ListElements &list) { return list.isElement(name); });
    };
    for (const StringList *names : {&before, &after}) {
        for (const std::string &name : *names) {
            if (unknown(name) && known.insert(name).second)
                exposure(name);
        }
    }
}

void Review::reviewParameters()
{
    // Each name with the format that defines it.
    std::vector<std::pair<std::string, const FTPropsFormatInfo *>> defined;
    std::unordered_set<std::string> seen;
    for (const FTPropsFormatInfo *format : {&m_input.format, &m_formatBefore}) {
        for (std::string &name : format->getDeflineParmNames()) {
            if (seen.insert(name).second)
                defined.emplace_back(std::move(name), format);
        }
    }
    StringList names;
    for (const auto &entry : defined)
        names.push_back(entry.first);
    const auto before = m_input.before.getParameters(names);
    const auto after = m_input.after.getParameters(names);
    for (const auto &[name, format] : defined) {
        const std::string &oldValue = before.at(name);
        const std::string &newValue = after.at(name);
        if (oldValue == newValue)
            continue;
        const std::string prompt = format->getDeflineParmLine(name).prompt;
        std::string subject = prompt.empty() ? name : m_input.localisePrompt ? m_input.localisePrompt(prompt) : prompt;
        add(ReviewGroup::Parameters, ReviewKind::Changed, name, std::move(subject), oldValue, newValue);
    }
}

std::string lineOf(const ReviewChange &change, const ReviewTexts &texts)
{
    const auto shown = [&](const std::string &value) { return value.empty() ? texts.empty : value; };
    const auto typed = [&](const std::string &type, const std::string &generic) {
        if (generic.empty() || generic == type)
            return shown(type);
        return fill(texts.typed, {{"type", shown(type)}, {"generic", generic}});
    };
    std::string oldValue = change.oldValue;
    std::string newValue = change.newValue;
    const std::string *line = &texts.changed;
    switch (change.kind) {
    case ReviewKind::Changed:
        oldValue = shown(oldValue);
        newValue = shown(newValue);
        break;
    case ReviewKind::Added:
    case ReviewKind::Removed:
    case ReviewKind::Retyped:
        oldValue = typed(oldValue, change.oldGeneric);
        newValue = typed(newValue, change.newGeneric);
        line = change.kind == ReviewKind::Added  ? &texts.added
            : change.kind == ReviewKind::Removed ? &texts.removed
                                                 : &texts.retyped;
        break;
    case ReviewKind::Renamed: line = &texts.renamed; break;
    case ReviewKind::Moved: line = &texts.moved; break;
    case ReviewKind::Legalised: line = &texts.legalised; break;
    case ReviewKind::Exposed:
        newValue = shown(newValue);
        line = &texts.exposed;
        break;
    case ReviewKind::Unexposed: line = &texts.unexposed; break;
    case ReviewKind::ListCount: line = &texts.listCount; break;
    }
    return fill(*line, {{"subject", change.subject}, {"old", oldValue}, {"new", newValue}, {"detail", change.detail}});
}

constexpr ReviewGroup kGroups[]
    = {ReviewGroup::General, ReviewGroup::UserAttributes, ReviewGroup::FormatAttributes, ReviewGroup::Parameters};

const char *groupKey(ReviewGroup group)
{
    switch (group) {
    case ReviewGroup::General: return "general";
    case ReviewGroup::UserAttributes: return "user_attributes";
    case ReviewGroup::FormatAttributes: return "format_attributes";
    case ReviewGroup::Parameters: return "parameters";
    }
    return "";
}

const char *kindKey(ReviewKind kind)
{
    switch (kind) {
    case ReviewKind::Changed: return "changed";
    case ReviewKind::Added: return "added";
    case ReviewKind::Removed: return "removed";
    case ReviewKind::Renamed: return "renamed";
    case ReviewKind::Retyped: return "retyped";
    case ReviewKind::Moved: return "moved";
    case ReviewKind::Legalised: return "legalised";
    case ReviewKind::Exposed: return "exposed";
    case ReviewKind::Unexposed: return "unexposed";
    case ReviewKind::ListCount: return "list_count";
    }
    return "";
}

} // namespace

std::vector<ReviewChange> ReviewSchemaChanges(const SchemaReviewInput &input)
{
    return Review(input).run();
}

namespace {

// Names and values come from files anybody may have written: a line break
// in one would pass for a line of the review, an escape sequence would
// drive the terminal it is printed on. Both are shown as \xNN.
std::string printable(const std::string &line)
{
    static constexpr char kHex[] = "0123456789abcdef";
    std::string shown;
    shown.reserve(line.size());
    for (const char c : line) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7f) {
            shown += "\\x";
            shown += kHex[byte >> 4];
            shown += kHex[byte & 0xf];
        } else {
            shown += c;
        }
    }
    return shown;
}

} // namespace

std::string ReviewAsText(const std::vector<ReviewChange> &changes, const ReviewTexts &texts)
{
    if (changes.empty())
        return texts.noChanges + "\n";
    const std::string *headings[]
        = {&texts.groupGeneral, &texts.groupUserAttributes, &texts.groupFormatAttributes, &texts.groupParameters};
    std::string text;
    for (std::size_t g = 0; g < std::size(kGroups); ++g) {
        bool headed = false;
        for (const ReviewChange &change : changes) {
            if (change.group != kGroups[g])
                continue;
            if (!headed)
                text += *headings[g] + "\n";
            headed = true;
            text += "  " + printable(lineOf(change, texts)) + "\n";
        }
    }
    return text;
}

std::string ReviewAsJson(const std::vector<ReviewChange> &changes)
{
    using Json = nlohmann::ordered_json;
    Json document = {{"equal", changes.empty()}};
    for (const ReviewGroup group : kGroups)
        document[groupKey(group)] = Json::array();
    for (const ReviewChange &change : changes) {
        Json entry = {{"kind", kindKey(change.kind)},
                      {"key", ansiToUtf8(change.key)},
                      {"subject", ansiToUtf8(change.subject)},
                      {"old", ansiToUtf8(change.oldValue)},
                      {"new", ansiToUtf8(change.newValue)}};
        if (!change.oldGeneric.empty())
            entry["old_generic"] = ansiToUtf8(change.oldGeneric);
        if (!change.newGeneric.empty())
            entry["new_generic"] = ansiToUtf8(change.newGeneric);
        if (!change.detail.empty())
            entry["detail"] = ansiToUtf8(change.detail);
        document[groupKey(change.group)].push_back(std::move(entry));
    }
    return document.dump(2, ' ', false, Json::error_handler_t::replace);
}

} // namespace vyr
