#include "model/schemamodel.h"

#include "util/listpacking.h"

#include <algorithm>
#include <cctype>

namespace vyr::model {

namespace {

bool isReferenceKind(const std::string &type)
{
    return type == "ATTR" || type == "ATTRLIST" || type == "ATTRLIST_COMMAS";
}

int lowerByte(char c)
{
    return std::tolower(static_cast<unsigned char>(c));
}

// The steps at the end of a history that touch no other page.
std::size_t freeSteps(const std::vector<SchemaModel::Step> &steps)
{
    const auto carried
        = std::find_if(steps.rbegin(), steps.rend(), [](const auto &step) { return step.carriedReferences; });
    return std::size_t(carried - steps.rbegin());
}

// A row ticked or not; a list exposes one element at least when ticked,
// none when not.
void expose(FormatAttributeRow &row, bool on)
{
    row.ticked = on;
    if (row.isList())
        row.count = on ? std::max(row.count, 1) : 0;
}

bool beforeIgnoringCase(const std::string &a, const std::string &b)
{
    if (a.empty() != b.empty())
        return !a.empty();
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [](char x, char y) { return lowerByte(x) < lowerByte(y); });
}

} // namespace

std::string composedType(const TypeCells &cells)
{
    TypeText type{cells.type, {}, cells.domain};
    if (!cells.first.empty()) {
        type.values.push_back(cells.first);
        if (!cells.second.empty())
            type.values.push_back(cells.second);
    }
    return formatType(type, ListMode::Shown);
}

std::map<std::string, std::optional<std::string>> SchemaModel::rowIdentities() const
{
    std::map<std::string, std::optional<std::string>> identities;
    for (const AttributeRow &loaded : m_opened.attributes) {
        if (!loaded.fromFile())
            continue;
        const auto row = std::find_if(m_page.attributes.begin(), m_page.attributes.end(),
                                      [&](const AttributeRow &now) { return now.origin == loaded.origin; });
        identities[loaded.origin] = row == m_page.attributes.end() ? std::nullopt : std::optional(row->name);
    }
    return identities;
}

SchemaModel::SchemaModel(const FeatureData &feature, const FormatModel &format,
                         std::map<std::string, const FormatModel *> formats, std::vector<OtherFeatureType> others,
                         bool sourceEditingAllowed)
    : m_original(feature)
    , m_formats(std::move(formats))
    , m_others(std::move(others))
    , m_sourceEditing(sourceEditingAllowed)
{
    m_formats[format.name()] = &format;
    m_opened = opened(feature, format);
    m_page = m_opened;
}

bool SchemaModel::attributesEditable() const
{
    return format().hasUserAttributes() && (!format().isSource() || m_sourceEditing);
}

Strings SchemaModel::datasets() const
{
    Strings names{openedFormat().name()};
    for (const OtherFeatureType &other : m_others) {
        if (std::find(names.begin(), names.end(), other.format->name()) == names.end())
            names.push_back(other.format->name());
    }
    return names;
}

NameSet SchemaModel::takenFeatureTypeNames(const FormatModel &format) const
{
    NameSet taken;
    for (const OtherFeatureType &other : m_others) {
        if (other.format->name() == format.name())
            taken.insert(other.feature.featureType);
    }
    return taken;
}

Strings SchemaModel::attributeNames() const
{
    Strings names;
    for (const AttributeRow &row : m_page.attributes) {
        if (!row.name.empty())
            names.push_back(row.name);
    }
    return names;
}

void SchemaModel::typeName(const std::string &typed)
{
    changed();
    m_page.namePending = false;
    const FormatModel &current = format();
    // A database's user goes in front of the name, and the whole is resolved.
    const std::string whole = current.isDatabase() && !m_page.user.empty() ? m_page.user + "." + typed : typed;
    showName(m_page, resolveFeatureTypeName(current, whole, takenFeatureTypeNames(current)), current.isDatabase());
}

void SchemaModel::typeNameAndStay(const std::string &typed)
{
    changed();
    m_page.name = typed;
    m_page.namePending = true;
}

