#include "grid/maskedtext.h"

namespace vyr {

bool isMaskInput(QChar maskCharacter)
{
    switch (maskCharacter.unicode()) {
    case u'0':
    case u'9':
    case u'#':
    case u'L':
    case u'?':
    case u'A':
    case u'a':
    case u'&':
    case u'C':
    case u'~':
        return true;
    default:
        return false;
    }
}

bool maskAccepts(QChar maskCharacter, QChar typed)
{
    const bool digit = typed.isDigit();
    const bool letter = typed.isLetter();
    const bool blank = typed == u' ';
    switch (maskCharacter.unicode()) {
    case u'0':
        return digit;
    case u'9':
        return digit || blank;
    case u'#':
        return digit || blank || typed == u'+' || typed == u'-';
    case u'L':
        return letter;
    case u'?':
        return letter || blank;
    case u'A':
        return letter || digit;
    case u'a':
        return letter || digit || blank;
    case u'&':
    case u'C':
        return typed.isPrint();
    case u'~':
        return digit || typed == u'+' || typed == u'-' || typed == u'.';
    default:
        return true;
    }
}

MaskedText::MaskedText(const QString &mask, const QString &text)
    : m_mask(mask)
{
    m_display.reserve(mask.size());
    qsizetype from = 0;
    for (const QChar maskCharacter : mask) {
        if (!isMaskInput(maskCharacter)) {
            m_display += maskCharacter;
            // A value written with its literals keeps them in step.
            if (from < text.size() && text[from] == maskCharacter)
                ++from;
            continue;
        }
        QChar shown = kMaskPlaceholder;
        if (from < text.size()) {
            const QChar candidate = text[from++];
            if (candidate != u' ' && maskAccepts(maskCharacter, candidate))
                shown = candidate;
        }
        m_display += shown;
    }
}

QString MaskedText::value() const
{
    QString value = m_display;
    qsizetype end = 0;
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (!isMaskInput(m_mask[i]))
            continue;
        if (value[i] == kMaskPlaceholder)
            value[i] = u' ';
        else
            end = i + 1;
    }
    // Up to the last filled position: literals after it are not typed.
    value.truncate(end);
    return value;
}

int MaskedText::nextInput(int position) const
{
    int at = position < 0 ? 0 : position;
    while (at < m_mask.size() && !isMaskInput(m_mask[at]))
        ++at;
    return at;
}

int MaskedText::type(int position, QChar typed)
{
    if (position < 0 || position >= m_mask.size())
        return -1;
    const QChar maskCharacter = m_mask[position];
    if (!maskAccepts(maskCharacter, typed))
        return -1;
    if (isMaskInput(maskCharacter))
        m_display[position] = typed;
    return position + 1;
}

int MaskedText::backspace(int position)
{
    int at = position > m_mask.size() ? int(m_mask.size()) : position;
    while (at > 0) {
        --at;
        if (isMaskInput(m_mask[at])) {
            m_display[at] = kMaskPlaceholder;
            return at;
        }
    }
    return 0;
}

int MaskedText::erase(int position)
{
    if (position >= 0 && position < m_mask.size() && isMaskInput(m_mask[position]))
        m_display[position] = kMaskPlaceholder;
    return position;
}

} // namespace vyr
