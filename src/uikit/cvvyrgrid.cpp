// CVVyrGrid: construction, setup, enabling and its colours, the program
// cell types' events, and the grid control hooks that make a list editor.
// Rows, keys and moving through the cells are in cvvyrgrid_rows.cpp; undo,
// redo and the clipboard in cvvyrgrid_history.cpp.
#include "uikit/cvvyrgrid.h"

#include "grid/ugtexts.h"
#include "uikit/cvvyrbrowsebuttontype.h"
#include "uikit/cvvyrdroplisttype.h"
#include "uikit/cvvyrgridedit.h"
#include "uikit/dialogutils.h"
#include "uikit/narrowtext.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>

namespace vyr {

// Hands the row store's questions to the grid's hooks.
class CVVyrGrid::RowLoader final : public GridRowStore::Loader
{
public:
    explicit RowLoader(CVVyrGrid &grid)
        : m_grid(grid)
    {
    }
    QString LoadedText(std::size_t record, int column) override { return m_grid.LoadedText(record, column); }
    void MakeLoadedRow(long row, std::size_t record, bool restyled) override
    {
        m_grid.makeLoadedRow(row, record, restyled);
    }

private:
    CVVyrGrid &m_grid;
};

CellActionHandler::~CellActionHandler() = default;
void CellActionHandler::OnBrowse(CVVyrGrid &, int, long, CUGCell &) {}
void CellActionHandler::OnGetChoices(CVVyrGrid &, int, long, CUGCell &, QStringList &) {}
void CellActionHandler::OnChoiceSelected(CVVyrGrid &, int, long, CUGCell &, const QString &) {}

CVVyrGrid::CVVyrGrid(int columnCount, bool keepNewRow, QWidget *parent)
    : CUGCtrl(parent)
    , m_rowLoader(std::make_unique<RowLoader>(*this))
    , m_rowStore(*m_rowLoader)
    , m_columnCount(std::max(1, columnCount))
    , m_keepNewRow(keepNewRow)
    , m_editor(std::make_unique<CVVyrGridEdit>(this, GetGridWidget()))
    , m_dropListType(std::make_unique<CVVYRDropListType>())
    , m_browseType(std::make_unique<CVVyrBrowseButtonType>())
    , m_colourType(std::make_unique<CVVyrColourPickType>())
    , m_history(kUndoLimit)
{
    // The grid's own dialogs speak the user's language like the pages
    // around them.
    static const bool translated = [] {
        ug::setTextTranslator([](const char *english) { return fromNarrow(LocalizeText(english)); });
        return true;
    }();
    (void)translated;
    SetDefDataSource(&m_rowStore);
    readColours();
}

CVVyrGrid::~CVVyrGrid()
{
    CancelEdit();
    m_dropListType->OnClosePopups();
}

void CVVyrGrid::readColours()
{
    const QPalette &colours = palette();
    m_colours.text = colours.color(QPalette::Active, QPalette::Text);
    m_colours.back = colours.color(QPalette::Active, QPalette::Base);
    m_colours.disabledText = colours.color(QPalette::Disabled, QPalette::Text);
    m_colours.disabledBack = colours.color(QPalette::Active, QPalette::Button);
    m_colours.highlightText = colours.color(QPalette::Active, QPalette::HighlightedText);
    m_colours.highlightBack = colours.color(QPalette::Active, QPalette::Highlight);
    forgetLooks();
}

bool CVVyrGrid::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::PaletteChange:
    case QEvent::ApplicationPaletteChange:
        // A theme switched at run time recolours what the grid wrote.
        readColours();
        if (m_dropListId >= 0)
            EnableGrid(m_enabled);
        break;
    case QEvent::ShortcutOverride: {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (editShortcut(key->key(), key->modifiers()) != EditShortcut::None) {
            event->accept();
            return true;
        }
        break;
    }
    default:
        break;
    }
    return CUGCtrl::event(event);
}

// --- Setup