std::pair<std::string, std::string> SchemaModel::resolvedName() const
{
    if (!m_page.namePending)
        return {m_page.name, m_page.user};
    SchemaModel copy = *this;
    copy.typeName(m_page.name);
    return {copy.m_page.name, copy.m_page.user};
}

void SchemaModel::typeDatabaseUser(const std::string &typed)
{
    const std::string name = m_page.name;
    m_page.user = typed;
    typeName(name);
}

void SchemaModel::chooseGeometry(const std::string &native)
{
    changed();
    m_page.geometry = native;
}

void SchemaModel::setFanout(bool on)
{
    changed();
    m_page.fanout = on;
}

void SchemaModel::chooseFanoutAttribute(const std::string &name)
{
    changed();
    m_page.fanoutAttribute = name;
}

NameSet SchemaModel::takenAttributeNames(std::size_t exceptRow) const
{
    NameSet taken;
    for (std::size_t i = 0; i < m_page.attributes.size(); ++i) {
        if (i != exceptRow && !m_page.attributes[i].name.empty())
            taken.insert(m_page.attributes[i].name);
    }
    for (const std::string &name : format().formatAttributeNames())
        taken.insert(name);
    return taken;
}

std::string SchemaModel::legalTypedName(const std::string &typed, std::size_t exceptRow) const
{
    if (typed.empty() || format().isSource())
        return typed;
    return legalAttributeName(format(), typed, takenAttributeNames(exceptRow));
}

void SchemaModel::changed()
{
    // A page left and changed since shows what was changed since; the model
    // then converts afresh instead of restoring what was kept.
    m_visited.clear();
}

void SchemaModel::record(Grid grid)
{
    changed();
    History &history = m_history[grid];
    history.undo.push_back({m_page, false});
    history.redo.clear();
}

void SchemaModel::renameReferences(const std::string &from, const std::string &to)
{
    bool carried = false;
    if (m_page.fanoutAttribute == from) {
        m_page.fanoutAttribute = to;
        carried = true;
    }
    for (const Parameter &parameter : format().parameters()) {
        if (!isReferenceKind(parameter.type))
            continue;
        std::string &value = m_page.parameters[parameter.name];
        Strings names = splitList(value, ',');
        bool changed = false;
        for (std::string &name : names) {
            if (name == from) {
                name = to;
                changed = true;
            }
        }
        if (changed) {
            value = joined(names, ",");
            carried = true;
            // Whether the parameters' history counts this as a step of its
            // own is the dialog's; what lies below it is not taken back.
            m_history.erase(Grid::Parameters);
        }
    }
    if (carried && !m_history[Grid::Attributes].undo.empty())
        m_history[Grid::Attributes].undo.back().carriedReferences = true;
}

void SchemaModel::renameRow(std::size_t row, const std::string &typed)
{
    record(Grid::Attributes);
    AttributeRow &changed = m_page.attributes.at(row);
    const std::string before = changed.name;
    changed.name = legalTypedName(typed, row);
    if (!before.empty() && !changed.name.empty() && before != changed.name)
        renameReferences(before, changed.name);
}

void SchemaModel::addRow(const std::string &typed)
{
    record(Grid::Attributes);
    AttributeRow row;
    row.name = legalTypedName(typed, m_page.attributes.size());
    const TypeMappings &types = format().types();
    if (m_page.attributes.empty()) {
        std::optional<TypeText> type;
        if (const auto text = types.create("vyr_char(30)", ListMode::Shown))
            type = types.toNative(*text);
        const Strings offered = types.offeredNames();
        if (!type || std::find(offered.begin(), offered.end(), type->name) == offered.end()) {
            type.reset();
            if (const auto text = types.create("vyr_int32", ListMode::Shown))
                type = types.toNative(*text);
        }
        if (!type)
            type = types.defaultType();
        if (type)
            row.cells = cellsOf(*type);
    } else {
        const AttributeRow &above = m_page.attributes.back();
        row.cells = above.cells;
        row.cells.domain.clear();
        row.genericOnly = above.genericOnly;
    }
    m_page.attributes.push_back(row);
}

