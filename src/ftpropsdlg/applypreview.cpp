#include "ftpropsdlg/applypreview.h"

#include "ftprops/geometrytypemappings.h"
#include "ftprops/guiparameterline.h"
#include "ftprops/namerules.h"

#include <algorithm>
#include <optional>
#include <sstream>

namespace vyr {
namespace {

// `target` written with `selection` into a scratch copy, after the records
// of `before` were written as their copies hold them; null when no copy
// could be made.
ScratchSchema writtenCopy(const ApplyPreviewInput &input, const FTPropsSchemaInfo &target,
                          const ApplySelection &selection, const ApplyStandIns &before)
{
    ScratchSchema copy = target.makeScratchCopy();
    if (!copy)
        return copy;
    ApplyStandIns standIns = before;
    standIns.push_back({&target, copy.get()});
    copy->beginUpdate();
    input.write(*copy, selection, standIns);
    copy->endUpdate();
    return copy;
}

// `format` is the one `after` is in; `formatBefore` the one `before` was
// in, when the write moved it to another.
std::vector<ReviewChange> reviewed(const ApplyPreviewInput &input, const FTPropsSchemaInfo &before,
                                   const FTPropsSchemaInfo &after, const FTPropsFormatInfo &format,
                                   const FTPropsFormatInfo *formatBefore)
{
    SchemaReviewInput review(before, after, format);
    if (formatBefore && formatBefore != &format)
        review.formatBefore = formatBefore;
    review.localisePrompt = input.localisePrompt;
    review.texts = input.texts;
    return ReviewSchemaChanges(review);
}

bool isUserAttribute(const FTPropsSchemaInfo &schema, const std::string &name)
{
    const StringList names = schema.getAttributeNames(true, false);
    return std::find(names.begin(), names.end(), name) != names.end();
}

struct StoredAttribute
{
    std::string name;
    std::string type;
    std::string generic;
};

// Where the attribute `name` of the page lands in `target`: the attribute is
// written alone into a copy of its own, and the one attribute that copy
// gained or retyped is it. Nothing when it landed nowhere (or no copy could
// be made).
std::optional<StoredAttribute> storedAs(const ApplyPreviewInput &input, const FTPropsSchemaInfo &target,
                                        const FTPropsFormatInfo &format, const std::string &name,
                                        const ApplyStandIns &before)
{
    // A dataset applied with it moves the target first: the attribute lands
    // among what the move left, in the words of the format moved to.
    ApplySelection alone;
    alone.targets = {target.getLongName()};
    alone.generalMask = input.selection.generalMask & general::Dataset;
    ScratchSchema moved = NoScratchSchema();
    if (alone.generalMask) {
        moved = writtenCopy(input, target, alone, before);
        if (!moved)
            return std::nullopt;
    }
    const FTPropsSchemaInfo &landing = moved ? *moved : target;
    alone.attributes = {name};
    const ScratchSchema copy = writtenCopy(input, target, alone, before);
    if (!copy)
        return std::nullopt;
    for (const ReviewChange &change : reviewed(input, landing, *copy, format, nullptr)) {
        if (change.group == ReviewGroup::UserAttributes
            && (change.kind == ReviewKind::Added || change.kind == ReviewKind::Retyped))
            return StoredAttribute{change.key, change.newValue, change.newGeneric};
    }
    // Written as the target had it already.
    if (isUserAttribute(landing, name))
        return StoredAttribute{name, landing.getAttributeType(name), landing.getGenericAttributeType(name)};
    return std::nullopt;
}

StringList words(const std::string &text)
{
    StringList result;
    std::istringstream stream(text);
    for (std::string word; stream >> word;)
        result.push_back(word);
    return result;
}

StringList genericGeometry(const FTPropsFormatInfo &format, const std::string &geometry)
{
    const GeometryTypeMappings *mappings = format.getGeometryTypeMappings();
    return mappings ? words(mappings->toGeneric(geometry, format.supportsMultiGeom())) : StringList();
}

void attributeConflicts(const ApplyPreviewInput &input, const FTPropsSchemaInfo &target,
                        const FTPropsFormatInfo &format, const FTPropsSchemaInfo &written, const ApplyStandIns &before,
                        std::vector<ApplyConflict> &conflicts)
{
    const FTPropsSchemaInfo *asked = input.asked.written;
    if (!asked)
        return;
    for (const std::string &name : input.selection.attributes) {
        const std::string askedType = asked->getAttributeType(name);
        const std::string askedGeneric = asked->getGenericAttributeType(name);
        // Stored under its own name as it was asked: nothing to look into.
        if (isUserAttribute(written, name) && written.getAttributeType(name) == askedType)
            continue;
        const std::optional<StoredAttribute> stored = storedAs(input, target, format, name, before);
        if (!stored) {
            conflicts.push_back({ApplyConflictKind::AttributeSkipped, name, askedType, {}});
            continue;
        }
        if (stored->name != name) {
            // Which it is the format's rules say; the name was given by the write.
            const bool legalised = stored->name == LegaliseAttributeName(format, name, {});
            conflicts.push_back({legalised ? ApplyConflictKind::NameLegalised : ApplyConflictKind::NameTaken, name,
                                 name, stored->name});
        }
        // Another format writes a type in its own words; only one it has no
        // word for (carried by its generic type alone) or one that stands
        // for another generic type is not what was asked.
        const bool genericOnly = stored->type == stored->generic;
        const bool otherGeneric = !askedGeneric.empty() && !stored->generic.empty() && stored->generic != askedGeneric;
        if (stored->type != askedType && (genericOnly || otherGeneric))
            conflicts.push_back({ApplyConflictKind::TypeChanged, name, askedType, stored->type});
    }
}

void parameterConflicts(const ApplyPreviewInput &input, const FTPropsFormatInfo &format,
                        const FTPropsSchemaInfo &written, std::vector<ApplyConflict> &conflicts)
{
    const FTPropsFormatInfo &pageFormat = *input.asked.format;
    for (const std::string &name : pageFormat.getDeflineParmNames()) {
        const auto asked = input.asked.parameters.find(name);
        if (!input.selection.parameters.contains(name) || asked == input.asked.parameters.end())
            continue;
        const std::string raw = ParseParameterLine(pageFormat.getDeflineParm(name)).prompt;
        std::string subject = input.localisePrompt ? input.localisePrompt(raw) : raw;
        if (subject.empty())
            subject = name;
        if (format.getDeflineParm(name).empty()) {
            conflicts.push_back({ApplyConflictKind::ParameterUndefined, subject, asked->second, {}});
            continue;
        }
        const std::string stored = written.getParameter(name);
        if (stored != asked->second)
            conflicts.push_back({ApplyConflictKind::ParameterKept, subject, asked->second, stored});
    }
}

void geometryConflicts(const ApplyPreviewInput &input, const FTPropsSchemaInfo &target,
                       const FTPropsFormatInfo &format, const FTPropsSchemaInfo &written,
                       std::vector<ApplyConflict> &conflicts)
{
    if (!(input.selection.generalMask & general::Geometry))
        return;
    const std::string &asked = input.asked.geometry;
    const std::string result = written.getGeometry();
    // Another format names a geometry in its own words: what it stands for
    // is what was asked, or not.
    const FTPropsFormatInfo &pageFormat = *input.asked.format;
    if (format.getFormatName() == pageFormat.getFormatName()
            ? result == asked
            : genericGeometry(format, result) == genericGeometry(pageFormat, asked))
        return;
    // Left as it was: a feature type of several geometries keeps its own,
    // and so does one whose geometry was not written at all.
    const bool kept = result == target.getGeometry();
    conflicts.push_back(
        {kept ? ApplyConflictKind::GeometryKept : ApplyConflictKind::GeometryChanged, asked, asked, result});
}

void replaceAll(std::string &text, const std::string &key, const std::string &value)
{
    for (std::size_t at = text.find(key); at != std::string::npos; at = text.find(key, at + value.size()))
        text.replace(at, key.size(), value);
}

} // namespace

std::vector<ApplyTargetPreview> PreviewApply(const ApplyPreviewInput &input)
{
    std::vector<ApplyTargetPreview> previews;
    if (!input.asked.format)
        return previews;
    ApplyPreviewCache none;
    ApplyPreviewCache &cache = input.cache ? *input.cache : none;
    ApplySelection properties = input.selection;
    properties.targets.clear();
    if (!(properties == cache.m_properties))
        cache.m_entries.clear();
    cache.m_properties = std::move(properties);

    // The records written so far, as the apply goes: the edited one first.
    ApplyStandIns before;
    if (input.asked.record && input.asked.written)
        before.push_back({input.asked.record, input.asked.written});
    const StringList &chosen = input.selection.targets;
    std::size_t at = 0;
    for (FTPropsSchemaInfo *target : input.targets) {
        const std::string longName = target->getLongName();
        if (std::find(chosen.begin(), chosen.end(), longName) == chosen.end())
            continue;
        // Worked out before with the same targets before it: it holds.
        const bool holds = at < cache.m_entries.size() && cache.m_entries[at].target == target;
        if (!holds) {
            cache.m_entries.erase(cache.m_entries.begin() + std::ptrdiff_t(at), cache.m_entries.end());
            ApplyPreviewCache::Entry entry;
            entry.target = target;
            entry.preview.target = target;
            entry.preview.longName = longName;
            const FTPropsFormatInfo *formatBefore = input.formatOf(target->getFormatId());
            if (formatBefore)
                entry.written = writtenCopy(input, *target, input.selection, before);
            // Conflicts are worked out in the format the write left the
            // target in: a dataset applied with the rest moves it first.
            const FTPropsFormatInfo *format = entry.written ? input.formatOf(entry.written->getFormatId()) : nullptr;
            entry.preview.available = format != nullptr;
            if (format) {
                const FTPropsSchemaInfo &written = *entry.written;
                entry.preview.changes = reviewed(input, *target, written, *format, formatBefore);
                attributeConflicts(input, *target, *format, written, before, entry.preview.conflicts);
                parameterConflicts(input, *format, written, entry.preview.conflicts);
                geometryConflicts(input, *target, *format, written, entry.preview.conflicts);
            }
            cache.m_entries.push_back(std::move(entry));
        }
        const ApplyPreviewCache::Entry &entry = cache.m_entries[at++];
        if (entry.written)
            before.push_back({target, entry.written.get()});
        previews.push_back(entry.preview);
    }
    return previews;
}

std::vector<ApplyItem> ApplyItemsOf(const ApplySelection &selection)
{
    std::vector<ApplyItem> items;
    // The groups the prompt asks about, in its order.
    for (const unsigned mask : {general::Dataset, general::Geometry, general::DatabaseUser, general::Fanout,
                                general::Merge, general::AllDynamic}) {
        if ((selection.generalMask & mask) == mask)
            items.push_back({ApplyItem::General, mask, {}});
    }
    const std::pair<ApplyItem::Kind, const StringList *> lists[] = {
        {ApplyItem::Attribute, &selection.attributes},
        {ApplyItem::DeleteAttribute, &selection.deleteAttributes},
        {ApplyItem::FormatAttribute, &selection.formatAttributes},
        {ApplyItem::DeleteFormatAttribute, &selection.deleteFormatAttributes},
    };
    for (const auto &[kind, names] : lists) {
        for (const std::string &name : *names)
            items.push_back({kind, 0, name});
    }
    for (const std::string &name : selection.parameters)
        items.push_back({ApplyItem::Parameter, 0, name});
    return items;
}

ApplySelection NarrowSelection(const ApplySelection &selection, const StringList &targets,
                               const std::vector<ApplyItem> &items)
{
    ApplySelection narrowed;
    for (const std::string &target : selection.targets) {
        if (std::find(targets.begin(), targets.end(), target) != targets.end())
            narrowed.targets.push_back(target);
    }
    const std::vector<ApplyItem> offered = ApplyItemsOf(selection);
    for (const ApplyItem &item : items) {
        if (std::find(offered.begin(), offered.end(), item) == offered.end())
            continue;
        switch (item.kind) {
        case ApplyItem::General:
            narrowed.generalMask |= item.mask;
            break;
        case ApplyItem::Attribute:
            narrowed.attributes.push_back(item.name);
            break;
        case ApplyItem::DeleteAttribute:
            narrowed.deleteAttributes.push_back(item.name);
            break;
        case ApplyItem::FormatAttribute:
            narrowed.formatAttributes.push_back(item.name);
            break;
        case ApplyItem::DeleteFormatAttribute:
            narrowed.deleteFormatAttributes.push_back(item.name);
            break;
        case ApplyItem::Parameter:
            narrowed.parameters.insert(item.name);
            break;
        }
    }
    // Bits of the mask no item stands for (the name) go as they were.
    unsigned offeredMask = 0;
    for (const ApplyItem &item : offered)
        offeredMask |= item.mask;
    narrowed.generalMask |= selection.generalMask & ~offeredMask;
    return narrowed;
}

std::string ApplyConflictAsText(const ApplyConflict &conflict, const ApplyConflictTexts &texts)
{
    std::string text;
    switch (conflict.kind) {
    case ApplyConflictKind::NameTaken:
        text = texts.nameTaken;
        break;
    case ApplyConflictKind::NameLegalised:
        text = texts.nameLegalised;
        break;
    case ApplyConflictKind::TypeChanged:
        text = texts.typeChanged;
        break;
    case ApplyConflictKind::AttributeSkipped:
        text = texts.attributeSkipped;
        break;
    case ApplyConflictKind::ParameterUndefined:
        text = texts.parameterUndefined;
        break;
    case ApplyConflictKind::ParameterKept:
        text = texts.parameterKept;
        break;
    case ApplyConflictKind::GeometryChanged:
        text = texts.geometryChanged;
        break;
    case ApplyConflictKind::GeometryKept:
        text = texts.geometryKept;
        break;
    }
    const auto shown = [&](const std::string &value) { return value.empty() ? texts.empty : value; };
    // The subject last: a name holding "{asked}" stays as it is.
    replaceAll(text, "{asked}", shown(conflict.asked));
    replaceAll(text, "{result}", shown(conflict.result));
    replaceAll(text, "{subject}", conflict.subject);
    return text;
}

} // namespace vyr
