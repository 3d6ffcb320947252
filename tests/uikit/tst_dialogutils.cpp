#include "uikit/application.h"
#include "uikit/dialogutils.h"
#include "util/installdir.h"

#include "support/scopedenvironment.h"
#include "support/modalanswers.h"
#include "support/scratchdirectory.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QMessageBox>
#include <QtTest>

using namespace vyr;

class DialogUtilsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(ensureApplication()); }

    void shouldResolveHelpReferences_data()
    {
        QTest::addColumn<QString>("reference");
        QTest::addColumn<QString>("resolved");
        const QString home = QString::fromStdString(getInstallDirectory());
        QTest::newRow("transformer topic")
            << "transformers\\Tester.htm" << home + "help/VYRTransformers.chm#transformers\\Tester.htm";
        QTest::newRow("transformers later in the topic")
            << "a\\transformers\\b.htm" << home + "help/VYRLoomhouse.chm#a\\transformers\\b.htm";
        QTest::newRow("book named") << "x.CHM#y"
                                    << "x.CHM#y";
        QTest::newRow("plain topic") << "Editing_Feature_Type_Properties.htm"
                                     << home + "help/VYRLoomhouse.chm#Editing_Feature_Type_Properties.htm";
    }

    void shouldResolveHelpReferences()
    {
        QFETCH(QString, reference);
        QFETCH(QString, resolved);
        QCOMPARE(QString::fromStdString(ResolveHelpReference(reference.toStdString())), resolved);
    }

    void shouldWriteTheDefinitionInItsOrder()
    {
        const std::string text = MakeGuiDefinition("Title", {"first"}, {"second", "third"}, "x.chm#t");
        QCOMPARE(text, std::string("GUI TITLE Title\nGUI HELP \"x.chm#t\"\nfirst\nsecond\nthird\n"));
        QCOMPARE(MakeGuiDefinition("T", {}, {}, {}), std::string("GUI TITLE T\n"));
    }

    void shouldReadLoomhouseFlags_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<bool>("fallback");
        QTest::addColumn<bool>("expected");
        QTest::newRow("yes") << "[Settings]\nAllow Source Feature Type Editing=Yes\n" << false << true;
        QTest::newRow("TRUE") << "[Settings]\nAllow Source Feature Type Editing=TRUE\n" << false << true;
        QTest::newRow("1 is not yes") << "[Settings]\nAllow Source Feature Type Editing=1\n" << true << false;
        QTest::newRow("missing, default false") << "[Settings]\n" << false << false;
        QTest::newRow("missing, default true") << "" << true << true;
    }

    void shouldReadLoomhouseFlags()
    {
        QFETCH(QString, file);
        QFETCH(bool, fallback);
        QFETCH(bool, expected);
        test::ScratchDirectory home;
        test::ScopedEnvironment env;
        env.set("XDG_CONFIG_HOME", home.path());
        home.write("Quenbry Inc./VYR Loomhouse.conf", file.toStdString());
        QCOMPARE(ReadLoomhouseFlag("Allow Source Feature Type Editing", fallback), expected);
        if (!fallback)
            QCOMPARE(IsSourceFeatureTypeEditingAllowed(), expected);
    }

    void shouldFindComboItemsByExactText()
    {
        QComboBox combo;
        combo.addItems({"Line", "line", "Polygon"});
        QCOMPARE(SelectComboItem(&combo, QStringLiteral("line")), 1);
        QCOMPARE(SelectComboItem(&combo, QStringLiteral("Poly")), -1);
        QCOMPARE(combo.currentIndex(), 1);
    }

    void shouldAnswerMessageBoxesWithTheirButtonCodes_data()
    {
        QTest::addColumn<unsigned>("flags");
        QTest::addColumn<int>("button");
        QTest::addColumn<int>("expected");
        QTest::addColumn<int>("icon");
        QTest::newRow("OK") << unsigned(MbOk) << int(QMessageBox::Ok) << int(IdOk) << int(QMessageBox::NoIcon);
        QTest::newRow("Yes") << unsigned(MbYesNo) << int(QMessageBox::Yes) << int(IdYes) << int(QMessageBox::NoIcon);
        QTest::newRow("No, exclamation") << unsigned(MbYesNo | MbIconExclamation) << int(QMessageBox::No) << int(IdNo)
                                         << int(QMessageBox::Warning);
        QTest::newRow("Cancel") << unsigned(MbOkCancel | MbIconQuestion) << int(QMessageBox::Cancel) << int(IdCancel)
                                << int(QMessageBox::Question);
    }

    void shouldAnswerMessageBoxesWithTheirButtonCodes()
    {
        QFETCH(unsigned, flags);
        QFETCH(int, button);
        QFETCH(int, expected);
        QFETCH(int, icon);
        test::ShownMessage shown;
        test::answerNextMessageBox(&shown, static_cast<QMessageBox::StandardButton>(button));
        QCOMPARE(ShowMessageBox(nullptr, QStringLiteral("Text"), QString(), flags), expected);
        QCOMPARE(shown.caption, QGuiApplication::applicationDisplayName());
        QCOMPARE(shown.icon, icon);
    }
};

QTEST_MAIN(DialogUtilsTest)
#include "tst_dialogutils.moc"
