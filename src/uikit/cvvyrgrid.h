// CVVyrGrid: the editable list every grid of the library is built on.
//
// A fixed number of text columns, one record per row. With "keep new row"
// the last row is always blank, for entering a new record: using it (a
// click, F2 or typing on it) first appends a fresh blank row above it, and
// it is never deleted, moved or sorted. The grid as a whole and each cell
// can be enabled or disabled, each with its colours; a disabled cell (cell
// property bit 0x4000000) cannot become current. Tab and Shift+Tab walk the
// enabled cells and leave the grid at its ends; Delete and Backspace delete
// the selected rows, Insert opens a row, F2, Enter or typing edits the
// current cell (Enter on a list or a button opens it), and Enter in the
// editor keeps the text and moves down. A key the grid cannot act on
// (typing on a button, Delete in a grid without a new row) is refused with
// a beep (OnKeyRefused). Three program cell types (a drop list, a browse button and a colour
// pick) are registered with every grid, and a cell may name a
// CellActionHandler that its list or button calls.
//
// Beyond editing cells, every grid copies the selected rows to the
// clipboard as the tab-separated text spreadsheets use (Control+C), pastes
// such text (Control+V) through the same checks and hooks as typing, and
// undoes and redoes each thing a person did as one step (Control+Z,
// Control+Y, Control+Shift+Z).
//
// Subclasses give the columns their meaning through the hooks OnRowAdded,
// OnCellChange, OnChoiceSelected, OnGetChoices and OnBrowse.
//
// A page of thousands of records loads them without making their cells
// (AppendLoadedRows): a loaded row is a record of the subclass's row model,
// its texts and enabled cells answered from the record, until it is shown
// or touched; then MakeLoadedRow makes its cells, once (see gridrowstore.h).
#ifndef VYR_UIKIT_CVVYRGRID_H
#define VYR_UIKIT_CVVYRGRID_H

#include "grid/cugctrl.h"
#include "uikit/cellactionhandler.h"
#include "uikit/gridhistory.h"
#include "uikit/gridrowstore.h"
#include "util/listpacking.h"

#include <QColor>
#include <QStringList>

#include <array>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace vyr {

class CVVYRDropListType;
class CVVyrBrowseButtonType;
class CVVyrColourPickType;
class CVVyrGridEdit;

// The cell property bit that marks a disabled cell.
inline constexpr std::uint32_t kDisabledCellMark = CUGCell::DerivedProperty;

// Whether a cell (as read from a grid) carries the disabled-cell mark.
inline bool isDisabledCell(const CUGCell &cell)
{
    return (cell.propertyMask() & kDisabledCellMark) != 0;
}

class CVVyrGrid : public CUGCtrl
{
    Q_OBJECT

public:
    // The browse button's event: the button was used.
    static constexpr int kBrowseEvent = 0x1300F;
    // Steps the history keeps.
    static constexpr std::size_t kUndoLimit = 200;

    // `columnCount` is at least 1.
    CVVyrGrid(int columnCount, bool keepNewRow, QWidget *parent = nullptr);
    ~CVVyrGrid() override;

    // --- Records
    // A row of `texts` (exactly one per column) before the new row, or at
    // the end; its index, or -1 when the count is wrong.
    virtual long AppendRowTexts(const QStringList &texts);
    // A blank row before the new row, or at the end, which OnRowAdded may
    // refuse; its index, or -1 when refused.
    virtual long AppendBlankRow();
    // Appends the row's texts (empty where a cell has none) to `texts`;
    // nothing for a row past the end.
    virtual void GetRowTexts(long row, QStringList &texts);
    // The cell's text; empty outside the grid. The row comes first.
    virtual QString GetCellString(long row, int column);
    // The first record whose text in `column` an earlier record holds as
    // well, or -1; empty texts are not counted. Texts compare exactly.
    long FindRepeatedText(int column);
    // When a text of `column` repeats an earlier record's, puts the keyboard
    // on the repeat and tells the user message `messageId` (its %1 the
    // text); whether it did.
    bool RefuseRepeatedText(int column, unsigned messageId);
    // Makes `column` (-1: none, the start) hold each text once: a text
    // typed, pasted or replaced there that another record holds already is
    // refused, and the user told with message `messageId`, its %1 the text
    // (for a paste or a replace-all once, after it, naming the first). Texts
    // the records held before are left to the caller (FindRepeatedText).
    void SetUniqueColumn(int column, unsigned messageId);
    // Makes the cell current and gives the grid the focus, as after a
    // check that found something wrong there.
    void FocusCell(int column, long row);

