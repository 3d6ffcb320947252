// CUGCtrl: construction, cells and the texts a person gives them, defaults,
// data stores and the hooks' base behaviour. Dimensions and rows are in
// cugctrl_rows.cpp, sizes, fonts and cell types in cugctrl_sizes.cpp, the
// view in cugctrl_view.cpp (painting, mouse and keys in files of their own),
// editing in cugctrl_edit.cpp, find and replace in cugctrl_find.cpp.
#include "grid/cugctrl.h"

#include "grid/cugaccessible.h"
#include "grid/cugedit.h"
#include "grid/cugmaskededit.h"
#include "grid/cugsections.h"
#include "grid/cugstandardtypes.h"
#include "grid/maskedtext.h"
#include "grid/ugtexts.h"

#include <QApplication>
#include <QScrollBar>

#include <algorithm>

namespace vyr {

CUGCtrl::CUGCtrl(QWidget *parent)
    : QAbstractScrollArea(parent)
{
    installGridAccessibility();
    setViewport(new CUGGrid(this));
    m_grid = static_cast<CUGGrid *>(viewport());
    m_topHeading = new CUGTopHdg(this);
    m_sideHeading = new CUGSideHdg(this);
    m_corner = new CUGCnrBtn(this);
    m_edit = new CUGEdit(this, m_grid);
    m_maskedEdit = new CUGMaskedEdit(this, m_grid);
    verticalScrollBar()->setProperty("controlId", int(ug::VScrollId));
    horizontalScrollBar()->setProperty("controlId", int(ug::HScrollId));
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_InputMethodEnabled, false);
    m_defaultFont = font();

    // The standard types take indices 0..3, in this order.
    m_standardTypes.push_back(std::make_unique<CUGCellType>());
    m_standardTypes.push_back(std::make_unique<CUGDropListType>());
    m_standardTypes.push_back(std::make_unique<CUGCheckBoxType>());
    m_standardTypes.push_back(std::make_unique<CUGArrowType>());
    for (const auto &type : m_standardTypes)
        RegisterCellType(type.get());
    updateGeometries();
}

CUGCtrl::~CUGCtrl()
{
    // Added cell types belong to the derived grid and are gone by now; only
    // the grid's own may still close their pop-ups.
    for (const auto &type : m_standardTypes)
        type->OnClosePopups();
    // The editors go first, so that no focus change reaches a half
    // destroyed grid.
    m_editing = false;
    m_endingEdit = true;
    delete m_edit;
    delete m_maskedEdit;
    if (m_findDialog)
        delete m_findDialog.data();
}

// --- Positions

bool CUGCtrl::isColumn(int column) const
{
    return column >= -int(m_info.headingColumnWidths.size()) && column < m_info.numberOfColumns;
}

bool CUGCtrl::isRow(long row) const
{
    return row >= -long(m_info.headingRowHeights.size()) && row < m_info.numberOfRows;
}

bool CUGCtrl::isCellPosition(int column, long row) const
{
    return isColumn(column) && isRow(row);
}

CUGDataSource *CUGCtrl::storeFor(int column, int &storeColumn) const
{
    storeColumn = column;
    if (column < 0 || column >= m_info.numberOfColumns)
        return m_info.dataSource;
    const CUGColumnInfo &info = m_info.columns[std::size_t(column)];
    storeColumn = info.dataSourceColumn;
    return info.dataSource ? info.dataSource : m_info.dataSource;
}

// --- Cells

int CUGCtrl::GetCell(int column, long row, CUGCell &cell) const
{
    if (!isCellPosition(column, row))
        return ug::OutOfRange;
    int storeColumn = 0;
    CUGDataSource *store = storeFor(column, storeColumn);
    return store->GetCell(storeColumn, row, cell) == 0 ? ug::Success : ug::OutOfRange;
}

