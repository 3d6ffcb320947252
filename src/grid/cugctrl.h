// CUGCtrl: a spreadsheet-like grid window.
//
// Cells are addressed by column (int) and row (long): 0 .. count - 1 in the
// cell area, negative numbers for heading rows above (-1 next to the cells)
// and heading columns to the left. Cells come from a data store (a CUGMem by
// default) laid over column defaults; cell types draw them and take mouse and
// keys; in-place editors change their text. A derived grid steers everything
// through the virtual hooks below, whose base behaviour is stated with each.
//
// Operations return ug::Result codes: 0 done, 1 out of range or not found,
// 2 refused by a hook or the store, 3 an inverted range.
//
// The cell area is the scroll area's viewport; headings and the corner sit
// in its margins, as Qt's own item views place their headers.
#ifndef VYR_GRID_CUGCTRL_H
#define VYR_GRID_CUGCTRL_H

#include "grid/cugcell.h"
#include "grid/cugcelltype.h"
#include "grid/cugfinddialog.h"
#include "grid/cuggridinfo.h"
#include "grid/ugdefs.h"

#include <QAbstractScrollArea>
#include <QElapsedTimer>
#include <QFont>
#include <QPointer>

#include <array>
#include <functional>
#include <memory>
#include <vector>

class QHelpEvent;

namespace vyr {

class CUGCnrBtn;
class CUGEdit;
class CUGEditBase;
class CUGGrid;
class CUGMaskedEdit;
class CUGSideHdg;
class CUGTopHdg;

class CUGCtrl : public QAbstractScrollArea
{
    Q_OBJECT

public:
    explicit CUGCtrl(QWidget *parent = nullptr);
    ~CUGCtrl() override;

    // --- Dimensions
    int GetColumnCount() const;
    int SetColumnCount(int count, bool redraw = true);
    long GetRowCount() const;
    int SetRowCount(long count, bool redraw = true);
    // Through the data store, then one row more (less).
    int InsertRow(long row);
    int DeleteRow(long row);
    int AppendRow();
    // Many rows at once: the view is brought up to date once at the end.
    int InsertRows(long row, long count);
    int DeleteRows(long row, long count);
    // Reorders the texts of the rows from `row` on, in every column: row
    // row + i takes the texts row + order[i] had. Only texts move, straight
    // in the data stores; OnRowTextsPermuted reports it, not OnCellWrite.
    // 1 when `order` is not a permutation of rows that exist.
    int PermuteRowTexts(long row, const std::vector<long> &order);
    int GetTopHeadingRows() const;
    int SetTopHeadingRows(int count);
    int GetSideHeadingColumns() const;
    int SetSideHeadingColumns(int count);
    // The column whose text names a row to assistive technology; -1: none.
    void SetRowNameColumn(int column) { m_rowNameColumn = column; }

    // --- Cells
    // The data store's properties only.
    int GetCell(int column, long row, CUGCell &cell) const;
    // Column default (the grid default for heading cells and columns out of
    // range), then the store, then OnCellRead.
    int GetCellResolved(int column, long row, CUGCell &cell);
    // OnCellWrite, then into the column's store (a heading column's goes
    // to the sheet's store).
    int SetCell(int column, long row, const CUGCell &cell);
    QString GetCellText(int column, long row);
    int SetCellText(int column, long row, const QString &text);
    int DeleteCell(int column, long row);

    // --- Texts a person gives
    // Whether a person may give the cell a text: a cell of the cell area
    // that MayWriteCell allows.
    bool IsCellWritable(int column, long row);
    // A text a person gives a cell outside the in-place editor (a replace,
    // assistive technology, a paste), checked as an edit is: the cell must
    // be writable, the store and OnEditVerify must take every character,
    // and the store and OnEndEdit the text. 0 stored, 2 refused, 1 outside.
    int WriteUserText(int column, long row, const QString &text, ug::TextSource source);
    // Where every text a person gave a cell is stored, after its checks;
    // the base stores it with SetCellText. Derived grids learn of a
    // person's changes here.
    virtual int StoreUserText(int column, long row, const QString &text, ug::TextSource source);

