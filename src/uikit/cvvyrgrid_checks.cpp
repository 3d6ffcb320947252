// CVVyrGrid: the check of every text a person gives a cell, among them a
// column whose texts are each held by one record only. A text is refused
// where it is entered; a paste or a replace-all may run into several
// refusals, and the user hears of them once it has ended rather than once
// per cell.
#include "uikit/cvvyrgrid.h"

#include "uikit/dialogutils.h"
#include "uikit/resourcelibrary.h"

#include <QSet>

#include <utility>

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

bool CVVyrGrid::RefuseRepeatedText(int column, unsigned messageId)
{
    const long repeated = FindRepeatedText(column);
    if (repeated < 0)
        return false;
    const QString text = GetCellString(repeated, column);
    FocusCell(column, repeated);
    ShowExclamationBox(formatResourceString(messageId, {text}), QString(), this, MbOk);
    return true;
}

QString CVVyrGrid::OnCheckText(int column, long row, const QString &text)
{
    // The text a cell holds already is no new repeat, even where the list
    // came with one: OK names those.
    if (column != m_uniqueColumn || text.isEmpty() || text == GetCellString(row, column))
        return {};
    for (long other = 0; other < recordCount(); ++other) {
        if (other != row && GetCellString(other, column) == text)
            return formatResourceString(m_repeatMessage, {text});
    }
    return {};
}

bool CVVyrGrid::refuses(int column, long row, const QString &text)
{
    // While a refusal is told, the editor losing the focus to the message
    // ends no edit.
    if (m_tellingRefusal)
        return true;
    const QString reason = OnCheckText(column, row, text);
    if (reason.isEmpty())
        return false;
    if (m_collectingRefusals > 0) {
        if (!m_refusals.contains(reason))
            m_refusals.append(reason);
    } else {
        m_tellingRefusal = true;
        ShowExclamationBox(reason, QString(), this, MbOk);
        m_tellingRefusal = false;
    }
    return true;
}

void CVVyrGrid::collectRefusals()
{
    ++m_collectingRefusals;
}

void CVVyrGrid::tellCollectedRefusals()
{
    if (m_collectingRefusals > 0 && --m_collectingRefusals > 0)
        return;
    // Each reason once, and no more than a screen holds.
    constexpr qsizetype kMostTold = 5;
    QStringList reasons = std::exchange(m_refusals, {});
    if (reasons.isEmpty())
        return;
    if (reasons.size() > kMostTold) {
        reasons.resize(kMostTold);
        reasons.append(QStringLiteral("\u2026"));
    }
    m_tellingRefusal = true;
    ShowExclamationBox(reasons.join(u'\n'), QString(), this, MbOk);
    m_tellingRefusal = false;
}

} // namespace vyr