int CUGCtrl::GetCellResolved(int column, long row, CUGCell &cell)
{
    cell.clearAll();
    const bool inside = isCellPosition(column, row);
    // Heading rows are not the column's cells: they start from the grid
    // default, as heading columns do.
    if (inside && column >= 0 && row >= 0) {
        const CUGColumnInfo &info = m_info.columns[std::size_t(column)];
        if (info.defaults.propertyMask() != 0)
            cell.copyInfoFrom(info.defaults);
        (info.dataSource ? info.dataSource : m_info.dataSource)->GetCell(info.dataSourceColumn, row, cell);
    } else {
        cell.copyInfoFrom(m_info.gridDefault);
        if (inside) {
            int storeColumn = 0;
            storeFor(column, storeColumn)->GetCell(storeColumn, row, cell);
        }
    }
    OnCellRead(column, row, cell);
    return inside ? ug::Success : ug::OutOfRange;
}

int CUGCtrl::SetCell(int column, long row, const CUGCell &cell)
{
    if (!isCellPosition(column, row))
        return ug::OutOfRange;
    OnCellWrite(column, row, cell);
    int storeColumn = 0;
    CUGDataSource *store = storeFor(column, storeColumn);
    if (store->SetCell(storeColumn, row, cell) != 0)
        return ug::Refused;
    notifyCellChanged(column, row);
    return ug::Success;
}

QString CUGCtrl::GetCellText(int column, long row)
{
    CUGCell cell;
    if (GetCellResolved(column, row, cell) != ug::Success)
        return QString();
    return cell.takeText();
}

int CUGCtrl::SetCellText(int column, long row, const QString &text)
{
    if (!isCellPosition(column, row))
        return ug::OutOfRange;
    CUGCell cell;
    GetCellResolved(column, row, cell);
    cell.setText(text);
    cell.setDataType(CUGCell::TextData);
    return SetCell(column, row, cell);
}

bool CUGCtrl::IsCellWritable(int column, long row)
{
    if (column < 0 || row < 0 || column >= m_info.numberOfColumns || row >= m_info.numberOfRows)
        return false;
    CUGCell cell;
    GetCellResolved(column, row, cell);
    return MayWriteCell(column, row, cell);
}

bool CUGCtrl::MayWriteCell(int, long, const CUGCell &resolved)
{
    return !resolved.isReadOnly() && GetCellType(resolved)->allowsEditing();
}

int CUGCtrl::WriteUserText(int column, long row, const QString &text, ug::TextSource source)
{
    if (column < 0 || row < 0 || column >= m_info.numberOfColumns || row >= m_info.numberOfRows)
        return ug::OutOfRange;
    CUGCell cell;
    GetCellResolved(column, row, cell);
    if (!MayWriteCell(column, row, cell))
        return ug::Refused;
    return WriteCheckedText(column, row, text, source, cell);
}

int CUGCtrl::WriteCheckedText(int column, long row, const QString &text, ug::TextSource source,
                              const CUGCell &resolved)
{
    // The checks may change a character; the text is copied only then.
    QString verified = text;
    for (qsizetype i = 0; i < text.size(); ++i) {
        QChar character = text[i];
        if (!m_info.dataSource->OnEditVerify(column, row, nullptr, character)
            || !OnEditVerify(column, row, nullptr, character))
            return ug::Refused;
        if (character != text[i])
            verified[i] = character;
    }
    // The end-of-edit hooks before the mask: they can say why a text does
    // not fit, where the mask only refuses it.
    if (!m_info.dataSource->OnEditFinish(column, row, nullptr, verified, false)
        || !OnEndEdit(column, row, nullptr, verified, false))
        return ug::Refused;
    if (resolved.isSet(CUGCell::Mask) && !resolved.mask().isEmpty()
        && MaskedText(resolved.mask(), verified).value() != verified)
        return ug::Refused;
    return StoreUserText(column, row, verified, source) == ug::Success ? ug::Success : ug::Refused;
}

int CUGCtrl::StoreUserText(int column, long row, const QString &text, ug::TextSource)
{
    return SetCellText(column, row, text);
}

int CUGCtrl::DeleteCell(int column, long row)
{
    if (!isCellPosition(column, row))
        return ug::OutOfRange;
    int storeColumn = 0;
    return storeFor(column, storeColumn)->DeleteCell(storeColumn, row) == 0 ? ug::Success : ug::Refused;
}

