// Attribute names made legal under formats built from the input itself: its
// case rule, length limit, invalid characters and illegal names. No crash,
// and the name obeys every rule it can: at most the limit, none of the
// invalid characters (braces survive as a "{}" pair), the case, and never a
// taken name (a one-character limit leaves no room for a number).
#include "ftprops/namerules.h"
#include "ftprops/vyrobjftpropsformatinfo.h"
#include "util/listpacking.h"

#include <cstdlib>
#include <string>

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

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    static const char *const cases[] = {"UPPER", "LOWER", "FIRSTUPPER", "FIRSTLOWER", "UPPERFIRSTALPHA",
                                        "ANYFIRSTNONNUMERIC", "ANY"};
    Input input(data, size);
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
    const std::string legal = LegaliseAttributeName(format, name, taken);

    // Empty when no name within the limit is free; with a limit of one no
    // number fits, so a taken name is given back as it is.
    if (legal.empty())
        return 0;
    if (taken.contains(legal) && format.getMaxAttrLength() != 1)
        std::abort();
    if (format.getMaxAttrLength() > 0 && legal.size() > static_cast<std::size_t>(format.getMaxAttrLength()))
        std::abort();
    const std::string rules = format.getAttrNameInvalidChars();
    for (std::size_t i = 0; i < legal.size(); ++i) {
        const char c = legal[i];
        // Letters are replaced before the case rule, which may bring one
        // back in its other case; digits come with the number that makes a
        // name unique, and "_" replaces what is invalid: only the others
        // are sure to be gone.
        const bool alphanumeric = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        if (!isAscii(c) || alphanumeric || c == '_' || rules.find(c) == std::string::npos)
            continue;
        // A list's "{}" is kept whole, even where braces are invalid, until
        // the length limit cuts it.
        const bool cut = c == '{' && i + 1 == legal.size()
            && legal.size() == static_cast<std::size_t>(format.getMaxAttrLength());
        const bool pair = (c == '{' && i + 1 < legal.size() && legal[i + 1] == '}')
            || (c == '}' && i > 0 && legal[i - 1] == '{') || cut;
        if (!pair)
            std::abort();
    }
    for (const char c : legal) {
        if (caseRule == "UPPER" && c >= 'a' && c <= 'z')
            std::abort();
        if (caseRule == "LOWER" && c >= 'A' && c <= 'Z')
            std::abort();
    }
    return 0;
}
