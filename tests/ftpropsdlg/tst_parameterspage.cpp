// The parameters page inside the feature type properties dialog, on a format
// with every parameter type and modifier: the cells, the disable rule,
// localised choices stored untranslated, values kept across a change of
// format, references to attributes, the filter field and the keyboard. The
// binary runs twice, in English and in German; the German run
// (VYR_EXPECT_GERMAN) first makes sure the catalog does translate.
#include "ftpropsdlg/recordingschema.h"
#include "ftpropsdlg/promptingsession.h"
#include "support/modalanswers.h"

#include "ftprops/vyrobjftpropsformatinfo.h"
#include "ftpropsdlg/cattrgrid.h"
#include "ftpropsdlg/cdefparmsgrid.h"
#include "ftpropsdlg/cfeattypepropsattrs.h"
#include "ftpropsdlg/cfeattypepropsdlg.h"
#include "ftpropsdlg/cfeattypepropsparms.h"
#include "grid/cugstandardtypes.h"
#include "uikit/application.h"
#include "uikit/dialogutils.h"
#include "uikit/narrowtext.h"
#include "uikit/outsideservices.h"
#include "uikit/resourcelibrary.h"

#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QTabBar>
#include <QtTest>

#include <memory>

using namespace vyr;
using vyr::test::answerNextDialog;
using vyr::test::answerNextMessageBox;
using vyr::test::RecordingSchema;

namespace {

using TestSession = vyr::test::PromptingSession;

QString shown(const char *text)
{
    return fromNarrow(LocalizeText(text));
}

CUGDropListType &dropList(CVVyrGrid &grid)
{
    return *static_cast<CUGDropListType *>(grid.GetCellType(grid.DropListTypeId()));
}

} // namespace

class ParametersPageTest : public QObject
{
    Q_OBJECT

private:
    TestSession m_session;
    StringList m_log;
    std::unique_ptr<VYRObjFTPropsFormatInfo> m_sheet, m_table;
    std::vector<std::unique_ptr<RecordingSchema>> m_records;
    std::vector<RecordingSchema *> m_others;

