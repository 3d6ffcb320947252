#include "util/listpacking.h"

namespace vyr {
namespace {

constexpr std::size_t kInitialListRoom = 16;

char plainSeparator(char separator)
{
    return separator ? separator : '\x01';
}

std::string undoubleQuotes(std::string_view field)
{
    std::string out;
    out.reserve(field.size());
    for (std::size_t i = 0; i < field.size(); ++i) {
        out.push_back(field[i]);
        if (field[i] == '"' && i + 1 < field.size() && field[i + 1] == '"')
            ++i;
    }
    return out;
}

void appendQuoted(std::string &out, std::string_view element, char separator)
{
    const char special[] = {'"', separator, ' '};
    if (element.find_first_of(std::string_view(special, sizeof special)) == std::string_view::npos) {
        out.append(element);
        return;
    }
    out.push_back('"');
    for (char c : element) {
        out.push_back(c);
        if (c == '"')
            out.push_back('"');
    }
    out.push_back('"');
}

// The elements from `first` on, each written by `append`, the separator
// between them.
template <typename Append>
std::string joinElements(const StringList &list, std::size_t first, char separator, Append append)
{
    std::string out;
    for (std::size_t i = first; i < list.size(); ++i) {
        if (i > first)
            out.push_back(separator);
        append(out, list[i]);
    }
    return out;
}

} // namespace

std::string joinList(const StringList &list, char separator)
{
    return joinElements(list, 0, plainSeparator(separator),
                        [](std::string &out, const std::string &element) { out.append(element); });
}

StringList splitList(std::string_view text, char separator)
{
    StringList pieces;
    if (text.empty())
        return pieces;
    pieces.reserve(kInitialListRoom);
    const char cut = plainSeparator(separator);
    std::size_t start = 0;
    for (;;) {
        const std::size_t end = text.find(cut, start);
        if (end == std::string_view::npos) {
            pieces.emplace_back(text.substr(start));
            return pieces;
        }
        pieces.emplace_back(text.substr(start, end - start));
        start = end + 1;
    }
}

std::string csvJoin(const StringList &list, char separator, std::size_t first)
{
    return joinElements(list, first, separator, [separator](std::string &out, const std::string &element) {
        appendQuoted(out, element, separator);
    });
}

StringList csvSplit(std::string_view text, char separator)
{
    StringList fields;
    if (text.empty())
        return fields;
    fields.reserve(kInitialListRoom);
    const std::size_t size = text.size();
    std::size_t position = 0;
    while (position <= size) {
        if (position == size) {
            fields.emplace_back();
            break;
        }
        if (text[position] != '"') {
            std::size_t end = text.find(separator, position);
            if (end == std::string_view::npos)
                end = size;
            fields.emplace_back(text.substr(position, end - position));
            position = end + 1;
            continue;
        }
        const std::size_t start = position + 1;
        std::size_t close = text.find('"', start);
        while (close != std::string_view::npos && close + 1 < size && text[close + 1] == '"')
            close = text.find('"', close + 2);
        if (close == std::string_view::npos) {
            fields.push_back(undoubleQuotes(text.substr(start)));
            break;
        }
        fields.push_back(undoubleQuotes(text.substr(start, close - start)));
        position = close + 2; // past the quote and the separator after it
    }
    return fields;
}

} // namespace vyr
