#include "model/screen.h"

#include "model/dialogdriver.h"

#include <QComboBox>
#include <QLineEdit>

namespace vyr::model {

namespace {

std::string text(const QString &value)
{
    return value.toStdString();
}

std::string quoted(const std::string &value)
{
    return "\"" + value + "\"";
}

std::string describe(const TypeCells &cells)
{
    return cells.type + " [" + cells.first + "] [" + cells.second + "]" + (cells.domain.empty() ? "" : " ," + cells.domain);
}

// A cell the row's type does not take is disabled and its text hidden;
// what it still holds is not part of what the screen shows.
TypeCells visible(TypeCells cells, const FormatModel &format, const TypeCells &reference)
{
    std::size_t taken = 0;
    if (const TypeTemplate *type = format.types().nativeTemplate(cells.type))
        taken = type->args.size();
    else
        taken = reference.first.empty() ? 0 : reference.second.empty() ? 1 : 2;
    if (taken < 1)
        cells.first.clear();
    if (taken < 2)
        cells.second.clear();
    return cells;
}

} // namespace

Screen readScreen(const DialogDriver &driver)
{
    Screen screen;
    if (auto *name = qobject_cast<QLineEdit *>(driver.control("nameEdit")))
        screen.name = text(name->text());
    if (auto *user = qobject_cast<QLineEdit *>(driver.control("userEdit")))
        screen.user = text(user->text());
    if (auto *geometry = qobject_cast<QComboBox *>(driver.control("geometryCombo")))
        screen.geometry = text(geometry->currentText());
    if (QWidget *grid = driver.control("attributeGrid")) {
        screen.attributesShown = true;
        for (int row = 0; row + 1 < driver.rowCount(grid); ++row) {
            ShownAttribute shown;
            shown.name = text(driver.cell(grid, row, 0));
            shown.cells.type = text(driver.cell(grid, row, 1));
            shown.cells.first = text(driver.cell(grid, row, 2));
            shown.cells.second = text(driver.cell(grid, row, 3));
            shown.cells.domain = text(driver.cell(grid, row, 4));
            if (shown.cells.domain == "none")
                shown.cells.domain.clear();
            screen.attributes.push_back(shown);
        }
    }
    if (QWidget *grid = driver.control("formatAttributeGrid")) {
        for (int row = 0; row < driver.rowCount(grid); ++row) {
            ShownFormatAttribute shown;
            shown.ticked = driver.cell(grid, row, 0) == QLatin1String("1");
            shown.name = text(driver.cell(grid, row, 1));
            shown.count = driver.cell(grid, row, 2).toInt();
            screen.formatAttributes.push_back(shown);
        }
    }
    if (QWidget *grid = driver.control("parameterGrid")) {
        for (int row = 0; row < driver.rowCount(grid); ++row)
            screen.parameters[text(driver.cell(grid, row, 0))] = text(driver.cell(grid, row, 1));
    }
    return screen;
}

Strings differencesFromModel(const Screen &screen, const SchemaModel &model, const DialogDriver &driver)
{
    Strings lines;
    const PageState &page = model.page();
    const FormatModel &format = model.format();
    if (screen.name != page.name)
        lines.push_back("the name field shows " + quoted(screen.name) + ", the model " + quoted(page.name));
    if (format.isDatabase() && screen.user != page.user)
        lines.push_back("the database user shows " + quoted(screen.user) + ", the model " + quoted(page.user));
    if (model.isWriter() && !format.supportsMultiGeom() && screen.geometry != page.geometry)
        lines.push_back("the geometry shows " + quoted(screen.geometry) + ", the model " + quoted(page.geometry));
    if (format.hasUserAttributes()) {
        if (screen.attributes.size() != page.attributes.size())
            lines.push_back("the attribute grid shows " + std::to_string(screen.attributes.size())
                            + " attributes, the model " + std::to_string(page.attributes.size()));
        for (std::size_t i = 0; i < std::min(screen.attributes.size(), page.attributes.size()); ++i) {
            const ShownAttribute &shown = screen.attributes[i];
            const AttributeRow &row = page.attributes[i];
            const TypeCells cells = visible(shown.cells, format, row.cells);
            // A type the format has no template for (kept in the generic
            // words, or one it cannot read) may be shown whole in the type
            // column: what counts is the type it spells.
            const bool spelled = row.genericOnly || !format.types().nativeTemplate(row.cells.type);
            const bool same = spelled ? composedType(shown.cells) == composedType(row.cells)
                                      : cells == visible(row.cells, format, row.cells);
            if (shown.name != row.name || !same)
                lines.push_back("attribute row " + std::to_string(i) + " shows " + quoted(shown.name) + " "
                                + describe(cells) + ", the model " + quoted(row.name) + " " + describe(row.cells));
        }
    }
    if (screen.formatAttributes.size() != page.formatAttributes.size())
        lines.push_back("the format attribute grid shows " + std::to_string(screen.formatAttributes.size())
                        + " rows, the model " + std::to_string(page.formatAttributes.size()));
    for (std::size_t i = 0; i < std::min(screen.formatAttributes.size(), page.formatAttributes.size()); ++i) {
        const ShownFormatAttribute &shown = screen.formatAttributes[i];
        const FormatAttributeRow &row = page.formatAttributes[i];
        const bool countMatters = row.ticked && row.isList() && row.count >= 0;
        if (shown.name != row.name || shown.ticked != row.ticked || (countMatters && shown.count != row.count))
            lines.push_back("format attribute row " + std::to_string(i) + " shows " + shown.name
                            + (shown.ticked ? " ticked " : " unticked ") + std::to_string(shown.count) + ", the model "
                            + row.name + (row.ticked ? " ticked " : " unticked ") + std::to_string(row.count));
    }
    for (const Parameter &parameter : format.parameters()) {
        const std::string prompt = text(driver.localised(parameter.prompt));
        const auto found = screen.parameters.find(prompt);
        if (found == screen.parameters.end()) {
            lines.push_back("no parameter row shows " + quoted(prompt));
            continue;
        }
        const std::string &value = page.parameters.at(parameter.name);
        const bool translated = parameter.type == "CHOICE" || parameter.type == "DISABLE";
        const std::string expected = translated && !value.empty() ? text(driver.localised(value)) : value;
        if (found->second != expected)
            lines.push_back("the parameter " + parameter.name + " shows " + quoted(found->second) + ", the model "
                            + quoted(expected));
    }
    return lines;
}

Strings rowsMissingFromFile(const Screen &screen, const FeatureData &saved, const SchemaModel &model)
{
    Strings lines;
    if (!model.attributesEditable())
        return lines;
    const auto &rows = model.page().attributes;
    for (std::size_t i = 0; i < screen.attributes.size(); ++i) {
        const ShownAttribute &shown = screen.attributes[i];
        const std::string where = "the row " + quoted(shown.name) + " (" + describe(shown.cells) + ")";
        if (i >= saved.order.size() || saved.order[i] != shown.name) {
            lines.push_back(where + " is not at place " + std::to_string(i) + " of attribute_order");
            continue;
        }
        const std::optional<std::string> generic = saved.attribute(shown.name);
        if (!generic || generic->empty()) {
            lines.push_back(where + " has no generic type in the file");
            continue;
        }
        const bool untouched = i < rows.size() && rows[i].asOpened();
        const bool genericOnly = i < rows.size() && rows[i].genericOnly;
        const std::optional<std::string> native = saved.attribute("*" + shown.name);
        if (genericOnly) {
            if (*generic != formatType(parseType(composedType(shown.cells), ListMode::Shown), ListMode::Shown))
                lines.push_back(where + " is saved with the generic type " + quoted(*generic));
            continue;
        }
        if (untouched && !native)
            continue;
        if (!native) {
            lines.push_back(where + " has no type in the format's words in the file");
            continue;
        }
        const TypeCells cells = visible(shown.cells, model.format(), i < rows.size() ? rows[i].cells : shown.cells);
        const std::string saved = formatType(parseType(*native, ListMode::Stored), ListMode::Shown);
        if (saved != composedType(cells))
            lines.push_back(where + " is saved as " + quoted(*native));
    }
    return lines;
}

} // namespace vyr::model
