// What "Apply to Others" will do in each feature type it applies to, before
// anything is written: the changes, as the review of a schema lists them,
// and where the properties do not land as the edited feature type has them
// (a name taken there, a type or geometry its format lacks, a parameter it
// does not define). Model code: no widgets; texts are narrow strings.
//
// A preview is worked out by writing the selection into a scratch copy of
// each target with the same writer the apply itself uses, and comparing the
// copy with the target and with what was asked: the preview is what is
// written, whatever the writing rules are. The apply writes the edited
// feature type first, then the targets one after another, and what it
// writes into one (a name, above all) may depend on what it wrote before:
// the copies are written in that order, each seeing the copies before it.
#ifndef VYR_FTPROPSDLG_APPLYPREVIEW_H
#define VYR_FTPROPSDLG_APPLYPREVIEW_H

#include "ftprops/ftpropsformatinfo.h"
#include "ftprops/ftpropsschemainfo.h"
#include "ftprops/schemareview.h"
#include "ftpropsdlg/applyselection.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace vyr {

enum class ApplyConflictKind {
    NameTaken, // a user attribute stored under another name, its own being taken: asked -> result
    NameLegalised, // a user attribute stored under the name its format's rules give it: asked -> result
    TypeChanged, // a user attribute's type the target's format cannot take: asked -> result
    AttributeSkipped, // a user attribute that was not stored at all
    ParameterUndefined, // a chosen parameter the target's format does not define
    ParameterKept, // a chosen parameter the target keeps as it had it
    GeometryChanged, // a geometry the target's format lacks: asked -> result (may be empty)
    GeometryKept, // a geometry the target keeps as it had it (one of several it may have): asked -> result
};

struct ApplyConflict
{
    ApplyConflictKind kind = ApplyConflictKind::NameTaken;
    // The attribute's or parameter's name, or the geometry asked for.
    std::string subject;
    std::string asked;
    std::string result;

    bool operator==(const ApplyConflict &) const = default;
};

struct ApplyTargetPreview
{
    FTPropsSchemaInfo *target = nullptr;
    std::string longName;
    // False when no scratch copy of the target could be made: nothing is
    // known of what the apply does there.
    bool available = true;
    std::vector<ReviewChange> changes;
    std::vector<ApplyConflict> conflicts;
};

// What the edited feature type's pages hold of what may be applied.
struct ApplyAsked
{
    const FTPropsFormatInfo *format = nullptr;
    // The edited feature type itself, which the apply writes first.
    const FTPropsSchemaInfo *record = nullptr;
    // The edited feature type as its pages write it (a scratch copy): the
    // user attributes' types as asked.
    const FTPropsSchemaInfo *written = nullptr;
    std::map<std::string, std::string> parameters;
    std::string geometry;
};

// A record the apply has written by some point of its sequence, and the
// scratch copy that stands for it there.
struct ApplyStandIn
{
    const FTPropsSchemaInfo *record = nullptr;
    const FTPropsSchemaInfo *copy = nullptr;
};
using ApplyStandIns = std::vector<ApplyStandIn>;

struct ApplyPreviewInput;
std::vector<ApplyTargetPreview> PreviewApply(const ApplyPreviewInput &input);

// The previews worked out before, for the next ones of one preview window,
// while the edited feature type (as written) stays as it is. A target's
// preview depends on the properties chosen and on the targets written
// before it: it holds while those are as they were.
class ApplyPreviewCache
{
private:
    friend std::vector<ApplyTargetPreview> PreviewApply(const ApplyPreviewInput &input);
    struct Entry
    {
        const FTPropsSchemaInfo *target = nullptr;
        ScratchSchema written = NoScratchSchema();
        ApplyTargetPreview preview;
    };
    // The selection the entries were worked out for, without its targets.
    ApplySelection m_properties;
    // The chosen targets in the order they are written.
    std::vector<Entry> m_entries;
};

struct ApplyPreviewInput
{
    ApplySelection selection;
    ApplyAsked asked;
    // Only the targets the selection names are previewed, in this order.
    std::vector<FTPropsSchemaInfo *> targets;
    // A format by id; null when unknown.
    std::function<const FTPropsFormatInfo *(const std::string &)> formatOf;
    // Writes `selection` into a scratch copy as the apply does, with the
    // records written before it (and the one the copy stands for) as their
    // copies hold them.
    std::function<void(FTPropsSchemaInfo &, const ApplySelection &, const ApplyStandIns &)> write;
    std::function<std::string(const std::string &)> localisePrompt;
    const ReviewTexts *texts = nullptr;
    // Keeps what still holds from one call to the next; may be null.
    ApplyPreviewCache *cache = nullptr;
};

// The properties of a selection one by one, so that a person can leave any
// out: groups of General settings (by mask), attributes and parameters.
struct ApplyItem
{
    enum Kind { General, Attribute, DeleteAttribute, FormatAttribute, DeleteFormatAttribute, Parameter };
    Kind kind = General;
    unsigned mask = 0; // General
    std::string name; // the others

    bool operator==(const ApplyItem &) const = default;
};

std::vector<ApplyItem> ApplyItemsOf(const ApplySelection &selection);
// `selection` with only the `targets` and the `items` given (of its own).
ApplySelection NarrowSelection(const ApplySelection &selection, const StringList &targets,
                               const std::vector<ApplyItem> &items);

// The words of a conflict, with {subject}, {asked} and {result}.
struct ApplyConflictTexts
{
    std::string nameTaken = "Attribute {subject}: the name is taken there, it becomes {result}";
    std::string nameLegalised = "Attribute {subject}: its format names it {result}";
    std::string typeChanged = "Attribute {subject}: its format cannot take {asked}, it becomes {result}";
    std::string attributeSkipped = "Attribute {subject}: not stored there";
    std::string parameterUndefined = "Parameter {subject}: its format does not define it, skipped";
    std::string parameterKept = "Parameter {subject}: kept as it is there ({result})";
    std::string geometryChanged = "Geometry {asked}: its format lacks it, it becomes {result}";
    std::string geometryKept = "Geometry {asked}: kept as it is there ({result})";
    std::string empty = "(empty)";
};

std::string ApplyConflictAsText(const ApplyConflict &conflict, const ApplyConflictTexts &texts = {});

} // namespace vyr

#endif // VYR_FTPROPSDLG_APPLYPREVIEW_H
