// The editors behind list-valued arguments, run as a person would: what
// nobody touched comes back byte for byte in every code page.
#include "attrtypes/datatypemappings.h"
#include "attrtypes/typestring.h"
#include "attrtypesdlg/argumenteditor.h"
#include "attrtypesdlg/ccodeddomaindlg.h"
#include "attrtypesdlg/cdomaindlg.h"
#include "attrtypesdlg/crangedomaindlg.h"
#include "support/gridwindow.h"
#include "support/modalanswers.h"
#include "support/randomtext.h"
#include "uikit/cgrideditdlg.h"
#include "uikit/cvvyrgrid.h"
#include "uikit/narrowtext.h"
#include "uikit/resourcelibrary.h"
#include "util/codepage.h"
#include "util/resourceids.h"

#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QtTest>

using namespace vyr;

namespace {

using Kind = ArgumentEditor::Kind;

const DataTypeMappings &writerTypes()
{
    static const std::unique_ptr<DataTypeMappings> mappings = [] {
        auto made = std::make_unique<DataTypeMappings>("W", false);
        made->addMapping("int", "vyr_int32", kStoredListMode);
        made->addMapping("real", "vyr_real64", kStoredListMode);
        return made;
    }();
    return *mappings;
}

// Bytes in a comparison failure's message, escaped where not printable.
QByteArray bytes(const std::string &text)
{
    return QByteArray::fromStdString(text).toPercentEncoding(" :\"");
}

// OK as a person presses it: from a grid, Control+Enter (plain Enter stays
// in the grid); elsewhere Enter.
void pressOk(QDialog *dialog)
{
    QWidget *focus = QApplication::focusWidget();
    if (!focus || focus->window() != dialog)
        focus = dialog;
    const bool inGrid = qobject_cast<CVVyrGrid *>(focus) != nullptr;
    QTest::keyClick(focus, Qt::Key_Return, inGrid ? Qt::ControlModifier : Qt::NoModifier);
}

// The message boxes answered with OK: their texts, and how many buttons
// each offered.
struct Messages
{
    QStringList texts;
    QList<qsizetype> buttons;

    void answerNext()
    {
        test::onNextModalDialog([this](QDialog *dialog) {
            auto *box = qobject_cast<QMessageBox *>(dialog);
            QVERIFY(box);
            texts << box->text();
            buttons << box->buttons().size();
            box->button(QMessageBox::Ok)->click();
        });
    }
};

} // namespace

Q_DECLARE_METATYPE(ArgumentEditor::Kind)

