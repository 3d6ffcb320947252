#include "util/jsonlocation.h"

#include <algorithm>
#include <cstdio>

namespace vyr {

TextPosition positionOf(std::string_view text, std::size_t offset)
{
    TextPosition position;
    const std::size_t end = offset < text.size() ? offset : text.size();
    for (std::size_t i = 0; i < end; ++i) {
        if (text[i] == '\n') {
            ++position.line;
            position.column = 1;
        } else {
            ++position.column;
        }
    }
    return position;
}

std::string lineColumn(TextPosition position)
{
    return std::to_string(position.line) + ":" + std::to_string(position.column);
}

namespace {

// A reader over text already known to be valid JSON: it only has to skip
// values and find members, never to reject anything. Nesting is bounded by
// the caller's guard against deep texts, so skipping may recurse.
class JsonWalker
{
public:
    explicit JsonWalker(std::string_view text)
        : m_text(text)
    {}

    std::size_t at() const { return m_at; }
    void skipBlanks()
    {
        while (m_at < m_text.size()
               && (m_text[m_at] == ' ' || m_text[m_at] == '\t' || m_text[m_at] == '\n' || m_text[m_at] == '\r'))
            ++m_at;
    }
    bool take(char c)
    {
        skipBlanks();
        if (m_at < m_text.size() && m_text[m_at] == c) {
            ++m_at;
            return true;
        }
        return false;
    }
    // The raw text between the quotes of the string that starts here.
    std::string_view string()
    {
        if (m_at >= m_text.size())
            return {};
        const std::size_t start = ++m_at;
        while (m_at < m_text.size() && m_text[m_at] != '"')
            m_at += m_text[m_at] == '\\' ? 2 : 1;
        const std::string_view raw = m_text.substr(start, std::min(m_at, m_text.size()) - start);
        ++m_at;
        return raw;
    }
    void skipValue()
    {
        skipBlanks();
        if (m_at >= m_text.size())
            return;
        const char c = m_text[m_at];
        if (c == '"') {
            string();
        } else if (c == '{' || c == '[') {
            ++m_at;
            const char close = c == '{' ? '}' : ']';
            if (take(close))
                return;
            do {
                if (c == '{') {
                    skipBlanks();
                    string();
                    take(':');
                }
                skipValue();
            } while (take(','));
            take(close);
        } else {
            while (m_at < m_text.size() && m_text[m_at] != ',' && m_text[m_at] != '}' && m_text[m_at] != ']'
                   && m_text[m_at] != ' ' && m_text[m_at] != '\n' && m_text[m_at] != '\t' && m_text[m_at] != '\r')
                ++m_at;
        }
    }
    // From the start of an object, to the start of the value of its last
    // member named `name`.
    bool enterMember(std::string_view name)
    {
        if (!take('{'))
            return false;
        std::optional<std::size_t> found;
        if (!take('}')) {
            do {
                skipBlanks();
                const std::string_view key = string();
                take(':');
                skipBlanks();
                if (key == name)
                    found = m_at;
                skipValue();
            } while (take(','));
        }
        if (found)
            m_at = *found;
        return found.has_value();
    }
    // From the start of an array, to the start of element `index`.
    bool enterElement(std::size_t index)
    {
        if (!take('[') || take(']'))
            return false;
        for (std::size_t i = 0; i < index; ++i) {
            skipValue();
            if (!take(','))
                return false;
        }
        skipBlanks();
        return true;
    }

private:
    std::string_view m_text;
    std::size_t m_at = 0;
};

} // namespace

std::optional<std::size_t> locateJsonValue(std::string_view text, const JsonPath &path)
{
    JsonWalker walker(text);
    walker.skipBlanks();
    for (const JsonStep &step : path) {
        const bool entered = std::holds_alternative<std::string>(step)
            ? walker.enterMember(std::get<std::string>(step))
            : walker.enterElement(std::get<std::size_t>(step));
        if (!entered)
            return std::nullopt;
    }
    return walker.at();
}

std::string jsonPlace(const std::string &file, std::string_view text, const JsonPath &path)
{
    const std::optional<std::size_t> offset = locateJsonValue(text, path);
    return offset ? file + ":" + lineColumn(positionOf(text, *offset)) + ": " : file + ": ";
}

std::string jsonSyntaxError(const std::string &file, std::string_view text, std::size_t bytesRead)
{
    // The library counts the byte it stopped at as read.
    const std::size_t offset = bytesRead > 0 ? bytesRead - 1 : 0;
    std::string found;
    if (offset >= text.size()) {
        found = "the text ends too early";
    } else {
        const auto byte = static_cast<unsigned char>(text[offset]);
        char shown[32];
        if (byte >= 0x20 && byte < 0x7F)
            std::snprintf(shown, sizeof shown, "'%c'", byte);
        else
            std::snprintf(shown, sizeof shown, "byte 0x%02X", byte);
        found = std::string("unexpected ") + shown;
    }
    return file + ":" + lineColumn(positionOf(text, offset)) + ": not valid JSON: " + found;
}

std::string jsonNumberTooLarge(const std::string &file, std::string_view text, std::string_view libraryMessage)
{
    const std::size_t open = libraryMessage.find('\'');
    const std::size_t close = libraryMessage.rfind('\'');
    const std::string_view number =
        open != std::string_view::npos && close > open ? libraryMessage.substr(open + 1, close - open - 1) : "";
    // The number as a token: outside strings, not the tail of a longer one.
    std::optional<std::size_t> offset;
    bool inString = false;
    for (std::size_t i = 0; !number.empty() && i < text.size() && !offset; ++i) {
        const char c = text[i];
        if (inString) {
            if (c == '\\')
                ++i;
            else if (c == '"')
                inString = false;
        } else if (c == '"') {
            inString = true;
        } else if (text.substr(i, number.size()) == number &&
                   (i == 0 || std::string_view("0123456789.eE+-").find(text[i - 1]) == std::string_view::npos)) {
            offset = i;
        }
    }
    const std::string place = offset ? file + ":" + lineColumn(positionOf(text, *offset)) : file;
    const std::string shown = number.empty() ? std::string("a number") : "the number " + std::string(number);
    return place + ": not valid JSON: " + shown + " is too large";
}

} // namespace vyr
