// Attribute types in the user interface: the type grid and its argument
// cells, the editors behind list-valued arguments, and the range and coded
// value domain dialogs - checked, refused, rebuilt and used by keyboard.
#include "attrtypes/attrtype.h"
#include "attrtypes/attrtypeargtemplate.h"
#include "attrtypes/datatypemappings.h"
#include "attrtypes/typestring.h"
#include "attrtypesdlg/argumentcells.h"
#include "attrtypesdlg/cattrtypegrid.h"
#include "attrtypesdlg/ccodeddomaindlg.h"
#include "attrtypesdlg/crangedomaindlg.h"
#include "grid/cugstandardtypes.h"
#include "support/gridwindow.h"
#include "support/modalanswers.h"
#include "uikit/cgrideditdlg.h"
#include "uikit/unattendedrun.h"
#include "util/listpacking.h"
#include "util/resourceids.h"
#include "uikit/resourcelibrary.h"

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QtTest>

using namespace vyr;

namespace {

// A writer's format with every kind of argument, and fixed widths that keep
// a template out of the type list.
constexpr const char *kRichMappings[] = {
    "char(1)",       "vyr_char(1)",        "char(width)",    "vyr_char",      "numeric(width,decimal)",
    "vyr_decimal",   "int",                "vyr_int32",      "binint(binint-width)", "vyr_int16",
    "boolean",       "vyr_boolean",        "date",           "vyr_date",      "enum(stringset)",
    "vyr_char(200)", "tags(stringlist)",   "vyr_char(200)",  "props(stringmap)", "vyr_char(200)",
    "ranged(range_domain)", "vyr_int32",   "coded(coded_domain)", "vyr_int32",
};

std::unique_ptr<DataTypeMappings> richMappings(bool isSource = false)
{
    auto mappings = std::make_unique<DataTypeMappings>("RICH", isSource);
    for (std::size_t i = 0; i + 1 < std::size(kRichMappings); i += 2)
        mappings->addMapping(kRichMappings[i], kRichMappings[i + 1], kStoredListMode);
    return mappings;
}

// The writer's mappings every test but a reader's shares.
const DataTypeMappings &rich()
{
    static const std::unique_ptr<DataTypeMappings> mappings = richMappings();
    return *mappings;
}

CUGCell resolved(CVVyrGrid &grid, int column, long row)
{
    CUGCell cell;
    grid.GetCellResolved(column, row, cell);
    return cell;
}

// A type grid in a window, with a way to choose a type as a person would.
struct TypeGridWindow : test::GridWindow<CAttrTypeGrid>
{
    TypeGridWindow(const DataTypeMappings &mappings, int typeColumn, int mode, StringList domains = {})
        : GridWindow(mappings, typeColumn, mode, true, std::move(domains))
    {
    }

    // Chooses `name` in the row's type drop list as a person would.
    bool choose(long row, const QString &name)
    {
        grid->GotoCell(grid->typeColumn(), row);
        QTest::keyClick(grid, Qt::Key_F4);
        auto *type = static_cast<CUGDropListType *>(grid->GetCellType(grid->DropListTypeId()));
        if (!type->IsListOpen())
            return false;
        const QList<QListWidgetItem *> found = type->ListBox()->findItems(name, Qt::MatchExactly);
        if (found.isEmpty())
            return false;
        type->ListBox()->setCurrentItem(found.first());
        QTest::keyClick(type->ListBox(), Qt::Key_Return);
        return grid->GetCellString(row, grid->typeColumn()) == name;
    }
};

} // namespace

Q_DECLARE_METATYPE(vyr::StringList)

// Lists shown whole when a comparison fails.
template <>
char *QTest::toString(const vyr::StringList &list)
{
    return QTest::toString(QString::fromStdString(joinList(list, '|')));
}

