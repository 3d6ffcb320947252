// Named walks through the feature type properties dialog, each pinning one
// rule of what OK saves and what the keyboard does, with fixed data on the
// example workspace. They run through the same driver and model as the
// random sequences, so each also checks everything those check; a case adds
// what its rule needs beyond that.
#include "model/dialogdriver.h"
#include "model/runner.h"
#include "model/scripts.h"

#include "vyr/vyr_session.h"

#include <nlohmann/json.hpp>

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QtTest>

#include <cstdlib>
#include <fstream>
#include <tuple>

using namespace vyr::model;
using namespace vyr::model::script;

Q_DECLARE_METATYPE(vyr::model::Session)

namespace {

// The language the dialog speaks, chosen as the library chooses it.
std::string uiLanguage()
{
    for (const char *name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char *value = std::getenv(name);
        if (value && *value)
            return std::string(value).rfind("de", 0) == 0 ? "de" : "en";
    }
    return "en";
}

// A message of the resource library in the dialog's language.
QString resourceText(const char *id)
{
    std::ifstream file(std::string(VYR_TEST_SOURCE_DIR) + "/resources/" + uiLanguage() + "/strings.json");
    const nlohmann::json strings = nlohmann::json::parse(file, nullptr, false);
    return strings.is_object() && strings.contains(id) ? QString::fromStdString(strings.at(id).get<std::string>())
                                                       : QString();
}

// The example feature file's text with `change` applied to its JSON.
std::string edited(const std::string &file, const std::function<void(nlohmann::ordered_json &)> &change)
{
    std::ifstream in(std::string(VYR_TEST_EXAMPLES_DIR) + "/" + file);
    nlohmann::ordered_json json = nlohmann::ordered_json::parse(in);
    change(json);
    return json.dump(2);
}

Action custom(std::string what, std::function<void(DialogDriver &)> step, bool unmodelled = true)
{
    Action action = act(ActionKind::Custom, std::move(what));
    action.custom = std::move(step);
    action.unmodelled = unmodelled;
    return action;
}

Action applyTo(Strings targets, Strings attributes, Strings parameters = {})
{
    Action action = act(ActionKind::ApplyToOthers);
    action.apply.targets = std::move(targets);
    action.apply.attributes = std::move(attributes);
    action.apply.parameters = std::move(parameters);
    return action;
}

Action paste(std::vector<Strings> lines)
{
    Action action = act(ActionKind::PasteAttributes);
    action.lines = std::move(lines);
    return action;
}

} // namespace

class DialogFaultsTest : public QObject
{
    Q_OBJECT

private:
    IVYRSession *m_session = nullptr;
    QTemporaryDir m_config;
    std::unique_ptr<Workspace> m_workspace;
    std::unique_ptr<Runner> m_runner;

    Session on(const char *file, std::vector<Action> actions, EndingKind end = EndingKind::OkButton)
    {
        Session session;
        session.edited = m_workspace->indexOf(file);
        session.actions = std::move(actions);
        session.ending = ending(end);
        return session;
    }
    SessionResult check(const Session &session)
    {
        SessionResult result = m_runner->run(session);
        if (!result.failures.empty())
            QTest::qFail(qPrintable(QString::fromStdString(result.transcript + "  ! "
                                                           + joined(result.failures, "\n  ! "))),
                         __FILE__, __LINE__);
        return result;
    }
    void addRow(const char *name, const Session &session) { QTest::newRow(name) << session; }

private slots:
    void initTestCase()
    {
        QVERIFY(m_config.isValid());
        qputenv("XDG_CONFIG_HOME", m_config.path().toUtf8());
        m_session = VYR_SessionCreate();
        m_workspace = std::make_unique<Workspace>(VYR_TEST_EXAMPLES_DIR);
        m_runner = std::make_unique<Runner>(*m_workspace, m_session, m_config.path().toStdString());
    }
    void cleanupTestCase()
    {
        m_runner.reset();
        VYR_SessionDestroy(m_session);
    }