void CVVyrGrid::OnGridInit()
{
    SetSideHeadingWidth(0);
    SetTopHeadingHeight(0);
    // A record is named by its first field (an attribute's name, a code).
    SetRowNameColumn(0);
    SetMultiSelect(true);
    SetVScrollMode(1);
    SetVScrollWidth(style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this));
    SetHScrollHeight(0);
    SetCurrentCellStyle(3);

    m_editor->setParent(GetGridWidget());
    m_editor->setProperty("controlId", 125);
    m_editor->setGeometry(QRect());
    m_editor->hide();

    // The dialog's font when there is one, else the desktop's.
    const QFont font = parentWidget() ? parentWidget()->font() : QApplication::font();
    m_fontIndex = RegisterFont(font);
    CUGCell cell;
    GetDefaultCell(cell);
    cell.setFont(font);
    SetDefaultCell(cell);
    GetHeadingDefaultCell(cell);
    cell.setFont(font);
    SetHeadingDefaultCell(cell);
    SetDefFont(font);

    SetColumnCount(m_columnCount);
    SetRowCount(m_keepNewRow ? 1 : 0);
    if (m_keepNewRow) {
        for (int column = 0; column < m_columnCount; ++column)
            SetCellText(column, 0, QString());
    }
    for (int column = 0; column < m_columnCount; ++column)
        SetColumnWidth(column, width() / m_columnCount);

    m_dropListId = RegisterCellType(m_dropListType.get());
    m_browseId = RegisterCellType(m_browseType.get());
    m_colourId = RegisterCellType(m_colourType.get());
    setWindowTitle(QStringLiteral("Grid"));
    EnableGrid(true);
}

// --- Enabling

const CUGCell &CVVyrGrid::enabledLook(bool cellEnabled, bool readOnlyToo) const
{
    std::optional<CUGCell> &look = m_looks[(cellEnabled ? 2 : 0) + (readOnlyToo ? 1 : 0)];
    if (!look)
        look = makeLook(cellEnabled, readOnlyToo);
    return *look;
}

CUGCell CVVyrGrid::makeLook(bool cellEnabled, bool readOnlyToo) const
{
    CUGCell look;
    if (m_enabled) {
        look.setTextColor(m_colours.text);
        look.setBackColor(m_colours.back);
        look.setHighlightTextColor(m_colours.highlightText);
        look.setHighlightBackColor(m_colours.highlightBack);
    } else {
        look.setTextColor(m_colours.disabledText);
        look.setHighlightTextColor(m_colours.disabledText);
        look.setBackColor(m_colours.disabledBack);
        look.setHighlightBackColor(m_colours.disabledBack);
    }
    if (readOnlyToo)
        look.setReadOnly(!m_enabled);
    if (cellEnabled)
        return look;
    // A disabled cell keeps its disabled look in an enabled grid, and shows
    // nothing but its background when its text is to be hidden.
    const QColor text = m_showDisabledText ? m_colours.disabledText : m_colours.disabledBack;
    look.setTextColor(text);
    look.setHighlightTextColor(text);
    look.setBackColor(m_colours.disabledBack);
    look.setHighlightBackColor(m_colours.disabledBack);
    return look;
}

void CVVyrGrid::EnableGrid(bool enable)
{
    m_enabled = enable;
    forgetLooks();
    // Laid over each cell, a look's colours are shared, not copied.
    const CUGCell &enabledCell = enabledLook(true, true);
    const CUGCell &disabledCell = enabledLook(false, true);
    CUGCell cell;
    GetDefaultCell(cell);
    cell.addInfoFrom(enabledCell);
    SetDefaultCell(cell);
    for (int column = 0; column < GetColumnCount(); ++column) {
        cell.clearAll();
        GetColumnDefault(column, cell);
        cell.addInfoFrom(enabledCell);
        SetColumnDefault(column, cell);
    }
    BeginBatch();
    // Loaded rows take the look when they are made.
    m_rowStore.MarkLoadedRows();
    for (long row = 0; row < GetRowCount(); ++row) {
        if (!LoadedRecordOf(row))
            restyleRow(row, enabledCell, disabledCell);
    }
    EndBatch();
    RepaintAll();
}

void CVVyrGrid::restyleRow(long row, const CUGCell &enabledCell, const CUGCell &disabledCell)
{
    CUGCell cell;
    for (int column = 0; column < GetColumnCount(); ++column) {
        cell.clearAll();
        GetCell(column, row, cell);
        cell.addInfoFrom(isDisabledCell(cell) ? disabledCell : enabledCell);
        SetCell(column, row, cell);
    }
}

long CVVyrGrid::AppendLoadedRows(std::size_t firstRecord, long count)
{
    const long row = recordCount();
    m_rowStore.LoadNextRows(firstRecord);
    return InsertRows(row, count) == ug::Success ? row : -1;
}

void CVVyrGrid::MakeLoadedRows()
{
    for (long row = 0; row < GetRowCount() && m_rowStore.loadedRows() > 0; ++row)
        m_rowStore.MakeRow(row);
}

void CVVyrGrid::makeLoadedRow(long row, std::size_t record, bool restyled)
{
    ++m_makingRow;
    MakeLoadedRow(row, record);
    if (restyled)
        restyleRow(row, enabledLook(true, true), enabledLook(false, true));
    --m_makingRow;
}

