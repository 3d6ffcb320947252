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
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QtTest>

#include <cstdlib>
#include <fstream>

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

Action applyTo(Strings targets, Strings attributes)
{
    Action action = act(ActionKind::ApplyToOthers);
    action.apply.targets = std::move(targets);
    action.apply.attributes = std::move(attributes);
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

    // After a move the feature holds only the new format's geometry,
    // exposures and parameters; a type without a counterpart keeps its
    // generic type; moving back restores what each page held.
    void movingToAnotherDatasetKeepsOnlyTheTargetFormat_data()
    {
        QTest::addColumn<Session>("session");
        addRow("roads to a database", on("schemas/shapefile-roads.json", {act(ActionKind::MoveToDataset, "POSTGRES")}));
        addRow("roads to a database and back, an exposure kept",
               on("schemas/shapefile-roads.json",
                  {act(ActionKind::ToggleExposure, {}, 0), act(ActionKind::MoveToDatasetAndBack, "POSTGRES")}));
        addRow("parcels to a shapefile", on("schemas/postgres-parcels.json", {act(ActionKind::MoveToDataset, "SHAPEFILE")}));
        addRow("roads to a format without user attributes",
               on("schemas/shapefile-roads.json", {act(ActionKind::MoveToDataset, "GPX")}));
    }
    void movingToAnotherDatasetKeepsOnlyTheTargetFormat()
    {
        QFETCH(Session, session);
        check(session);
    }

    // A list format attribute shows the elements the file exposes, and OK
    // writes what its row says, never the "{}" placeholder.
    void listFormatAttributesShowAndKeepTheirElements_data()
    {
        QTest::addColumn<Session>("session");
        addRow("opened and closed with OK", on("schemas/gpx-waypoints.json", {}));
        addRow("Clear All", on("schemas/gpx-waypoints.json", {act(ActionKind::ClearAll)}));
        addRow("Check All", on("schemas/gpx-waypoints.json", {act(ActionKind::CheckAll)}));
    }
    void listFormatAttributesShowAndKeepTheirElements()
    {
        QFETCH(Session, session);
        check(session);
    }

    // An attribute applied to another feature type arrives as a user
    // attribute of that type's format, in its attribute order.
    void applyToOthersGivesATargetItsOwnTypes()
    {
        check(on("schemas/shapefile-roads.json", {applyTo({"WELLS"}, {"ROAD_NAME"})}));
        check(on("schemas/shapefile-roads.json", {applyTo({"transport.roads"}, {"LANES", "TOLL"})}));
    }

    // A rename carries the fan-out attribute and the parameters that name
    // attributes along; a delete of the fan-out attribute refuses OK, and of
    // a parameter's attribute clears it or refuses.
    void renamingCarriesReferencesAndDeletingRefuses_data()
    {
        QTest::addColumn<Session>("session");
        addRow("fan-out follows a rename",
               on("schemas/shapefile-roads.json",
                  {act(ActionKind::TurnFanoutOn, "LANES"), act(ActionKind::RenameAttribute, "WIDTH", 1)}));
        addRow("a deleted fan-out attribute refuses OK",
               on("schemas/shapefile-roads.json",
                  {act(ActionKind::TurnFanoutOn, "LANES"), act(ActionKind::DeleteAttributes, {}, 1)}));
        addRow("a column parameter follows a rename",
               on("schemas/postgres-parcels.json", {act(ActionKind::RenameAttribute, "recorded", 3)}));
        addRow("a column parameter after a delete",
               on("schemas/postgres-parcels.json", {act(ActionKind::DeleteAttributes, {}, 3)}));
    }
    void renamingCarriesReferencesAndDeletingRefuses()
    {
        QFETCH(Session, session);
        check(session);
    }

    // What a person did not change keeps its text; what they enter is
    // checked as its kind wherever it comes from.
    void valuesAreKeptOrCheckedAsTheirKind_data()
    {
        QTest::addColumn<Session>("session");
        Action colour = act(ActionKind::OpenColourUnchanged);
        colour.name = "HEADER_COLOR";
        addRow("a colour confirmed unchanged", on("schemas/xlsx-inventory.json", {colour}));
        addRow("a pasted integer parameter",
               on("schemas/xlsx-inventory.json",
                  {custom("Parameters: paste \"12abc\" into Column Width", [](DialogDriver &d) {
                      QApplication::clipboard()->setText(QStringLiteral("12abc"));
                      QWidget *grid = d.control("parameterGrid");
                      for (int row = 0; row < d.rowCount(grid); ++row) {
                          if (d.cell(grid, row, 0) != d.localised("Column Width") || !d.gotoCell(grid, row, 1))
                              continue;
                          d.key(Qt::Key_V, Qt::ControlModifier);
                          bool number = false;
                          const QString value = d.cell(grid, row, 1);
                          value.toLongLong(&number);
                          if (!number && !value.isEmpty())
                              d.finding(QStringLiteral("Column Width holds \"%1\" after a paste").arg(value));
                      }
                  })},
                  EndingKind::Cancel));
        addRow("a pasted name with a control character",
               on("schemas/shapefile-roads.json",
                  {custom("User Attributes: paste a name with a bell character", [](DialogDriver &d) {
                      QApplication::clipboard()->setText(QStringLiteral("RING\aBELL\tchar\t5\n"));
                      QWidget *grid = d.control("attributeGrid");
                      if (!d.gotoCell(grid, d.rowCount(grid) - 1, 0))
                          return;
                      d.key(Qt::Key_V, Qt::ControlModifier);
                      // Refusing the paste with a message is as good as
                      // cleaning the name.
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
                  })},
                  EndingKind::Cancel));
        addRow("a range domain with its minimum above its maximum",
               on("schemas/geopackage-landuse.json",
                  {custom("User Attributes: define Storeys from 10 to 1", [](DialogDriver &d) {
                      rangeDomain(d, QStringLiteral("10"), QStringLiteral("1"), [&d](QWidget *, int messages) {
                          if (messages == 0)
                              d.finding(QStringLiteral("the range dialog accepted a minimum above its maximum"));
                      });
                  })},
                  EndingKind::Cancel));
        addRow("a range bound with a decimal comma",
               on("schemas/geopackage-landuse.json",
                  {custom("User Attributes: define Storeys from 1,5 to 9", [](DialogDriver &d) {
                      rangeDomain(d, QStringLiteral("1,5"), QStringLiteral("9"), [&d](QWidget *grid, int messages) {
                          const QString value = d.cell(grid, 1, 2);
                          if (messages == 0 && value.contains(QLatin1String("1,5")))
                              d.finding(QStringLiteral("the bound 1,5 is kept as typed: \"%1\"").arg(value));
                      });
                  })},
                  EndingKind::Cancel));
    }
    void valuesAreKeptOrCheckedAsTheirKind()
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

    // The database user is shown as it will be saved once the field is left.
    void theDatabaseUserIsShownAsSaved()
    {
        check(on("schemas/postgres-roads.json", {act(ActionKind::TypeDatabaseUser, "My Schema")}));
    }

    // A width or decimals typed into one of several selected rows reaches
    // every selected row that takes it.
    void typedArgumentsReachEverySelectedRow_data()
    {
        QTest::addColumn<Session>("session");
        addRow("a width", on("schemas/shapefile-roads.json", {argument(0, 0, "12", 2)}));
        addRow("decimals", on("schemas/shapefile-roads.json",
                              {act(ActionKind::ChooseType, "number", 2, 2), argument(2, 1, "3", 2)}));
    }
    void typedArgumentsReachEverySelectedRow()
    {
        QFETCH(Session, session);
        check(session);
    }

    // OK after no visible change leaves every example file byte for byte.
    void okWithoutEditsKeepsEveryFile_data()
    {
        QTest::addColumn<Session>("session");
        for (const Workspace::Entry &entry : m_workspace->entries())
            addRow(entry.file.c_str(), on(entry.file.c_str(), {}));
        Session editable = on("schemas/csv-stations.json", {});
        editable.sourceEditing = true;
        addRow("schemas/csv-stations.json, editable", editable);
    }
    void okWithoutEditsKeepsEveryFile()
    {
        QFETCH(Session, session);
        check(session);
    }

    // A stored type suffix is shown in the domain column and survives OK,
    // also when the attributes are written again.
    void aTypeSuffixSurvivesOk_data()
    {
        QTest::addColumn<Session>("session");
        const std::string json = edited("schemas/shapefile-roads.json",
                                        [](nlohmann::ordered_json &f) { f["attributes"]["*OPENED"] = "date,local"; });
        Session untouched = on("schemas/shapefile-roads.json", {});
        untouched.json = json;
        addRow("no edit", untouched);
        Session rewritten = on("schemas/shapefile-roads.json", {act(ActionKind::RenameAttribute, "STREET", 0)});
        rewritten.json = json;
        addRow("another row renamed", rewritten);
    }
    void aTypeSuffixSurvivesOk()
    {
        QFETCH(Session, session);
        check(session);
    }

    // Every page action is one undo step, and none clears the history.
    void everyPageActionIsOneUndoStep_data()
    {
        QTest::addColumn<Session>("session");
        const auto undo = history(ActionKind::Undo, Grid::FormatAttributes);
        addRow("Check All", on("schemas/shapefile-roads.json", {act(ActionKind::CheckAll), undo}));
        addRow("Clear All", on("schemas/shapefile-roads.json", {act(ActionKind::ClearAll), undo}));
        addRow("Check All keeps the step before it",
               on("schemas/shapefile-roads.json", {act(ActionKind::ToggleExposure, {}, 1), act(ActionKind::CheckAll),
                                                   undo, undo}));
        addRow("Check All, undone and redone",
               on("schemas/gpx-tracks.json",
                  {act(ActionKind::CheckAll), undo, history(ActionKind::Redo, Grid::FormatAttributes)}));
    }
    void everyPageActionIsOneUndoStep()
    {
        QFETCH(Session, session);
        check(session);
    }

    // What the person did not touch keeps its bytes: a type the format
    // cannot map, a list-valued argument, a list confirmed unchanged.
    void untouchedValuesKeepTheirBytes_data()
    {
        QTest::addColumn<Session>("session");
        const std::string unmapped = edited("schemas/shapefile-roads.json", [](nlohmann::ordered_json &f) {
            f["attributes"]["A"] = "vyr_char(10)";
            f["attributes"]["*A"] = "enum(a,b)";
            f["attribute_order"].push_back("A");
        });
        Session plain = on("schemas/shapefile-roads.json", {});
        plain.json = unmapped;
        addRow("an enumeration the format cannot map", plain);
        Session renamed = on("schemas/shapefile-roads.json", {act(ActionKind::RenameAttribute, "STREET", 0)});
        renamed.json = unmapped;
        addRow("an enumeration the format cannot map, another row renamed", renamed);

        const std::string shapefile = m_workspace->entries()[m_workspace->indexOf("schemas/shapefile-roads.json")].capabilities;
        const std::string withSets = shapefile + ",DATA_TYPE_MAPPINGS,\"char(width),vyr_char,\"\"number(width,decimal)\"\","
                                                 "vyr_decimal,logical,vyr_boolean,date,vyr_date,set(stringset),vyr_set\"";
        // The stored form of a set of "a", "b" and "café", as the format's
        // stored type strings write it.
        const std::string set = formatType({"set", {"a:b:caf\xc3\xa9"}, {}}, ListMode::Stored);
        const std::string listed = edited("schemas/shapefile-roads.json", [&set](nlohmann::ordered_json &f) {
            f["attributes"]["S"] = "vyr_set";
            f["attributes"]["*S"] = set;
            f["attribute_order"].push_back("S");
        });
        for (const auto &[name, actions] :
             std::vector<std::pair<const char *, std::vector<Action>>>{
                 {"a list-valued argument", {}},
                 {"a list-valued argument, another row renamed", {act(ActionKind::RenameAttribute, "STREET", 0)}},
                 {"a list editor confirmed unchanged",
                  {custom("User Attributes: open the list of S and press OK", openListOfLastRow, false)}}}) {
            Session session = on("schemas/shapefile-roads.json", actions);
            session.json = listed;
            session.capabilities = withSets;
            addRow(name, session);
        }
    }
    void untouchedValuesKeepTheirBytes()
    {
        QFETCH(Session, session);
        check(session);
    }

    // With no other feature type to apply to, Apply to Others is disabled
    // or says why.
    void applyToOthersNeedsOthers()
    {
        Session alone = on("schemas/shapefile-roads.json",
                           {custom("Apply to Others in the single-feature export", [](DialogDriver &d) {
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
                                   d.finding(QStringLiteral("Apply to Others is enabled and opens %1 with nothing to "
                                                            "apply to")
                                                 .arg(shown));
                           })},
                           EndingKind::Cancel);
        alone.alone = true;
        check(alone);
    }

private:
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
