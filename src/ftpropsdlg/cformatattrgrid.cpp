#include "ftpropsdlg/cformatattrgrid.h"

#include "ftprops/listelements.h"
#include "uikit/narrowtext.h"
#include "util/resourceids.h"
#include "uikit/resourcelibrary.h"

#include <algorithm>
#include <unordered_set>

namespace vyr {

namespace {

const QString kChecked = QStringLiteral("1");
const QString kUnchecked = QStringLiteral("0");

} // namespace

CFormatAttrGrid::CFormatAttrGrid(FTPropsSchemaInfo *schema, const FTPropsFormatInfo *format, QWidget *parent)
    : CVVyrGrid(3, false, parent)
    , m_schema(schema)
    , m_format(format)
{}

void CFormatAttrGrid::OnGridInit()
{
    CVVyrGrid::OnGridInit();
    SetTopHeadingHeight(20);
    SetSideHeadingWidth(20);
    SetRowNameColumn(kNameColumn);
    const unsigned headings[] = {res::ExposedHeading, res::FormatAttributeHeading, res::ListElementsHeading};
    for (int column = 0; column < 3; ++column)
        SetCellText(column, -1, loadResourceString(headings[column]));
    CUGCell cell;
    GetColumnDefault(kExposedColumn, cell);
    cell.setCellType(ug::CheckBoxCellType);
    SetColumnDefault(kExposedColumn, cell);
    cell.clearAll();
    GetColumnDefault(kNameColumn, cell);
    cell.setReadOnly(true);
    SetColumnDefault(kNameColumn, cell);
    cell.clearAll();
    GetColumnDefault(kCountColumn, cell);
    cell.setMask(QStringLiteral("99"));
    SetColumnDefault(kCountColumn, cell);
}

void CFormatAttrGrid::Fill()
{
    SetRowCount(0);
    StringList names = m_format->getFormatAttrNames();
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    const StringList exposedNames = m_schema->getAttributeNames(false, true);
    const std::unordered_set<std::string> exposed(exposedNames.begin(), exposedNames.end());
    // Only a name with braces can be an element of a list: the thousands of
    // plain user attributes need no look.
    StringList braced;
    for (std::string &name : m_schema->getAttributeNames(true, true)) {
        if (name.find('{') != std::string::npos)
            braced.push_back(std::move(name));
    }
    m_loaded.clear();
    m_loaded.reserve(names.size());
    for (std::string &name : names) {
        const bool list = ListElements::isList(name);
        // The mask bounds what is typed, not what the schema already exposes:
        // a count cut here would delete elements on OK.
        const int count = list ? ListElements(name).countIn(braced) : 0;
        // A list is exposed by its elements; the "{}" name alone exposes
        // none of them.
        const bool checked = list ? count > 0 : exposed.contains(name);
        m_loaded.push_back({checked, std::move(name), count});
    }
    AppendLoadedRows(0, long(m_loaded.size()));
    RepaintAll();
}

QString CFormatAttrGrid::LoadedText(std::size_t record, int column)
{
    const Row &loaded = m_loaded[record];
    switch (column) {
    case kExposedColumn:
        return loaded.checked ? kChecked : kUnchecked;
    case kNameColumn:
        return fromNarrow(loaded.name);
    case kCountColumn:
        return QString::number(loaded.count);
    default:
        return {};
    }
}

bool CFormatAttrGrid::IsLoadedCellEnabled(std::size_t record, int column)
{
    return column != kCountColumn || ListElements::isList(m_loaded[record].name);
}

void CFormatAttrGrid::MakeLoadedRow(long row, std::size_t record)
{
    for (const int column : {kExposedColumn, kNameColumn, kCountColumn})
        SetCellText(column, row, LoadedText(record, column));
    EnableCell(kCountColumn, row, IsLoadedCellEnabled(record, kCountColumn));
}

void CFormatAttrGrid::CheckAll(bool checked)
{
    UndoStep step(*this);
    BeginBatch();
    for (long row = 0; row < GetRowCount(); ++row) {
        const auto read = ReadRow(row);
        if (read)
            SetRow(row, checked, read->count);
    }
    EndBatch();
    RepaintAll();
}

void CFormatAttrGrid::SetRow(long row, bool checked, int count)
{
    const bool list = ListElements::isList(toNarrow(GetCellString(row, kNameColumn)));
    // What a list exposes is its elements: one at least when checked, none
    // when not.
    if (list)
        count = checked ? std::max(count, 1) : 0;
    const QString exposed = checked ? kChecked : kUnchecked;
    if (GetCellString(row, kExposedColumn) != exposed)
        SetCellText(kExposedColumn, row, exposed);
    if (list && GetCellString(row, kCountColumn) != QString::number(count))
        SetCellText(kCountColumn, row, QString::number(count));
}

void CFormatAttrGrid::OnCellChange(int column, long row, ug::TextSource source)
{
    if (column == kNameColumn)
        EnableCell(kCountColumn, row, ListElements::isList(toNarrow(GetCellString(row, kNameColumn))));
    // Undo and redo put back both cells themselves.
    if (source == ug::TextRestored || !ListElements::isList(toNarrow(GetCellString(row, kNameColumn))))
        return;
    const auto read = ReadRow(row);
    if (!read)
        return;
    if (column == kExposedColumn)
        SetRow(row, read->checked, read->count);
    else if (column == kCountColumn)
        SetRow(row, read->count > 0, read->count);
    RepaintCell(kExposedColumn, row);
    RepaintCell(kCountColumn, row);
}

std::optional<CFormatAttrGrid::Row> CFormatAttrGrid::ReadRow(long row)
{
    QStringList texts;
    GetRowTexts(row, texts);
    if (texts.size() != 3)
        return std::nullopt;
    return Row{texts[kExposedColumn] == kChecked, toNarrow(texts[kNameColumn]), texts[kCountColumn].toInt()};
}

StringList CFormatAttrGrid::GetExposedNames()
{
    StringList names;
    for (long row = 0; row < GetRowCount(); ++row) {
        if (const auto read = ReadRow(row); read && read->checked)
            names.push_back(read->name);
    }
    return names;
}

void CFormatAttrGrid::OnLayoutComponents(Layout &layout)
{
    const int width = layout.grid.width();
    SetColumnWidth(kExposedColumn, int(0.2 * width));
    SetColumnWidth(kNameColumn, int(0.6 * width));
    SetColumnWidth(kCountColumn, int(0.2 * width));
    layout.tabs = QRect();
}

} // namespace vyr