void SchemaModel::deleteRows(std::size_t first, std::size_t count)
{
    record(Grid::Attributes);
    auto &rows = m_page.attributes;
    rows.erase(rows.begin() + std::ptrdiff_t(first), rows.begin() + std::ptrdiff_t(std::min(first + count, rows.size())));
}

void SchemaModel::moveRows(std::size_t first, std::size_t count, bool up)
{
    record(Grid::Attributes);
    auto &rows = m_page.attributes;
    const auto begin = rows.begin() + std::ptrdiff_t(first);
    const auto end = begin + std::ptrdiff_t(count);
    if (up)
        std::rotate(begin - 1, begin, end);
    else
        std::rotate(begin, end, end + 1);
}

void SchemaModel::sortRows()
{
    record(Grid::Attributes);
    std::stable_sort(m_page.attributes.begin(), m_page.attributes.end(),
                     [](const AttributeRow &a, const AttributeRow &b) { return beforeIgnoringCase(a.name, b.name); });
}

Strings SchemaModel::pasteRows(const std::vector<Strings> &lines)
{
    record(Grid::Attributes);
    Strings kept;
    const TypeMappings &types = format().types();
    for (const Strings &line : lines) {
        AttributeRow row;
        row.name = legalTypedName(line.at(0), m_page.attributes.size());
        TypeText pasted{line.size() > 1 ? line[1] : std::string(), {}, {}};
        for (std::size_t i = 2; i < line.size() && !line[i].empty(); ++i)
            pasted.values.push_back(line[i]);
        std::optional<TypeText> type;
        if (const TypeTemplate *own = types.nativeTemplate(pasted.name))
            type = own->build(pasted.values, {});
        else if (const auto generic = types.create(formatType(pasted, ListMode::Shown), ListMode::Shown))
            type = types.toNative(*generic);
        if (type) {
            row.cells = cellsOf(*type);
        } else {
            row.cells = cellsOf(pasted);
            if (std::find(kept.begin(), kept.end(), pasted.name) == kept.end())
                kept.push_back(pasted.name);
        }
        m_page.attributes.push_back(row);
    }
    return kept;
}

const std::string SchemaModel::kAsShown = "\x01as shown";

void SchemaModel::chooseType(std::size_t first, std::size_t count, const std::string &type)
{
    record(Grid::Attributes);
    const TypeTemplate *chosen = format().types().nativeTemplate(type);
    for (std::size_t i = first; i < first + count && i < m_page.attributes.size(); ++i) {
        AttributeRow &row = m_page.attributes[i];
        if (row.cells.type == type && !row.genericOnly) {
            if (count > 1 && chosen) {
                if (!chosen->args.empty())
                    row.cells.first = kAsShown;
                if (chosen->args.size() > 1)
                    row.cells.second = kAsShown;
            }
            continue;
        }
        row.cells.type = type;
        row.cells.first = chosen && !chosen->args.empty() ? chosen->acceptedValue(0, "") : std::string();
        row.cells.second = chosen && chosen->args.size() > 1 ? chosen->acceptedValue(1, "") : std::string();
        row.genericOnly = false;
    }
}

bool SchemaModel::takesNumber(std::size_t row, int which) const
{
    const AttributeRow &r = m_page.attributes.at(row);
    const TypeTemplate *type = r.genericOnly ? nullptr : format().types().nativeTemplate(r.cells.type);
    if (!type || std::size_t(which) >= type->args.size())
        return false;
    const ArgKind kind = type->args[std::size_t(which)].kind;
    return kind == ArgKind::Integer || kind == ArgKind::IntWidth;
}

bool SchemaModel::takesDomain(std::size_t row) const
{
    const AttributeRow &r = m_page.attributes.at(row);
    const TypeTemplate *type = r.genericOnly ? nullptr : format().types().nativeTemplate(r.cells.type);
    return type && !type->args.empty() && isDomainKind(type->args[0].kind);
}