    // --- Defaults, each a whole cell copied
    int GetDefaultCell(CUGCell &cell) const;
    int SetDefaultCell(const CUGCell &cell);
    int GetHeadingDefaultCell(CUGCell &cell) const;
    int SetHeadingDefaultCell(const CUGCell &cell);
    int GetColumnDefault(int column, CUGCell &cell) const;
    int SetColumnDefault(int column, const CUGCell &cell);

    // --- Data stores
    // The sheet's store; the grid does not own it. Null restores its own.
    int SetDefDataSource(CUGDataSource *store);
    CUGDataSource *GetDataSource(int column) const;
    int SetColumnDataSource(int column, CUGDataSource *store, int storeColumn);
    // How many rows of the column store exactly `text` (not empty): at once
    // from a store that counts, else row by row.
    long CountColumnText(int column, const QString &text) const;

    // --- Sizes (in device-independent pixels; Qt scales them to the screen)
    int SetColumnWidth(int column, int width);
    int GetColumnWidth(int column) const;
    int SetDefColumnWidth(int width);
    // A row of height 0 is hidden: never drawn, never current.
    int SetRowHeight(long row, int height);
    int GetRowHeight(long row) const;
    int SetDefRowHeight(int height);
    int SetSideHeadingWidth(int width);
    int SetSideHeadingColumnWidth(int column, int width);
    int GetSideHeadingWidth() const;
    int SetTopHeadingHeight(int height);
    int SetTopHeadingRowHeight(int row, int height);
    int GetTopHeadingHeight() const;
    // 0 hides the bar; a bar keeps its style's size until one is set.
    int SetVScrollWidth(int width);
    int SetHScrollHeight(int height);
    // flags: 1 measures the heading rows too.
    int FitColumnWidths(int firstColumn, int lastColumn, long rowsToScan, int flags);
    void SetUserSizingMode(bool allowed);

    // --- Current cell
    int GetCurrentCol() const;
    long GetCurrentRow() const;
    int MoveToCell(int column, long row);
    // MoveToCell as code means it whatever keys are held: the selection
    // collapses to the cell.
    int GotoCell(int column, long row);
    // GotoCell, but when a hook refuses the cell, the nearest one it allows:
    // the other cells of that row by their distance from it (beyond it first
    // on a tie, so that a move to the side goes on past a refused cell),
    // then the rows back towards the current one. The keys move this way,
    // so that a disabled cell never stops them.
    int GotoNearestCell(int column, long row);
    enum StepMove { StepUp = 0, StepDown = 1, StepPageUp = 2, StepPageDown = 3, StepFirst = 4, StepLast = 5 };
    int StepCurrentRow(int move);
    int GetLeftCol() const;
    long GetTopRow() const;
    int SetLeftCol(int column);
    int SetTopRow(long row);

    // --- Selection
    int SetMultiSelect(bool multiSelect);
    bool GetMultiSelect() const;
    int SetCurrentCellStyle(int style);
    int SetVScrollMode(int mode);
    int SelectCell(int column, long row);
    int SelectRange(int startColumn, long startRow, int endColumn, long endRow);
    int ClearSelection();
    bool IsSelected(int column, long row) const;
    int FirstSelected(int &column, long &row);
    int NextSelected(int &column, long &row);

