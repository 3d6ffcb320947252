#include "model/actions.h"

#include <algorithm>

namespace vyr::model {

namespace {

const char *gridName(Grid grid)
{
    switch (grid) {
    case Grid::Attributes:
        return "User Attributes";
    case Grid::FormatAttributes:
        return "Format Attributes";
    case Grid::Parameters:
        return "Parameters";
    }
    return "?";
}

std::string rows(const Action &action)
{
    return action.count == 1 ? "row " + std::to_string(action.row)
                             : "rows " + std::to_string(action.row) + "-" + std::to_string(action.row + action.count - 1);
}

std::string quoted(const std::string &text)
{
    return "\"" + text + "\"";
}

} // namespace

std::string Action::describe() const
{
    const std::string variant = " [how " + std::to_string(how) + "]";
    switch (kind) {
    case ActionKind::RenameFeatureType:
        return "General: type the name " + quoted(text) + variant;
    case ActionKind::TypeNameAndStay:
        return "General: type the name " + quoted(text) + " and stay in the field" + variant;
    case ActionKind::Custom:
        return text + variant;
    case ActionKind::TypeDatabaseUser:
        return "General: type the database user " + quoted(text) + variant;
    case ActionKind::ChooseGeometry:
        return "General: choose the geometry " + text + variant;
    case ActionKind::TurnFanoutOn:
        return "General: fan-out on " + text + variant;
    case ActionKind::TurnFanoutOff:
        return "General: fan-out off" + variant;
    case ActionKind::MoveToDataset:
        return "General: move to the dataset " + text + variant;
    case ActionKind::MoveToDatasetAndBack:
        return "General: move to the dataset " + text + " and back" + variant;
    case ActionKind::RenameAttribute:
        return "User Attributes: rename " + rows(*this) + " to " + quoted(text) + variant;
    case ActionKind::AddAttribute:
        return "User Attributes: type " + quoted(text) + " in the new row" + variant;
    case ActionKind::DeleteAttributes:
        return "User Attributes: delete " + rows(*this) + variant;
    case ActionKind::MoveAttributes:
        return std::string("User Attributes: move ") + rows(*this) + (up ? " up" : " down") + variant;
    case ActionKind::SortAttributes:
        return "User Attributes: sort" + variant;
    case ActionKind::PasteAttributes: {
        std::string text = "User Attributes: paste";
        for (const Strings &line : lines)
            text += " [" + joined(line, "\\t") + "]";
        return text + variant;
    }
    case ActionKind::ChooseType:
        return "User Attributes: choose the type " + text + " in " + rows(*this) + variant;
    case ActionKind::TypeArgument:
        return "User Attributes: type " + quoted(text) + (which ? " as decimals" : " as width") + " in " + rows(*this)
            + variant;
    case ActionKind::ChooseDomain:
        return "User Attributes: domain dialog of " + rows(*this) + ": " + (text.empty() ? "OK unchanged" : quoted(text))
            + variant;
    case ActionKind::ToggleExposure:
        return "Format Attributes: Space on " + rows(*this) + variant;
    case ActionKind::SetListCount:
        return "Format Attributes: count " + quoted(text) + " in " + rows(*this) + variant;
    case ActionKind::CheckAll:
        return "Format Attributes: Check All" + variant;
    case ActionKind::ClearAll:
        return "Format Attributes: Clear All" + variant;
    case ActionKind::SetParameter:
        return "Parameters: " + name + " = " + quoted(text) + variant;
    case ActionKind::OpenColourUnchanged:
        return "Parameters: open the colour of " + name + " and confirm it unchanged" + variant;
    case ActionKind::CancelIconPicker:
        return "Parameters: open the icon picker of " + name + " and cancel it" + variant;
    case ActionKind::Undo:
        return std::string("Undo on ") + gridName(grid) + variant;
    case ActionKind::Redo:
        return std::string("Redo on ") + gridName(grid) + variant;
    case ActionKind::ApplyToOthers: {
        std::string text = "Apply to Others: to [" + joined(apply.targets) + "]";
        if (apply.geometry)
            text += " the geometry";
        if (!apply.attributes.empty())
            text += " attributes [" + joined(apply.attributes) + "]";
        if (!apply.deleteAttributes.empty())
            text += " deleting [" + joined(apply.deleteAttributes) + "]";
        if (!apply.parameters.empty())
            text += " parameters [" + joined(apply.parameters) + "]";
        return text + (apply.confirm ? ", confirmed" : ", not confirmed at OK") + variant;
    }
    }
    return "?";
}

std::string Ending::describe() const
{
    switch (kind) {
    case EndingKind::OkButton:
        return "end: OK button";
    case EndingKind::EnterKey:
        return "end: Enter where the keyboard is (Control+Enter in a grid)";
    case EndingKind::EnterInName:
        return "end: Enter in the name field";
    case EndingKind::Cancel:
        return "end: Cancel";
    case EndingKind::Escape:
        return "end: Escape";
    case EndingKind::CloseBox:
        return "end: the close box";
    }
    return "?";
}

namespace {

std::optional<Grid> gridOf(ActionKind kind)
{
    switch (kind) {
    case ActionKind::RenameAttribute:
    case ActionKind::AddAttribute:
    case ActionKind::DeleteAttributes:
    case ActionKind::MoveAttributes:
    case ActionKind::SortAttributes:
    case ActionKind::PasteAttributes:
    case ActionKind::ChooseType:
    case ActionKind::TypeArgument:
    case ActionKind::ChooseDomain:
        return Grid::Attributes;
    case ActionKind::ToggleExposure:
    case ActionKind::SetListCount:
    case ActionKind::CheckAll:
    case ActionKind::ClearAll:
        return Grid::FormatAttributes;
    case ActionKind::SetParameter:
    case ActionKind::OpenColourUnchanged:
    case ActionKind::CancelIconPicker:
        return Grid::Parameters;
    default:
        return std::nullopt;
    }
}

bool sameGrid(const PageState &a, const PageState &b, Grid grid)
{
    switch (grid) {
    case Grid::Attributes:
        return std::ranges::equal(a.attributes, b.attributes, [](const AttributeRow &x, const AttributeRow &y) {
            return x.name == y.name && x.cells == y.cells;
        });
    case Grid::FormatAttributes:
        return std::ranges::equal(a.formatAttributes, b.formatAttributes,
                                  [](const FormatAttributeRow &x, const FormatAttributeRow &y) {
                                      return x.ticked == y.ticked && x.count == y.count;
                                  });
    case Grid::Parameters:
        return a.parameters == b.parameters;
    }
    return false;
}

void change(SchemaModel &model, const Action &action);

} // namespace

void applyToModel(SchemaModel &model, const Action &action)
{
    const std::optional<Grid> grid = gridOf(action.kind);
    const PageState before = model.page();
    const SchemaModel::History history = grid ? model.history(*grid) : SchemaModel::History();
    change(model, action);
    if (grid && sameGrid(before, model.page(), *grid))
        model.setHistory(*grid, history);
}

namespace {

void change(SchemaModel &model, const Action &action)
{
    switch (action.kind) {
    case ActionKind::RenameFeatureType:
        model.typeName(action.text);
        break;
    case ActionKind::TypeNameAndStay:
        model.typeNameAndStay(action.text);
        break;
    case ActionKind::Custom:
        if (action.customModel)
            action.customModel(model);
        break;
    case ActionKind::TypeDatabaseUser:
        model.typeDatabaseUser(action.text);
        break;
    case ActionKind::ChooseGeometry:
        model.chooseGeometry(action.text);
        break;
    case ActionKind::TurnFanoutOn:
        model.setFanout(true);
        model.chooseFanoutAttribute(action.text);
        break;
    case ActionKind::TurnFanoutOff:
        model.setFanout(false);
        break;
    case ActionKind::MoveToDataset:
        model.moveTo(action.text);
        break;
    case ActionKind::MoveToDatasetAndBack: {
        const std::string home = model.page().format;
        model.moveTo(action.text);
        model.moveTo(home);
        break;
    }
    case ActionKind::RenameAttribute:
        model.renameRow(action.row, action.text);
        break;
    case ActionKind::AddAttribute:
        model.addRow(action.text);
        break;
    case ActionKind::DeleteAttributes:
        model.deleteRows(action.row, action.count);
        break;
    case ActionKind::MoveAttributes:
        model.moveRows(action.row, action.count, action.up);
        break;
    case ActionKind::SortAttributes:
        model.sortRows();
        break;
    case ActionKind::PasteAttributes:
        model.pasteRows(action.lines);
        break;
    case ActionKind::ChooseType:
        model.chooseType(action.row, action.count, action.text);
        break;
    case ActionKind::TypeArgument:
        model.typeArgument(action.row, action.count, action.which, action.text);
        break;
    case ActionKind::ChooseDomain:
        if (!action.text.empty())
            model.chooseDomain(action.row, action.text);
        break;
    case ActionKind::ToggleExposure:
        model.toggleExposure(action.row);
        break;
    case ActionKind::SetListCount:
        model.setCount(action.row, std::stoi(action.text));
        break;
    case ActionKind::CheckAll:
        model.exposeAll(true);
        break;
    case ActionKind::ClearAll:
        model.exposeAll(false);
        break;
    case ActionKind::SetParameter:
        model.setParameter(action.name, action.text);
        break;
    case ActionKind::OpenColourUnchanged:
    case ActionKind::CancelIconPicker:
        break;
    case ActionKind::Undo:
        model.undo(action.grid);
        break;
    case ActionKind::Redo:
        model.redo(action.grid);
        break;
    case ActionKind::ApplyToOthers:
        // The selection is cleared first; pages that refuse stop the prompt.
        model.setApplySelection(model.refusals().empty() ? action.apply : ApplySelection());
        break;
    }
}

} // namespace

} // namespace vyr::model