    // A row on screen is never dropped by OK: an incomplete one is refused
    // with a message that names it.
    void okRefusesAnIncompleteRowAndNamesIt_data()
    {
        QTest::addColumn<Session>("session");
        addRow("a domain type without its domain",
               on("schemas/geopackage-landuse.json", {act(ActionKind::ChooseType, "integer_in_range", 2)}));
        addRow("a width left empty", on("schemas/shapefile-roads.json", {argument(0, 0, "")}));
        addRow("decimals left empty", on("schemas/shapefile-roads.json", {argument(1, 1, "")}));
        addRow("a type the format cannot read", on("schemas/shapefile-roads.json", {paste({{"EXTRA", "jsonb"}})}));
    }
    void okRefusesAnIncompleteRowAndNamesIt()
    {
        QFETCH(Session, session);
        const SessionResult result = check(session);
        QVERIFY2(result.refused, "OK saved an incomplete row");
    }

    // Enter in the name field validates what OK writes: a name of blanks is
    // refused, not saved empty.
    void okRefusesANameOfBlanksTypedBeforeEnter()
    {
        const SessionResult result =
            check(on("schemas/shapefile-roads.json", {act(ActionKind::TypeNameAndStay, "   ")}, EndingKind::EnterInName));
        QVERIFY2(result.refused, "a name of blanks was saved");
        QCOMPARE(result.refusalMessages.value(0), resourceText("33051"));
    }

    // Under dynamic schema the fan-out list is out of reach, yet an
    // attribute deleted from the page is gone all the same: OK says so
    // rather than saving fan-out on with no attribute.
    void okRefusesAFanoutAttributeDeletedUnderDynamicSchema()
    {
        const Action dynamic = custom(
            "General: tick Dynamic Schema",
            [](DialogDriver &d) {
                QWidget *box = d.control("dynamicCheck");
                if (box && d.showPageOf(box))
                    d.click(box);
            },
            false);
        const SessionResult result = check(on("schemas/shapefile-roads.json",
                                              {act(ActionKind::TurnFanoutOn, "LANES"),
                                               act(ActionKind::DeleteAttributes, {}, 1), dynamic}));
        QVERIFY2(result.refused, "fan-out was saved naming a deleted attribute");
        QCOMPARE(result.refusalMessages.value(0), resourceText("61285").replace(QStringLiteral("%1"), QStringLiteral("LANES")));
    }

