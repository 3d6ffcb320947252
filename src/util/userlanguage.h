// The user's language, as the resource library and help choose by it.
#ifndef VYR_UTIL_USERLANGUAGE_H
#define VYR_UTIL_USERLANGUAGE_H

#include <string>

namespace vyr {

// The ISO 639 language of the first non-empty of $LC_ALL, $LC_MESSAGES and
// $LANG: "de" from "de_DE.UTF-8", "pt" from "pt_BR@euro". Empty for the "C"
// and "POSIX" locales, when none is set, and when the name is not a plain
// run of at most nine letters.
std::string userLanguage();

} // namespace vyr

#endif // VYR_UTIL_USERLANGUAGE_H