    // --- Rows loaded from the subclass's row model
    // Opens `count` rows before the new row (or at the end) that show the
    // records firstRecord, firstRecord + 1, ... No cell is made and no hook
    // hears of them until a row is shown or touched: then MakeLoadedRow
    // makes its cells. What reads only texts - find, the counts of a unique
    // column, sorting, moving, copying, the checks before OK - leaves rows
    // loaded. The index of the first row, or -1.
    long AppendLoadedRows(std::size_t firstRecord, long count);
    // The record a row shows while it is loaded; nothing once it is made.
    std::optional<std::size_t> LoadedRecordOf(long row) const { return m_rowStore.recordOf(row); }
    // Whether a loaded row's cells are being made (MakeLoadedRow runs).
    bool isMakingRow() const { return m_makingRow > 0; }
    // Makes every loaded row, before what reads and writes rows cell by
    // cell throughout.
    void MakeLoadedRows();

    // --- Rows, with a new row only
    // Deletes the current row and every row holding a selected cell.
    virtual void DeleteSelectedRows();
    // Each row holding a selected cell changes place with the one above
    // (below); the current row and the selection go with them.
    virtual void MoveSelectedRowsUp();
    virtual void MoveSelectedRowsDown();
    // Exchanges the texts of two rows.
    virtual void SwapRows(long first, long second);
    // Orders the records by the column's text, ignoring case; records with
    // equal texts keep their order. Only texts move.
    virtual void SortByColumn(int column);
    bool rowsModified() const { return m_rowsModified; }
    void setRowsModified(bool modified) { m_rowsModified = modified; }

    // --- Moving through the cells
    // The cell, else the next enabled one after it row by row; past the
    // last row the focus goes to the dialog's next control.
    virtual void MoveToNextCell(int column, long row);
    virtual void TabForward();
    // The mirror of MoveToNextCell, leaving for the previous control.
    virtual void MoveToPreviousCell(int column, long row);
    virtual void TabBackward();

    // --- Enabling
    virtual void EnableCell(int column, long row, bool enable);
    bool IsCellEnabled(int column, long row) override;

    // Ends an edit in progress with the editor's text, not continuing.
    // Call it before reading or checking the grid.
    virtual void CommitEdit();

protected:
    // --- Hooks for subclasses
    // A blank row was added (by a person or AppendBlankRow); false refuses
    // it, and it is deleted again. The base accepts.
    virtual bool OnRowAdded(long row);
    // A drop list entry was chosen in a cell without a handler; false keeps
    // the cell's text. The base accepts.
    virtual bool OnChoiceSelected(int column, long row, const QString &text);
    // A drop list without a handler opens; the base adds nothing.
    virtual void OnGetChoices(int column, long row, QStringList &choices);
    // A browse button without a handler was used; the base does nothing.
    virtual int OnBrowse(int column, long row);
    // The text of a loaded record's cell, exactly as MakeLoadedRow leaves
    // it; the base has none.
    virtual QString LoadedText(std::size_t record, int column);
    // Whether a loaded record's cell is enabled once made; the base: yes.
    virtual bool IsLoadedCellEnabled(std::size_t record, int column);
    // Makes the cells of `row`, which shows a loaded record, exactly as
    // loading the record into a blank row would have made them. A loaded
    // row's cells must follow from its texts alone: a loaded row that takes
    // another's texts (a sort, a move) is made as that record. What this
    // writes is no step of the history, and the grid's look is laid over it
    // afterwards as EnableGrid laid it over the rest. The base makes none.
    virtual void MakeLoadedRow(long row, std::size_t record);

public:
    // Keeps `handler` (not owned) in the cell's user value.
    virtual void SetCellActionHandler(CUGCell &cell, CellActionHandler *handler);
    // The handler a resolved cell names, or null.
    static CellActionHandler *CellActionHandlerOf(const CUGCell &cell);