    // --- Editing
    // firstKey (a character) goes to the editor; 0 for none.
    int BeginEdit(int firstKey = 0);
    // 1 when the edit ended, 0 when the store or OnEndEdit kept it open.
    int EndEdit(const QString &text, bool cancelled, bool continueEditing, int nextColumn, long nextRow);
    bool IsEditing() const { return m_editing; }
    QWidget *GetEditor() const { return m_activeEditor; }
    CUGEdit *GetStandardEditor() const { return m_edit; }
    CUGMaskedEdit *GetMaskedEditor() const { return m_maskedEdit; }
    // Ends an edit in progress as cancelled.
    void CancelEdit();
    // The modifiers held with the key the grid is handling now; hooks and
    // cell types read them here rather than from the keyboard's state.
    Qt::KeyboardModifiers KeyModifiers() const { return m_keyModifiers; }

    // --- Fonts and cell types
    int RegisterFont(const QFont &font);
    QFont GetFont(int index) const;
    // The font cells without their own use.
    void SetDefFont(const QFont &font);
    QFont GetDefFont() const { return m_defaultFont; }
    // The grid does not own added types; -1 when the type cannot be added.
    int RegisterCellType(CUGCellType *type);
    CUGCellType *GetCellType(int index) const;
    CUGCellType *GetCellType(const CUGCell &cell) const;

    // --- Drawing and geometry
    int RepaintCell(int column, long row);
    void RepaintAll();
    // The cell's rectangle in the coordinates of the widget that shows it
    // (the cell area or a heading); 1 when it is not on screen.
    int GetCellRect(int column, long row, QRect &rect) const;
    // The cell at a point of the cell area; 1 when there is none.
    int GetCellFromPoint(const QPoint &point, int &column, long &row) const;
    // Rows that fit from the top row down.
    long GetPageRows() const;
    QWidget *GetGridWidget() const;
    QWidget *GetTopHeadingWidget() const;
    QWidget *GetSideHeadingWidget() const;
    QWidget *GetCornerButton() const;
    // The rectangles OnLayoutComponents receives, in control coordinates.
    struct Layout
    {
        QRect grid, topHeading, sideHeading, corner, vScroll, hScroll, tabs;
    };
    Layout ComponentLayout() const;

    // --- Find and replace
    // Opens the find (or find and replace) dialog, owned by the grid.
    void FindDialog();
    void ReplaceDialog();
    CUGFindDialog *GetFindDialog() const { return m_findDialog; }
    // What the dialog's buttons ask for, callable without it.
    enum FindRequest { FindNextRequest, ReplaceRequest, ReplaceAllRequest };
    int FindReplace(const QString &findText, const QString &replaceText, int storeFlags, FindRequest request);

    // Runs OnGridInit, once, for a grid that is not attached to a dialog
    // item (AttachToDialogItem runs it itself).
    void InitializeGrid();

    // Operations between BeginBatch and the matching EndBatch bring the view
    // up to date once, at the end, rather than after each row.
    void BeginBatch();
    void EndBatch();

    // Rows made when they are first wanted: `supply` runs once, before the
    // visible grid handles any event, or when it is read by assistive
    // technology or asked through WantRows. A grid of 100,000 records nobody looks at never makes them.
    // Whoever gives a supplier takes it back (null) before it goes.
    void SupplyRowsWhenWanted(std::function<void()> supply);
    void WantRows();
    // Whatever a visible grid does first - the layout of its first resize
    // comes before its show event - it does with its rows.
    void WantRowsIfVisible()
    {
        if (m_rowSupplier && isVisible())
            WantRows();
    }

    // --- Attaching to a dialog
    // Takes the place of the dialog's widget with this control ID: same
    // geometry, tab order and layout slot; the dialog's font becomes the
    // grid's, a heavier one the headings'. Non-zero on success.
    int AttachToDialogItem(QWidget *dialog, int controlId);

