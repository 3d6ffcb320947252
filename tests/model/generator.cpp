// Random steps a person might take, drawn from what the pages allow at the
// time: the model's state decides which actions make sense, so a seed
// gives the same sequence every time.
#include "model/actions.h"

#include "util/listpacking.h"

#include <algorithm>

namespace vyr::model {

namespace {

using Random = std::mt19937_64;

int uniform(Random &random, int low, int high)
{
    return std::uniform_int_distribution<int>(low, high)(random);
}

bool chance(Random &random, double p)
{
    return std::bernoulli_distribution(p)(random);
}

template <class T>
const T &pick(Random &random, const std::vector<T> &items)
{
    return items[std::size_t(uniform(random, 0, int(items.size()) - 1))];
}

std::string word(Random &random, const std::string &first, const std::string &rest, int longest)
{
    std::string text(1, first[std::size_t(uniform(random, 0, int(first.size()) - 1))]);
    const int length = uniform(random, 0, longest - 1);
    for (int i = 0; i < length; ++i)
        text += rest[std::size_t(uniform(random, 0, int(rest.size()) - 1))];
    return text;
}

const std::string kLetters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";

std::string featureTypeName(const SchemaModel &model, Random &random)
{
    const FormatModel &format = model.format();
    if (chance(random, 0.04))
        return std::string(std::size_t(uniform(random, 1, 3)), ' ');
    const Strings allowed = format.list("ALLOWED_FEAT_TYPES");
    if (!allowed.empty() && chance(random, 0.7))
        return pick(random, allowed);
    if (chance(random, 0.1)) {
        // Another feature type's name, which the format must make unique.
        // A database's names hold their owner before a full stop, which in
        // the name field alone the rules leave open: those are not typed.
        const auto taken = model.takenFeatureTypeNames(format);
        if (!taken.empty()) {
            const std::string name = *std::next(taken.begin(), uniform(random, 0, int(taken.size()) - 1));
            if (!format.isDatabase() || name.find('.') == std::string::npos)
                return name;
        }
    }
    std::string extra = format.isDatabase() ? " -" : " -:*?/[]'";
    return word(random, kLetters, kLetters + "0123456789_" + extra, 14);
}

std::string attributeName(const SchemaModel &model, Random &random)
{
    const Strings names = model.attributeNames();
    if (model.format().isSource()) {
        // A reader's names are left as typed, so a name typed twice would
        // be two rows of one name, which no file can hold and the rules do
        // not settle: such names are not typed.
        for (;;) {
            const std::string name = word(random, kLetters, kLetters + "0123456789_", 12);
            if (std::find(names.begin(), names.end(), name) == names.end())
                return name;
        }
    }
    if (!names.empty() && chance(random, 0.1))
        return pick(random, names);
    if (chance(random, 0.05)) {
        const Strings reserved = model.format().list("DEST_ILLEGAL_ATTR_LIST");
        if (!reserved.empty())
            return pick(random, reserved);
    }
    return word(random, "abcdefghijklmnopqrstuwxzABCDEFGHIJKLMNOPQRSTUWXZ", kLetters + "0123456789_ -", 14);
}

std::string digits(Random &random, int longest)
{
    return word(random, "123456789", "0123456789", longest);
}

std::optional<Action> fromGeneral(const SchemaModel &model, Random &random, int choice)
{
    const PageState &page = model.page();
    const FormatModel &format = model.format();
    Action action;
    action.how = uniform(random, 0, 1);
    switch (choice) {
    case 0:
        // Fan-out disables the name; a format without fan-out leaves it so.
        if (model.isWriter() && page.fanout)
            return std::nullopt;
        if (!model.isWriter())
            return std::nullopt; // a reader's name is read-only unless the setting says otherwise
        action.kind = ActionKind::RenameFeatureType;
        action.text = featureTypeName(model, random);
        return action;
    case 1:
        if (!model.isWriter() || !format.isDatabase())
            return std::nullopt;
        action.kind = ActionKind::TypeDatabaseUser;
        action.text = chance(random, 0.2) ? std::string() : word(random, kLetters, kLetters + "_ ", 10);
        return action;
    case 2: {
        if (!model.isWriter() || format.supportsMultiGeom())
            return std::nullopt;
        Strings choices = format.nativeGeometries();
        std::erase(choices, page.geometry);
        if (choices.empty())
            return std::nullopt;
        action.kind = ActionKind::ChooseGeometry;
        action.text = pick(random, choices);
        return action;
    }
    case 3:
        if (!model.isWriter() || !format.supportsFanout() || model.attributeNames().empty())
            return std::nullopt;
        if (page.fanout) {
            action.kind = ActionKind::TurnFanoutOff;
        } else {
            action.kind = ActionKind::TurnFanoutOn;
            action.text = pick(random, model.attributeNames());
        }
        return action;
    case 4: {
        if (!model.isWriter())
            return std::nullopt;
        Strings datasets = model.datasets();
        std::erase(datasets, page.format);
        if (datasets.empty())
            return std::nullopt;
        action.text = pick(random, datasets);
        const bool home = page.format == model.openedFormat().name();
        action.kind = home && chance(random, 0.6) ? ActionKind::MoveToDatasetAndBack : ActionKind::MoveToDataset;
        if (action.kind == ActionKind::MoveToDataset && !home)
            return std::nullopt; // one move away per sequence, so what was left is known
        return action;
    }
    }
    return std::nullopt;
}

std::vector<Strings> pastedLines(const SchemaModel &model, Random &random)
{
    const TypeMappings &types = model.format().types();
    const Strings offered = types.offeredNames();
    std::vector<Strings> lines;
    const int count = uniform(random, 1, 3);
    for (int i = 0; i < count; ++i) {
        Strings line{attributeName(model, random)};
        const auto same = [&line](const Strings &other) { return other.front() == line.front(); };
        if (model.format().isSource() && std::any_of(lines.begin(), lines.end(), same))
            continue;
        if (chance(random, 0.05) || offered.empty()) {
            line.push_back("jsonb"); // no format has it: kept as pasted and named
        } else {
            const TypeTemplate *type = types.nativeTemplate(pick(random, offered));
            line.push_back(type->name);
            for (std::size_t a = 0; a < type->args.size() && a < 2; ++a)
                line.push_back(isDomainKind(type->args[a].kind) ? word(random, kLetters, kLetters, 8) : digits(random, 2));
        }
        lines.push_back(line);
    }
    return lines;
}

std::optional<Action> fromAttributes(const SchemaModel &model, Random &random, int choice)
{
    if (!model.attributesEditable())
        return std::nullopt;
    const std::size_t rows = model.page().attributes.size();
    Action action;
    action.how = uniform(random, 0, 1);
    const auto someRows = [&](std::size_t most) {
        action.row = std::size_t(uniform(random, 0, int(rows) - 1));
        action.count = std::size_t(uniform(random, 1, int(std::min(most, rows - action.row))));
    };
    switch (choice) {
    case 0:
        if (!rows)
            return std::nullopt;
        action.kind = ActionKind::RenameAttribute;
        action.row = std::size_t(uniform(random, 0, int(rows) - 1));
        action.text = chance(random, 0.04) ? std::string() : attributeName(model, random);
        return action;
    case 1:
        action.kind = ActionKind::AddAttribute;
        action.text = attributeName(model, random);
        return action;
    case 2:
        if (!rows)
            return std::nullopt;
        action.kind = ActionKind::DeleteAttributes;
        action.how = uniform(random, 0, 2);
        someRows(3);
        return action;
    case 3: {
        if (rows < 2)
            return std::nullopt;
        action.kind = ActionKind::MoveAttributes;
        action.up = chance(random, 0.5);
        action.count = std::size_t(uniform(random, 1, int(std::min<std::size_t>(2, rows - 1))));
        action.row = action.up ? std::size_t(uniform(random, 1, int(rows - action.count)))
                               : std::size_t(uniform(random, 0, int(rows - action.count) - 1));
        return action;
    }
    case 4: {
        // Where a row without a name sorts is not settled (first or last).
        const auto unnamed = [](const AttributeRow &row) { return row.name.empty(); };
        const auto &all = model.page().attributes;
        if (rows < 2 || std::any_of(all.begin(), all.end(), unnamed))
            return std::nullopt;
        action.kind = ActionKind::SortAttributes;
        return action;
    }
    case 5:
        action.kind = ActionKind::PasteAttributes;
        action.lines = pastedLines(model, random);
        return action;
    case 6: {
        const Strings offered = model.format().types().offeredNames();
        if (!rows || offered.empty())
            return std::nullopt;
        action.kind = ActionKind::ChooseType;
        someRows(3);
        action.text = pick(random, offered);
        return action;
    }
    case 7: {
        action.kind = ActionKind::TypeArgument;
        action.which = uniform(random, 0, 1);
        std::vector<std::size_t> candidates;
        for (std::size_t row = 0; row < rows; ++row) {
            if (model.takesNumber(row, action.which))
                candidates.push_back(row);
        }
        if (candidates.empty())
            return std::nullopt;
        // The keyboard ends on the last selected row, where the digits are
        // typed: it must take them.
        const std::size_t last = pick(random, candidates);
        action.count = last > 0 && chance(random, 0.5) ? 2 : 1;
        action.row = last + 1 - action.count;
        action.text = chance(random, 0.05) ? std::string() : digits(random, 3);
        return action;
    }
    case 8: {
        std::vector<std::size_t> candidates;
        for (std::size_t row = 0; row < rows; ++row) {
            if (model.takesDomain(row))
                candidates.push_back(row);
        }
        if (candidates.empty())
            return std::nullopt;
        action.kind = ActionKind::ChooseDomain;
        action.row = pick(random, candidates);
        // OK on an unchanged dialog needs a name there already.
        const bool named = !model.page().attributes[action.row].cells.first.empty();
        action.text = named && chance(random, 0.4) ? std::string() : word(random, kLetters, kLetters, 10);
        return action;
    }
    }
    return std::nullopt;
}

std::optional<Action> fromFormatAttributes(const SchemaModel &model, Random &random, int choice)
{
    const auto &rows = model.page().formatAttributes;
    if (rows.empty())
        return std::nullopt;
    Action action;
    action.how = uniform(random, 0, 1);
    switch (choice) {
    case 0:
        action.kind = ActionKind::ToggleExposure;
        action.row = std::size_t(uniform(random, 0, int(rows.size()) - 1));
        return action;
    case 1: {
        std::vector<std::size_t> lists;
        for (std::size_t row = 0; row < rows.size(); ++row) {
            if (rows[row].isList() && rows[row].ticked)
                lists.push_back(row);
        }
        if (lists.empty())
            return std::nullopt;
        action.kind = ActionKind::SetListCount;
        action.row = pick(random, lists);
        action.text = chance(random, 0.1) ? "0" : std::to_string(uniform(random, 1, 12));
        return action;
    }
    case 2:
        action.kind = chance(random, 0.5) ? ActionKind::CheckAll : ActionKind::ClearAll;
        return action;
    }
    return std::nullopt;
}

std::optional<Action> fromParameters(const SchemaModel &model, Random &random)
{
    std::vector<const Parameter *> candidates;
    for (const Parameter &parameter : model.format().parameters()) {
        if (model.isParameterEnabled(parameter.name))
            candidates.push_back(&parameter);
    }
    if (candidates.empty())
        return std::nullopt;
    const Parameter &parameter = *pick(random, candidates);
    const std::string current = model.page().parameters.at(parameter.name);
    Action action;
    action.kind = ActionKind::SetParameter;
    action.name = parameter.name;
    action.how = uniform(random, 0, 1);
    const bool empty = parameter.optional && chance(random, 0.15);
    const std::string &type = parameter.type;
    if (type == "ICONPICK") {
        // The picker's own choices are the prompter's; cancelling it must
        // leave the value as it was.
        action.kind = ActionKind::CancelIconPicker;
        return action;
    }
    if (type == "CHOICE") {
        action.text = empty ? std::string() : pick(random, parameter.choices);
    } else if (type == "DISABLE") {
        action.text = current == "No" ? "Yes" : "No";
    } else if (type == "INTEGER") {
        action.text = empty ? std::string() : digits(random, 5);
    } else if (type == "ATTR") {
        const Strings names = model.attributeNames();
        if (names.empty() && !parameter.optional)
            return std::nullopt;
        action.text = empty || names.empty() ? std::string() : pick(random, names);
    } else if (type == "ATTRLIST" || type == "ATTRLIST_COMMAS") {
        if (model.attributeNames().empty())
            return std::nullopt; // a selection of nothing may not open at all
        Strings chosen;
        for (const std::string &name : model.attributeNames()) {
            if (chance(random, 0.4) && std::find(chosen.begin(), chosen.end(), name) == chosen.end())
                chosen.push_back(name);
        }
        action.text = joined(chosen, ",");
    } else if (type == "COLOR_PICK") {
        if (chance(random, 0.4)) {
            action.kind = ActionKind::OpenColourUnchanged;
            return action;
        }
        action.text = pick(random, Strings{"1,0,0", "0,1,0", "0,0,1", "1,1,0", "0,0,0", "1,1,1"});
    } else {
        action.text = empty ? std::string() : word(random, kLetters, kLetters + "0123456789 ,", 12);
    }
    if (action.text == current)
        return std::nullopt;
    return action;
}

std::optional<Action> fromHistory(const SchemaModel &model, Random &random)
{
    std::vector<std::pair<Grid, bool>> choices;
    for (Grid grid : {Grid::Attributes, Grid::FormatAttributes, Grid::Parameters}) {
        if (model.undoSteps(grid))
            choices.emplace_back(grid, true);
        if (model.redoSteps(grid))
            choices.emplace_back(grid, false);
    }
    if (choices.empty())
        return std::nullopt;
    const auto &[grid, undo] = pick(random, choices);
    Action action;
    action.kind = undo ? ActionKind::Undo : ActionKind::Redo;
    action.grid = grid;
    action.how = uniform(random, 0, 1);
    return action;
}

std::optional<Action> applyToOthers(const SchemaModel &model, Random &random)
{
    // Pages that may or may not refuse leave the prompt uncertain.
    if (!model.isWriter() || model.others().empty() || !model.possibleRefusals().empty())
        return std::nullopt;
    Action action;
    action.kind = ActionKind::ApplyToOthers;
    action.how = uniform(random, 0, 1);
    ApplySelection &apply = action.apply;
    const bool attributes = model.format().hasUserAttributes() && chance(random, 0.6);
    if (attributes) {
        for (const std::string &name : model.attributeNames()) {
            if (chance(random, 0.35))
                apply.attributes.push_back(name);
        }
        const Strings before = userAttributeNames(model.original());
        const Strings now = model.attributeNames();
        for (const std::string &name : before) {
            if (std::find(now.begin(), now.end(), name) == now.end() && chance(random, 0.5))
                apply.deleteAttributes.push_back(name);
        }
    }
    for (const OtherFeatureType &other : model.others()) {
        // A target without user attributes has nowhere to put them.
        if (attributes && !other.format->hasUserAttributes())
            continue;
        if (chance(random, 0.3))
            apply.targets.push_back(other.feature.featureType);
    }
    if (apply.targets.empty())
        return std::nullopt;
    apply.geometry = chance(random, 0.4);
    for (const Parameter &parameter : model.format().parameters()) {
        if (parameter.type != "DISABLE" && chance(random, 0.2))
            apply.parameters.push_back(parameter.name);
    }
    apply.confirm = chance(random, 0.8);
    return action;
}

} // namespace

std::optional<Action> randomAction(const SchemaModel &model, Random &random)
{
    for (int attempt = 0; attempt < 40; ++attempt) {
        const int roll = uniform(random, 0, 99);
        std::optional<Action> action;
        if (roll < 18)
            action = fromGeneral(model, random, uniform(random, 0, 4));
        else if (roll < 58)
            action = fromAttributes(model, random, uniform(random, 0, 8));
        else if (roll < 70)
            action = fromFormatAttributes(model, random, uniform(random, 0, 2));
        else if (roll < 84)
            action = fromParameters(model, random);
        else if (roll < 94)
            action = fromHistory(model, random);
        else
            action = applyToOthers(model, random);
        if (action)
            return action;
    }
    return std::nullopt;
}

Ending randomEnding(const SchemaModel &model, Random &random)
{
    Ending ending;
    const int roll = uniform(random, 0, 99);
    const bool nameEditable = model.isWriter() && !model.page().fanout;
    if (roll < 45)
        ending.kind = EndingKind::OkButton;
    else if (roll < 60)
        ending.kind = EndingKind::EnterKey;
    else if (roll < 72)
        ending.kind = nameEditable ? EndingKind::EnterInName : EndingKind::OkButton;
    else if (roll < 82)
        ending.kind = EndingKind::Cancel;
    else if (roll < 91)
        ending.kind = EndingKind::Escape;
    else
        ending.kind = EndingKind::CloseBox;
    return ending;
}

} // namespace vyr::model