    // Sessions that each pin one rule, grouped by rule; the model checks
    // what each shows and saves.
    void namedSessionsSaveWhatTheModelPredicts_data()
    {
        QTest::addColumn<Session>("session");
        const char *roads = "schemas/shapefile-roads.json";

        // After a move the feature holds only the new format's geometry,
        // exposures and parameters; a type without a counterpart keeps its
        // generic type; moving back restores what each page held; fan-out
        // is off in a format without it.
        addRow("move: roads to a database", on(roads, {act(ActionKind::MoveToDataset, "POSTGRES")}));
        addRow("move: roads to a database and back, an exposure kept",
               on(roads, {act(ActionKind::ToggleExposure, {}, 0), act(ActionKind::MoveToDatasetAndBack, "POSTGRES")}));
        addRow("move: parcels to a shapefile",
               on("schemas/postgres-parcels.json", {act(ActionKind::MoveToDataset, "SHAPEFILE")}));
        addRow("move: roads to a format without user attributes", on(roads, {act(ActionKind::MoveToDataset, "GPX")}));
        addRow("move: roads with fan-out to a format without it",
               on(roads, {act(ActionKind::TurnFanoutOn, "LANES"), act(ActionKind::MoveToDataset, "GEOPACKAGE")}));

        // A typed name takes the format's rules and is made unique among
        // the format's feature types; the database user is shown as it will
        // be saved once the field is left.
        addRow("name: another feature type's",
               on("schemas/shapefile-wells.json", {act(ActionKind::RenameFeatureType, "ROADS")}));
        addRow("name: a database user",
               on("schemas/postgres-roads.json", {act(ActionKind::TypeDatabaseUser, "My Schema")}));

        // An attribute name is taken while a row holds it, and free again
        // once that row is renamed or deleted.
        const auto rename = [](std::size_t row, const char *name) { return act(ActionKind::RenameAttribute, name, row); };
        addRow("name: an attribute's, taken and freed",
               on(roads, {rename(2, "ROAD_NAME"), rename(0, "OTHER"), rename(2, "ROAD_NAME"),
                          act(ActionKind::DeleteAttributes, {}, 1), rename(0, "LANES")}));

        // A list format attribute shows the elements the file exposes, and
        // OK writes what its row says, never the "{}" placeholder.
        const char *waypoints = "schemas/gpx-waypoints.json";
        addRow("list: opened and closed with OK", on(waypoints, {}));
        addRow("list: Clear All", on(waypoints, {act(ActionKind::ClearAll)}));
        addRow("list: Check All", on(waypoints, {act(ActionKind::CheckAll)}));

        // An attribute applied to another feature type arrives as a user
        // attribute of that type's format, in its attribute order; a chosen
        // parameter reaches a target whose format has it.
        addRow("apply: an attribute to the same format", on(roads, {applyTo({"WELLS"}, {"ROAD_NAME"})}));
        addRow("apply: attributes to a database", on(roads, {applyTo({"transport.roads"}, {"LANES", "TOLL"})}));
        addRow("apply: parameters to a database and a shapefile",
               on("schemas/postgres-roads.json",
                  {parameter("TABLE_HANDLING", "APPEND"),
                   applyTo({"cadastre.parcels", "ROADS"}, {}, {"TABLE_HANDLING", "SRID"})}));
        // With no other feature type to apply to, Apply to Others is
        // disabled or says why.
        Session alone
            = on(roads, {custom("Apply to Others in the single-feature export", applyAlone)}, EndingKind::Cancel);
        alone.alone = true;
        addRow("apply: nothing to apply to", alone);

        // A rename carries the fan-out attribute and the parameters that
        // name attributes along; a delete of the fan-out attribute refuses
        // OK, and of a parameter's attribute clears it or refuses.
        addRow("references: fan-out follows a rename",
               on(roads, {act(ActionKind::TurnFanoutOn, "LANES"), act(ActionKind::RenameAttribute, "WIDTH", 1)}));
        addRow("references: a deleted fan-out attribute refuses OK",
               on(roads, {act(ActionKind::TurnFanoutOn, "LANES"), act(ActionKind::DeleteAttributes, {}, 1)}));
        // The fan-out list is filled afresh each time it opens, from the
        // page's names, and keeps the attribute chosen.
        addRow("references: fan-out offers a renamed attribute",
               on(roads, {act(ActionKind::RenameAttribute, "KIND", 0), act(ActionKind::TurnFanoutOn, "KIND"),
                          custom("General: open and close the fan-out list", reopenFanoutList, false)}));
        // Undoing a rename to a taken name (made unique as it was typed)
        // renames back only the attribute renamed, not the one whose name
        // was typed on the way.
        addRow("references: a rename to a taken name undone",
               on("schemas/xlsx-inventory.json",
                  {act(ActionKind::RenameAttribute, "Checked", 1), history(ActionKind::Undo, Grid::Attributes)}));
        addRow("references: a column parameter follows a rename",
               on("schemas/postgres-parcels.json", {act(ActionKind::RenameAttribute, "recorded", 3)}));
        addRow("references: a column parameter after a delete",
               on("schemas/postgres-parcels.json", {act(ActionKind::DeleteAttributes, {}, 3)}));

        // What a person did not change keeps its text; what they enter is
        // checked as its kind wherever it comes from.
        Action colour = act(ActionKind::OpenColourUnchanged);
        colour.name = "HEADER_COLOR";
        addRow("kind: a colour confirmed unchanged", on("schemas/xlsx-inventory.json", {colour}));
        // A parameter's cell holds a value of its kind after a paste: the
        // pasted text is refused and the cell keeps what it held.
        const struct
        {
            const char *file, *prompt, *pasted;
        } pastes[] = {
            {"schemas/xlsx-inventory.json", "Column Width", "12abc"},
            {"schemas/xlsx-inventory.json", "Copy Formatting from a Template", "Maybe"},
            {"schemas/postgres-roads.json", "Table Handling", "bogus"},
            {"schemas/postgres-roads.json", "Cluster on Column", "NO_SUCH_COLUMN"},
        };
        for (const auto &paste : pastes) {
            const std::string what = std::string("Parameters: paste \"") + paste.pasted + "\" into " + paste.prompt;
            addRow(("kind: " + what).c_str(),
                   on(paste.file, {custom(what, pasteIntoParameter(paste.prompt, paste.pasted))}, EndingKind::Cancel));
        }
        addRow(
            "kind: a pasted name with a control character",
            on(roads, {custom("User Attributes: paste a name with a bell character", pasteBell)}, EndingKind::Cancel));
        addRow("kind: a range domain with its minimum above its maximum",
               on("schemas/geopackage-landuse.json",
                  {custom("User Attributes: define Storeys from 10 to 1", minimumAboveMaximum)}, EndingKind::Cancel));
        addRow("kind: a range bound with a decimal comma",
               on("schemas/geopackage-landuse.json",
                  {custom("User Attributes: define Storeys from 1,5 to 9", decimalComma)}, EndingKind::Cancel));

        // A switch that turns rows on is not stored: turning it off empties
        // those rows, so that it reads back as left, and one undo puts both
        // back.
        Session switchOn = on("schemas/xlsx-inventory.json", {parameter("USE_TEMPLATE", "No")});
        switchOn.json = edited("schemas/xlsx-inventory.json",
                               [](nlohmann::ordered_json &f) { f["lists"]["*vyr_parameter_value"][0] = "Layout"; });
        addRow("switch: turned off", switchOn);
        switchOn.actions.push_back(history(ActionKind::Undo, Grid::Parameters));
        addRow("switch: turned off and undone", switchOn);

        // A width or decimals typed into one of several selected rows
        // reaches every selected row that takes it, and never the domain a
        // ranged integer takes in the same column.
        addRow("selection: a width", on(roads, {argument(0, 0, "12", 2)}));
        addRow("selection: decimals", on(roads, {act(ActionKind::ChooseType, "number", 2, 2), argument(2, 1, "3", 2)}));
        addRow("selection: a width beside domains", on("schemas/geopackage-landuse.json", {argument(0, 0, "40", 3)}));

        // A pasted type the format has no word for is said to be unmapped,
        // also when the row already showed it, taken from the row above.
        addRow("paste: an unmapped type the new row took from the row above",
               on(roads, {paste({{"EXTRA", "jsonb"}}), paste({{"MORE", "jsonb"}})}));

        // OK after no visible change leaves every example file byte for
        // byte: also after a move there and back, with two attributes whose
        // types show alike but were stored apart, with list elements exposed
        // apart.
        for (const Workspace::Entry &entry : m_workspace->entries())
            addRow(("unchanged: " + entry.file).c_str(), on(entry.file.c_str(), {}));
        Session editable = on("schemas/csv-stations.json", {});
        editable.sourceEditing = true;
        addRow("unchanged: schemas/csv-stations.json, editable", editable);
        addRow("unchanged: parcels moved to a shapefile and back",
               on("schemas/postgres-parcels.json", {act(ActionKind::MoveToDatasetAndBack, "SHAPEFILE")}));
        Session alike = on(roads, {});
        alike.json = edited(roads, [](nlohmann::ordered_json &f) {
            for (const auto &[name, generic] : {std::pair{"KIND", "vyr_char(10)"}, std::pair{"SORT", "vyr_char(20)"}}) {
                f["attributes"][name] = generic;
                f["attributes"][std::string("*") + name] = "enum(a,b)";
                f["attribute_order"].push_back(name);
            }
        });
        addRow("unchanged: two types shown alike", alike);
        Session apart = on("schemas/gpx-tracks.json", {});
        apart.json = edited("schemas/gpx-tracks.json", [](nlohmann::ordered_json &f) {
            f["lists"]["*vyr_format_attr_name"] = {"gpx_link{0}.href", "gpx_link{3}.href"};
            f["lists"]["*vyr_format_attr_type"] = {"string", "string"};
        });
        addRow("unchanged: list elements exposed apart", apart);

        // A stored type suffix is shown in the domain column and survives
        // OK, also when the attributes are written again.
        const std::string suffixed
            = edited(roads, [](nlohmann::ordered_json &f) { f["attributes"]["*OPENED"] = "date,local"; });
        for (const auto &[name, actions] : std::vector<std::pair<const char *, std::vector<Action>>>{
                 {"suffix: no edit", {}},
                 {"suffix: another row renamed", {act(ActionKind::RenameAttribute, "STREET", 0)}}}) {
            Session session = on(roads, actions);
            session.json = suffixed;
            addRow(name, session);
        }

        // Every page action is one undo step, and none clears the history.
        const auto undo = history(ActionKind::Undo, Grid::FormatAttributes);
        addRow("undo: Check All", on(roads, {act(ActionKind::CheckAll), undo}));
        addRow("undo: Clear All", on(roads, {act(ActionKind::ClearAll), undo}));
        addRow("undo: Check All keeps the step before it",
               on(roads, {act(ActionKind::ToggleExposure, {}, 1), act(ActionKind::CheckAll), undo, undo}));
        addRow("undo: Check All, undone and redone",
               on("schemas/gpx-tracks.json",
                  {act(ActionKind::CheckAll), undo, history(ActionKind::Redo, Grid::FormatAttributes)}));
        addRow("undo: a type and a width chosen for three rows",
               on(roads,
                  {act(ActionKind::ChooseType, "number", 0, 3), argument(0, 0, "7", 3),
                   history(ActionKind::Undo, Grid::Attributes), history(ActionKind::Undo, Grid::Attributes)}));

        // What the person did not touch keeps its bytes: a type the format
        // cannot map, a list-valued argument, a list confirmed unchanged.
        const std::string unmapped = edited(roads, [](nlohmann::ordered_json &f) {
            f["attributes"]["A"] = "vyr_char(10)";
            f["attributes"]["*A"] = "enum(a,b)";
            f["attribute_order"].push_back("A");
        });
        const std::string shapefile = m_workspace->entries()[m_workspace->indexOf(roads)].capabilities;
        const std::string withSets = shapefile + ",DATA_TYPE_MAPPINGS,\"char(width),vyr_char,\"\"number(width,decimal)\"\","
                                                 "vyr_decimal,logical,vyr_boolean,date,vyr_date,set(stringset),vyr_set\"";
        // The stored form of a set of "a", "b" and "café", as the format's
        // stored type strings write it.
        const std::string set = formatType({"set", {"a:b:caf\xc3\xa9"}, {}}, ListMode::Stored);
        const std::string listed = edited(roads, [&set](nlohmann::ordered_json &f) {
            f["attributes"]["S"] = "vyr_set";
            f["attributes"]["*S"] = set;
            f["attribute_order"].push_back("S");
        });
        const Action renamed = act(ActionKind::RenameAttribute, "STREET", 0);
        for (const auto &[name, json, sets, actions] :
             std::vector<std::tuple<const char *, std::string, bool, std::vector<Action>>>{
                 {"bytes: an enumeration the format cannot map", unmapped, false, {}},
                 {"bytes: an enumeration the format cannot map, another row renamed", unmapped, false, {renamed}},
                 {"bytes: a list-valued argument", listed, true, {}},
                 {"bytes: a list-valued argument, another row renamed", listed, true, {renamed}},
                 {"bytes: a list editor confirmed unchanged",
                  listed,
                  true,
                  {custom("User Attributes: open the list of S and press OK", openListOfLastRow, false)}}}) {
            Session session = on(roads, actions);
            session.json = json;
            if (sets)
                session.capabilities = withSets;
            addRow(name, session);
        }
    }
    void namedSessionsSaveWhatTheModelPredicts()
    {
        QFETCH(Session, session);
        check(session);
    }

