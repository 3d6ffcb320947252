// CUGSelection: the selected blocks of a grid. A block runs from an anchor
// cell (where Shift extends from) to the cell the selection reached; cells
// are visited block by block, row by row, each once.
#ifndef VYR_GRID_CUGSELECTION_H
#define VYR_GRID_CUGSELECTION_H

#include <vector>

namespace vyr {

class CUGSelection
{
public:
    struct Block
    {
        int anchorColumn;
        long anchorRow;
        int endColumn;
        long endRow;

        int left() const { return anchorColumn < endColumn ? anchorColumn : endColumn; }
        int right() const { return anchorColumn < endColumn ? endColumn : anchorColumn; }
        long top() const { return anchorRow < endRow ? anchorRow : endRow; }
        long bottom() const { return anchorRow < endRow ? endRow : anchorRow; }
        bool contains(int column, long row) const
        {
            return column >= left() && column <= right() && row >= top() && row <= bottom();
        }
    };

    // One block of one cell; the others go.
    void collapseTo(int column, long row);
    // A further block of one cell (Control held).
    void addBlock(int column, long row);
    // The last block now reaches the cell (Shift held, or a drag).
    void extendTo(int column, long row);
    void clear();

    bool isSelected(int column, long row) const;
    bool isEmpty() const { return m_blocks.empty(); }
    const std::vector<Block> &blocks() const { return m_blocks; }
    // More than one cell is selected.
    bool isMultiple() const;

    // Enumeration: 0 with a cell while there is one, 1 at the end.
    int first(int &column, long &row);
    int next(int &column, long &row);

private:
    bool coveredEarlier(std::size_t block, int column, long row) const;
    int advance(int &column, long &row);

    std::vector<Block> m_blocks;
    std::size_t m_walkBlock = 0;
    int m_walkColumn = 0;
    long m_walkRow = 0;
};

} // namespace vyr

#endif // VYR_GRID_CUGSELECTION_H
