// Clipboard text pasted into a grid, from any program: it reads to records
// of at least one field, in time and memory linear in its length, and the
// records written out read back the same.
#include "util/tabulartext.h"

#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    const vyr::TextTable table = vyr::parseTabularText(text);
    std::size_t fields = 0;
    for (const vyr::StringList &record : table) {
        if (record.empty())
            std::abort();
        fields += record.size();
    }
    // Every field but the first of a record takes a tab, every record past
    // the first a line break.
    if (fields > size + 1)
        std::abort();
    if (vyr::parseTabularText(vyr::formatTabularText(table)) != table)
        std::abort();
    return 0;
}