// --- Defaults

int CUGCtrl::GetDefaultCell(CUGCell &cell) const
{
    cell.copyInfoFrom(m_info.gridDefault);
    return ug::Success;
}

int CUGCtrl::SetDefaultCell(const CUGCell &cell)
{
    m_info.gridDefault.copyInfoFrom(cell);
    return ug::Success;
}

int CUGCtrl::GetHeadingDefaultCell(CUGCell &cell) const
{
    cell.copyInfoFrom(m_info.headingDefault);
    return ug::Success;
}

int CUGCtrl::SetHeadingDefaultCell(const CUGCell &cell)
{
    m_info.headingDefault.copyInfoFrom(cell);
    return ug::Success;
}

int CUGCtrl::GetColumnDefault(int column, CUGCell &cell) const
{
    if (column < 0 || column >= m_info.numberOfColumns)
        return ug::OutOfRange;
    cell.copyInfoFrom(m_info.columns[std::size_t(column)].defaults);
    return ug::Success;
}

int CUGCtrl::SetColumnDefault(int column, const CUGCell &cell)
{
    if (column < 0 || column >= m_info.numberOfColumns)
        return ug::OutOfRange;
    m_info.columns[std::size_t(column)].defaults.copyInfoFrom(cell);
    return ug::Success;
}

// --- Data stores

int CUGCtrl::SetDefDataSource(CUGDataSource *store)
{
    m_info.dataSource = store ? store : m_info.ownStore.get();
    RepaintAll();
    return ug::Success;
}

CUGDataSource *CUGCtrl::GetDataSource(int column) const
{
    int storeColumn = 0;
    return storeFor(column, storeColumn);
}

long CUGCtrl::CountColumnText(int column, const QString &text) const
{
    if (!isColumn(column) || text.isEmpty())
        return 0;
    int storeColumn = 0;
    CUGDataSource *store = storeFor(column, storeColumn);
    if (const long counted = store->CountText(storeColumn, text); counted >= 0)
        return counted;
    long found = 0;
    for (long row = 0; row < GetRowCount(); ++row) {
        CUGCell cell;
        if (store->GetCell(storeColumn, row, cell) == 0 && cell.textRef() == text)
            ++found;
    }
    return found;
}

int CUGCtrl::SetColumnDataSource(int column, CUGDataSource *store, int storeColumn)
{
    if (column < 0 || column >= m_info.numberOfColumns || storeColumn < 0)
        return ug::OutOfRange;
    CUGColumnInfo &info = m_info.columns[std::size_t(column)];
    info.dataSource = store;
    info.dataSourceColumn = storeColumn;
    RepaintAll();
    return ug::Success;
}

// --- Hooks: the base behaviour

void CUGCtrl::OnGridInit() {}

int CUGCtrl::OnAllowCellMove(int, long, int, long)
{
    return 1;
}

int CUGCtrl::OnAllowScroll(int, long, int, long)
{
    return 1;
}

int CUGCtrl::OnAllowColumnResize(int)
{
    return 1;
}

int CUGCtrl::OnAllowRowResize(long)
{
    return 1;
}

int CUGCtrl::OnAllowTopHeadingResize()
{
    return 1;
}

int CUGCtrl::OnAllowSideHeadingResize()
{
    return 1;
}

void CUGCtrl::OnColumnChanged(int, int) {}
void CUGCtrl::OnRowChanged(long, long) {}
void CUGCtrl::OnCellChanged(int, int, long, long) {}
void CUGCtrl::OnLeftColumnChanged(int, int) {}
void CUGCtrl::OnTopRowChanged(long, long) {}
void CUGCtrl::OnCellLeftClick(int, long, bool, const QRect &, const QPoint &, bool) {}
void CUGCtrl::OnCellRightClick(int, long, bool, const QRect &, const QPoint &, bool) {}
void CUGCtrl::OnCellDoubleClick(int, long, const QRect &, const QPoint &, bool) {}
void CUGCtrl::OnTopHeadingClick(int, long, bool) {}
void CUGCtrl::OnSideHeadingClick(int, long, bool) {}
void CUGCtrl::OnCornerButtonClick(bool) {}
void CUGCtrl::OnCellKey(int &, bool) {}
void CUGCtrl::OnCellChar(QChar &, bool) {}

