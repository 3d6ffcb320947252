#include "util/codepage.h"

#include "util/asciitext.h"
#include "util/codepage_p.h"
#include "util/iconvconversion_p.h"

#include <langinfo.h>
#include <locale.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <unordered_map>
#include <utility>

namespace vyr {
namespace {

// Windows code page numbers whose iconv name is not simply "CP" + number.
constexpr std::array<std::pair<std::uint32_t, const char *>, 20> kNumberedCodePages{{
    {65001, "UTF-8"},       {20127, "US-ASCII"},   {28591, "ISO-8859-1"}, {28592, "ISO-8859-2"},
    {28593, "ISO-8859-3"},  {28594, "ISO-8859-4"}, {28595, "ISO-8859-5"}, {28596, "ISO-8859-6"},
    {28597, "ISO-8859-7"},  {28598, "ISO-8859-8"}, {28599, "ISO-8859-9"}, {28603, "ISO-8859-13"},
    {28605, "ISO-8859-15"}, {20866, "KOI8-R"},     {21866, "KOI8-U"},     {20932, "EUC-JP"},
    {51932, "EUC-JP"},      {51949, "EUC-KR"},     {54936, "GB18030"},    {50220, "ISO-2022-JP"},
}};

bool iconvConvertsBothWays(const std::string &name)
{
    return IconvConversion("UTF-16LE", name).isValid() && IconvConversion(name, "UTF-16LE").isValid();
}

// Whether each of the bytes 0x01-0x7F reads as the character of its value
// and that character is written as that one byte again. A code page that
// shifts with escape sequences (ISO-2022-JP) fails on ESC, and rightly: in
// its shifted state every byte is ASCII, so a comma or a quote in the bytes
// may be half of a character.
bool asciiIsItself(const std::string &name)
{
    const IconvConversion toWide("UTF-16LE", name);
    const IconvConversion fromWide(name, "UTF-16LE");
    for (int value = 0x01; value <= 0x7F; ++value) {
        const char byte = static_cast<char>(value);
        const std::string narrow(1, byte);
        const std::string wide{byte, '\0'};
        if (toWide.convertShort(narrow) != wide || fromWide.convertShort(wide) != narrow)
            return false;
    }
    return true;
}

// asciiIsItself, asked of iconv once per code page in the process.
bool asciiIsItselfCached(const std::string &name)
{
    static std::mutex mutex;
    static std::unordered_map<std::string, bool> known;
    const std::lock_guard lock(mutex);
    auto found = known.find(name);
    if (found == known.end())
        found = known.emplace(name, asciiIsItself(name)).first;
    return found->second;
}

std::optional<std::uint32_t> codePageNumber(std::string_view name)
{
    if (name.empty() || name.size() > 9
        || !std::all_of(name.begin(), name.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return std::nullopt;
    std::uint32_t number = 0;
    for (char c : name)
        number = number * 10 + static_cast<std::uint32_t>(c - '0');
    return number;
}

// The codeset the user's locale environment asks for, without touching the
// process's own locale (that belongs to the host).
std::string localeCodeset()
{
    if (locale_t locale = newlocale(LC_CTYPE_MASK, "", locale_t(nullptr))) {
        std::string codeset = nl_langinfo_l(CODESET, locale);
        freelocale(locale);
        // glibc's name for the codeset of the C and POSIX locales.
        if (codeset == "ANSI_X3.4-1968")
            return "UTF-8";
        if (auto name = canonicalCodePageName(codeset))
            return *name;
        return "UTF-8";
    }
    // The locale is not installed: its name may still say the codeset.
    for (const char *variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const char *value = std::getenv(variable);
        if (!value || !*value)
            continue;
        std::string_view locale(value);
        const auto dot = locale.find('.');
        if (dot == std::string_view::npos)
            break;
        auto codeset = locale.substr(dot + 1);
        codeset = codeset.substr(0, codeset.find('@'));
        if (auto name = canonicalCodePageName(codeset))
            return *name;
        break;
    }
    return "UTF-8";
}

// Hosts may call the codecs from several threads at once; the first call
// chooses the code page for all of them.
struct NarrowCodePageState
{
    std::mutex mutex;
    std::optional<std::string> name;
    std::atomic<unsigned> generation = 0;
};

NarrowCodePageState &narrowState()
{
    static NarrowCodePageState state;
    return state;
}

} // namespace

std::optional<std::string> canonicalCodePageName(std::string_view name, std::string *refusal)
{
    const auto refuse = [&](const char *why) -> std::optional<std::string> {
        if (refusal)
            *refusal = "code page \"" + std::string(name) + "\" " + why;
        return std::nullopt;
    };
    if (name.empty() || name.find_first_of(std::string_view("/\0", 2)) != std::string_view::npos)
        return refuse("is not known");
    std::string candidate;
    if (auto number = codePageNumber(name)) {
        if (*number == kAnsiCodePage)
            return narrowCodePage();
        candidate = "CP" + std::to_string(*number);
        for (const auto &[known, iconvName] : kNumberedCodePages) {
            if (known == *number)
                candidate = iconvName;
        }
    } else {
        candidate = upperAscii(name);
        if (candidate == "UTF8")
            candidate = "UTF-8";
    }
    if (!iconvConvertsBothWays(candidate))
        return refuse("is not known");
    if (!asciiIsItselfCached(candidate))
        return refuse("is refused: it does not keep every ASCII character as the one byte of its value, which "
                      "names, separators and the codecs' tokens rely on");
    return candidate;
}

const std::string &narrowCodePageRef()
{
    NarrowCodePageState &state = narrowState();
    const std::lock_guard lock(state.mutex);
    if (!state.name) {
        std::optional<std::string> chosen;
        std::string refusal;
        // "0" would name the narrow code page by itself: treat it as unset.
        const char *requested = std::getenv("VYR_CODEPAGE");
        if (requested && *requested && codePageNumber(requested) != kAnsiCodePage)
            chosen = canonicalCodePageName(requested, &refusal);
        state.name = chosen ? std::move(*chosen) : localeCodeset();
        // The host's user set it for a reason: a text read in another code
        // page than the one asked for must not pass unsaid.
        if (!refusal.empty())
            std::fprintf(stderr, "vyrguimfc: VYR_CODEPAGE: %s; the locale's code page %s is used instead\n",
                         refusal.c_str(), state.name->c_str());
    }
    return *state.name;
}

std::optional<std::string> refusedVyrCodePage()
{
    const char *requested = std::getenv("VYR_CODEPAGE");
    if (!requested || !*requested || codePageNumber(requested) == kAnsiCodePage)
        return std::nullopt;
    std::string refusal;
    if (canonicalCodePageName(requested, &refusal))
        return std::nullopt;
    return "VYR_CODEPAGE: " + refusal;
}

unsigned narrowCodePageGeneration()
{
    return narrowState().generation;
}

std::string narrowCodePage()
{
    return narrowCodePageRef();
}

bool setNarrowCodePage(std::string_view name)
{
    if (codePageNumber(name) == kAnsiCodePage)
        return true;
    auto canonical = canonicalCodePageName(name);
    if (!canonical)
        return false;
    NarrowCodePageState &state = narrowState();
    const std::lock_guard lock(state.mutex);
    if (state.name != canonical) {
        state.name = std::move(canonical);
        ++state.generation;
    }
    return true;
}

void resetNarrowCodePage()
{
    NarrowCodePageState &state = narrowState();
    const std::lock_guard lock(state.mutex);
    state.name.reset();
    ++state.generation;
}

std::string codePageName(std::uint32_t codePage)
{
    if (codePage == kAnsiCodePage)
        return narrowCodePage();
    return canonicalCodePageName(std::to_string(codePage)).value_or(std::string());
}

} // namespace vyr