    RecordingSchema &record(const char *name, const char *formatId)
    {
        m_records.push_back(std::make_unique<RecordingSchema>(name, formatId, m_log));
        m_records.back()->userAttributes = {"Item", "Count"};
        m_records.back()->geometry = std::string(formatId) == "SHEET" ? "sheet_none" : "table_none";
        return *m_records.back();
    }
    std::unique_ptr<CFeatTypePropsDlg> open(RecordingSchema &schema)
    {
        auto dialog = std::make_unique<CFeatTypePropsDlg>(&m_session, &schema,
                                                          SchemaRecordList(m_others.begin(), m_others.end()),
                                                          FormatRecordList{m_sheet.get(), m_table.get()},
                                                          FormatRecordList(), nullptr);
        if (!dialog->Create())
            qFatal("the dialog did not open");
        return dialog;
    }
    static CDefParmsGrid *gridOf(const CFeatTypePropsDlg &dialog) { return dialog.parametersPage()->grid(); }
    static long rowOf(const CFeatTypePropsDlg &dialog, const char *name) { return gridOf(dialog)->RowOf(name); }
    static QString valueOf(const CFeatTypePropsDlg &dialog, const char *name)
    {
        return gridOf(dialog)->GetCellString(rowOf(dialog, name), CDefParmsGrid::kValueColumn);
    }
    static bool enabled(const CFeatTypePropsDlg &dialog, const char *name)
    {
        return gridOf(dialog)->IsCellEnabled(CDefParmsGrid::kValueColumn, rowOf(dialog, name));
    }
    static void type(const CFeatTypePropsDlg &dialog, const char *name, const QString &text)
    {
        gridOf(dialog)->StoreUserText(CDefParmsGrid::kValueColumn, rowOf(dialog, name), text, ug::TextEdited);
    }

private slots:
    void initTestCase()
    {
        QVERIFY(ensureApplication());
        QVERIFY(loadResourceLibrary());
        if (qEnvironmentVariableIsSet("VYR_EXPECT_GERMAN")) {
            QCOMPARE(shown("No"), QStringLiteral("Nein"));
            QCOMPARE(shown("semicolon"), QStringLiteral("Semikolon"));
        }
        // A sheet writer with every parameter type and modifier, and a table
        // writer that shares two of its parameters and has one of its own.
        m_sheet = std::make_unique<VYRObjFTPropsFormatInfo>(
            "FORMAT,SHEET,SOURCE,no,HAS_DEFLINE_ATTRS,yes,GEOM_TYPE_MAPPINGS,\"sheet_none,vyr_no_geom\","
            "DEFLINE_PARMS,\"GUI DISABLE USE_TEMPLATE Use Template,No,"
            "GUI OPTIONAL TEXT PLAIN Plain,p,"
            "GUI DISABLED_ONLY TEXT ONLY_ON Only On,o,"
            "GUI ALWAYS_ENABLED TEXT ALWAYS Always,a,"
            "GUI ALWAYS_ENABLED DISABLED_ONLY TEXT BOTH Both,b,"
            "GUI OPTIONAL CHOICE SEPARATOR comma%semicolon Field Separator,comma,"
            "GUI INTEGER WIDTH Column Width,12,"
            "GUI OPTIONAL ATTR SORT_BY % Sort Rows By,,"
            "GUI OPTIONAL ATTRLIST_COMMAS HIDDEN Hidden Columns,,"
            "GUI OPTIONAL COLOR_PICK COLOUR Header Row Colour,\"\"0,0,0\"\","
            "GUI OPTIONAL ICONPICK SYMBOL Symbol,\","
            "DEFLINE_PARM_HELP,\"PLAIN,Something plain.\"",
            &m_session, "SHEET");
        m_table = std::make_unique<VYRObjFTPropsFormatInfo>(
            "FORMAT,TABLE,SOURCE,no,HAS_DEFLINE_ATTRS,yes,GEOM_TYPE_MAPPINGS,\"table_none,vyr_no_geom\","
            "DEFLINE_PARMS,\"GUI OPTIONAL CHOICE SEPARATOR comma%semicolon%tab Field Separator,tab,"
            "GUI INTEGER WIDTH Column Width,99,GUI TEXT FRESH Fresh,new\"",
            &m_session, "TABLE");
    }
    void init()
    {
        m_log.clear();
        m_others.clear();
        m_records.clear();
    }

    void shouldShowEveryParameterOfTheFormatWithItsCell()
    {
        RecordingSchema &schema = record("inventory", "SHEET");
        schema.parameters["WIDTH"] = "20";
        auto dialog = open(schema);
        QTabBar *tabs = dialog->tabControl();
        QCOMPARE(tabs->tabText(tabs->count() - 1), loadResourceString(res::ParametersTabTitle));
        CDefParmsGrid *grid = gridOf(*dialog);
        QCOMPARE(grid->GetRowCount(), 11L);
        QCOMPARE(grid->GetCellString(-1, CDefParmsGrid::kPromptColumn), loadResourceString(res::ParameterPromptHeading));
        QCOMPARE(grid->GetCellString(rowOf(*dialog, "SEPARATOR"), CDefParmsGrid::kPromptColumn), shown("Field Separator"));
        // A stored value wins; a switch, never stored, shows where the rows
        // it enables put it.
        QCOMPARE(valueOf(*dialog, "WIDTH"), QStringLiteral("20"));
        QCOMPARE(valueOf(*dialog, "USE_TEMPLATE"), shown("No"));

        CUGCell cell;
        grid->GetCell(CDefParmsGrid::kValueColumn, rowOf(*dialog, "WIDTH"), cell);
        QCOMPARE(cell.mask(), QStringLiteral("##########"));
        grid->GetCell(CDefParmsGrid::kValueColumn, rowOf(*dialog, "SEPARATOR"), cell);
        QCOMPARE(cell.cellType(), grid->DropListTypeId());
        QCOMPARE(cell.label(), shown("comma") + "\n" + shown("semicolon") + "\n\n");
        grid->GetCell(CDefParmsGrid::kValueColumn, rowOf(*dialog, "HIDDEN"), cell);
        QCOMPARE(cell.cellType(), grid->BrowseTypeId());
        grid->GetCell(CDefParmsGrid::kValueColumn, rowOf(*dialog, "COLOUR"), cell);
        QCOMPARE(cell.cellType(), grid->ColourTypeId());

        // The help the format gives is the row's tip, in either column.
        QCOMPARE(grid->HelpTextOf(rowOf(*dialog, "PLAIN")), shown("Something plain."));
        QCOMPARE(grid->HelpTextOf(rowOf(*dialog, "WIDTH")), QString());
    }

