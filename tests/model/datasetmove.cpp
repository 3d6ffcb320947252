// Moving the feature type to another dataset: every page converted to the
// new format, and what each format's pages held kept for a move back.
#include "model/schemamodel.h"

namespace vyr::model {

PageState SchemaModel::converted(const PageState &from, const FormatModel &target) const
{
    const FormatModel &source = *m_formats.at(from.format);
    PageState page = opened(m_original, target);
    page.fanout = from.fanout;
    page.fanoutAttribute = from.fanoutAttribute;
    // The database user folds into the name or out of it, then the new
    // rules resolve the whole.
    const std::string whole = from.user.empty() ? from.name : from.user + "." + from.name;
    showName(page, resolveFeatureTypeName(target, whole, takenFeatureTypeNames(target)), target.isDatabase());
    if (source.hasGeometryMappings() && target.hasGeometryMappings())
        page.geometry = translatedGeometry(from.geometry, source, target);
    else
        page.geometry = from.geometry;
    // Without a counterpart nothing is mapped, and what the list then shows
    // is the dialog's (OK needs a geometry from it).
    if (page.geometry.empty() && !target.isSource() && !target.supportsMultiGeom() && !from.geometry.empty())
        page.geometry = kAsShown;

    page.attributes.clear();
    if (target.hasUserAttributes()) {
        for (std::size_t i = 0; i < from.attributes.size(); ++i) {
            AttributeRow row = from.attributes[i];
            std::optional<TypeText> type;
            if (row.genericOnly) {
                type = target.types().toNative(parseType(composedType(row.cells), ListMode::Shown));
            } else if (const auto own = source.types().create(composedType(row.cells), ListMode::Shown)) {
                type = target.types().convertFrom(source.types(), *own);
                if (!type) {
                    // No counterpart: the type stays in the generic words.
                    if (const auto generic = source.types().toGeneric(*own)) {
                        row.cells = cellsOf(*generic);
                        row.genericOnly = true;
                    }
                }
            }
            if (type) {
                row.cells = cellsOf(*type);
                row.genericOnly = false;
            }
            if (!row.name.empty()) {
                NameSet taken;
                for (const AttributeRow &done : page.attributes)
                    taken.insert(done.name);
                for (std::size_t j = i + 1; j < from.attributes.size(); ++j)
                    taken.insert(from.attributes[j].name);
                for (const std::string &name : target.formatAttributeNames())
                    taken.insert(name);
                taken.erase("");
                row.name = legalAttributeName(target, row.name, taken);
            }
            page.attributes.push_back(row);
        }
    }
    // Parameters of the same name keep their values; the others start at
    // their defaults.
    for (const Parameter &parameter : target.parameters()) {
        const auto kept = from.parameters.find(parameter.name);
        page.parameters[parameter.name] = kept != from.parameters.end() ? kept->second : parameter.defaultValue;
    }
    return page;
}

void SchemaModel::moveTo(const std::string &formatName)
{
    if (formatName == m_page.format)
        return;
    m_visited[m_page.format] = m_page;
    const auto visited = m_visited.find(formatName);
    if (visited != m_visited.end())
        m_page = visited->second;
    else
        m_page = converted(m_page, *m_formats.at(formatName));
    m_history.clear();
}

} // namespace vyr::model
