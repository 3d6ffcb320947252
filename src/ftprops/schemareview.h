// The review of a feature type's schema before it is saved: what one schema
// (after) holds that another (before) did not, as a list of changes grouped
// by the page they belong to, and that list as plain text or JSON.
//
// The dialog reviews what OK is about to write: `before` is the feature type
// as it was when the dialog opened, `after` a scratch copy its pages were
// written into, and it passes what only it knows - which attribute row became
// which, and which typed names the format's rules changed. A file diff passes
// two schemas alone: an attribute name found in one of them only is removed or
// added, never taken for a rename.
//
// Names, types and values are bytes in the narrow code page, as the schema
// records hand them out; the plain text is too, the JSON is UTF-8.
#ifndef VYR_FTPROPS_SCHEMAREVIEW_H
#define VYR_FTPROPS_SCHEMAREVIEW_H

#include "ftprops/ftpropsformatinfo.h"
#include "ftprops/ftpropsschemainfo.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vyr {

// The pages, in the order the review lists them.
enum class ReviewGroup { General, UserAttributes, FormatAttributes, Parameters };

enum class ReviewKind {
    Changed, // a General setting or a parameter: old -> new
    Added, // a user attribute: new = its type
    Removed, // a user attribute: old = its type
    Renamed, // a user attribute: old name -> new name
    Retyped, // a user attribute: old type -> new type (and generic types)
    Moved, // a user attribute: old -> new position among those kept, from 1
    Legalised, // a typed name the format's rules changed: old -> new, detail = the rule
    Exposed, // a format attribute: new = its type
    Unexposed, // a format attribute no longer exposed: old = its type
    ListCount, // a format list attribute: old -> new number of elements exposed
};

// One change. `key` names what changed for a program: a General setting's
// fixed key ("name", "geometry" ... as ReviewGeneralKeys lists them), an
// attribute's name (the new one where it has two), a parameter's name.
// `subject` names it for a person: the setting's label, the attribute's
// name, the parameter's prompt in the user's language (its name when it has
// no prompt).
struct ReviewChange
{
    ReviewGroup group = ReviewGroup::General;
    ReviewKind kind = ReviewKind::Changed;
    std::string key;
    std::string subject;
    std::string oldValue;
    std::string newValue;
    // The generic types that go with a user attribute's types (Added,
    // Removed, Retyped), as stored or else as the format maps them; empty
    // when neither knows one.
    std::string oldGeneric;
    std::string newGeneric;
    // Legalised: the rule that changed the name, as the caller words it.
    std::string detail;

    bool operator==(const ReviewChange &) const = default;
};

// The keys of the General settings, in the order the review lists them.
// Database user is the owner prefix ("owner.table") of a database format's
// feature type name, which Name then gives without it.
inline constexpr const char *ReviewGeneralKeys[] = {
    "name",         "database_user",  "dataset",          "geometry",         "merge",
    "merge_filter", "merge_kind",     "merge_option",     "fanout",           "fanout_attribute",
    "dynamic",      "schema_sources", "additional_names", "dynamic_settings",
};

// For each user attribute the feature type held at open (by that name): its
// name now, or nothing when its row was deleted.
using AttributeRowIdentities = std::map<std::string, std::optional<std::string>>;

// A name typed for a user attribute that the format's rules made into
// another, and why.
struct NameLegalisation
{
    std::string typed;
    std::string legal;
    std::string rule;
};