void SchemaModel::typeArgument(std::size_t first, std::size_t count, int which, const std::string &text)
{
    record(Grid::Attributes);
    for (std::size_t i = first; i < first + count && i < m_page.attributes.size(); ++i) {
        if (takesNumber(i, which))
            (which == 0 ? m_page.attributes[i].cells.first : m_page.attributes[i].cells.second) = text;
    }
}

void SchemaModel::chooseDomain(std::size_t row, const std::string &value)
{
    record(Grid::Attributes);
    m_page.attributes.at(row).cells.first = value;
}

void SchemaModel::toggleExposure(std::size_t row)
{
    record(Grid::FormatAttributes);
    FormatAttributeRow &r = m_page.formatAttributes.at(row);
    expose(r, !r.ticked);
}

void SchemaModel::setCount(std::size_t row, int count)
{
    record(Grid::FormatAttributes);
    FormatAttributeRow &r = m_page.formatAttributes.at(row);
    r.count = count;
    r.ticked = count > 0;
}

void SchemaModel::exposeAll(bool on)
{
    record(Grid::FormatAttributes);
    for (FormatAttributeRow &row : m_page.formatAttributes)
        expose(row, on);
}

void SchemaModel::adoptShownCounts(const std::map<std::string, int> &shown)
{
    for (FormatAttributeRow &row : m_page.formatAttributes) {
        const auto found = shown.find(row.name);
        if (row.count < 0 && found != shown.end())
            row.count = row.count == -2 ? std::max(found->second, 1) : found->second;
    }
}

void SchemaModel::adoptShownGeometry(const std::string &shown)
{
    if (m_page.geometry == kAsShown)
        m_page.geometry = shown;
}

void SchemaModel::adoptShownArguments(const std::vector<TypeCells> &shown)
{
    for (std::size_t i = 0; i < m_page.attributes.size() && i < shown.size(); ++i) {
        TypeCells &cells = m_page.attributes[i].cells;
        if (cells.first == kAsShown)
            cells.first = shown[i].first;
        if (cells.second == kAsShown)
            cells.second = shown[i].second;
    }
}

void SchemaModel::setParameter(const std::string &name, const std::string &value)
{
    record(Grid::Parameters);
    m_page.parameters[name] = value;
    // A switch is not stored: turned off, it empties the rows it turns on
    // in the same step, or it would read back as on.
    const Parameter *toggle = disableSwitch();
    if (!toggle || toggle->name != name || value != "No")
        return;
    for (const Parameter &parameter : format().parameters()) {
        if (parameter.disabledOnly && &parameter != toggle)
            m_page.parameters[parameter.name].clear();
    }
}

const Parameter *SchemaModel::disableSwitch() const
{
    for (const Parameter &parameter : format().parameters()) {
        if (parameter.type == "DISABLE")
            return &parameter;
    }
    return nullptr;
}

bool SchemaModel::isParameterEnabled(const std::string &name) const
{
    const Parameter *parameter = format().parameter(name);
    const Parameter *toggle = disableSwitch();
    if (!parameter || !toggle || parameter == toggle || parameter->alwaysEnabled)
        return true;
    const bool on = m_page.parameters.at(toggle->name) != "No";
    return on ? parameter->disabledOnly : !parameter->disabledOnly;
}

void SchemaModel::undo(Grid grid)
{
    travel(grid, true);
}

void SchemaModel::redo(Grid grid)
{
    travel(grid, false);
}