    // The rule follows the DISABLE row's shown text, stored or localised.
    void shouldEnableRowsByTheDisableRule_data()
    {
        QTest::addColumn<QString>("disable");
        QTest::addColumn<bool>("plain");
        QTest::addColumn<bool>("onlyOn");
        QTest::addColumn<bool>("always");
        QTest::addColumn<bool>("both");
        QTest::newRow("No") << QStringLiteral("No") << true << false << true << true;
        QTest::newRow("localised No") << shown("No") << true << false << true << true;
        QTest::newRow("Yes") << QStringLiteral("Yes") << false << true << true << true;
        QTest::newRow("localised Yes") << shown("Yes") << false << true << true << true;
        QTest::newRow("anything else") << QStringLiteral("maybe") << false << true << true << true;
    }
    void shouldEnableRowsByTheDisableRule()
    {
        QFETCH(QString, disable);
        QFETCH(bool, plain);
        QFETCH(bool, onlyOn);
        QFETCH(bool, always);
        QFETCH(bool, both);
        auto dialog = open(record("inventory", "SHEET"));
        type(*dialog, "USE_TEMPLATE", disable);
        QCOMPARE(enabled(*dialog, "PLAIN"), plain);
        QCOMPARE(enabled(*dialog, "SEPARATOR"), plain);
        QCOMPARE(enabled(*dialog, "ONLY_ON"), onlyOn);
        QCOMPARE(enabled(*dialog, "ALWAYS"), always);
        QCOMPARE(enabled(*dialog, "BOTH"), both);
        QVERIFY(enabled(*dialog, "USE_TEMPLATE"));
    }

    // The keyboard reaches the DISABLE row's list, and going back to No
    // gives the rows their states back; disabled rows can be passed over but
    // not changed.
    void shouldFollowADisableRowChangedByTheKeyboard()
    {
        auto dialog = open(record("inventory", "SHEET"));
        dialog->show();
        QVERIFY(QTest::qWaitForWindowActive(dialog.get()));
        dialog->tabControl()->setCurrentIndex(dialog->tabControl()->count() - 1);
        CDefParmsGrid *grid = gridOf(*dialog);
        grid->setFocus();
        QTRY_VERIFY(grid->hasFocus());
        QCOMPARE(grid->GetCurrentRow(), 0L);
        QTest::keyClick(grid, Qt::Key_Right);
        QCOMPARE(grid->GetCurrentCol(), int(CDefParmsGrid::kValueColumn));

        const auto choose = [&](const QString &entry) {
            QTest::keyClick(grid, Qt::Key_F4);
            QTRY_VERIFY(dropList(*grid).IsListOpen());
            CUGLstBox *list = dropList(*grid).ListBox();
            QTest::keyClick(list, entry.at(0).toLatin1());
            QCOMPARE(list->currentItem()->text(), entry);
            QTest::keyClick(list, Qt::Key_Return);
            QVERIFY(!dropList(*grid).IsListOpen());
        };
        choose(shown("Yes"));
        QCOMPARE(valueOf(*dialog, "USE_TEMPLATE"), shown("Yes"));
        QVERIFY(!enabled(*dialog, "PLAIN"));
        QVERIFY(enabled(*dialog, "ONLY_ON"));

        // Down over the disabled PLAIN row: it takes no typing.
        QTest::keyClick(grid, Qt::Key_Down);
        QCOMPARE(grid->GetCurrentRow(), rowOf(*dialog, "PLAIN"));
        const QString plain = valueOf(*dialog, "PLAIN");
        QTest::keyClicks(grid, "x");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(valueOf(*dialog, "PLAIN"), plain);
        QTest::keyClick(grid, Qt::Key_Down);
        QTest::keyClicks(grid, "z");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(valueOf(*dialog, "ONLY_ON"), QStringLiteral("z"));

        QTest::keyClick(grid, Qt::Key_Home, Qt::ControlModifier);
        QCOMPARE(grid->GetCurrentRow(), 0L);
        choose(shown("No"));
        QVERIFY(enabled(*dialog, "PLAIN"));
        QVERIFY(!enabled(*dialog, "ONLY_ON"));

        // Digits only in an INTEGER row, the first key starting the edit.
        grid->GotoCell(CDefParmsGrid::kValueColumn, rowOf(*dialog, "WIDTH"));
        QTest::keyClicks(grid, "4");
        QVERIFY(grid->IsEditing());
        QCOMPARE(QApplication::focusWidget(), grid->GetEditor());
        QTest::keyClicks(grid->GetEditor(), "x2");
        QTest::keyClick(grid->GetEditor(), Qt::Key_Return);
        QCOMPARE(valueOf(*dialog, "WIDTH"), QStringLiteral("42"));
        dialog->hide();
    }

