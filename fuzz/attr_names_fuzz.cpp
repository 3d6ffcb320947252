// Attribute names made legal under formats built from the input itself: its
// case rule, length limit, invalid characters and illegal names, in a code
// page it chooses. No crash, and the name obeys every rule it can: at most
// the limit, none of the invalid characters (braces survive as a "{}" pair),
// the case rule (for the first character too, and what it puts in front),
// and never a taken or illegal name (a one-character limit leaves no room
// for a number). The number that makes a name unique is the last rule and
// may cut what came before, a "{}" pair included, so the characters are
// checked before it. Characters of several bytes are units that no rule
// changes: only single bytes are held to the rules.
#include "ftprops/namerules.h"
#include "ftprops/vyrobjftpropsformatinfo.h"
#include "util/asciitext.h"
#include "util/codepage.h"
#include "util/listpacking.h"

#include <cstdlib>
#include <string>
#include <vector>

using namespace vyr;

namespace {

// Reads the input front to back; past its end every read gives 0.
class Input
{
public:
    Input(const unsigned char *data, std::size_t size)
        : m_data(data)
        , m_size(size)
    {}
    unsigned char byte() { return m_at < m_size ? m_data[m_at++] : 0; }
    std::string text(std::size_t most)
    {
        const std::size_t length = std::min<std::size_t>(byte() % (most + 1), m_size - std::min(m_at, m_size));
        std::string taken(reinterpret_cast<const char *>(m_data + m_at), length);
        m_at += length;
        return taken;
    }
    std::string rest() { return text(m_size); }

private:
    const unsigned char *m_data;
    std::size_t m_size;
    std::size_t m_at = 0;
};

bool isAscii(char c)
{
    return static_cast<unsigned char>(c) < 0x80;
}

// Where each character of `text` starts, and whether it is a single byte:
// in UTF-8 a whole sequence is one; in the other code pages a byte from 129
// to 175 or 224 to 252 leads a character of two.
struct Unit
{
    std::size_t at;
    bool single;
};
std::vector<Unit> unitsOf(const std::string &text, bool utf8)
{
    std::vector<Unit> units;
    for (std::size_t i = 0; i < text.size();) {
        const auto byte = static_cast<unsigned char>(text[i]);
        std::size_t length = 1;
        if (utf8) {
            while (byte >= 0xC0 && i + length < text.size()
                   && (static_cast<unsigned char>(text[i + length]) & 0xC0) == 0x80 && length < 4)
                ++length;
        } else if (((byte >= 129 && byte <= 175) || (byte >= 224 && byte <= 252)) && i + 1 < text.size()) {
            length = 2;
        }
        units.push_back({i, length == 1 && byte < 0x80});
        i += length;
    }
    return units;
}

bool isLower(char c)
{
    return c >= 'a' && c <= 'z';
}
bool isUpper(char c)
{
    return c >= 'A' && c <= 'Z';
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    static const char *const cases[]
        = {"UPPER", "LOWER", "FIRSTUPPER", "FIRSTLOWER", "UPPERFIRSTALPHA", "ANYFIRSTNONNUMERIC", "ANY"};
    static const char *const codePages[] = {"UTF-8", "CP1252", "CP932"};
    Input input(data, size);
    const std::string codePage = codePages[input.byte() % std::size(codePages)];
    // A system without the code page's converter has nothing to check.
    if (!setNarrowCodePage(codePage))
        return 0;
    const bool utf8 = codePage == "UTF-8";
    const std::string caseRule = cases[input.byte() % std::size(cases)];
    const int limit = input.byte() % 40;
    const std::string invalid = input.text(6);
    const std::string illegal = input.text(12);
    const std::string takenName = input.text(20);
    const std::string name = input.rest();

    const std::string capabilities = csvJoin({"ATTR_CASE", caseRule, "MAX_ATTR_LENGTH", std::to_string(limit),
                                              "ATTR_NAME_INVALID_CHARS", invalid, "DEST_ILLEGAL_ATTR_LIST", illegal},
                                             ',');
    const VYRObjFTPropsFormatInfo format(capabilities, nullptr);
    const StringSet taken{takenName, name, "A", "A00"};
    const AttributeNameSteps steps = LegaliseAttributeNameSteps(format, name, taken);
    const std::string &legal = steps.unique;
    if (legal != LegaliseAttributeName(format, name, taken))
        std::abort();

    // Empty when no name within the limit is free; with a limit of one no
    // number fits, so a taken name is given back as it is.
    if (legal.empty())
        return 0;
    StringSet illegalNames;
    for (const std::string &word : format.getDestIllegalAttrList())
        illegalNames.insert(upperAscii(word));
    if ((taken.contains(legal) || illegalNames.contains(upperAscii(legal))) && format.getMaxAttrLength() != 1)
        std::abort();
    if (format.getMaxAttrLength() > 0 && legal.size() > static_cast<std::size_t>(format.getMaxAttrLength()))
        std::abort();
    // The unique name is the checked one cut and numbered.
    if (legal != steps.cut) {
        std::size_t kept = 0;
        while (kept < legal.size() && kept < steps.cut.size() && legal[kept] == steps.cut[kept])
            ++kept;
        if (kept == legal.size() || legal.find_first_not_of("0123456789", kept) != std::string::npos)
            std::abort();
    }
    const std::string &checked = steps.cut;
    const std::string rules = format.getAttrNameInvalidChars();
    for (const Unit &unit : unitsOf(checked, utf8)) {
        if (!unit.single)
            continue;
        const std::size_t i = unit.at;
        const char c = checked[i];
        // Letters are replaced before the case rule, which may bring one
        // back in its other case; digits come with the number that makes a
        // name unique, and "_" replaces what is invalid: only the others
        // are sure to be gone.
        const bool alphanumeric = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        if (!isAscii(c) || alphanumeric || c == '_' || rules.find(c) == std::string::npos)
            continue;
        // A list's "{}" is kept whole, even where braces are invalid, until
        // the length limit cuts it.
        const bool cut = c == '{' && i + 1 == checked.size()
            && checked.size() == static_cast<std::size_t>(format.getMaxAttrLength());
        const bool pair = (c == '{' && i + 1 < checked.size() && checked[i + 1] == '}')
            || (c == '}' && i > 0 && checked[i - 1] == '{') || cut;
        if (!pair)
            std::abort();
    }
    for (const Unit &unit : unitsOf(legal, utf8)) {
        const char c = legal[unit.at];
        if (!unit.single)
            continue;
        if ((caseRule == "UPPER" || caseRule == "UPPERFIRSTALPHA") && isLower(c))
            std::abort();
        if (caseRule == "LOWER" && isUpper(c))
            std::abort();
    }
    // The first character, when it is a single byte: the case rules that
    // look at it, and what they put in front.
    const std::vector<Unit> before = unitsOf(steps.replaced, utf8);
    if (before.empty() || !before.front().single || steps.cased.empty())
        return 0;
    const char first = steps.cased.front();
    if (caseRule == "FIRSTUPPER" && isLower(first))
        std::abort();
    if (caseRule == "FIRSTLOWER" && isUpper(first))
        std::abort();
    if (caseRule == "UPPERFIRSTALPHA" && !isUpper(first))
        std::abort();
    if (caseRule == "ANYFIRSTNONNUMERIC" && first >= '0' && first <= '9')
        std::abort();
    return 0;
}