    virtual void EnableGrid(bool enable);
    bool IsGridEnabled() const override;
    // Enables or disables the grid as one control of a dialog: an edit
    // under way is taken first, and a disabled grid takes no focus.
    void EnableControl(bool enable);
    // When false, disabled cells are drawn in their background colour
    // only: their texts stay stored but cannot be seen.
    void SetShowDisabledText(bool show)
    {
        m_showDisabledText = show;
        forgetLooks();
    }
    bool showsDisabledText() const { return m_showDisabledText; }

protected:
    // A person changed the cell's text (typed, chose, browsed, pasted,
    // replaced), or undo, redo or a move of rows put a text there
    // (ug::TextRestored: derive what follows from the text, change no text).
    virtual void OnCellChange(int column, long row, ug::TextSource source);
    // The one check every text a person gives a cell passes, however it
    // comes (typed, pasted, replaced by assistive technology): empty accepts
    // it, anything else says why the cell cannot hold it, and the grid tells
    // the person - at once for an edit, once after a paste or a
    // replace-all. The base refuses a repeat in the unique column
    // (SetUniqueColumn).
    virtual QString OnCheckText(int column, long row, const QString &text);
    // A cell's text was replaced - by a person, or by undo and redo; `before`
    // is what it held. Texts that move with their rows are not replaced.
    virtual void OnCellTextReplaced(int column, long row, const QString &before);
    // Rows that undo may put back are leaving (a person deleted them, or a
    // redo deletes them again), and undo put such rows back: a subclass that
    // keeps something of a record beside its texts follows it. Rows that
    // leave because undo takes back their insertion are not told: a redo
    // brings them back as new rows. The base does nothing.
    virtual void OnRecordsDeleting(long row, long count);
    virtual void OnRecordsRestored(long row, long count);

public:

    // --- Clipboard
    // The texts of the rows holding a selected cell (the current row when
    // none is selected), as tab-separated text; the new row is left out.
    QString SelectedRowsText();
    void CopySelectedRows();
    // Pastes tab-separated text: on the new row each line becomes a new
    // record, from column 0; on other rows the lines overwrite from the
    // current cell on, lines past the last record becoming new ones.
    // Surplus fields, read-only and disabled cells, and texts the cell's
    // checks refuse are passed over and counted. One undo step.
    struct PasteResult
    {
        long rows = 0;
        long refusedCells = 0;
    };
    PasteResult PasteText(const QString &text);
    void Paste();
    // After a paste, with what it did; a subclass may tell the user once.
    virtual void OnPasted(const PasteResult &result);

    // --- Undo and redo
    bool CanUndo() const { return m_history.canUndo(); }
    bool CanRedo() const { return m_history.canRedo(); }
    void Undo();
    void Redo();
    // Groups what happens while it lives into one undo step, inside any
    // step already open.
    class UndoStep
    {
    public:
        explicit UndoStep(CVVyrGrid &grid);
        ~UndoStep();
        UndoStep(const UndoStep &) = delete;
        UndoStep &operator=(const UndoStep &) = delete;

    private:
        CVVyrGrid &m_grid;
    };

