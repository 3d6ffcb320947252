// splitWords on any bytes with any flags: it never fails, refuses without
// touching the list, and never makes more words than the text has bytes.
#include "util/codepage.h"
#include "util/wordsplitter.h"

#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    if (size == 0)
        return 0;
    const unsigned flags = data[0];
    vyr::setNarrowCodePage(flags & 8 ? "UTF-8" : "CP1252");
    const std::string_view input(reinterpret_cast<const char *>(data + 1), size - 1);
    const std::string_view delimiters = flags & 16 ? std::string_view(" ,") : std::string_view(" \t");
    std::vector<std::string> words{"first"};
    const bool accepted = vyr::splitWords(input, words, delimiters, flags & 1, flags & 2, flags & 4);
    if (!accepted && words.size() != 1)
        std::abort();
    if (words.size() > input.size() + 2)
        std::abort();
    return 0;
}