    // A switch that turns rows on is not stored, so reopening derives it
    // from the rows it enables.
    void aSwitchShowsOnAgainAfterReopening()
    {
        const SessionResult saved = check(on(
            "schemas/xlsx-inventory.json", {parameter("USE_TEMPLATE", "Yes"), parameter("TEMPLATE_SHEET", "Layout")}));
        QVERIFY(saved.saved);
        Session reopened = on("schemas/xlsx-inventory.json", {}, EndingKind::Cancel);
        reopened.json = saved.savedJson;
        check(reopened);
    }

private:
    // Pastes `text` into the parameter prompted `prompt`: the cell must
    // refuse it and keep what it held.
    static std::function<void(DialogDriver &)> pasteIntoParameter(const char *prompt, const char *text)
    {
        return [prompt, text](DialogDriver &d) {
            QApplication::clipboard()->setText(QString::fromUtf8(text));
            QWidget *grid = d.control("parameterGrid");
            for (int row = 0; row < d.rowCount(grid); ++row) {
                if (d.cell(grid, row, 0) != d.localised(prompt) || !d.gotoCell(grid, row, 1))
                    continue;
                const QString before = d.cell(grid, row, 1);
                d.key(Qt::Key_V, Qt::ControlModifier);
                const QString after = d.cell(grid, row, 1);
                if (after != before)
                    d.finding(QStringLiteral("%1 holds \"%2\" after a paste").arg(QString::fromUtf8(prompt), after));
                else if (d.watcher().messages().empty())
                    d.finding(QStringLiteral("the paste into %1 was refused without a word").arg(QString::fromUtf8(prompt)));
                d.watcher().clearMessages();
                return;
            }
            d.finding(QStringLiteral("no row %1").arg(QString::fromUtf8(prompt)));
        };
    }

