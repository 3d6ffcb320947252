// The names a format accepts: attribute names as the attribute pages make
// them legal while they are typed, and feature type names as the General
// page resolves them. Single-byte text only.
#ifndef VYR_TESTS_MODEL_NAMERULES_H
#define VYR_TESTS_MODEL_NAMERULES_H

#include "model/formatmodel.h"

#include <set>
#include <string>

namespace vyr::model {

using NameSet = std::set<std::string>;

// An attribute name typed into a writer's grid, made legal: characters,
// case, length, then a number against `taken` and the format's illegal
// names.
std::string legalAttributeName(const FormatModel &format, const std::string &name, const NameSet &taken);

// A feature type name resolved for `format`; `taken` are the names of the
// workspace's other feature types of that format. May be empty.
std::string resolveFeatureTypeName(const FormatModel &format, const std::string &name, const NameSet &taken);

// `name` with 00, 01, ... in place of its tail until it is neither taken
// nor (upper-cased) reserved; "" when `limit` leaves no room.
std::string uniqueNumberedName(const std::string &name, std::size_t limit, const NameSet &taken,
                               const NameSet &reservedUpper);

std::string upperCased(std::string text);
std::string lowerCased(std::string text);

} // namespace vyr::model

#endif // VYR_TESTS_MODEL_NAMERULES_H
