/* Engine features saved as JSON files, and read back.
 *
 * Layout (UTF-8 JSON; texts are converted from and to the narrow code page):
 *
 *   {
 *     "feature_type": "roads",
 *     "attributes": { "NAME": "vyr_char(30)", "*NAME": "char(30)", ... },
 *     "attribute_order": [ "NAME", ... ],
 *     "lists": { "*vyr_format_attr_name": [ "shape_type" ], ... }
 *   }
 *
 * "attributes" keeps the order in which the attributes were first set;
 * "attribute_order" is the feature's attribute order (the user attributes of
 * a schema, in the order the user gave them); names in it must be
 * attributes. Every member but "feature_type" may be left out. A file that is
 * not of this layout is refused with a message naming the file and the
 * place, and the feature is left as it was. */
#ifndef VYR_FEATUREFILE_H
#define VYR_FEATUREFILE_H

#include "vyr/IVYRFeature.h"
#include "vyr/IVYRString.h"
#include "vyr/vyr_export.h"

extern "C" {

/* Replaces the feature's contents with the file's. On failure returns false
 * and puts the reason into `error` (when given). Only a regular file of sane
 * size is read. Works on features of this engine only. */
VYR_ENGINE_API bool VYR_FeatureLoadJson(IVYRFeature *feature, const char *path, IVYRString *error);

/* Writes the feature to the file, replacing it whole: a new file, created
 * exclusively under an unpredictable name next to it, is renamed over it,
 * so a failure never leaves half a file and a planted link is never written
 * through. A symbolic link stays a link (its target gets the content), the
 * file keeps its permissions, and a read-only file is refused. On failure
 * returns false with the reason, naming the file, in `error`. */
VYR_ENGINE_API bool VYR_FeatureSaveJson(const IVYRFeature *feature, const char *path, IVYRString *error);

/* Puts the feature's JSON text, exactly as VYR_FeatureSaveJson would write
 * it, into `text`. */
VYR_ENGINE_API bool VYR_FeatureWriteJson(const IVYRFeature *feature, IVYRString *text);

/* As VYR_FeatureLoadJson from JSON text in memory; `origin` names it in
 * messages. */
VYR_ENGINE_API bool VYR_FeatureReadJson(IVYRFeature *feature, const char *text, size_t length, const char *origin,
                                        IVYRString *error);
}

#endif /* VYR_FEATUREFILE_H */