    void shouldStoreAnOptionalLocalisedChoiceUntranslated()
    {
        RecordingSchema &schema = record("inventory", "SHEET");
        schema.parameters["SEPARATOR"] = "semicolon";
        auto dialog = open(schema);
        CDefParmsGrid *grid = gridOf(*dialog);
        const long row = rowOf(*dialog, "SEPARATOR");
        QCOMPARE(valueOf(*dialog, "SEPARATOR"), shown("semicolon"));
        QCOMPARE(grid->GetParameterValue(row), std::string("semicolon"));
        type(*dialog, "SEPARATOR", shown("comma"));
        QCOMPARE(grid->GetParameterValue(row), std::string("comma"));
        // The empty entry of an optional choice, and a value the format does
        // not list, are stored as they are.
        type(*dialog, "SEPARATOR", QString());
        QCOMPARE(grid->GetParameterValue(row), std::string());
        type(*dialog, "SEPARATOR", QStringLiteral("pipe"));
        QCOMPARE(grid->GetParameterValue(row), std::string("pipe"));
    }

    void shouldKeepSharedValuesAcrossAChangeOfFormat()
    {
        RecordingSchema &schema = record("inventory", "SHEET");
        auto dialog = open(schema);
        type(*dialog, "WIDTH", QStringLiteral("33"));
        type(*dialog, "SEPARATOR", shown("semicolon"));
        type(*dialog, "PLAIN", QStringLiteral("lost"));
        dialog->SetFormat(m_table.get());
        QCOMPARE(dialog->parametersPage()->parameterNames(), (StringList{"SEPARATOR", "WIDTH", "FRESH"}));
        QCOMPARE(valueOf(*dialog, "WIDTH"), QStringLiteral("33"));
        QCOMPARE(valueOf(*dialog, "SEPARATOR"), shown("semicolon"));
        QCOMPARE(valueOf(*dialog, "FRESH"), QStringLiteral("new"));
        QCOMPARE(gridOf(*dialog)->disableRow(), CDefParmsGrid::kNoDisableRow);
        QVERIFY(enabled(*dialog, "FRESH"));

        type(*dialog, "WIDTH", QStringLiteral("34"));

        // Back again: what the table format lacked shows what it had in
        // this format, what both have what it has now.
        dialog->SetFormat(m_sheet.get());
        QCOMPARE(valueOf(*dialog, "PLAIN"), QStringLiteral("lost"));
        QCOMPARE(valueOf(*dialog, "USE_TEMPLATE"), shown("No"));
        QCOMPARE(valueOf(*dialog, "WIDTH"), QStringLiteral("34"));
        dialog->SetFormat(m_table.get());
        QCOMPARE(valueOf(*dialog, "FRESH"), QStringLiteral("new"));
    }