class tst_AttrTypesDlg : public QObject
{
    Q_OBJECT

private slots:
    void typeListOffersSelectableNamesOnce_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QStringList>("names");
        const QStringList all{"binint", "boolean", "char", "coded", "date", "enum", "int", "numeric", "props", "ranged",
                              "tags"};
        QTest::newRow("attributes") << 0 << all;
        QStringList noCharNoBoolean = all;
        noCharNoBoolean.removeAll("char");
        noCharNoBoolean.removeAll("boolean");
        QTest::newRow("range field types") << 1 << noCharNoBoolean;
        QTest::newRow("coded field types") << 2 << all;
    }

    void typeListOffersSelectableNamesOnce()
    {
        QFETCH(int, mode);
        QFETCH(QStringList, names);
        TypeGridWindow ui(rich(), 0, mode);
        QCOMPARE(ui.grid->typeNames(), names);
        QCOMPARE(resolved(*ui.grid, 0, 0).label(), names.join('\n') + '\n');
        // "char" stands for the template with a width, not the fixed char(1).
        if (mode != 1)
            QCOMPARE(ui.grid->TemplateOf("char")->argCount(), 1u);
    }

    // However narrow the window and wide the leading column, an argument's
    // button keeps its label whole ("Bearbeiten..." is long).
    void argumentColumnsKeepRoomForTheirButtons()
    {
        TypeGridWindow ui(rich(), 1, 0);
        CAttrTypeGrid &grid = *ui.grid;
        QVERIFY(ui.show());
        grid.SetColumnWidth(0, 5000);
        ui.window.resize(380, 360);
        QTRY_VERIFY(grid.width() < 400);
        CUGCell button;
        button.setCellType(grid.BrowseTypeId());
        button.setLabel(loadResourceString(res::BrowseEditLabel));
        QSize wanted;
        grid.GetCellType(button)->MeasureCell(wanted, button);
        QVERIFY(wanted.width() > 0);
        CUGCell heading;
        grid.GetHeadingDefaultCell(heading);
        const QFontMetrics headingMetrics(grid.cellFont(heading));
        for (const int column : {2, 3}) {
            const int headingWidth = headingMetrics.horizontalAdvance(grid.GetCellText(column, -1));
            QVERIFY2(grid.GetColumnWidth(column) >= std::max(wanted.width(), headingWidth),
                     qPrintable(QString::number(column)));
        }
        QVERIFY(grid.GetColumnWidth(0) < 5000);
    }

    void choosingATypeSetsUpItsArgumentCells()
    {
        TypeGridWindow ui(rich(), 1, 0);
        CAttrTypeGrid &grid = *ui.grid;
        QVERIFY(ui.show());
        // Nothing chosen: no argument can be entered.
        QVERIFY(!grid.IsCellEnabled(2, 0));
        QVERIFY(!grid.IsCellEnabled(3, 0));

        QVERIFY(ui.choose(0, "numeric"));
        QCOMPARE(grid.GetRowCount(), 2L);
        QVERIFY(grid.IsCellEnabled(2, 0));
        QVERIFY(grid.IsCellEnabled(3, 0));
        QCOMPARE(grid.GetCellString(0, 2), QString("20"));
        QCOMPARE(grid.GetCellString(0, 3), QString("10"));
        QCOMPARE(resolved(grid, 2, 0).mask(), QString("99999999"));

        // A type with one argument: the second cell goes, its text hidden.
        QVERIFY(ui.choose(0, "binint"));
        QVERIFY(grid.IsCellEnabled(2, 0));
        QVERIFY(!grid.IsCellEnabled(3, 0));
        QCOMPARE(grid.GetCellString(0, 2), QString("4"));
        QCOMPARE(resolved(grid, 2, 0).label(), QString("2\n4\n"));
        const CUGCell hidden = resolved(grid, 3, 0);
        QCOMPARE(hidden.textColor(), hidden.backColor());

        // Undo puts the texts back and the cells follow the restored type.
        grid.Undo();
        QCOMPARE(grid.GetCellString(0, 1), QString("numeric"));
        QCOMPARE(grid.GetCellString(0, 2), QString("20"));
        QVERIFY(grid.IsCellEnabled(3, 0));
        QCOMPARE(resolved(grid, 2, 0).mask(), QString("99999999"));

        // The same type chosen again keeps what was entered for it.
        grid.SetCellText(2, 0, "12");
        QVERIFY(ui.choose(0, "numeric"));
        QCOMPARE(grid.GetCellString(0, 2), QString("12"));

        QVERIFY(ui.choose(0, "date"));
        QVERIFY(!grid.IsCellEnabled(2, 0));
        QCOMPARE(grid.GetRowType(0)->name(), std::string("date"));

        // A row added, undone and done again is set up as a new row: the domain
        // cell of a format without domains stays out of reach.
        grid.GotoCell(1, 0);
        QTest::keyClick(&grid, Qt::Key_Insert);
        grid.Undo();
        grid.Redo();
        QVERIFY(!grid.IsCellEnabled(4, 0));
        QVERIFY(!grid.IsCellEnabled(2, 0));
    }

    void rowTypesGoInAndComeOut()
    {
        TypeGridWindow ui(rich(), 0, 0);
        CAttrTypeGrid &grid = *ui.grid;
        // Without domains their column is out of reach.
        QVERIFY(!grid.IsCellEnabled(3, 0));
        grid.AppendBlankRow();
        grid.SetRowType(0, *rich().createType("numeric(12,3)", kDialogListMode));
        QCOMPARE(grid.GetCellString(0, 1), QString("12"));
        QVERIFY(grid.IsCellEnabled(2, 0));
        QCOMPARE(formatType(*grid.GetRowType(0), kDialogListMode), std::string("numeric(12,3)"));

        // An empty first argument ends the values; a type that fits no
        // template of that many values is none.
        grid.SetCellText(1, 0, QString());
        QVERIFY(!grid.GetRowType(0));
        grid.SetCellText(0, 0, "no such type");
        QVERIFY(!grid.GetRowType(0));

        // Records appended from texts get their cells too.
        const long row = grid.AppendRowTexts({"enum", "a:b", "", ""});
        QVERIFY(grid.IsCellEnabled(1, row));
        QVERIFY(!grid.IsCellEnabled(2, row));
        QCOMPARE(resolved(grid, 1, row).cellType(), grid.BrowseTypeId());
        QCOMPARE(formatType(*grid.GetRowType(row), kDialogListMode), std::string("enum(a:b)"));

        TypeGridWindow withDomains(rich(), 0, 0, {"roads", "rivers"});
        CAttrTypeGrid &domains = *withDomains.grid;
        QVERIFY(domains.IsCellEnabled(3, 0));
        QCOMPARE(resolved(domains, 3, 0).label(), QString("none\nroads\nrivers\n"));
        domains.AppendBlankRow();
        domains.SetRowType(0, *rich().createType("date,roads", kDialogListMode));
        QCOMPARE(domains.GetCellString(0, 3), QString("roads"));
        QCOMPARE(formatType(*domains.GetRowType(0), kDialogListMode), std::string("date,roads"));
        domains.SetCellText(3, 0, "none");
        QCOMPARE(formatType(*domains.GetRowType(0), kDialogListMode), std::string("date"));
    }

    void everyArgumentKindHasItsCell_data()
    {
        QTest::addColumn<QString>("keyword");
        QTest::addColumn<QString>("typeName");
        QTest::addColumn<bool>("reader");
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("text");
        QString widths;
        for (int width = 1; width <= 16; ++width)
            widths += QString::number(width) + '\n';
        QTest::newRow("width") << "width" << "number" << false << "mask" << "" << "";
        QTest::newRow("int width") << "width" << "int" << false << "list" << widths << "11";
        QTest::newRow("byte size") << "byte-size" << "x" << false << "list" << "2\n4\n" << "";
        QTest::newRow("string map") << "stringmap" << "x" << false << "browse"
                                    << loadResourceString(res::BrowseEditLabel) << "kept";
        QTest::newRow("coded domain of a reader") << "coded_domain" << "x" << true << "browse"
                                                  << loadResourceString(res::BrowseViewLabel) << "kept";
    }

    void everyArgumentKindHasItsCell()
    {
        QFETCH(QString, keyword);
        QFETCH(QString, typeName);
        QFETCH(bool, reader);
        QFETCH(QString, kind);
        QFETCH(QString, label);
        QFETCH(QString, text);
        DataTypeMappings mappings("F", reader);
        mappings.addMapping(QString("%1(%2)").arg(typeName, keyword).toStdString(), "vyr_x", kStoredListMode);
        TypeGridWindow ui(mappings, 0, 0);
        CVVyrGrid &grid = *ui.grid;
        ArgumentCells cells(grid);
        // The template's argument prepares the cell of its keyword's kind; what
        // another kind left in the cell goes.
        const AttrTypeTemplate &typeTemplate = mappings.nativeTemplate(0);
        CUGCell cell;
        cell.setText("kept");
        cell.setMask("000");
        cell.setLabel("old\n");
        cell.setCellType(grid.DropListTypeId());
        cells.configureCell(*typeTemplate.arg(0), cell);
        if (kind == "mask") {
            QCOMPARE(cell.mask(), QString("99999999"));
            QCOMPARE(cell.cellType(), 0);
        } else if (kind == "list") {
            QCOMPARE(cell.cellType(), grid.DropListTypeId());
            QCOMPARE(cell.cellTypeParam(), 512);
            QVERIFY(cell.mask().isEmpty());
        } else {
            QCOMPARE(cell.cellType(), grid.BrowseTypeId());
            QVERIFY(CVVyrGrid::CellActionHandlerOf(cell));
            QVERIFY(!cell.isReadOnly());
            QCOMPARE(cell.textColor(), grid.paletteColour(QPalette::Text));
        }
        QCOMPARE(cell.label(), label);
        QCOMPARE(cell.text(), text.isEmpty() ? QString("kept") : text);
        // The same kind and format share one handler.
        CUGCell other;
        cells.configureCell(*typeTemplate.arg(0), other);
        QCOMPARE(CVVyrGrid::CellActionHandlerOf(other), CVVyrGrid::CellActionHandlerOf(cell));
    }

    void listEditorsPackWhatTheyEdit()
    {
        TypeGridWindow ui(rich(), 0, 0);
        CAttrTypeGrid &grid = *ui.grid;
        const long row = grid.AppendRowTexts({"enum", "a:b", "", ""});
        QVERIFY(ui.show());
        grid.GotoCell(1, row);

        // The rows are the unpacked elements; an element with a colon comes
        // back quoted.
        QStringList shown;
        test::onNextModalDialog([&shown](QDialog *dialog) {
            auto *editor = qobject_cast<CGridEditDlg *>(dialog);
            QVERIFY(editor);
            QCOMPARE(editor->windowTitle(), loadResourceString(res::StringSetTitle));
            for (long r = 0; r < editor->grid()->GetRowCount(); ++r)
                shown << editor->grid()->GetCellString(r, 0);
            editor->grid()->GotoCell(0, editor->grid()->GetRowCount() - 1);
            editor->grid()->PasteText("x:y");
            editor->accept();
        });
        QTest::keyClick(&grid, Qt::Key_Return);
        QCOMPARE(shown, QStringList({"a", "b", ""}));
        QCOMPARE(grid.GetCellString(row, 1), QString("a:b:\"x:y\""));
        QVERIFY(grid.CanUndo());

        // Cancel changes nothing.
        test::answerNextDialog([](QDialog *dialog) {
            static_cast<CGridEditDlg *>(dialog)->grid()->PasteText("lost");
            return false;
        });
        QTest::keyClick(&grid, Qt::Key_Space);
        QCOMPARE(grid.GetCellString(row, 1), QString("a:b:\"x:y\""));

        // A map is its keys and values alternately.
        const long map = grid.AppendRowTexts({"props", "k:v", "", ""});
        grid.GotoCell(1, map);
        test::answerNextDialog([](QDialog *dialog) {
            auto *editor = static_cast<CGridEditDlg *>(dialog);
            [&] {
                QCOMPARE(editor->grid()->GetColumnCount(), 2);
                QCOMPARE(editor->grid()->GetCellString(0, 1), QString("v"));
            }();
            editor->grid()->GotoCell(0, 1);
            editor->grid()->PasteText("k2\tv 2\nhalf\t\n");
            return true;
        });
        QTest::keyClick(&grid, Qt::Key_F4);
        QCOMPARE(grid.GetCellString(map, 1), QString("k:v:k2:\"v 2\""));
    }

    void readerFormatsOpenReadOnlyEditors()
    {
        const auto mappings = richMappings(true);
        TypeGridWindow ui(*mappings, 0, 0);
        CAttrTypeGrid &grid = *ui.grid;
        const long row = grid.AppendRowTexts({"tags", "a", "", ""});
        QCOMPARE(resolved(grid, 1, row).label(), loadResourceString(res::BrowseViewLabel));
        QVERIFY(ui.show());
        grid.GotoCell(1, row);
        bool readOnly = false;
        test::answerNextDialog([&readOnly](QDialog *dialog) {
            auto *editor = static_cast<CGridEditDlg *>(dialog);
            readOnly = !editor->grid()->IsGridEnabled();
            editor->grid()->PasteText("b");
            return true;
        });
        QTest::keyClick(&grid, Qt::Key_Return);
        QVERIFY(readOnly);
        QCOMPARE(grid.GetCellString(row, 1), QString("a"));

        // A read-only grid still shows a list's values, and keeps them.
        grid.EnableGrid(false);
        bool shown = false;
        test::answerNextDialog([&shown](QDialog *) { return shown = true; });
        QTest::keyClick(&grid, Qt::Key_Return);
        QVERIFY(shown);
        QCOMPARE(grid.GetCellString(row, 1), QString("a"));

        // The domain dialogs of a reader show everything, and allow nothing.
        CRangeDomainDlg range({"r", "int", "0", "9"}, mappings.get(), false);
        QVERIFY(range.Create());
        for (const unsigned id : {CDomainDlg::kIdName, CDomainDlg::kIdNameOnly, CRangeDomainDlg::kIdMinimum,
                                  CRangeDomainDlg::kIdMaximum})
            QVERIFY2(!range.GetDlgItem(id)->isEnabled(), qPrintable(QString::number(id)));
        QVERIFY(!range.typeGrid()->isEnabled());
        QVERIFY(range.GetDlgItem(kIdOk)->isEnabled());
        QVERIFY(range.GetDlgItem(kIdCancel)->isEnabled());
    }

    void domainChecksRefuseAndExplain_data()
    {
        // `message` refuses, with the domain left as it was; accepted, the
        // domain comes back as `result`, or unchanged when that is empty.
        QTest::addColumn<QString>("kind");
        QTest::addColumn<StringList>("domain");
        QTest::addColumn<bool>("nameOnly");
        QTest::addColumn<unsigned>("message");
        QTest::addColumn<StringList>("result");
        const StringList same;
        const unsigned invalid = res::DomainRangeInvalid;
        const unsigned noCode = res::DomainCodeRequired;
        QTest::newRow("range") << "range" << StringList{"r", "int", "-5", "2.5"} << false << 0u << same;
        const unsigned inverted = res::DomainRangeInverted;
        QTest::newRow("minimum above maximum") << "range" << StringList{"r", "int", "10", "1"} << false << inverted
                                               << same;
        QTest::newRow("above once the comma is read") << "range" << StringList{"r", "int", "1,5", "1"} << false
                                                      << inverted << same;
        QTest::newRow("equal bounds") << "range" << StringList{"r", "int", "3", "3.0"} << false << 0u << same;
        // Bounds are kept in the form the number reader reads: as typed when
        // that is a plain decimal, else as the number that was read.
        QTest::newRow("decimal comma") << "range" << StringList{"r", "int", "1,5", "2"} << false << 0u
                                       << StringList{"r", "int", "1.5", "2"};
        QTest::newRow("plain decimals as typed") << "range" << StringList{"r", "int", "2.50", "+3e1"} << false << 0u
                                                 << same;
        QTest::newRow("beyond single precision") << "range" << StringList{"r", "int", "1e39", "1"} << false
                                                 << invalid << same;
        QTest::newRow("empty bound") << "range" << StringList{"r", "int", "", "1"} << false << invalid << same;
        QTest::newRow("no name") << "range" << StringList{"", "int", "0", "1"} << false
                                 << unsigned(res::DomainNameRequired) << same;
        QTest::newRow("name only keeps nothing else") << "range" << StringList{"r", "int", "0", "abc"} << true
                                                      << 0u << StringList{"r"};
        // A field type the format does not know is no definition; one the
        // list does not offer (no "char" for a range) is kept as it was.
        QTest::newRow("unknown field type") << "range" << StringList{"speed", "varchar(9)", "1", "2"} << false
                                            << 0u << StringList{"speed"};
        QTest::newRow("field type not offered") << "range" << StringList{"speed", "char(3)", "1", "2"} << false
                                                << 0u << same;
        QTest::newRow("coded") << "coded" << StringList{"c", "int", "1", "Paved", "2", "Gravel"} << false << 0u << same;
        QTest::newRow("a code without its description") << "coded" << StringList{"c", "int", "1", "Paved", "2"}
                                                        << false << 0u << StringList{"c", "int", "1", "Paved"};
        QTest::newRow("a row without a code") << "coded" << StringList{"c", "int", "1", "P", "", "no code", "3", ""}
                                              << false << 0u << StringList{"c", "int", "1", "P", "3", ""};
        QTest::newRow("no codes") << "coded" << StringList{"c", "int"} << false << noCode << same;
        QTest::newRow("only rows without codes") << "coded" << StringList{"c", "int", "", "x", "", "y"} << false
                                                 << noCode << same;
        QTest::newRow("coded by name") << "coded" << StringList{"c", "int", "1", "Paved"} << true << 0u
                                       << StringList{"c"};
    }

    void domainChecksRefuseAndExplain()
    {
        QFETCH(QString, kind);
        QFETCH(StringList, domain);
        QFETCH(bool, nameOnly);
        QFETCH(unsigned, message);
        QFETCH(StringList, result);
        std::unique_ptr<CDomainDlg> dialog;
        if (kind == "range")
            dialog = std::make_unique<CRangeDomainDlg>(domain, &rich(), true);
        else
            dialog = std::make_unique<CCodedDomainDlg>(domain, &rich(), true);
        QVERIFY(dialog->Create());
        auto *box = qobject_cast<QCheckBox *>(dialog->GetDlgItem(CDomainDlg::kIdNameOnly));
        if (box->isChecked() != nameOnly)
            box->click();
        dialog->show();
        UnattendedRun run;
        QCOMPARE(run.accept(*dialog), message == 0);
        QCOMPARE(run.messages(), message ? QStringList{loadResourceString(message)} : QStringList{});
        QCOMPARE(dialog->domainList(), result.empty() ? domain : result);
    }

    void domainDialogsWorkByKeyboard()
    {
        CRangeDomainDlg dialog({}, &rich(), true);
        QVERIFY(dialog.Create());
        QVERIFY(test::showActive(dialog));
        CAttrTypeGrid *types = dialog.typeGrid();
        auto *name = dialog.GetDlgItem(CDomainDlg::kIdName);
        name->setFocus();
        QTRY_VERIFY(name->hasFocus());
        QTest::keyClicks(name, "speed");
        // Name, name only, the field type, the bounds: in that order.
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), dialog.GetDlgItem(CDomainDlg::kIdNameOnly));
        // Empty, the domain is given by name; Space gives it a definition.
        QVERIFY(qobject_cast<QCheckBox *>(QApplication::focusWidget())->isChecked());
        QVERIFY(!types->isEnabled());
        QVERIFY(!dialog.GetDlgItem(CRangeDomainDlg::kIdMinimum)->isEnabled());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(types));
        QTest::keyClick(types, Qt::Key_Down, Qt::AltModifier);
        auto *list = static_cast<CUGDropListType *>(types->GetCellType(types->DropListTypeId()));
        QTRY_VERIFY(list->IsListOpen());
        // Typing picks the entry that begins with it.
        QTest::keyClick(list->ListBox(), Qt::Key_I);
        QTest::keyClick(list->ListBox(), Qt::Key_Return);
        QCOMPARE(types->GetCellString(0, 0), QString("int"));
        QTest::keyClick(types, Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), dialog.GetDlgItem(CRangeDomainDlg::kIdMinimum));
        QTest::keyClicks(QApplication::focusWidget(), "1");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QTest::keyClicks(QApplication::focusWidget(), "9");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(dialog.result(), int(kEndOk));
        QCOMPARE(dialog.domainList(), (StringList{"speed", "int", "1", "9"}));
    }
};

QTEST_MAIN(tst_AttrTypesDlg)
#include "tst_attrtypesdlg.moc"
