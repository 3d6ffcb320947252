// Realistic data type mappings, as the native and generic pairs a format's
// capability string gives them.
#ifndef VYR_TESTS_MAPPINGTABLES_H
#define VYR_TESTS_MAPPINGTABLES_H

#include "attrtypes/datatypemappings.h"
#include "attrtypes/typestring.h"

#include <memory>

namespace vyr::test {

// A dBase attribute table: fixed-width characters and numbers, logical, date.
inline constexpr const char *kDbaseMappings[][2] = {
    {"char(width)", "vyr_char"},
    {"number(width,decimal)", "vyr_decimal"},
    {"float(width,decimal)", "vyr_real64"},
    {"logical", "vyr_boolean"},
    {"date", "vyr_date"},
};

// A SQL database: varying characters, exact numerics, integers of a given
// display width, binary integers of 2 or 4 bytes, time stamps.
inline constexpr const char *kDatabaseMappings[][2] = {
    {"varchar(width)", "vyr_varchar"},
    {"char(width)", "vyr_char"},
    {"numeric(width,decimal)", "vyr_decimal"},
    {"int", "vyr_int32"},
    {"int(width)", "vyr_int32"},
    {"binint(binint-width)", "vyr_int16"},
    {"boolean", "vyr_boolean"},
    {"date", "vyr_date"},
    {"timestamp", "vyr_datetime"},
    {"enum(stringset)", "vyr_char(200)"},
};

template <std::size_t N>
std::unique_ptr<DataTypeMappings> makeMappings(const char *const (&table)[N][2], const char *format,
                                               bool isSource = false)
{
    auto mappings = std::make_unique<DataTypeMappings>(format, isSource);
    for (const auto &[native, generic] : table)
        mappings->addMapping(native, generic, kStoredListMode);
    return mappings;
}

} // namespace vyr::test

#endif // VYR_TESTS_MAPPINGTABLES_H
