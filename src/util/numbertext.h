// Tolerant readers of numbers and truth values typed by users or written by
// other tools.
//
// Each returns true and sets `value` when the text is accepted, and leaves
// `value` alone otherwise. Blanks around a number are ignored. Reading does
// not depend on the process's locale: the decimal separator is ".", with ","
// accepted as a fallback.
#ifndef VYR_UTIL_NUMBERTEXT_H
#define VYR_UTIL_NUMBERTEXT_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vyr {

// A 32-bit integer in decimal or "0x" hexadecimal; a fraction of zeros is
// allowed ("12.", "12.00"), other fractions and exponents are not.
bool parseInteger(std::string_view text, std::int32_t &value);

// As parseInteger for an unsigned 32-bit integer; a leading "-" refuses.
bool parseUnsigned(std::string_view text, std::uint32_t &value);

// A real number. Beyond the C syntax it reads a Fortran "D" exponent
// ("1.5D2"), an exponent without its "E" ("1.5-3" is 0.0015), a decimal
// comma ("2,5") and the not-a-number texts "NAN", "-1.#IND", "1.#QNAN".
// Values out of the double range refuse.
bool parseDouble(std::string_view text, double &value);

// As parseDouble, refusing not-a-number and values beyond the largest
// finite single-precision magnitude.
bool parseFloat(std::string_view text, float &value);

// The text of the number parseDouble reads from `text`, in the form that a
// reader of plain C decimals takes back as that number: `text` itself when it
// is such a decimal already (an optional sign, digits with at most one ".",
// an optional exponent; so "2.50" stays as written), else the shortest
// decimal of the number ("1,5" gives "1.5", " 1.5D2 " gives "150"). Nothing
// when parseDouble refuses the text or reads no finite number.
std::optional<std::string> plainNumberText(std::string_view text);

// "t", "y" (any case) and what follows are true, "f", "n" false; otherwise
// a number, true unless zero (not-a-number is true).
bool parseBool(std::string_view text, bool &value);

// The decimal text of `number`. The texts of 0 to 499, which grids and lists
// ask for all the time, are made once and then handed out.
std::string numberText(std::uint32_t number);

} // namespace vyr

#endif // VYR_UTIL_NUMBERTEXT_H
