// How a format capability string's values read as numbers and yes/no
// answers. These are the format record's own rules, stricter than the
// tolerant readers of typed values (util/numbertext.h): a capability file
// is written by a format's author, and a value those rules do not read
// leaves the key at its default.
#ifndef VYR_UTIL_CAPABILITYVALUES_H
#define VYR_UTIL_CAPABILITYVALUES_H

#include <optional>
#include <string_view>

namespace vyr {

// The decimal digits at the start of `text`, after blanks (spaces only) and
// one sign, up to the first other character; 0 without such digits. Clamped
// to the int range.
int leadingInteger(std::string_view text);

// `text`, spaces at both ends ignored, read whole as a decimal number
// (sign, digits, fraction, exponent with "e" or "E"). When it does not read
// whole, three repairs are tried in turn, each on the result of the one
// before: the first "D" becomes "E"; a sign between digits at the end
// ("15-3") gets an "E" before it; the first comma becomes a full stop.
// "NAN", "-1.#IND" and "1.#QNAN" (any case) read as not-a-number. Nothing
// for anything else and for values beyond the double range.
std::optional<double> capabilityNumber(std::string_view text);

// "t", "T", "y", "Y" at the start give true, "f", "F", "n", "N" false;
// else a number above gives true unless it is zero (not-a-number is not
// zero); nothing for anything else, the empty text included.
std::optional<bool> capabilityFlag(std::string_view text);

} // namespace vyr

#endif // VYR_UTIL_CAPABILITYVALUES_H
