#include "util/tabulartext.h"

#include <algorithm>

namespace vyr {

TextTable parseTabularText(std::string_view text)
{
    TextTable table;
    if (text.empty())
        return table;
    StringList record;
    std::string field;
    std::size_t i = 0;
    const std::size_t size = text.size();
    bool fieldStarted = false;
    const auto endField = [&] {
        record.push_back(std::move(field));
        field.clear();
        fieldStarted = false;
    };
    const auto endRecord = [&] {
        endField();
        table.push_back(std::move(record));
        record.clear();
    };
    while (i < size) {
        const char c = text[i];
        if (c == '"' && !fieldStarted) {
            // A quoted field: up to the quote that is not doubled.
            ++i;
            while (i < size) {
                if (text[i] == '"') {
                    if (i + 1 < size && text[i + 1] == '"') {
                        field += '"';
                        i += 2;
                        continue;
                    }
                    ++i;
                    break;
                }
                field += text[i++];
            }
            fieldStarted = true;
            continue;
        }
        if (c == '\t') {
            endField();
            ++i;
            continue;
        }
        if (c == '\n' || c == '\r') {
            endRecord();
            i += (c == '\r' && i + 1 < size && text[i + 1] == '\n') ? 2 : 1;
            continue;
        }
        // Plain text runs to the next tab, line break or quote.
        const std::size_t end = std::min(text.find_first_of("\t\n\r\"", i + 1), size);
        field.append(text.substr(i, end - i));
        fieldStarted = true;
        i = end;
    }
    // A text that does not end with a line break ends its last record here.
    const char last = text.back();
    if (last != '\n' && last != '\r')
        endRecord();
    return table;
}

namespace {

bool needsQuotes(const std::string &field)
{
    return field.find_first_of("\t\n\r\"") != std::string::npos;
}

} // namespace

std::string formatTabularText(const TextTable &table)
{
    std::string text;
    for (const StringList &record : table) {
        for (std::size_t i = 0; i < record.size(); ++i) {
            if (i > 0)
                text += '\t';
            const std::string &field = record[i];
            if (!needsQuotes(field)) {
                text += field;
                continue;
            }
            text += '"';
            for (const char c : field) {
                if (c == '"')
                    text += '"';
                text += c;
            }
            text += '"';
        }
        text += '\n';
    }
    return text;
}

} // namespace vyr
