// CVVyrGrid: a column whose texts are each held by one record only. A
// repeat is refused where it is entered; a paste or a replace-all may run
// into several, and the user hears of the first once it has ended rather
// than once per cell.
#include "uikit/cvvyrgrid.h"

#include "uikit/dialogutils.h"
#include "uikit/resourcelibrary.h"

#include <QSet>

namespace vyr {

void CVVyrGrid::SetUniqueColumn(int column, unsigned messageId)
{
    m_uniqueColumn = column;
    m_repeatMessage = messageId;
}

long CVVyrGrid::FindRepeatedText(int column)
{
    QSet<QString> seen;
    for (long row = 0; row < recordCount(); ++row) {
        const QString text = GetCellString(row, column);
        if (text.isEmpty())
            continue;
        if (seen.contains(text))
            return row;
        seen.insert(text);
    }
    return -1;
}

bool CVVyrGrid::refusesAsRepeated(int column, long row, const QString &text)
{
    // The text a cell holds already is no new repeat, even where the list
    // came with one: OK names those.
    if (column != m_uniqueColumn || text.isEmpty() || text == GetCellString(row, column))
        return false;
    bool repeated = false;
    for (long other = 0; other < recordCount() && !repeated; ++other)
        repeated = other != row && GetCellString(other, column) == text;
    if (!repeated)
        return false;
    if (m_collectingRepeats > 0) {
        if (m_firstRefusedRepeat.isNull())
            m_firstRefusedRepeat = text;
    } else {
        tellRepeated(text);
    }
    return true;
}

void CVVyrGrid::tellRepeated(const QString &text)
{
    ShowExclamationBox(formatResourceString(m_repeatMessage, {text}), QString(), this, MbOk);
}

void CVVyrGrid::collectRepeats()
{
    ++m_collectingRepeats;
}

void CVVyrGrid::tellCollectedRepeats()
{
    if (m_collectingRepeats > 0 && --m_collectingRepeats > 0)
        return;
    if (const QString first = std::exchange(m_firstRefusedRepeat, QString()); !first.isNull())
        tellRepeated(first);
}

} // namespace vyr
