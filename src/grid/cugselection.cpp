#include "grid/cugselection.h"

namespace vyr {

void CUGSelection::collapseTo(int column, long row)
{
    m_blocks.assign(1, Block{column, row, column, row});
}

void CUGSelection::addBlock(int column, long row)
{
    m_blocks.push_back(Block{column, row, column, row});
}

void CUGSelection::extendTo(int column, long row)
{
    if (m_blocks.empty()) {
        addBlock(column, row);
        return;
    }
    m_blocks.back().endColumn = column;
    m_blocks.back().endRow = row;
}

void CUGSelection::clear()
{
    m_blocks.clear();
}

bool CUGSelection::isSelected(int column, long row) const
{
    for (const Block &block : m_blocks) {
        if (block.contains(column, row))
            return true;
    }
    return false;
}

bool CUGSelection::isMultiple() const
{
    if (m_blocks.size() > 1)
        return true;
    return !m_blocks.empty() && (m_blocks[0].left() != m_blocks[0].right() || m_blocks[0].top() != m_blocks[0].bottom());
}

bool CUGSelection::coveredEarlier(std::size_t block, int column, long row) const
{
    for (std::size_t earlier = 0; earlier < block; ++earlier) {
        if (m_blocks[earlier].contains(column, row))
            return true;
    }
    return false;
}

int CUGSelection::first(int &column, long &row)
{
    if (m_blocks.empty())
        return 1;
    m_walkBlock = 0;
    m_walkColumn = m_blocks[0].left();
    m_walkRow = m_blocks[0].top();
    column = m_walkColumn;
    row = m_walkRow;
    return 0;
}

int CUGSelection::advance(int &column, long &row)
{
    while (m_walkBlock < m_blocks.size()) {
        const Block &block = m_blocks[m_walkBlock];
        if (m_walkColumn < block.right()) {
            ++m_walkColumn;
        } else if (m_walkRow < block.bottom()) {
            m_walkColumn = block.left();
            ++m_walkRow;
        } else {
            if (++m_walkBlock == m_blocks.size())
                return 1;
            m_walkColumn = m_blocks[m_walkBlock].left();
            m_walkRow = m_blocks[m_walkBlock].top();
        }
        if (!coveredEarlier(m_walkBlock, m_walkColumn, m_walkRow)) {
            column = m_walkColumn;
            row = m_walkRow;
            return 0;
        }
    }
    return 1;
}

int CUGSelection::next(int &column, long &row)
{
    if (m_walkBlock >= m_blocks.size())
        return 1;
    return advance(column, row);
}

} // namespace vyr