    // Pastes a row whose name holds a bell character into the new row: no
    // name on screen holds a control character afterwards.
    static void pasteBell(DialogDriver &d)
    {
        QApplication::clipboard()->setText(QStringLiteral("RING\aBELL\tchar\t5\n"));
        QWidget *grid = d.control("attributeGrid");
        if (!d.gotoCell(grid, d.rowCount(grid) - 1, 0))
            return;
        d.key(Qt::Key_V, Qt::ControlModifier);
        // Refusing the paste with a message is as good as cleaning the name.
        d.watcher().clearMessages();
        for (int row = 0; row < d.rowCount(grid); ++row) {
            QString name = d.cell(grid, row, 0);
            if (std::none_of(name.begin(), name.end(), [](QChar c) { return c.unicode() < 32; }))
                continue;
            for (QChar &c : name) {
                if (c.unicode() < 32)
                    c = QChar(0x2407); // shown as a symbol
            }
            d.finding(QStringLiteral("the name \"%1\" holds a control character").arg(name));
        }
    }

    // Presses Apply to Others where there is no other feature type: it is
    // disabled, or says why in a message.
    static void applyAlone(DialogDriver &d)
    {
        QWidget *button = d.control("applyButton");
        if (!button || !button->isEnabled())
            return;
        QString shown;
        d.watcher().expect([&shown](QWidget *window) {
            shown = QString::fromLatin1(window->metaObject()->className());
            if (auto *dialog = qobject_cast<QDialog *>(window))
                dialog->reject();
        });
        d.click(button);
        d.watcher().forgetExpected();
        if (shown.isEmpty())
            d.finding(QStringLiteral("Apply to Others is enabled and does nothing"));
        else if (shown != QLatin1String("QMessageBox"))
            d.finding(QStringLiteral("Apply to Others is enabled and opens %1 with nothing to apply to").arg(shown));
    }

