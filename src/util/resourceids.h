// Every resource the code asks the resource library for.
//
// One row per resource: kind, ID, name. A dialog that needs a new template,
// text or image adds a row here and the files under resources/<language>/;
// the resource tests check every row in every language's library, so a
// resource cannot be missing from one of them unnoticed.
//
// Files in a language's folder: strings.json (ID to text), templates/<ID>.ui,
// bitmaps/<ID>.png, icons/<ID>.png and accelerators/<ID>.json.
#ifndef VYR_UTIL_RESOURCEIDS_H
#define VYR_UTIL_RESOURCEIDS_H

namespace vyr {

enum class ResourceKind { String, Template, Bitmap, Icon, Accelerators };

#define VYR_RESOURCE_TABLE(X)                                                                                          \
    X(Icon, 128, ApplicationIcon)                                                                                      \
    X(Template, 130, AboutDialog)                                                                                      \
    X(String, 131, AboutBuild)                                                                                         \
    X(String, 132, AboutInstallDirectory)                                                                              \
    X(String, 133, AboutResourceLibrary)                                                                               \
    X(String, 134, AboutLanguage)                                                                                      \
    X(String, 135, AboutNoResourceLibrary)                                                                             \
    X(Accelerators, 136, AboutAccelerators)                                                                            \
    X(Template, 337, FeatTypePropsDialog)                                                                              \
    X(Template, 338, GeneralPageSource)                                                                                \
    X(Template, 339, AttributesPage)                                                                                   \
    X(Template, 340, FormatAttributesPage)                                                                             \
    X(Template, 343, ParametersPage)                                                                                   \
    X(Template, 344, ReviewChangesDialog)                                                                              \
    X(Template, 348, ApplyPreviewDialog)                                                                               \
    X(Template, 514, GeneralPageDest)                                                                                  \
    X(Template, 552, GridEditDialog)                                                                                   \
    X(Template, 575, RangeDomainDialog)                                                                                \
    X(Template, 1139, CodedDomainDialog)                                                                               \
    X(Bitmap, 196, GeneralSourceTab)                                                                                   \
    X(String, 687, NoAttributeTypes)                                                                                   \
    X(Bitmap, 197, GeneralDestTab)                                                                                     \
    X(Bitmap, 202, ParametersTab)                                                                                      \
    X(Bitmap, 302, AttributesTab)                                                                                      \
    X(Bitmap, 483, GeneralDestTabPlain)                                                                                \
    X(Bitmap, 484, GeneralSourceTabPlain)                                                                              \
    X(Bitmap, 647, GeneralDestTabFanout)                                                                               \
    X(Bitmap, 649, GeneralSourceTabMerged)                                                                             \
    X(Bitmap, 654, GeneralDestTabPlainFanout)                                                                          \
    X(Bitmap, 655, GeneralSourceTabPlainMerged)                                                                        \
    X(String, 33046, AttributeNameRequired)                                                                            \
    X(String, 33050, MultipleGeometries)                                                                               \
    X(String, 33051, NameRequired)                                                                                     \
    X(String, 33052, DatasetRequired)                                                                                  \
    X(String, 33053, GeometryRequired)                                                                                 \
    X(String, 33054, FanoutAttributeRequired)                                                                          \
    X(String, 33055, MergeFilterRequired)                                                                              \
    X(String, 33056, MergeKindRequired)                                                                                \
    X(String, 33057, MergeKindWildcard)                                                                                \
    X(String, 33058, MergeKindRegularExpression)                                                                       \
    X(String, 33059, MergeKindExact)                                                                                   \
    X(String, 33158, BrowseEditLabel)                                                                                  \
    X(String, 33159, BrowseViewLabel)                                                                                  \
    X(String, 33160, DomainNameRequired)                                                                               \
    X(String, 33257, SchemaSourceRequired)                                                                             \
    X(String, 33258, SchemaSourcesTitle)                                                                               \
    X(String, 33263, DynamicSettingsDefault)                                                                           \
    X(String, 33264, DynamicSettingsCustom)                                                                            \
    X(String, 33265, NoSchemaSourceFormats)                                                                            \
    X(String, 33228, GeodatabasePickerTitle)                                                                           \
    X(String, 33229, GeodatabasePickerPrompt)                                                                          \
    X(String, 59398, Yes)                                                                                              \
    X(String, 59399, No)                                                                                               \
    X(String, 59419, ApplyTitle)                                                                                       \
    X(String, 59420, ApplyFeatureTypes)                                                                                \
    X(String, 59421, ApplyDataset)                                                                                     \
    X(String, 59422, ApplyGeometry)                                                                                    \
    X(String, 59423, ApplyDatabaseUser)                                                                                \
    X(String, 59424, ApplyFanout)                                                                                      \
    X(String, 59425, ApplyMerge)                                                                                       \
    X(String, 59426, ApplyAttributes)                                                                                  \
    X(String, 59427, ApplyDeleteAttributes)                                                                            \
    X(String, 59428, ApplyFormatAttributes)                                                                            \
    X(String, 59429, ApplyDeleteFormatAttributes)                                                                      \
    X(String, 59430, ApplyParameters)                                                                                  \
    X(String, 59431, ApplyConfirm)                                                                                     \
    X(String, 59446, GeneralTabTitle)                                                                                  \
    X(String, 59447, AttributesTabTitle)                                                                               \
    X(String, 59448, FormatAttributesTabTitle)                                                                         \
    X(String, 59449, ParametersTabTitle)                                                                               \
    X(String, 59484, StringListTitle)                                                                                  \
    X(String, 59487, StringListLabel)                                                                                  \
    X(String, 59523, DomainCodeRequired)                                                                               \
    X(String, 59524, DomainRangeInvalid)                                                                               \
    X(String, 59525, DomainCodeRepeated)                                                                               \
    X(String, 59526, CodeHeading)                                                                                      \
    X(String, 59527, DescriptionHeading)                                                                               \
    X(String, 59528, StringMapTitle)                                                                                   \
    X(String, 59529, StringMapLabel)                                                                                   \
    X(String, 59530, StringSetTitle)                                                                                   \
    X(String, 59531, StringSetLabel)                                                                                   \
    X(String, 59532, GridEditIncompleteNote)                                                                           \
    X(String, 59533, DomainRangeInverted)                                                                              \
    X(String, 59690, ApplyDynamicSettings)                                                                             \
    X(String, 59534, DomainRequired)                                                                                   \
    X(String, 59535, StringSetValueRepeated)                                                                           \
    X(String, 61256, NameHeading)                                                                                      \
    X(String, 61257, TypeHeading)                                                                                      \
    X(String, 61258, WidthHeading)                                                                                     \
    X(String, 61259, DecimalsHeading)                                                                                  \
    X(String, 61260, DomainHeading)                                                                                    \
    X(String, 61261, ParameterPromptHeading)                                                                           \
    X(String, 61262, ParameterValueHeading)                                                                            \
    X(String, 61263, ExposedHeading)                                                                                   \
    X(String, 61264, FormatAttributeHeading)                                                                           \
    X(String, 61265, ListElementsHeading)                                                                              \
    X(String, 61266, UnmappedPastedTypes)                                                                              \
    X(String, 61267, NameChangedBy)                                                                                    \
    X(String, 61268, NameChangedCase)                                                                                  \
    X(String, 61269, NameChangedCharacters)                                                                            \
    X(String, 61270, NameChangedLength)                                                                                \
    X(String, 61271, NameChangedNumber)                                                                                \
    X(String, 61272, NameChangedReserved)                                                                              \
    X(String, 61273, NameChangedPrefix)                                                                                \
    X(String, 61280, AttributeTypeRequired)                                                                            \
    X(String, 61281, AttributeArgumentRequired)                                                                        \
    X(String, 61282, UnknownAttributeType)                                                                             \
    X(String, 61283, NameControlCharacters)                                                                            \
    X(String, 61284, WholeNumberRequired)                                                                              \
    X(String, 61285, FanoutAttributeGone)                                                                              \
    X(String, 61286, ParameterAttributeGone)                                                                           \
    X(String, 61287, SwitchNeedsValue)                                                                                 \
    X(String, 61288, ApplyNoOthers)                                                                                    \
    X(String, 61289, TypeKeptAsGeneric)                                                                                \
    X(String, 61290, WholeNumberOrEmptyRequired)                                                                       \
    X(String, 61291, AttributeNameRepeated)                                                                            \
    X(String, 61292, ChoiceRequired)                                                                                   \
    X(String, 61293, AttributeChoiceRequired)                                                                          \
    X(String, 61294, ReviewNoChanges)                                                                                  \
    X(String, 61295, ReviewGroupGeneral)                                                                               \
    X(String, 61296, ReviewGroupUserAttributes)                                                                        \
    X(String, 61297, ReviewGroupFormatAttributes)                                                                      \
    X(String, 61298, ReviewGroupParameters)                                                                            \
    X(String, 61299, ReviewGeneralLabels)                                                                              \
    X(String, 61300, ReviewYes)                                                                                        \
    X(String, 61301, ReviewNo)                                                                                         \
    X(String, 61302, ReviewEmpty)                                                                                      \
    X(String, 61303, ReviewTyped)                                                                                      \
    X(String, 61304, ReviewChanged)                                                                                    \
    X(String, 61305, ReviewAdded)                                                                                      \
    X(String, 61306, ReviewRemoved)                                                                                    \
    X(String, 61307, ReviewRenamed)                                                                                    \
    X(String, 61308, ReviewRetyped)                                                                                    \
    X(String, 61309, ReviewMoved)                                                                                      \
    X(String, 61310, ReviewLegalised)                                                                                  \
    X(String, 61311, ReviewExposed)                                                                                    \
    X(String, 61312, ReviewUnexposed)                                                                                  \
    X(String, 61313, ReviewListCount)                                                                                  \
    X(String, 61314, ReviewUnavailable)                                                                                \
    X(String, 61315, ReviewDynamicNames)                                                                               \
    X(String, 61316, ReviewDynamicGeometry)                                                                            \
    X(String, 61317, ReviewDynamicAttributes)                                                                          \
    X(String, 61318, ReviewDynamicOther)                                                                               \
    X(String, 61340, ApplyItemAttribute)                                                                               \
    X(String, 61341, ApplyItemDeleteAttribute)                                                                         \
    X(String, 61342, ApplyItemFormatAttribute)                                                                         \
    X(String, 61343, ApplyItemDeleteFormatAttribute)                                                                   \
    X(String, 61344, ApplyItemParameter)                                                                               \
    X(String, 61345, ApplyTargetConflicts)                                                                             \
    X(String, 61346, ApplyConflictNameTaken)                                                                           \
    X(String, 61347, ApplyConflictTypeChanged)                                                                         \
    X(String, 61348, ApplyConflictAttributeSkipped)                                                                    \
    X(String, 61349, ApplyConflictParameterUndefined)                                                                  \
    X(String, 61350, ApplyConflictParameterKept)                                                                       \
    X(String, 61351, ApplyConflictGeometryChanged)                                                                     \
    X(String, 61352, ApplyTargetLeftOut)                                                                               \
    X(String, 61353, ApplyPreviewUnavailable)                                                                          \
    X(String, 61354, ApplyConflictNameLegalised)                                                                       \
    X(String, 61355, ApplyConflictGeometryKept)

namespace res {
#define VYR_RESOURCE_ID(kind, id, name) inline constexpr unsigned name = id;
VYR_RESOURCE_TABLE(VYR_RESOURCE_ID)
#undef VYR_RESOURCE_ID
} // namespace res

struct ResourceEntry
{
    ResourceKind kind;
    unsigned id;
    const char *name;
};

inline constexpr ResourceEntry kResourceTable[] = {
#define VYR_RESOURCE_ENTRY(kind, id, name) {ResourceKind::kind, id, #name},
    VYR_RESOURCE_TABLE(VYR_RESOURCE_ENTRY)
#undef VYR_RESOURCE_ENTRY
};

} // namespace vyr

#endif // VYR_UTIL_RESOURCEIDS_H
