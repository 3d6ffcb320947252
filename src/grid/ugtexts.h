// The grid's own words: the labels of its Find and Replace dialog.
//
// The grid knows no languages. A program that speaks the user's language
// installs a translator once; until then the English words are shown.
#ifndef VYR_GRID_UGTEXTS_H
#define VYR_GRID_UGTEXTS_H

#include <QString>

namespace vyr::ug {

// Answers the translation of `english` (mnemonic marks included), or
// `english` itself.
using TextTranslator = QString (*)(const char *english);

// Installs `translator` for every later text; nullptr goes back to English.
void setTextTranslator(TextTranslator translator);

// `english` in the installed translator's language.
QString gridText(const char *english);

} // namespace vyr::ug

#endif // VYR_GRID_UGTEXTS_H
