// Reading a feature file, the layout of vyr/vyr_featurefile.h, into a
// feature of this engine.
#ifndef VYR_ENGINE_FEATUREJSONREADER_H
#define VYR_ENGINE_FEATUREJSONREADER_H

#include "vyrfeature.h"

#include <optional>
#include <string>
#include <string_view>

namespace vyr::engine {

// The feature that `text` holds. Nothing when `text` is no feature file, with
// the reason in `error` as "ORIGIN:LINE:COLUMN: what" (or "ORIGIN: what" where
// no place can be named): a syntax error, a number too large for a double, a
// member of the wrong kind, a key given twice in the top object, in
// "attributes" or in "lists", an "attribute_order" naming no attribute, or
// nesting deeper than the JSON guard allows.
std::optional<VYRFeature> readFeatureJson(std::string_view text, const std::string &origin, std::string &error);

} // namespace vyr::engine

#endif // VYR_ENGINE_FEATUREJSONREADER_H