// Every text a person reads, in one place, so that a caller can hand over
// their translations. A line template takes {subject}, {old}, {new} and
// {detail}; {old} and {new} of a typed change are each a type as `typed`
// writes it.
struct ReviewTexts
{
    std::string noChanges = "No changes.";
    std::string groupGeneral = "General";
    std::string groupUserAttributes = "User Attributes";
    std::string groupFormatAttributes = "Format Attributes";
    std::string groupParameters = "Parameters";
    // The labels of the General settings, in the order of ReviewGeneralKeys.
    std::vector<std::string> generalLabels = {
        "Name",
        "Database user",
        "Dataset",
        "Geometry",
        "Merge",
        "Merge filter",
        "Merge kind",
        "Merge option",
        "Fan-out",
        "Fan-out attribute",
        "Dynamic schema",
        "Schema sources",
        "Additional names",
        "Dynamic schema settings",
    };
    // The merge kinds by the number a schema keeps, as the General page
    // names them; another number is shown as it is.
    std::vector<std::string> mergeKinds = {"Wildcard", "Regular expression", "Exact name"};
    // The dynamic schema settings: the default ones as the General page
    // sums them up, others as what each of the three options says - how
    // feature types are named, which geometry they get, which attributes
    // they write - by the option's number, {text} the option's text. An
    // option without a phrase is shown by dynamicOther ({option}, {text}).
    std::string dynamicDefault = "Default: schema taken as the sources define it";
    std::vector<std::string> dynamicNames = {"names as the schema sources give them", "one feature type named {text}",
                                             "named by the value of attribute {text}"};
    std::vector<std::string> dynamicGeometry = {"geometry as each schema source gives it", "geometry always {text}"};
    std::vector<std::string> dynamicAttributes
        = {"every attribute of the sources", "only the attributes {text}", "every attribute except {text}"};
    std::string dynamicOther = "option {option} \"{text}\"";
    std::string yes = "Yes";
    std::string no = "No";
    std::string empty = "(empty)";
    // A type and the generic type it stands for ({type}, {generic}).
    std::string typed = "{type} ({generic})";
    std::string changed = "{subject}: {old} -> {new}";
    std::string added = "Added {subject}: {new}";
    std::string removed = "Removed {subject}: {old}";
    std::string renamed = "Renamed {old} -> {new}";
    std::string retyped = "Retyped {subject}: {old} -> {new}";
    std::string moved = "Moved {subject}: position {old} -> {new}";
    std::string legalised = "Name {old} made {new}: {detail}";
    std::string exposed = "Exposed {subject}: {new}";
    std::string unexposed = "No longer exposed {subject}";
    std::string listCount = "List {subject}: {old} -> {new} elements";
};

// What a review compares. The records are only read.
struct SchemaReviewInput
{
    SchemaReviewInput(const FTPropsSchemaInfo &before, const FTPropsSchemaInfo &after, const FTPropsFormatInfo &format)
        : before(before)
        , after(after)
        , format(format)
    {}

    const FTPropsSchemaInfo &before;
    const FTPropsSchemaInfo &after;
    // The format `after` is written in: its parameters are reviewed, its
    // list attributes counted, and its data types give the generic type of
    // a user attribute that stores none.
    const FTPropsFormatInfo &format;
    // The format `before` was in, when the dataset changed; null: `format`.
    const FTPropsFormatInfo *formatBefore = nullptr;
    // Without identities, user attributes are matched by name. With them, an
    // attribute's row decides what became of it; one not listed is matched
    // by name. A name now that a legalisation changed is followed to its
    // legal name.
    std::optional<AttributeRowIdentities> rows;
    std::vector<NameLegalisation> legalised;
    // A parameter's prompt as the user reads it; the prompt as the format
    // gives it when not set.
    std::function<std::string(const std::string &)> localisePrompt;
    // The labels and the values of General settings as a person reads them.
    const ReviewTexts *texts = nullptr;
};

// The changes by group in ReviewGroup order, and within a group:
//   General          - in the order of ReviewGeneralKeys;
//   User Attributes  - added, removed, renamed, retyped, moved, legalised,
//                      each kind in the attributes' order (removed ones in
//                      the order before, the others in the order after,
//                      legalisations in the order given);
//   Format Attributes- in the format's attribute order, then names the
//                      format does not know (before's, then after's);
//   Parameters       - in the format's parameter order, then those of
//                      `formatBefore` that `format` lacks.
// Empty when the schemas do not differ in anything reviewed.
std::vector<ReviewChange> ReviewSchemaChanges(const SchemaReviewInput &input);

// One line per change, under a heading line per group that has changes
// (the lines of a group indented by two blanks), each line ended by "\n";
// texts.noChanges and "\n" alone when there are none.
std::string ReviewAsText(const std::vector<ReviewChange> &changes, const ReviewTexts &texts = {});

// {"equal": bool, "general": [...], "user_attributes": [...],
//  "format_attributes": [...], "parameters": [...]}, every group present;
// each change {"kind", "key", "subject", "old", "new"} with "old_generic"
// and "new_generic" where a generic type is known and "detail" where there
// is one. Kinds are written in lower case with "_" between words
// ("list_count"). Texts are converted from the narrow code page, and what
// does not convert becomes U+FFFD; indented by two blanks.
std::string ReviewAsJson(const std::vector<ReviewChange> &changes);

} // namespace vyr

#endif // VYR_FTPROPS_SCHEMAREVIEW_H