QString CVVyrGrid::LoadedText(std::size_t, int)
{
    return {};
}

bool CVVyrGrid::IsLoadedCellEnabled(std::size_t, int)
{
    return true;
}

void CVVyrGrid::MakeLoadedRow(long, std::size_t) {}

bool CVVyrGrid::IsGridEnabled() const
{
    return m_enabled;
}

void CVVyrGrid::EnableControl(bool enable)
{
    CommitEdit();
    setEnabled(enable);
    EnableGrid(enable);
}

void CVVyrGrid::EnableCell(int column, long row, bool enable)
{
    if (column < 0 || row < 0 || column >= GetColumnCount() || row >= GetRowCount())
        return;
    CUGCell cell;
    GetCell(column, row, cell);
    // Colours only: whether the cell is read-only is the grid's business.
    cell.addInfoFrom(enabledLook(enable, false));
    cell.setPropertyFlag(kDisabledCellMark, !enable);
    SetCell(column, row, cell);
    // A row being made is made for a paint under way.
    if (!isMakingRow())
        RepaintCell(column, row);
}

bool CVVyrGrid::IsCellEnabled(int column, long row)
{
    if (const std::optional<std::size_t> record = LoadedRecordOf(row); record && column >= 0 && column < GetColumnCount())
        return IsLoadedCellEnabled(*record, column);
    CUGCell cell;
    GetCell(column, row, cell);
    return !isDisabledCell(cell);
}

bool CVVyrGrid::MayWriteCell(int column, long row, const CUGCell &resolved)
{
    return m_enabled && !isDisabledCell(resolved) && CUGCtrl::MayWriteCell(column, row, resolved);
}

void CVVyrGrid::SetCellActionHandler(CUGCell &cell, CellActionHandler *handler)
{
    cell.setUserValue(reinterpret_cast<std::intptr_t>(handler));
}

CellActionHandler *CVVyrGrid::CellActionHandlerOf(const CUGCell &cell)
{
    return reinterpret_cast<CellActionHandler *>(cell.userValue());
}

void CVVyrGrid::CommitEdit()
{
    if (!IsEditing())
        return;
    const auto *editor = dynamic_cast<const CUGEditBase *>(GetEditor());
    EndEdit(editor ? editor->editText() : QString(), false, false, 0, 0);
}

// --- Hooks of the grid control

int CVVyrGrid::OnAllowCellMove(int, long, int newColumn, long newRow)
{
    return IsCellEnabled(newColumn, newRow) ? 1 : 0;
}

int CVVyrGrid::OnAllowColumnResize(int)
{
    return 0;
}

int CVVyrGrid::OnAllowRowResize(long)
{
    return 0;
}

int CVVyrGrid::OnAllowTopHeadingResize()
{
    return 0;
}

int CVVyrGrid::OnAllowSideHeadingResize()
{
    return 0;
}

int CVVyrGrid::OnAllowTopHeadingPress(int)
{
    return 0;
}

int CVVyrGrid::OnAllowTopHeadingCellPress(int, long)
{
    return 0;
}

void CVVyrGrid::OnCellLeftClick(int, long row, bool pressed, const QRect &, const QPoint &, bool)
{
    if (pressed && m_enabled && isNewRow(row))
        useNewRow();
}

void CVVyrGrid::OnCellDoubleClick(int column, long row, const QRect &, const QPoint &, bool)
{
    // The press before could not make a disabled cell current: nothing is
    // edited then, least of all another cell.
    if (!m_enabled || column != GetCurrentCol() || row != GetCurrentRow())
        return;
    editCurrentCell(0);
}

int CVVyrGrid::OnBeginEdit(int column, long row, QWidget *&editor)
{
    CUGCell cell;
    GetCellResolved(column, row, cell);
    // A cell that became disabled under the current cell (a sort, a new
    // type) is never edited.
    if (isDisabledCell(cell) || !takesTyping(cell))
        return 0;
    m_editor->setMaxLength(32767);
    editor = m_editor.get();
    return 1;
}

bool CVVyrGrid::takesTyping(const CUGCell &cell) const
{
    const int type = cell.cellType();
    // A drop list or a button is typed into only in its editable look; a
    // check box, an arrow and the grid control's own list never.
    if (type == m_dropListId || type == m_browseId || type == m_colourId)
        return cell.cellTypeParam() & ug::ParamEditable;
    return type != ug::DropListCellType && type != ug::CheckBoxCellType && type != ug::ArrowCellType;
}

int CVVyrGrid::OnEditNextCell(int, long, int &, long &)
{
    return 0;
}