void SchemaModel::travel(Grid grid, bool back)
{
    History &history = m_history[grid];
    std::vector<Step> &from = back ? history.undo : history.redo;
    std::vector<Step> &to = back ? history.redo : history.undo;
    if (from.empty())
        return;
    changed();
    const Step step = from.back();
    from.pop_back();
    to.push_back({m_page, step.carriedReferences});
    switch (grid) {
    case Grid::Attributes: {
        const std::vector<AttributeRow> now = m_page.attributes;
        m_page.attributes = step.before.attributes;
        // Undone or done again, a rename is a rename: what names the
        // attribute follows it, as it followed the person's.
        const auto holds = [](const std::vector<AttributeRow> &rows, const std::string &name) {
            return std::ranges::any_of(rows, [&name](const AttributeRow &row) { return row.name == name; });
        };
        if (now.size() == m_page.attributes.size()) {
            for (std::size_t i = 0; i < now.size(); ++i) {
                const std::string &went = now[i].name;
                const std::string &came = m_page.attributes[i].name;
                if (went != came && !went.empty() && !came.empty() && !holds(m_page.attributes, went)
                    && !holds(now, came))
                    renameReferences(went, came);
            }
        }
        break;
    }
    case Grid::FormatAttributes:
        m_page.formatAttributes = step.before.formatAttributes;
        break;
    case Grid::Parameters:
        m_page.parameters = step.before.parameters;
        break;
    }
}

std::size_t SchemaModel::undoSteps(Grid grid) const
{
    return freeSteps(history(grid).undo);
}

std::size_t SchemaModel::redoSteps(Grid grid) const
{
    return freeSteps(history(grid).redo);
}

std::vector<Refusal> SchemaModel::possibleRefusals() const
{
    std::vector<Refusal> reasons;
    const Strings names = attributeNames();
    for (const Parameter &parameter : format().parameters()) {
        if (!isReferenceKind(parameter.type))
            continue;
        for (const std::string &name : splitList(m_page.parameters.at(parameter.name), ',')) {
            if (!name.empty() && std::find(names.begin(), names.end(), name) == names.end())
                reasons.push_back(
                    {"the parameter " + parameter.name + " names " + name + ", which is gone", name, parameter.name});
        }
    }
    return reasons;
}

std::vector<Refusal> SchemaModel::refusals() const
{
    std::vector<Refusal> reasons;
    const FormatModel &current = format();
    if (resolvedName().first.empty())
        reasons.push_back({"the feature type has no name", {}});
    if (isWriter() && !current.supportsMultiGeom() && current.hasGeometryMappings() && m_page.geometry.empty())
        reasons.push_back({"no geometry is chosen", {}});
    if (isWriter() && current.supportsFanout() && m_page.fanout) {
        Strings names = attributeNames();
        for (const FormatAttributeRow &row : m_page.formatAttributes) {
            if (row.ticked)
                names.push_back(row.name);
        }
        if (m_page.fanoutAttribute.empty())
            reasons.push_back({"fan-out has no attribute", {}});
        else if (std::find(names.begin(), names.end(), m_page.fanoutAttribute) == names.end())
            reasons.push_back({"the fan-out attribute " + m_page.fanoutAttribute + " is gone", m_page.fanoutAttribute, {}});
    }
    if (attributesEditable()) {
        for (const AttributeRow &row : m_page.attributes) {
            if (row.name.empty()) {
                reasons.push_back({"an attribute has no name", {}});
                continue;
            }
            if (row.genericOnly)
                continue;
            const TypeTemplate *type = current.types().nativeTemplate(row.cells.type);
            if (!type) {
                // Only the file's own type, untouched and in the format the
                // file was written for, is saved as it came.
                if (!(row.typeAsOpened() && m_page.format == m_opened.format))
                    reasons.push_back({"the type " + row.cells.type + " of " + row.name + " is not the format's",
                                       row.name, {}});
                continue;
            }
            for (std::size_t i = 0; i < type->args.size() && i < 2; ++i) {
                const std::string &value = i == 0 ? row.cells.first : row.cells.second;
                if (!value.empty())
                    continue;
                reasons.push_back({isDomainKind(type->args[i].kind) ? row.name + " has no domain"
                                                                   : row.name + " has an empty width or decimals",
                                   row.name, {}});
            }
        }
    }
    if (const Parameter *toggle = disableSwitch();
        toggle && m_page.parameters.at(toggle->name) == "Yes" && !switchedRowsHoldAValue(m_page, current))
        reasons.push_back({"the switch " + toggle->name + " is on without a value to go with it", {}});
    return reasons;
}

} // namespace vyr::model