class tst_ListEditors : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { resetNarrowCodePage(); }

    void narrowTextSurvivesAWidgetsText_data()
    {
        QTest::addColumn<QString>("codePage");
        QTest::addColumn<QByteArray>("narrow");
        QTest::addColumn<QString>("shown");
        // `shown` empty: only the way back is checked.
        QTest::newRow("UTF-8 text") << "UTF-8" << QByteArray("caf\xC3\xA9") << QString("caf\u00E9");
        QTest::newRow("UTF-8 invalid byte") << "UTF-8" << QByteArray("caf\xE9") << QString();
        QTest::newRow("UTF-8 byte-order mark") << "UTF-8" << QByteArray("\xEF\xBB\xBF" "a") << QString(QChar(0xFEFF)) + u'a';
        QTest::newRow("UTF-8 encoded surrogate") << "UTF-8" << QByteArray("\xED\xA0\x80") << QString();
        QTest::newRow("CP1252 text") << "CP1252" << QByteArray("caf\xE9 \x80") << QString("caf\u00E9 \u20AC");
        QTest::newRow("CP1252 undefined bytes") << "CP1252" << QByteArray("\x81\x8D") << QString();
        QTest::newRow("CP932 kana") << "CP932" << QByteArray("\x82\xA0x") << QString("\u3042x");
        // Characters with two codes: each keeps the one it came with.
        QTest::newRow("CP932 NEC and JIS codes") << "CP932" << QByteArray("\x87\x90\x81\xE0") << QString();
        QTest::newRow("CP932 IBM and NEC-selected codes") << "CP932" << QByteArray("\xFA\x5C\xED\x40") << QString();
        QTest::newRow("CP932 lone lead byte") << "CP932" << QByteArray("x\x82") << QString();
        QTest::newRow("EUC-JP text") << "EUC-JP" << QByteArray("\xA4\xA2" "a") << QString("\u3042a");
    }

    void narrowTextSurvivesAWidgetsText()
    {
        QFETCH(QString, codePage);
        QFETCH(QByteArray, narrow);
        QFETCH(QString, shown);
        QVERIFY(setNarrowCodePage(codePage.toStdString()));
        const QString wide = fromNarrow(narrow.toStdString());
        if (!shown.isEmpty())
            QCOMPARE(wide, shown);
        QCOMPARE(QByteArray::fromStdString(toNarrow(wide)), narrow);
    }

    void everyByteStringSurvivesAWidgetsText()
    {
        testing::RandomText random(932);
        for (const char *codePage : {"UTF-8", "CP1252", "CP932", "EUC-JP"}) {
            QVERIFY(setNarrowCodePage(codePage));
            for (int i = 0; i < 3000; ++i) {
                const std::string text = random.bytes(24);
                const std::string back = toNarrow(fromNarrow(text));
                if (back != text)
                    QFAIL(qPrintable(QString("%1: %2 came back as %3").arg(codePage, bytes(text), bytes(back))));
            }
        }
    }

    void untouchedValuesKeepTheirBytes_data()
    {
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<QString>("codePage");
        QTest::addColumn<QByteArray>("packed");
        QTest::newRow("set, invalid UTF-8") << Kind::StringSet << "UTF-8" << QByteArray("caf\xE9:x");
        QTest::newRow("list, byte-order marks") << Kind::StringList << "UTF-8"
                                                << QByteArray("\xEF\xBB\xBF:\xEF\xBB\xBF" "a:b");
        QTest::newRow("map, invalid UTF-8") << Kind::StringMap << "UTF-8" << QByteArray("k\xE9:v\xFF");
        QTest::newRow("set, undefined in CP1252") << Kind::StringSet << "CP1252" << QByteArray("\x81\x8D:\xE9");
        QTest::newRow("list, CP932 second codes") << Kind::StringList << "CP932" << QByteArray("\x87\x90:\xED\x40");
        QTest::newRow("range domain") << Kind::RangeDomain << "UTF-8" << QByteArray("caf\xE9:int:1:2");
        QTest::newRow("coded domain") << Kind::CodedDomain << "CP1252"
                                      << QByteArray("d\x81:int:1:\x8D:2:\xEF\xBB\xBF");
        // Packed as the packing would not have written it: kept as it was.
        QTest::newRow("set, blank unquoted, needless quotes") << Kind::StringSet << "UTF-8"
                                                              << QByteArray("a b:\"c\":d");
        QTest::newRow("domain, needless quotes") << Kind::CodedDomain << "UTF-8" << QByteArray("\"d\":int:1:\"x\"");
    }

    void untouchedValuesKeepTheirBytes()
    {
        QFETCH(Kind, kind);
        QFETCH(QString, codePage);
        QFETCH(QByteArray, packed);
        QVERIFY(setNarrowCodePage(codePage.toStdString()));
        ArgumentEditor editor(kind, packed.toStdString(), &writerTypes(), true);
        test::onNextModalDialog([](QDialog *dialog) { pressOk(dialog); });
        const std::optional<std::string> result = editor.run();
        QVERIFY(result);
        QCOMPARE(bytes(*result), bytes(packed.toStdString()));
    }

    void codedDomainRefusesARepeatedCode_data()
    {
        QTest::addColumn<QStringList>("codes");
        QTest::addColumn<QString>("repeated");
        QTest::addColumn<int>("row");
        QTest::newRow("first code again") << QStringList{"1", "2", "1"} << "1" << 2;
        QTest::newRow("a later code again") << QStringList{"x", "y", "z", "y"} << "y" << 3;
        QTest::newRow("rows without a code aside") << QStringList{"", "a b", "", "a b"} << "a b" << 3;
    }

    void codedDomainRefusesARepeatedCode()
    {
        QFETCH(QStringList, codes);
        QFETCH(QString, repeated);
        QFETCH(int, row);
        StringList domain{"d", "int"};
        for (const QString &code : std::as_const(codes)) {
            domain.push_back(code.toStdString());
            domain.push_back("for " + code.toStdString());
        }
        CCodedDomainDlg dialog(domain, &writerTypes(), true);
        QVERIFY(dialog.Create());
        QVERIFY(test::showActive(dialog));
        Messages shown;
        shown.answerNext();
        QWidget *name = dialog.GetDlgItem(CDomainDlg::kIdName);
        name->setFocus();
        QTest::keyClick(name, Qt::Key_Return);
        QCOMPARE(shown.texts, QStringList{formatResourceString(res::DomainCodeRepeated, {repeated})});
        QCOMPARE(shown.buttons, QList<qsizetype>{1});
        QVERIFY(dialog.isVisible());
        CVVyrGrid &grid = *dialog.codeGrid();
        QCOMPARE(grid.GetCurrentRow(), long(row));
        QCOMPARE(grid.GetCurrentCol(), 0);
        // The focus the dialog gets back once the message box has gone.
        QCOMPARE(dialog.focusWidget(), static_cast<QWidget *>(&grid));
    }

    void rangeDomainRefusesAMinimumAboveTheMaximum()
    {
        CRangeDomainDlg dialog({"r", "int", "10", "1"}, &writerTypes(), true);
        QVERIFY(dialog.Create());
        QVERIFY(test::showActive(dialog));
        auto *minimum = qobject_cast<QLineEdit *>(dialog.GetDlgItem(CRangeDomainDlg::kIdMinimum));
        QWidget *maximum = dialog.GetDlgItem(CRangeDomainDlg::kIdMaximum);
        maximum->setFocus();
        Messages shown;
        shown.answerNext();
        QTest::keyClick(maximum, Qt::Key_Return);
        QCOMPARE(shown.texts, QStringList{loadResourceString(res::DomainRangeInverted)});
        QCOMPARE(shown.buttons, QList<qsizetype>{1});
        QVERIFY(dialog.isVisible());
        QCOMPARE(dialog.focusWidget(), static_cast<QWidget *>(minimum));
        QCOMPARE(minimum->selectedText(), QString("10"));
    }

    // Typed, pasted or replaced, a value the set holds already is refused
    // where it is entered; one that came in with the value is refused on OK.
    void setEditorHoldsEachValueOnce()
    {
        const auto repeated = [](const char *value) {
            return formatResourceString(res::StringSetValueRepeated, {QString(value)});
        };
        ArgumentEditor editor(Kind::StringSet, "a:b", nullptr, true);
        Messages shown;
        QStringList rowsAtEnd;
        test::onNextModalDialog([&](QDialog *dialog) {
            CVVyrGrid &grid = *static_cast<CGridEditDlg *>(dialog)->grid();
            QTRY_VERIFY(grid.hasFocus());
            // Typed over another value: the edit stays open on its cell.
            grid.GotoCell(0, 1);
            QTest::keyClick(&grid, Qt::Key_F2);
            QVERIFY(grid.IsEditing());
            QTest::keyClick(grid.GetEditor(), Qt::Key_A, Qt::ControlModifier);
            QTest::keyClicks(grid.GetEditor(), "a");
            shown.answerNext();
            QTest::keyClick(grid.GetEditor(), Qt::Key_Return);
            QVERIFY(grid.IsEditing());
            QCOMPARE(grid.GetCurrentRow(), 1L);
            // The window gets the focus back as a window manager would give it.
            QVERIFY(test::showActive(*dialog));
            QTRY_VERIFY(grid.GetEditor()->hasFocus());
            QTest::keyClick(grid.GetEditor(), Qt::Key_Escape);
            QVERIFY(!grid.IsEditing());
            QCOMPARE(grid.GetCellString(1, 0), QString("b"));
            // The same text again is no repeat.
            grid.GotoCell(0, 1);
            QTest::keyClick(&grid, Qt::Key_F2);
            QTest::keyClick(grid.GetEditor(), Qt::Key_Return);
            QVERIFY(!grid.IsEditing());

            // Pasted: the new values go in, the repeated ones are named in one
            // message, each once.
            grid.GotoCell(0, grid.GetRowCount() - 1);
            shown.answerNext();
            grid.PasteText("c\nb\nc\nd\n");
            // Replaced: "d" cannot become "c".
            grid.GotoCell(0, 0);
            shown.answerNext();
            grid.FindReplace("d", "c", 0, CUGCtrl::ReplaceAllRequest);
            for (long row = 0; row < grid.GetRowCount(); ++row)
                rowsAtEnd << grid.GetCellString(row, 0);
            QTest::keyClick(&grid, Qt::Key_Return, Qt::ControlModifier);
        });
        const std::optional<std::string> result = editor.run();
        QCOMPARE(shown.texts,
                 QStringList({repeated("a"), repeated("b") + QLatin1Char('\n') + repeated("c"), repeated("c")}));
        QCOMPARE(shown.buttons, QList<qsizetype>({1, 1, 1}));
        QCOMPARE(rowsAtEnd.join('|'), QString("a|b|c|||d|"));
        QVERIFY(result);
        QCOMPARE(*result, std::string("a:b:c:d"));

        // Held twice from the start: OK names the value and shows its second row.
        ArgumentEditor twice(Kind::StringSet, "x:y:x", nullptr, true);
        shown = {};
        long current = -1;
        test::onNextModalDialog([&](QDialog *dialog) {
            CVVyrGrid &grid = *static_cast<CGridEditDlg *>(dialog)->grid();
            grid.GotoCell(0, 0);
            shown.answerNext();
            QTest::keyClick(&grid, Qt::Key_Return, Qt::ControlModifier);
            QVERIFY(dialog->isVisible());
            current = grid.GetCurrentRow();
            dialog->reject();
        });
        QVERIFY(!twice.run());
        QCOMPARE(shown.texts, QStringList({repeated("x")}));
        QCOMPARE(current, 2L);
    }

    // Control+Enter in the open editor presses OK with the text typed; a
    // text the set refuses keeps the dialog open on the edit.
    void controlEnterTakesTheOpenEditBeforeOk_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("result");
        QTest::newRow("a new value") << "c" << "a:b:c";
        QTest::newRow("a value the set holds") << "a" << QString();
    }

    void controlEnterTakesTheOpenEditBeforeOk()
    {
        QFETCH(QString, typed);
        QFETCH(QString, result);
        ArgumentEditor editor(Kind::StringSet, "a:b", nullptr, true);
        Messages shown;
        bool editing = false;
        test::onNextModalDialog([&](QDialog *dialog) {
            QVERIFY(QTest::qWaitForWindowActive(dialog));
            CVVyrGrid &grid = *static_cast<CGridEditDlg *>(dialog)->grid();
            grid.GotoCell(0, grid.GetRowCount() - 1);
            QTest::keyClicks(&grid, typed);
            QVERIFY(grid.IsEditing());
            if (result.isEmpty())
                shown.answerNext();
            QTest::keyClick(grid.GetEditor(), Qt::Key_Return, Qt::ControlModifier);
            editing = grid.IsEditing();
            if (dialog->isVisible()) {
                grid.CancelEdit();
                dialog->reject();
            }
        });
        const std::optional<std::string> taken = editor.run();
        QCOMPARE(QString::fromStdString(taken.value_or(std::string())), result);
        QCOMPARE(editing, result.isEmpty());
        QCOMPARE(shown.texts.size(), result.isEmpty() ? 1 : 0);
    }
};

QTEST_MAIN(tst_ListEditors)
#include "tst_listeditors.moc"