    bool keepsNewRow() const { return m_keepNewRow; }
    // Whether `row` is the blank row kept for a new record.
    bool isNewRow(long row) const;
    // The rows that are records: all but the new row.
    long recordCount() const;
    // The records that are selected or current, top to bottom; with
    // `atEdit`, as they were when the edit ending now began.
    std::vector<long> SelectedRecords(bool atEdit = false);
    int columnCount() const { return m_columnCount; }
    int fontIndex() const { return m_fontIndex; }
    int DropListTypeId() const { return m_dropListId; }
    int BrowseTypeId() const { return m_browseId; }
    int ColourTypeId() const { return m_colourId; }
    CVVyrGridEdit *InPlaceEditor() const { return m_editor.get(); }

    int StoreUserText(int column, long row, const QString &text, ug::TextSource source) override;
    long OnCellTypeEvent(int typeId, int column, long row, int message, std::intptr_t parameter) override;

protected:
    // --- Grid control hooks
    void OnGridInit() override;
    int OnAllowCellMove(int oldColumn, long oldRow, int newColumn, long newRow) override;
    int OnAllowColumnResize(int column) override;
    int OnAllowRowResize(long row) override;
    int OnAllowTopHeadingResize() override;
    int OnAllowSideHeadingResize() override;
    void OnCellLeftClick(int column, long row, bool pressed, const QRect &rect, const QPoint &point,
                         bool handled) override;
    void OnCellDoubleClick(int column, long row, const QRect &rect, const QPoint &point, bool handled) override;
    void OnCellKey(int &key, bool handled) override;
    void OnCellChar(QChar &character, bool handled) override;
    void OnCellWrite(int column, long row, const CUGCell &cell) override;
    int OnBeginEdit(int column, long row, QWidget *&editor) override;
    int OnEditNextCell(int oldColumn, long oldRow, int &newColumn, long &newRow) override;
    // Subclasses that refuse texts here call the base for what they accept.
    int OnEndEdit(int column, long row, QWidget *editor, const QString &text, bool cancelled) override;
    void OnUserActionBegins() override;
    void OnUserActionEnds() override;
    void OnLayoutComponents(Layout &layout) override;
    QColor OnDefaultBackColour(int section) override;
    void OnPaintFocusFrame(QPainter &painter, const QRect &rect) override;
    int OnAllowTopHeadingPress(int column) override;
    int OnAllowTopHeadingCellPress(int column, long row) override;
    void OnRowsInserted(long row, long count) override;
    void OnRowsDeleting(long row, long count) override;
    void OnRowTextsPermuted(long row, const std::vector<long> &order) override;
    // Only in an enabled grid, and only enabled cells.
    bool MayWriteCell(int column, long row, const CUGCell &resolved) override;

    bool event(QEvent *event) override;

