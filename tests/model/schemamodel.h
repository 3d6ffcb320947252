// An independent model of one feature type in the feature type properties
// dialog, as the person sees and changes it: the pages' contents after each
// change, and what OK must save. Written from the product's rules of what
// OK saves, not from the dialog's code.
#ifndef VYR_TESTS_MODEL_SCHEMAMODEL_H
#define VYR_TESTS_MODEL_SCHEMAMODEL_H

#include "model/featuredata.h"
#include "model/formatmodel.h"
#include "model/namerules.h"

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vyr::model {

// The type columns of an attribute row as shown.
struct TypeCells
{
    std::string type;    // a template's name, or the text of a type the format cannot read
    std::string first;   // width, or a domain-taking argument
    std::string second;  // decimals
    std::string domain;  // the type's suffix; empty for none

    bool operator==(const TypeCells &) const = default;
};

struct AttributeRow
{
    std::string name;
    TypeCells cells;
    // The file's attribute the row shows (empty for a row added here), its
    // cells at opening and its stored type texts.
    std::string origin;
    TypeCells originCells;
    std::optional<std::string> storedNative, storedGeneric;
    // A type kept in the generic words: the format had no counterpart.
    bool genericOnly = false;

    bool fromFile() const { return !origin.empty(); }
    bool typeAsOpened() const { return fromFile() && cells == originCells && !genericOnly; }
    bool asOpened() const { return typeAsOpened() && name == origin; }
};

struct FormatAttributeRow
{
    std::string name;
    bool ticked = false;
    int count = 0;
    bool isList() const { return name.find("{}") != std::string::npos; }
};

// What the pages show for one format.
struct PageState
{
    std::string format;
    std::string name, user, geometry;
    bool namePending = false; // typed, the field not yet left
    bool fanout = false;
    std::string fanoutAttribute;
    std::vector<AttributeRow> attributes;
    std::vector<FormatAttributeRow> formatAttributes;
    std::map<std::string, std::string> parameters; // by name, untranslated
};

enum class Grid { Attributes, FormatAttributes, Parameters };

// One other feature type of the workspace.
struct OtherFeatureType
{
    FeatureData feature;
    const FormatModel *format = nullptr;
};

// What "Apply to Others" was told, as the prompt's answer.
struct ApplySelection
{
    Strings targets;
    bool geometry = false;
    Strings attributes, deleteAttributes;
    Strings parameters;
    bool confirm = true;
    bool empty() const { return targets.empty(); }
};

// Why OK cannot save, and a word its message must hold (the attribute it
// names; empty when the message need not name one).
struct Refusal
{
    Refusal(std::string why, std::string word = {}, std::string about = {})
        : reason(std::move(why))
        , mention(std::move(word))
        , parameter(std::move(about))
    {}

    std::string reason;
    std::string mention;
    std::string parameter; // the parameter at fault, when one is
};

// What OK must do.
struct Prediction
{
    std::vector<Refusal> mustRefuse;
    std::vector<Refusal> mayRefuse;
    Expectation edited;
    bool unchanged = false;  // nothing visible changed: the feature stays byte for byte
    std::map<std::size_t, Expectation> others; // by index, the others that change
    // Parameters that name attributes: the names they may hold after OK.
    std::map<std::string, std::set<std::string>> references;
};

class SchemaModel
{
public:
    // `formats` are the workspace's formats by name; `others` its other
    // feature types of the same role.
    SchemaModel(const FeatureData &feature, const FormatModel &format,
                std::map<std::string, const FormatModel *> formats, std::vector<OtherFeatureType> others,
                bool sourceEditingAllowed);

    const PageState &page() const { return m_page; }
    const FormatModel &format() const { return *m_formats.at(m_page.format); }
    const FormatModel &openedFormat() const { return *m_formats.at(m_opened.format); }
    const FeatureData &original() const { return m_original; }
    const std::vector<OtherFeatureType> &others() const { return m_others; }
    bool attributesEditable() const;
    bool isWriter() const { return !format().isSource(); }
    // The datasets a writer can move to, in the order the dialog lists them.
    Strings datasets() const;
    NameSet takenFeatureTypeNames(const FormatModel &format) const;
    Strings attributeNames() const;

    // General page.
    void typeName(const std::string &typed);
    // Typed without leaving the field: shown as typed, resolved by OK.
    void typeNameAndStay(const std::string &typed);
    void typeDatabaseUser(const std::string &typed);
    void chooseGeometry(const std::string &native);
    void setFanout(bool on);
    void chooseFanoutAttribute(const std::string &name);
    void moveTo(const std::string &formatName);

    // User Attributes page; rows are counted from 0, the new row excluded.
    void renameRow(std::size_t row, const std::string &typed);
    void addRow(const std::string &typed);
    void deleteRows(std::size_t first, std::size_t count);
    void moveRows(std::size_t first, std::size_t count, bool up);
    void sortRows();
    // Spreadsheet lines of name, type, width, decimals; answers the type
    // names it kept as pasted.
    Strings pasteRows(const std::vector<Strings> &lines);
    void chooseType(std::size_t first, std::size_t count, const std::string &type);
    void typeArgument(std::size_t first, std::size_t count, int which, const std::string &text);
    // A domain-taking argument given through its domain dialog.
    void chooseDomain(std::size_t row, const std::string &value);
    // Whether a row's argument `which` takes typed digits.
    bool takesNumber(std::size_t row, int which) const;
    bool takesDomain(std::size_t row) const;

    // Format Attributes page.
    void toggleExposure(std::size_t row);
    void setCount(std::size_t row, int count);
    void exposeAll(bool on);
    // A list's count the rules leave to the dialog (after ticking a row
    // whose count was cleared) is taken from the screen: -1 unknown, -2 at
    // least 1.
    void adoptShownCounts(const std::map<std::string, int> &shown);
    // Likewise the arguments of a row that already had the type chosen for
    // several rows: whether they keep their values or take the type's
    // defaults is the dialog's.
    void adoptShownArguments(const std::vector<TypeCells> &shown);
    // And the geometry a move leaves when the new format has no counterpart
    // for the old one.
    void adoptShownGeometry(const std::string &shown);
    static const std::string kAsShown;

    // Parameters page.
    void setParameter(const std::string &name, const std::string &value);
    bool isParameterEnabled(const std::string &name) const;
    const Parameter *disableSwitch() const;

    // Undo and redo of one grid; how many steps each can take.
    void undo(Grid grid);
    void redo(Grid grid);
    // Steps that can be taken back without touching another page (a
    // rename that carried references along is left alone).
    std::size_t undoSteps(Grid grid) const;
    std::size_t redoSteps(Grid grid) const;
    // A grid's undo and redo lists, kept around an action: one that
    // changed nothing is no step of the dialog's history, and leaves both
    // lists as they were.
    struct Step
    {
        PageState before;
        bool carriedReferences = false;
    };
    struct History
    {
        std::vector<Step> undo, redo;
    };
    History history(Grid grid) const
    {
        const auto found = m_history.find(grid);
        return found == m_history.end() ? History() : found->second;
    }
    void setHistory(Grid grid, History history) { m_history[grid] = std::move(history); }

    void setApplySelection(ApplySelection selection) { m_apply = std::move(selection); }
    const ApplySelection &applySelection() const { return m_apply; }
    // Why the pages refuse OK (or the apply prompt) now.
    std::vector<Refusal> refusals() const;
    // Why they may refuse it: a parameter naming an attribute that is gone,
    // which the rules let OK clear or refuse.
    std::vector<Refusal> possibleRefusals() const;

    Prediction predict() const;
    // For each user attribute the page showed at opening, the name of the
    // row that stands for it now; nothing when that row was deleted.
    std::map<std::string, std::optional<std::string>> rowIdentities() const;
    // The page's name and user as OK resolves them.
    std::pair<std::string, std::string> resolvedName() const;

private:
    void record(Grid grid);
    // Takes a step back (undo) or forth (redo) in one grid's history.
    void travel(Grid grid, bool back);
    void changed();
    void renameReferences(const std::string &from, const std::string &to);
    NameSet takenAttributeNames(std::size_t exceptRow) const;
    std::string legalTypedName(const std::string &typed, std::size_t exceptRow) const;
    PageState converted(const PageState &from, const FormatModel &target) const;
    PageState opened(const FeatureData &feature, const FormatModel &format) const;

    FeatureData m_original;
    std::map<std::string, const FormatModel *> m_formats;
    std::vector<OtherFeatureType> m_others;
    bool m_sourceEditing = false;
    PageState m_opened;
    PageState m_page;
    std::map<std::string, PageState> m_visited; // what each format's pages held when left
    std::map<Grid, History> m_history;
    ApplySelection m_apply;

    friend class Predictor;
};

// Fills the General page's name fields from a whole feature type name: a
// database's owner, before the first full stop, goes to the user field.
void showName(PageState &page, const std::string &whole, bool database);
bool switchedRowsHoldAValue(const PageState &page, const FormatModel &format);
// The geometry the dialog shows for a feature in `format` (the native
// names in order, joined by blanks for a format of several).
std::string geometryOf(const FeatureData &feature, const FormatModel &format);
// A geometry moved from one format to another through its generic name.
std::string translatedGeometry(const std::string &geometry, const FormatModel &from, const FormatModel &to);
// The cells a type fills.
TypeCells cellsOf(const TypeText &type);
// The type a row's cells compose, in the shown words.
std::string composedType(const TypeCells &cells);
// The user attributes of a feature, in the order the page lists them.
Strings userAttributeNames(const FeatureData &feature);

} // namespace vyr::model

#endif // VYR_TESTS_MODEL_SCHEMAMODEL_H