int CVVyrGrid::OnEndEdit(int column, long row, QWidget *, const QString &text, bool cancelled)
{
    if (cancelled) {
        m_history.cancelJoin();
        return 1;
    }
    return refuses(column, row, text) ? 0 : 1;
}

void CVVyrGrid::OnCellTextReplaced(int, long, const QString &) {}

void CVVyrGrid::OnUserActionBegins()
{
    collectRefusals();
    if (!m_replaying)
        m_history.begin(GetCurrentCol(), GetCurrentRow());
}

void CVVyrGrid::OnUserActionEnds()
{
    if (!m_replaying)
        m_history.end();
    tellCollectedRefusals();
}

void CVVyrGrid::OnLayoutComponents(Layout &layout)
{
    const int share = layout.grid.width() / m_columnCount;
    for (int column = 0; column < GetColumnCount(); ++column)
        SetColumnWidth(column, share);
    layout.tabs = QRect();
}

QColor CVVyrGrid::OnDefaultBackColour(int)
{
    return m_enabled ? m_colours.back : m_colours.disabledBack;
}

void CVVyrGrid::OnPaintFocusFrame(QPainter &painter, const QRect &rect)
{
    if (!m_enabled)
        return;
    QPen pen(hasFocus() ? m_colours.highlightBack : palette().color(QPalette::Mid));
    pen.setWidth(2);
    pen.setJoinStyle(Qt::MiterJoin);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    // One pixel narrower and shorter than the cell, inside its grid lines.
    painter.drawRect(rect.adjusted(1, 1, -2, -2));
}

// --- The program cell types' events

long CVVyrGrid::OnCellTypeEvent(int typeId, int column, long row, int message, std::intptr_t parameter)
{
    if (!IsCellEnabled(column, row))
        return 0;
    CUGCell cell;
    GetCellResolved(column, row, cell);
    CellActionHandler *handler = CellActionHandlerOf(cell);
    if (typeId == m_dropListId && message == ug::DropListSelect) {
        const QString &text = *reinterpret_cast<const QString *>(parameter);
        if (!handler)
            return OnChoiceSelected(column, row, text) ? 1 : 0;
        handler->OnChoiceSelected(*this, column, row, cell, text);
        return 1;
    }
    if (typeId == m_dropListId && message == ug::DropListStart) {
        auto &entries = *reinterpret_cast<QStringList *>(parameter);
        if (handler) {
            QStringList choices;
            handler->OnGetChoices(*this, column, row, cell, choices);
            entries = choices;
        } else {
            OnGetChoices(column, row, entries);
        }
        return 1;
    }
    if ((typeId == m_browseId || typeId == m_colourId) && message == kBrowseEvent) {
        UndoStep step(*this);
        if (!handler)
            return cell.isReadOnly() ? 0 : OnBrowse(column, row);
        // The handler works on a copy: a read-only cell only shows its value,
        // and the new row becomes a record only when it gets a text.
        CUGCell browsed = cell;
        handler->OnBrowse(*this, column, row, browsed);
        if (cell.isReadOnly() || (isNewRow(row) && browsed.text() == cell.text()))
            return 1;
        if (isNewRow(row)) {
            if (!useNewRow())
                return 0;
            CUGCell fresh;
            GetCellResolved(column, row, fresh);
            fresh.setText(browsed.text());
            browsed = fresh;
        }
        SetCell(column, row, browsed);
        RepaintCell(column, row);
        if (browsed.text() != cell.text()) {
            OnCellChange(column, row, ug::TextBrowsed);
            OnCellTextReplaced(column, row, cell.text());
        }
        return 1;
    }
    return 1;
}

int CVVyrGrid::StoreUserText(int column, long row, const QString &text, ug::TextSource source)
{
    UndoStep step(*this);
    // A text given to the new row makes it a record, however it came: the
    // blank row goes below it first.
    if (isNewRow(row) && !useNewRow())
        return ug::Refused;
    const QString before = GetCellText(column, row);
    const int result = CUGCtrl::StoreUserText(column, row, text, source);
    // The same text again (the same type chosen twice) changes nothing a
    // subclass derives from it.
    if (result == ug::Success && text != before) {
        OnCellChange(column, row, source);
        OnCellTextReplaced(column, row, before);
    }
    return result;
}

// --- The subclasses' hooks

bool CVVyrGrid::OnRowAdded(long)
{
    return true;
}

void CVVyrGrid::OnCellChange(int, long, ug::TextSource) {}

bool CVVyrGrid::OnChoiceSelected(int, long, const QString &)
{
    return true;
}

void CVVyrGrid::OnGetChoices(int, long, QStringList &) {}

int CVVyrGrid::OnBrowse(int, long)
{
    return 1;
}

} // namespace vyr
