// MaskedText: the text of a masked editor, one position per mask character.
// Mask characters take what they accept (see maskAccepts); any other mask
// character is a literal shown as itself. An empty position shows "_".
// Typing overwrites; erasing puts the placeholder back. No widgets here, so
// the rules are tested and fuzzed alone.
#ifndef VYR_GRID_MASKEDTEXT_H
#define VYR_GRID_MASKEDTEXT_H

#include <QString>

namespace vyr {

inline constexpr QChar kMaskPlaceholder = u'_';

// Whether the mask character stands for an input position.
bool isMaskInput(QChar maskCharacter);
// Whether the typed character may stand where the mask has maskCharacter.
// A literal mask character accepts any key.
bool maskAccepts(QChar maskCharacter, QChar typed);

class MaskedText
{
public:
    MaskedText() = default;
    // Lays the text over the mask: input positions take the text's
    // characters in order where the mask accepts them.
    MaskedText(const QString &mask, const QString &text);

    const QString &mask() const { return m_mask; }
    // What the editor shows, placeholders and literals included.
    const QString &display() const { return m_display; }
    // The value: placeholders as blanks, up to the last filled input
    // position; empty when none is filled.
    QString value() const;

    // Types at a position; the new caret position, or -1 when refused.
    int type(int position, QChar typed);
    // Clears the input position before the caret; the new caret position.
    int backspace(int position);
    // Clears the input position at the caret; the caret stays.
    int erase(int position);
    // The first input position at or after position (the mask's length
    // when there is none).
    int nextInput(int position) const;

private:
    QString m_mask;
    QString m_display;
};

} // namespace vyr

#endif // VYR_GRID_MASKEDTEXT_H