    void shouldFilterRowsByPromptAndClearOnEscape()
    {
        RecordingSchema &schema = record("inventory", "SHEET");
        auto dialog = open(schema);
        dialog->show();
        QVERIFY(QTest::qWaitForWindowActive(dialog.get()));
        dialog->tabControl()->setCurrentIndex(dialog->tabControl()->count() - 1);
        type(*dialog, "USE_TEMPLATE", QStringLiteral("Yes"));
        type(*dialog, "WIDTH", QStringLiteral("7"));
        QLineEdit *filter = dialog->parametersPage()->filterField();
        QVERIFY(filter);
        // Alt+R, a letter no other control of the dialog uses in either
        // language.
        QTest::keyClick(dialog.get(), Qt::Key_R, Qt::AltModifier);
        QTRY_VERIFY(filter->hasFocus());
        // "width" in English, "breite" in German: the end of the localised
        // prompt, typed in lower case.
        const QString word = shown("Column Width").section(QLatin1Char(' '), -1).right(5).toLower();
        CDefParmsGrid *grid = gridOf(*dialog);
        const int promptWidth = grid->GetColumnWidth(CDefParmsGrid::kPromptColumn);
        const auto shownRows = [grid] {
            long shown = 0;
            for (long row = 0; row < grid->GetRowCount(); ++row)
                shown += grid->IsRowShown(row) ? 1 : 0;
            return shown;
        };
        QTest::keyClicks(filter, word);
        QCOMPARE(shownRows(), 1L);
        QCOMPARE(grid->GetCurrentRow(), rowOf(*dialog, "WIDTH"));
        QCOMPARE(grid->GetColumnWidth(CDefParmsGrid::kPromptColumn), promptWidth);
        QCOMPARE(valueOf(*dialog, "WIDTH"), QStringLiteral("7"));
        // The hidden DISABLE row still rules.
        QVERIFY(!enabled(*dialog, "WIDTH"));
        type(*dialog, "WIDTH", QStringLiteral("8"));

        // The switch says Yes but nothing it turns on has a value: that
        // would read back as No, so OK says so and shows the row, filter or
        // not.
        vyr::test::ShownMessage refusal;
        answerNextMessageBox(&refusal);
        dialog->OnOK();
        QVERIFY(dialog->isVisible());
        QVERIFY(refusal.text.contains(shown("Only On")));
        QCOMPARE(filter->text(), QString());
        QCOMPARE(grid->GetCurrentRow(), rowOf(*dialog, "ONLY_ON"));
        type(*dialog, "ONLY_ON", QStringLiteral("o"));

        QTest::keyClicks(filter, word);
        QTest::keyClick(filter, Qt::Key_Escape);
        QVERIFY(dialog->isVisible());
        QCOMPARE(filter->text(), QString());
        QCOMPARE(shownRows(), 11L);
        QCOMPARE(grid->GetParameterValue(rowOf(*dialog, "USE_TEMPLATE")), std::string("Yes"));
        // Filtering is no edit: what was typed before it can still be
        // undone, and done again.
        grid->Undo();
        QCOMPARE(valueOf(*dialog, "ONLY_ON"), QString());
        grid->Redo();
        QCOMPARE(valueOf(*dialog, "ONLY_ON"), QStringLiteral("o"));

        // Filtered out or not, every changed value is written.
        QTest::keyClicks(filter, word);
        dialog->OnOK();
        QCOMPARE(schema.parameters,
                 (std::map<std::string, std::string>{{"ONLY_ON", "o"}, {"WIDTH", "8"}}));
    }

    // Parameters that name attributes follow a rename on the User Attributes
    // page (undo included); one that names a deleted attribute stops OK on
    // its row, while a name that was no attribute already when the dialog
    // opened is left as it was.
    void shouldFollowRenamedAttributesAndRefuseDeletedOnes()
    {
        RecordingSchema &schema = record("inventory", "SHEET");
        schema.parameters["SORT_BY"] = "Item";
        schema.parameters["HIDDEN"] = "Count,Item,Gone";
        auto dialog = open(schema);
        CAttrGrid *attributes = dialog->attributesPage()->grid();
        attributes->StoreUserText(CAttrGrid::kNameColumn, 0, QStringLiteral("Article"), ug::TextEdited);
        QCOMPARE(valueOf(*dialog, "SORT_BY"), QStringLiteral("Article"));
        QCOMPARE(valueOf(*dialog, "HIDDEN"), QStringLiteral("Count,Article,Gone"));
        attributes->Undo();
        QCOMPARE(valueOf(*dialog, "SORT_BY"), QStringLiteral("Item"));
        attributes->Redo();
        QCOMPARE(valueOf(*dialog, "SORT_BY"), QStringLiteral("Article"));

        attributes->GotoCell(CAttrGrid::kNameColumn, 1);
        attributes->DeleteSelectedRows();
        vyr::test::ShownMessage refusal;
        answerNextMessageBox(&refusal);
        dialog->OnOK();
        QCOMPARE(dialog->result(), int(QDialog::Rejected));
        QVERIFY(refusal.text.contains(QStringLiteral("Count")));
        QVERIFY(refusal.text.contains(shown("Hidden Columns")));
        QCOMPARE(dialog->currentPage(), static_cast<QWidget *>(dialog->parametersPage()));
        QCOMPARE(gridOf(*dialog)->GetCurrentRow(), rowOf(*dialog, "HIDDEN"));

        type(*dialog, "HIDDEN", QStringLiteral("Article,Gone"));
        dialog->OnOK();
        QCOMPARE(dialog->result(), int(QDialog::Accepted));
        QCOMPARE(schema.parameters.at("SORT_BY"), std::string("Article"));
        QCOMPARE(schema.parameters.at("HIDDEN"), std::string("Article,Gone"));
    }

