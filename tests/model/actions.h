// What a person does in the feature type properties dialog, one step at a
// time: the steps a random sequence is made of, how each changes the
// model, how each is done with keys and the mouse, and how a sequence ends.
#ifndef VYR_TESTS_MODEL_ACTIONS_H
#define VYR_TESTS_MODEL_ACTIONS_H

#include "model/schemamodel.h"

#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace vyr::model {

class DialogDriver;

enum class ActionKind {
    RenameFeatureType, // General page: the name typed, the field left by Tab
    TypeNameAndStay,   // the name typed, the keyboard left in the field
    TypeDatabaseUser,
    ChooseGeometry,
    TurnFanoutOn,      // with an attribute chosen
    TurnFanoutOff,
    MoveToDataset,
    MoveToDatasetAndBack,
    RenameAttribute,   // User Attributes page
    AddAttribute,
    DeleteAttributes,
    MoveAttributes,
    SortAttributes,
    PasteAttributes,
    ChooseType,
    TypeArgument,
    ChooseDomain,
    ToggleExposure,    // Format Attributes page
    SetListCount,
    CheckAll,
    ClearAll,
    SetParameter,      // Parameters page
    OpenColourUnchanged,
    CancelIconPicker,  // the icon picker opened and cancelled
    Undo,
    Redo,
    ApplyToOthers,
    Custom,            // a named case's own step (see Action::custom)
};

struct Action
{
    ActionKind kind = ActionKind::RenameFeatureType;
    std::string text;        // what is typed or chosen
    std::string name;        // a parameter's name
    std::size_t row = 0;     // the first row
    std::size_t count = 1;   // how many rows
    int which = 0;           // an argument (0 width, 1 decimals)
    int how = 0;             // which keys or mouse do it
    bool up = false;
    Grid grid = Grid::Attributes;
    std::vector<Strings> lines; // pasted rows
    ApplySelection apply;
    // A named case's own step: what it does in the dialog (reporting what
    // it finds through DialogDriver::finding) and how it changes the model.
    std::function<void(DialogDriver &)> custom;
    std::function<void(SchemaModel &)> customModel;
    // The step changes the screen in ways the model does not follow; the
    // screen is no longer compared and only Cancel may end the session.
    bool unmodelled = false;

    std::string describe() const;
};

enum class EndingKind { OkButton, EnterKey, EnterInName, Cancel, Escape, CloseBox };

struct Ending
{
    EndingKind kind = EndingKind::OkButton;
    bool isOk() const { return kind == EndingKind::OkButton || kind == EndingKind::EnterKey || kind == EndingKind::EnterInName; }
    std::string describe() const;
};

// Changes the model as the action changes what the pages show.
void applyToModel(SchemaModel &model, const Action &action);

// Does the action in the dialog; `model` is the state before it.
void perform(DialogDriver &driver, const SchemaModel &model, const Action &action);
// Ends the dialog (answering OK's question about the others as the model's
// apply selection says).
void performEnding(DialogDriver &driver, const SchemaModel &model, const Ending &ending);

// A random action that the model's state allows, or none.
std::optional<Action> randomAction(const SchemaModel &model, std::mt19937_64 &random);
Ending randomEnding(const SchemaModel &model, std::mt19937_64 &random);

} // namespace vyr::model

#endif // VYR_TESTS_MODEL_ACTIONS_H
