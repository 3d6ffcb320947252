// Code pages: which narrow character set a text is in.
//
// The system speaks of two code pages by number: 0, the process's narrow code
// page, and 65001, UTF-8. The narrow code page is VYR_CODEPAGE when that
// names a code page canonicalCodePageName takes (CP1252, CP932, UTF-8, ...),
// else the codeset of the user's LC_CTYPE locale, and UTF-8 where that
// locale is C or POSIX. It is decided on first use and can be changed in
// code.
#ifndef VYR_UTIL_CODEPAGE_H
#define VYR_UTIL_CODEPAGE_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vyr {

inline constexpr std::uint32_t kAnsiCodePage = 0;
inline constexpr std::uint32_t kUtf8CodePage = 65001;

// The iconv name of a code page given by name or by number ("cp1252",
// "1252", "65001", "utf8", "EUC-JP"), or nothing when iconv cannot convert
// between it and UTF-16, or when the code page does not read and write every
// ASCII character but NUL and ESC as the one byte of its value (UTF-7,
// UTF-16, UTF-32, EBCDIC): names, separators and tokens are ASCII bytes,
// which such a code page would change. Then `refusal`, when given, says why.
// Number 0 stands for the narrow code page.
std::optional<std::string> canonicalCodePageName(std::string_view name, std::string *refusal = nullptr);

// The iconv name of the process's narrow code page (code page 0).
std::string narrowCodePage();

// Makes `name` the narrow code page from now on. Returns false, changing
// nothing, when canonicalCodePageName refuses the name.
bool setNarrowCodePage(std::string_view name);

// Why VYR_CODEPAGE, when it is set, is not the narrow code page:
// canonicalCodePageName refuses it, and the locale's code page is used
// instead. Nothing when it is unset or used. Programs refuse to start on it,
// so that nobody takes texts for read in a code page they are not.
std::optional<std::string> refusedVyrCodePage();

// Forgets a narrow code page set in code, so the next use decides again from
// VYR_CODEPAGE and the locale.
void resetNarrowCodePage();

// The iconv name for a code page number: the narrow code page for 0.
std::string codePageName(std::uint32_t codePage);

} // namespace vyr

#endif // VYR_UTIL_CODEPAGE_H