    void shouldOfferAttributeNamesInListsAndSelectionBoxes()
    {
        RecordingSchema &schema = record("inventory", "SHEET");
        schema.parameters["USE_TEMPLATE"] = "No";
        auto dialog = open(schema);
        dialog->show();
        QVERIFY(QTest::qWaitForWindowActive(dialog.get()));
        dialog->tabControl()->setCurrentIndex(dialog->tabControl()->count() - 1);
        CDefParmsGrid *grid = gridOf(*dialog);
        QStringList choices;
        CUGCell cell;
        grid->OnGetChoices(*grid, CDefParmsGrid::kValueColumn, rowOf(*dialog, "SORT_BY"), cell, choices);
        QCOMPARE(choices, (QStringList{"Item", "Count", QString()}));

        type(*dialog, "HIDDEN", QStringLiteral("Count"));
        QStringList offered;
        QString title;
        answerNextDialog([&](QDialog *form) {
            title = form->windowTitle();
            auto *box = form->findChild<QWidget *>(QStringLiteral("prompt_SELECTION_BOX_ONLY"));
            offered = vyr::test::recheck(box->findChild<QListWidget *>(), {"Item", "Count"}).items;
            return true;
        });
        grid->setFocus();
        grid->GotoCell(CDefParmsGrid::kValueColumn, rowOf(*dialog, "HIDDEN"));
        QTest::keyClick(grid, Qt::Key_Return);
        QCOMPARE(title, QString::fromStdString(LocalizeText("Select")));
        if (qEnvironmentVariableIsSet("VYR_EXPECT_GERMAN"))
            QCOMPARE(title, QStringLiteral("Auswählen"));
        QCOMPARE(offered, (QStringList{"Item", "Count"}));
        QCOMPARE(valueOf(*dialog, "HIDDEN"), QStringLiteral("Item,Count"));

        // The icon picker answers with the file chosen; a cancel keeps the
        // value.
        const long symbol = rowOf(*dialog, "SYMBOL");
        for (const bool accepted : {true, false}) {
            answerNextDialog([accepted](QDialog *form) {
                form->findChild<QLineEdit *>(QStringLiteral("iconFile"))
                    ->setText(accepted ? QStringLiteral("/icons/flag.png") : QStringLiteral("/icons/other.png"));
                return accepted;
            });
            grid->GotoCell(CDefParmsGrid::kValueColumn, symbol);
            QTest::keyClick(grid, Qt::Key_F4);
            QCOMPARE(valueOf(*dialog, "SYMBOL"), QStringLiteral("/icons/flag.png"));
        }

        // Turned off by the rule, the button opens nothing.
        type(*dialog, "USE_TEMPLATE", QStringLiteral("Yes"));
        grid->GotoCell(CDefParmsGrid::kValueColumn, rowOf(*dialog, "HIDDEN"));
        QTest::keyClick(grid, Qt::Key_Return);
        QVERIFY(!QApplication::activeModalWidget());
        QCOMPARE(valueOf(*dialog, "HIDDEN"), QStringLiteral("Item,Count"));
    }
};

QTEST_MAIN(ParametersPageTest)
#include "tst_parameterspage.moc"