    // The palette colour of a cell-colour role, for cell types.
    QColor paletteColour(QPalette::ColorRole role) const;
    // The font a cell draws with.
    QFont cellFont(const CUGCell &cell) const;
    int cellMargin() const { return m_info.margin; }
    // Where a cell's cell types and editors place widgets.
    QWidget *widgetShowing(long row, int column) const;

protected:
    // --- Hooks, in slot order, with their base behaviour
    virtual void OnGridInit();
    // 1 allows.
    virtual int OnAllowCellMove(int oldColumn, long oldRow, int newColumn, long newRow);
    virtual int OnAllowScroll(int oldLeftColumn, long oldTopRow, int newLeftColumn, long newTopRow);
    virtual int OnAllowColumnResize(int column);
    virtual int OnAllowRowResize(long row);
    virtual int OnAllowTopHeadingResize();
    virtual int OnAllowSideHeadingResize();
    virtual void OnColumnChanged(int oldColumn, int newColumn);
    virtual void OnRowChanged(long oldRow, long newRow);
    virtual void OnCellChanged(int oldColumn, int newColumn, long oldRow, long newRow);
    virtual void OnLeftColumnChanged(int oldColumn, int newColumn);
    virtual void OnTopRowChanged(long oldRow, long newRow);
    virtual void OnCellLeftClick(int column, long row, bool pressed, const QRect &rect, const QPoint &point,
                                 bool handled);
    virtual void OnCellRightClick(int column, long row, bool pressed, const QRect &rect, const QPoint &point,
                                  bool handled);
    virtual void OnCellDoubleClick(int column, long row, const QRect &rect, const QPoint &point, bool handled);
    virtual void OnTopHeadingClick(int column, long row, bool pressed);
    virtual void OnSideHeadingClick(int column, long row, bool pressed);
    virtual void OnCornerButtonClick(bool pressed);
    virtual void OnCellKey(int &key, bool handled);
    virtual void OnCellChar(QChar &character, bool handled);
    // A key the grid can do nothing with where it is (F2 or typing on a
    // cell that takes no text): the base beeps, as the desktop does.
    virtual void OnKeyRefused();
    virtual void OnCellRead(int column, long row, CUGCell &cell);
    virtual void OnCellWrite(int column, long row, const CUGCell &cell);

public:
    // Public so that cell types can raise into it; base answers 1.
    virtual long OnCellTypeEvent(int typeId, int column, long row, int message, std::intptr_t parameter);

protected:
    // 1 allows; may hand over another editor.
    virtual int OnBeginEdit(int column, long row, QWidget *&editor);
    // 1 lets the character into the editor.
    virtual int OnEditVerify(int column, long row, QWidget *editor, QChar &character);
    // 1 accepts the text.
    virtual int OnEndEdit(int column, long row, QWidget *editor, const QString &text, bool cancelled);
    // 1 allows editing to go on at the (changeable) next cell.
    virtual int OnEditNextCell(int oldColumn, long oldRow, int &newColumn, long &newRow);
    virtual void OnMenuCommand(int column, long row, int section, int command);
    // 1 shows the tip. Base: "Col:%d Row:%ld".
    virtual int OnCellTipText(int column, long row, int section, QString &text);

public:
    // What a screen reader says of a cell beyond its name and value (its
    // accessible description). Base: nothing.
    virtual QString OnCellDescription(int column, long row);
    // What a screen reader calls a row: the text of the row-name column in
    // that row (SetRowNameColumn), else its side heading, else "Row N".
    virtual QString OnRowName(long row);
    // Whether a person may reach and change the cell; a disabled cell is
    // greyed and says so to assistive technology. Base: every cell.
    virtual bool IsCellEnabled(int column, long row);
    // Whether the grid as a whole takes changes; a grid that does not is
    // greyed but can still be read cell by cell. Base: yes.
    virtual bool IsGridEnabled() const;
    // Sort comparison; flags bit 2 sorts descending. Public for sorting code.
    virtual int OnCompareCells(const CUGCell *first, const CUGCell *second, int flags);

protected:
    // The parts are about to be placed; an override may change the
    // rectangles and set column widths (without laying out again).
    virtual void OnLayoutComponents(Layout &layout);
    virtual QColor OnDefaultBackColour(int section);
    // Whether a person may write the cell, given as resolved: the base
    // allows a cell that is not read-only and whose type takes editing.
    virtual bool MayWriteCell(int column, long row, const CUGCell &resolved);
    // WriteUserText for a cell already resolved and known to be writable.
    int WriteCheckedText(int column, long row, const QString &text, ug::TextSource source, const CUGCell &resolved);