void CUGCtrl::OnKeyRefused()
{
    QApplication::beep();
}
void CUGCtrl::OnCellRead(int, long, CUGCell &) {}
void CUGCtrl::OnCellWrite(int, long, const CUGCell &) {}

long CUGCtrl::OnCellTypeEvent(int, int, long, int, std::intptr_t)
{
    return 1;
}

int CUGCtrl::OnBeginEdit(int, long, QWidget *&)
{
    return 1;
}

int CUGCtrl::OnEditVerify(int, long, QWidget *, QChar &)
{
    return 1;
}

int CUGCtrl::OnEndEdit(int, long, QWidget *, const QString &, bool)
{
    return 1;
}

int CUGCtrl::OnEditNextCell(int, long, int &, long &)
{
    return 1;
}

void CUGCtrl::OnMenuCommand(int, long, int, int) {}

int CUGCtrl::OnCellTipText(int column, long row, int, QString &text)
{
    text = QString::asprintf("Col:%d Row:%ld", column, row);
    return 1;
}

QString CUGCtrl::OnCellDescription(int, long)
{
    return QString();
}

QString CUGCtrl::OnRowName(long row)
{
    if (m_rowNameColumn >= 0 && m_rowNameColumn < GetColumnCount()) {
        if (const QString name = GetCellText(m_rowNameColumn, row); !name.isEmpty())
            return name;
    }
    if (GetSideHeadingColumns() > 0) {
        if (const QString heading = GetCellText(-1, row); !heading.isEmpty())
            return heading;
    }
    return ug::gridText("Row %1").arg(row + 1);
}

bool CUGCtrl::IsCellEnabled(int, long)
{
    return true;
}

bool CUGCtrl::IsGridEnabled() const
{
    return true;
}

int CUGCtrl::OnCompareCells(const CUGCell *first, const CUGCell *second, int flags)
{
    if (flags & 2)
        std::swap(first, second);
    if (!first || !second)
        return first == second ? 0 : (first ? -1 : 1);
    const int type = first->dataType();
    if (type == 2 || type == 3 || type == 5) {
        const double a = first->number();
        const double b = second->number();
        return a < b ? -1 : (a > b ? 1 : 0);
    }
    const QString &a = first->textRef();
    const QString &b = second->textRef();
    if (a.isEmpty() != b.isEmpty())
        return a.isEmpty() ? 1 : -1;
    const QByteArray bytesA = a.toUtf8();
    const QByteArray bytesB = b.toUtf8();
    const int order = bytesA.compare(bytesB);
    return order < 0 ? -1 : (order > 0 ? 1 : 0);
}

void CUGCtrl::OnLayoutComponents(Layout &) {}
void CUGCtrl::OnRowsInserted(long, long) {}
void CUGCtrl::OnRowsDeleting(long, long) {}
void CUGCtrl::OnRowTextsPermuted(long, const std::vector<long> &) {}
void CUGCtrl::OnUserActionBegins() {}
void CUGCtrl::OnUserActionEnds() {}

QColor CUGCtrl::OnDefaultBackColour(int section)
{
    return paletteColour(section == ug::CellArea ? QPalette::Base : QPalette::Button);
}

int CUGCtrl::OnAllowTopHeadingPress(int)
{
    return 1;
}

int CUGCtrl::OnAllowTopHeadingCellPress(int, long)
{
    return 1;
}

void CUGCtrl::OnContextMenu(int, long, int, const QPoint &) {}

void CUGCtrl::RunMenuCommand(int command)
{
    if (command >= 1000)
        OnMenuCommand(m_menuColumn, m_menuRow, m_menuSection, command);
}

} // namespace vyr
