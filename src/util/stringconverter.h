// Conversion of narrow text (bytes in a code page) to wide text (UTF-16) and
// back.
//
// Nothing is lost on the way: a byte that is not valid in the code page
// becomes the lone surrogate U+DC00 + byte in the wide text, and turns back
// into that byte on the way out. A character the code page cannot hold
// becomes "?". An empty input, or a code page that iconv does not know, gives
// an empty result.
#ifndef VYR_UTIL_STRINGCONVERTER_H
#define VYR_UTIL_STRINGCONVERTER_H

#include <cstdint>
#include <string>
#include <string_view>

#include "util/codepage.h"

namespace vyr {

class IVYRSimpleStringConverter
{
public:
    virtual ~IVYRSimpleStringConverter() = default;
    // Narrow text in the converter's code page to UTF-16.
    virtual std::u16string toWide(std::string_view narrow) const = 0;
    // UTF-16 to narrow text in the converter's code page.
    virtual std::string fromWide(std::u16string_view wide) const = 0;
};

// The converter for one code page number: 0 is the process's narrow code page
// (read when the conversion runs), 65001 is UTF-8, any other number is the
// Windows code page of that number. Cheap to make: the character set tables
// and iconv descriptors behind it are kept per thread.
class VYRSimpleWindowsStringConverter final : public IVYRSimpleStringConverter
{
public:
    explicit VYRSimpleWindowsStringConverter(std::uint32_t codePage)
        : codePage_(codePage)
    {}

    std::uint32_t codePage() const { return codePage_; }
    std::u16string toWide(std::string_view narrow) const override;
    std::string fromWide(std::u16string_view wide) const override;

private:
    std::uint32_t codePage_;
};

// Narrow text in the narrow code page to UTF-8, and back. Between equal code
// pages every byte is kept, so in a UTF-8 code page a byte that is no UTF-8
// stays as it is.
std::string ansiToUtf8(std::string_view text);
std::string utf8ToAnsi(std::string_view text);

// Whether utf8ToAnsi gives every text back as it is (the narrow code page is
// UTF-8), so that a reader of much UTF-8 text may pass it on unconverted.
bool utf8IsAnsi();

// Narrow text in the narrow code page to UTF-16 and back, for text that
// people see and edit: wideToAnsi(ansiToWide(x)) == x for every byte string
// x in every code page. Where the code page would give a character back as
// other bytes than it came as (CP932 has two codes for some characters),
// those bytes stay escaped rather than becoming the character; valid text
// otherwise reads as its characters.
std::u16string ansiToWide(std::string_view text);
std::string wideToAnsi(std::u16string_view text);

// Replaces every byte of `text` that is not part of a well-formed UTF-8
// sequence by U+FFFD, for writers whose output must be UTF-8 whatever the
// text held; whether there was any. Text that is well-formed is only read.
bool makeWellFormedUtf8(std::string &text);

} // namespace vyr

#endif // VYR_UTIL_STRINGCONVERTER_H