    // The colours every grid uses, read from the palette.
    struct Colours
    {
        QColor text, back, disabledText, disabledBack, highlightText, highlightBack;
    };
    const Colours &colours() const { return m_colours; }

private:
    // The clipboard and undo keys, which the grid keeps from the window:
    // Control+C, V, Z and Y, and Control+Shift+Z.
    enum class EditShortcut { None, Copy, Paste, Undo, Redo };
    static EditShortcut editShortcut(int key, Qt::KeyboardModifiers modifiers);
    // Using the new row appends a blank record first; false when refused.
    bool useNewRow();
    // Whether the cell's type takes typed text (a text cell, or a list or
    // button in its editable look).
    bool takesTyping(const CUGCell &cell) const;
    // F2, Enter, typing or a double click: edits the current cell, making
    // the new row a record first; `firstKey` goes to the editor. False when
    // the cell takes no typing (nothing changes then, but for a new row whose
    // record leaves the cell disabled).
    bool editCurrentCell(int firstKey);
    // A key that edits the current cell: a cell that cannot be edited
    // refuses it.
    void editCurrentCellByKey(int firstKey);
    // Opens a blank row at `row` and asks OnRowAdded; -1 when refused.
    long addBlankRowAt(long row);
    // Covers the column defaults' texts in new rows with empty ones.
    void blankDefaultTexts(long row, long count);
    // Writes one pasted record from `firstColumn` on; the refused cells.
    long writePastedRecord(long row, int firstColumn, const StringList &fields);
    void readColours();
    // The colours of an enabled or a disabled cell in the grid as it is
    // enabled now, and with `readOnlyToo` the grid's read-only state. Made
    // once until the colours or the state change, so that every cell laid
    // over with it shares its block of colours instead of holding a copy.
    const CUGCell &enabledLook(bool cellEnabled, bool readOnlyToo) const;
    CUGCell makeLook(bool cellEnabled, bool readOnlyToo) const;
    void forgetLooks() { m_looks = {}; }
    // Lays the grid's look over a row's stored cells, as EnableGrid does.
    void restyleRow(long row, const CUGCell &enabledCell, const CUGCell &disabledCell);
    // The row store asks for a loaded row's cells.
    void makeLoadedRow(long row, std::size_t record, bool restyled);
    // Rows that hold a selected cell, with the current row, in order; with
    // `atEdit`, of the selection when the edit ending now began.
    std::vector<bool> markedRows(bool atEdit = false);
    StoredRows storedRows(long row, long count);
    void replay(const GridStep &step, bool undoing);
    void undoChanges(const GridStep &step);
    void redoChanges(const GridStep &step);
    void restoreRows(long row, const StoredRows &rows);
    void restoreText(int column, long row, const QString &text);
    // Tells the subclass of each cell a replay changed, once, with the text
    // it held before: a step may pass a cell through texts nobody saw (a
    // typed name, then its legal form), and telling those would rename what
    // another row is called.
    void tellReplacedCells();
    // Whether the check refuses `text` for the cell; the user is told, or
    // the reason kept to tell after a batch.
    bool refuses(int column, long row, const QString &text);
    // Around a paste or a replace-all: refusals are told once, at the end.
    void collectRefusals();
    void tellCollectedRefusals();
    // Reorders row texts and tells the subclass of every text that moved.
    void moveRowTexts(long row, const std::vector<long> &order);
    // Cells selected in one row, from `left` to `right`.
    struct SelectedCells
    {
        long row;
        int left;
        int right;
    };
    void reselect(const std::vector<SelectedCells> &cells);
    // Moves the selected rows one place: -1 up, 1 down.
    void moveSelectedRows(int step);

    class RowLoader;
    // The store's loader goes before the store, which holds on to it.
    std::unique_ptr<RowLoader> m_rowLoader;
    GridRowStore m_rowStore;
    int m_makingRow = 0;
    int m_columnCount;
    bool m_keepNewRow;
    bool m_enabled = true;
    bool m_showDisabledText = true;
    mutable std::array<std::optional<CUGCell>, 4> m_looks;
    bool m_rowsModified = false;
    int m_fontIndex = -1;
    Colours m_colours;
    std::unique_ptr<CVVyrGridEdit> m_editor;
    std::unique_ptr<CVVYRDropListType> m_dropListType;
    std::unique_ptr<CVVyrBrowseButtonType> m_browseType;
    std::unique_ptr<CVVyrColourPickType> m_colourType;
    int m_dropListId = -1;
    int m_browseId = -1;
    int m_colourId = -1;
    GridHistory m_history;
    bool m_replaying = false;
    // Undo is taking back rows its step inserted.
    bool m_takingBackInsertion = false;
    struct ReplacedCell
    {
        int column;
        long row;
        QString before;
    };
    std::vector<ReplacedCell> m_replacedCells;
    std::map<std::pair<long, int>, std::size_t> m_replacedAt;
    int m_uniqueColumn = -1;
    unsigned m_repeatMessage = 0;
    int m_collectingRefusals = 0;
    // Why texts of the batch under way were refused, each reason once.
    QStringList m_refusals;
    // A refusal is being told: the editor's focus going to the message
    // ends no edit.
    bool m_tellingRefusal = false;
};

} // namespace vyr

#endif // VYR_UIKIT_CVVYRGRID_H
