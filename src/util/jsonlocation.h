// Where things are in a JSON text, for messages a person can act on: the
// JSON library reports a syntax error by byte and keeps no positions of the
// values it read, so a layout error would otherwise name no place at all.
#ifndef VYR_UTIL_JSONLOCATION_H
#define VYR_UTIL_JSONLOCATION_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vyr {

// Line and column of a byte, both from 1; columns count bytes.
struct TextPosition
{
    std::size_t line = 1;
    std::size_t column = 1;
};

// The position of byte `offset` of `text` (an offset past the end is the
// position just after the last byte).
TextPosition positionOf(std::string_view text, std::size_t offset);

// "LINE:COLUMN" of `position`.
std::string lineColumn(TextPosition position);

// One step into a JSON value: a member name or an element index.
using JsonStep = std::variant<std::string, std::size_t>;
using JsonPath = std::vector<JsonStep>;

// The offset at which the value at `path` begins in `text`, which must be
// valid JSON; nothing when the path leads nowhere. Of repeated member names
// the last counts, as when the text is parsed. Member names are compared as
// written between their quotes, so a name spelt with escapes is not found.
std::optional<std::size_t> locateJsonValue(std::string_view text, const JsonPath &path);

// "FILE:LINE:COLUMN: " for the value at `path` in `text`, or "FILE: " when
// it cannot be found.
std::string jsonPlace(const std::string &file, std::string_view text, const JsonPath &path);

// "FILE:LINE:COLUMN: not valid JSON ..." for a syntax error the JSON library
// found after reading `bytesRead` bytes of `text`, naming what it found there.
std::string jsonSyntaxError(const std::string &file, std::string_view text, std::size_t bytesRead);

// "FILE:LINE:COLUMN: not valid JSON: the number N is too large" for a number
// the JSON library could not hold; `libraryMessage` is the library's own
// report, which quotes the number but gives no position.
std::string jsonNumberTooLarge(const std::string &file, std::string_view text, std::string_view libraryMessage);

} // namespace vyr

#endif // VYR_UTIL_JSONLOCATION_H