    // The current cell's frame, given the cell's own rectangle.
    virtual void OnPaintFocusFrame(QPainter &painter, const QRect &rect);
    // Rows were inserted or are about to be deleted (through the data
    // store), by any operation.
    virtual void OnRowsInserted(long row, long count);
    virtual void OnRowsDeleting(long row, long count);
    // The texts of the rows from `row` on were reordered by PermuteRowTexts.
    virtual void OnRowTextsPermuted(long row, const std::vector<long> &order);
    // A person's action that may write many cells (a replace) begins and
    // ends; the calls pair up.
    virtual void OnUserActionBegins();
    virtual void OnUserActionEnds();
    virtual int OnAllowTopHeadingPress(int column);
    virtual int OnAllowTopHeadingCellPress(int column, long row);
    // A context menu was asked for; the base offers none.
    virtual void OnContextMenu(int column, long row, int section, const QPoint &globalPoint);

    // --- Qt events
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    // Lays the grid out again as it is shown when OnLayoutStale says what
    // it was laid out for changed while it could not be seen.
    void showEvent(QShowEvent *event) override;
    virtual bool OnLayoutStale() { return false; }
    void scrollContentsBy(int dx, int dy) override;
    bool viewportEvent(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    bool focusNextPrevChild(bool next) override;

    // Gives the command to OnMenuCommand with the last context menu's cell.
    void RunMenuCommand(int command);

    // The sheet's settings, for derived grids that need more than the
    // operations give.
    CUGGridInfo &gridInfo() { return m_info; }
    const CUGGridInfo &gridInfo() const { return m_info; }
    // The selection as it was when the edit under way began (empty outside
    // an edit): an edit collapses the selection to its cell, but what is
    // typed may be meant for every selected row.
    const CUGSelection &editSelection() const { return m_editSelection; }

private:
    friend class CUGSection;
    friend class CUGEditBase;
    friend class CUGAccessibleGrid;

    enum class DragMode { None, Control, Shift, Mouse };

    bool isColumn(int column) const;
    bool isRow(long row) const;
    bool isCellPosition(int column, long row) const;
    CUGDataSource *storeFor(int column, int &storeColumn) const;

    // After every move of the current cell or of the view.
    void afterPositionChange(DragMode mode);
    int moveCurrentTo(int column, long row, DragMode mode);
    int moveCurrentNear(int column, long row, DragMode mode);
    // The first row from `row` on, `step` by `step`, that has a height; -1
    // when none has.
    long shownRowFrom(long row, long step) const;
    bool scrollToShow(int column, long row);
    // After the rows or columns shrank: the current cell moves inside,
    // whether or not the hooks allow the move.
    void keepCurrentInside();
    void rowsChanged();
    int findReplaceAll(const QString &findText, const QString &replaceText, int storeFlags);
    void showNotFound();
    int setView(int leftColumn, long topRow);
    void updateScrollBars();
    void updateGeometries();
    int visibleColumnsFrom(int leftColumn) const;
    long visibleRowsFrom(long topRow, int height) const;
    int lastLeftColumn() const;
    long lastTopRow() const;

    // The parts draw and take the mouse here.
    void paintSection(int section, QPainter &painter, const QRect &dirty);
    void sectionMouse(int section, QMouseEvent *event);

    // Painting of the parts.
    void paintCellArea(QPainter &painter, const QRect &dirty);
    void paintTopHeading(QPainter &painter, const QRect &dirty);
    void paintSideHeading(QPainter &painter, const QRect &dirty);
    void paintCorner(QPainter &painter);
    // A heading cell is painted over the look of its heading (see
    // headingLook()); a cell of the cell area has none.
    void paintOneCell(QPainter &painter, int column, long row, const QRect &rect, const CUGCell *look);
    // The heading default with the colours a heading cell of the section
    // takes where neither it nor the default sets them: made once a paint,
    // so that the cells share its block of colours rather than each
    // making one.
    CUGCell headingLook(int section);

    // Geometry of columns and rows in their widgets.
    int columnX(int column) const;
    long rowY(long row) const;
    int columnAt(int x) const;
    long rowAt(int y) const;
    int headingColumnX(int headingColumn) const;
    int headingRowY(int headingRow) const;
    int headingColumnAt(int x) const;
    int headingRowAt(int y) const;

    // Mouse in the parts.
    void cellAreaMouse(QMouseEvent *event);
    void cellAreaDoubleClick(QMouseEvent *event);
    void topHeadingMouse(QMouseEvent *event);
    void sideHeadingMouse(QMouseEvent *event);
    void cornerMouse(QMouseEvent *event);
    bool cellAreaToolTip(QHelpEvent *event);
    void contextMenuAt(int section, const QPoint &local, const QPoint &global);

    // Keys in the cell area; true when consumed.
    bool handleCellKey(QKeyEvent *event);
    bool handleNavigationKey(QKeyEvent *event, int key);
    int repeatedSteps(QKeyEvent *event);

    // Editors report here.
    void editorFinished(CUGEditBase *editor, bool refocus);
    bool editorVerify(QChar &character);

    void notifyAccessibility(int column, long row);
    void notifyCellChanged(int column, long row);

    CUGGridInfo m_info;
    std::function<void()> m_rowSupplier;
    QFont m_defaultFont;
    std::vector<QFont> m_fonts;
    // Added types by index; the first four are the grid's own.
    std::vector<CUGCellType *> m_cellTypes;
    std::vector<std::unique_ptr<CUGCellType>> m_standardTypes;

    CUGGrid *m_grid = nullptr;
    CUGTopHdg *m_topHeading = nullptr;
    CUGSideHdg *m_sideHeading = nullptr;
    CUGCnrBtn *m_corner = nullptr;
    CUGEdit *m_edit = nullptr;
    CUGMaskedEdit *m_maskedEdit = nullptr;
    QPointer<CUGFindDialog> m_findDialog;

    // Position last told to the hooks.
    int m_lastColumn = -1;
    long m_lastRow = -1;
    int m_lastLeftColumn = 0;
    long m_lastTopRow = 0;

    // Editing.
    bool m_editing = false;
    QWidget *m_activeEditor = nullptr;
    int m_editColumn = -1;
    long m_editRow = -1;
    CUGCell m_editCell;
    CUGSelection m_editSelection;
    bool m_endingEdit = false;

    // Mouse sizing of a column, row or heading.
    enum class Sizing { None, Column, Row, SideHeadingColumn, TopHeadingRow };
    Sizing m_sizing = Sizing::None;
    int m_sizingIndex = 0;
    int m_sizingStart = 0;
    int m_sizingOriginal = 0;
    bool m_mouseSelecting = false;

    // Held-down key acceleration.
    int m_repeatCount = 0;
    QElapsedTimer m_repeatClock;

    // Last context menu's cell.
    int m_menuColumn = -1;
    long m_menuRow = -1;
    int m_menuSection = 0;

    int m_rowNameColumn = -1;
    bool m_updatingScrollBars = false;
    bool m_layingOut = false;
    bool m_initialised = false;
    int m_batchDepth = 0;
    bool m_batchDirty = false;
    bool m_viewUpdatePending = false;
    Qt::KeyboardModifiers m_keyModifiers;
};

} // namespace vyr

#endif // VYR_GRID_CUGCTRL_H