    // A range whose minimum lies above its maximum is refused with a
    // message; a bound with a decimal comma is not kept as typed.
    static void minimumAboveMaximum(DialogDriver &d)
    {
        rangeDomain(d, QStringLiteral("10"), QStringLiteral("1"), [&d](QWidget *, int messages) {
            if (messages == 0)
                d.finding(QStringLiteral("the range dialog accepted a minimum above its maximum"));
        });
    }
    static void decimalComma(DialogDriver &d)
    {
        rangeDomain(d, QStringLiteral("1,5"), QStringLiteral("9"), [&d](QWidget *grid, int messages) {
            const QString value = d.cell(grid, 1, 2);
            if (messages == 0 && value.contains(QLatin1String("1,5")))
                d.finding(QStringLiteral("the bound 1,5 is kept as typed: \"%1\"").arg(value));
        });
    }

    static void reopenFanoutList(DialogDriver &d)
    {
        auto *combo = qobject_cast<QComboBox *>(d.control("fanoutCombo"));
        if (!combo || !d.showPageOf(combo))
            return;
        d.click(combo);
        if (QApplication::activePopupWidget())
            d.key(Qt::Key_Escape);
        else
            d.problem(QStringLiteral("the fan-out list did not open"));
    }

    // Opens the domain dialog of land_use's "storeys", defines a range
    // with an integer field type, presses OK and hands `then` the grid and
    // the number of messages OK gave; Cancel if the dialog stays open.
    static void rangeDomain(DialogDriver &d, const QString &minimum, const QString &maximum,
                            const std::function<void(QWidget *, int)> &then)
    {
        QWidget *grid = d.control("attributeGrid");
        if (!d.gotoCell(grid, 1, 2))
            return;
        int messages = -1;
        d.watcher().expect([&](QWidget *domain) {
            QCheckBox *nameOnly = domain->findChild<QCheckBox *>(QStringLiteral("nameOnlyCheck"));
            if (nameOnly && nameOnly->isChecked())
                QTest::mouseClick(nameOnly, Qt::LeftButton);
            d.mnemonic(domain->findChild<QLabel *>(QStringLiteral("fieldTypeLabel")));
            d.pickFromList(QStringLiteral("integer"));
            for (const auto &[name, text] : {std::pair{"minimumEdit", minimum}, std::pair{"maximumEdit", maximum}}) {
                auto *field = domain->findChild<QLineEdit *>(QLatin1String(name));
                if (!field)
                    continue;
                QTest::mouseClick(field, Qt::LeftButton);
                QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
                QTest::keyClicks(field, text);
            }
            const auto before = d.watcher().messages().size();
            QTest::mouseClick(domain->findChild<QWidget *>(QStringLiteral("okButton")), Qt::LeftButton);
            messages = int(d.watcher().messages().size() - before);
            if (domain->isVisible())
                QTest::mouseClick(domain->findChild<QWidget *>(QStringLiteral("cancelButton")), Qt::LeftButton);
        });
        d.key(Qt::Key_F4);
        d.watcher().clearMessages();
        then(grid, messages);
    }

    // Opens the list editor of the last attribute row and presses OK.
    static void openListOfLastRow(DialogDriver &d)
    {
        QWidget *grid = d.control("attributeGrid");
        if (!d.gotoCell(grid, d.rowCount(grid) - 2, 2))
            return;
        d.watcher().expect([&d](QWidget *editor) {
            if (QWidget *ok = editor->findChild<QWidget *>(QStringLiteral("okButton")))
                QTest::mouseClick(ok, Qt::LeftButton);
            else
                d.problem(QStringLiteral("the list editor has no OK button"));
        });
        d.key(Qt::Key_F4);
    }
};

QTEST_MAIN(DialogFaultsTest)
#include "tst_dialogfaults.moc"
