#include "support/scopedenvironment.h"

#include "uikit/application.h"
#include "uikit/caboutdlg.h"
#include "uikit/outsideservices.h"
#include "util/installdir.h"

#include <QAbstractButton>
#include <QListWidget>
#include <QTextBrowser>
#include <QTimer>
#include <QtTest>

using namespace vyr;

namespace {

QWidget *helpViewer()
{
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (window->objectName() == QLatin1String("helpViewer") && window->isVisible())
            return window;
    }
    // Kept above a modal dialog, the viewer is that dialog's child window.
    for (QWidget *window : windows) {
        if (auto *viewer = window->findChild<QWidget *>(QStringLiteral("helpViewer")); viewer && viewer->isVisible())
            return viewer;
    }
    return nullptr;
}

QString shownPage()
{
    QWidget *viewer = helpViewer();
    auto *browser = viewer ? viewer->findChild<QTextBrowser *>(QStringLiteral("helpBrowser")) : nullptr;
    return browser ? browser->source().toString() : QString();
}

QString shownText()
{
    QWidget *viewer = helpViewer();
    auto *browser = viewer ? viewer->findChild<QTextBrowser *>(QStringLiteral("helpBrowser")) : nullptr;
    return browser ? browser->toPlainText() : QString();
}

} // namespace

class HelpViewerTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(ensureApplication()); }

    void shouldOpenTheDialogsTopicOnF1()
    {
        CAboutDlg about;
        QString page;
        bool viewerAboveDialog = false;
        QTimer::singleShot(0, &about, [&] {
            QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : &about, Qt::Key_F1);
            page = shownPage();
            // A viewer outside the modal dialog's family could not be used
            // while the dialog runs.
            viewerAboveDialog = helpViewer() && helpViewer()->parentWidget() == &about;
            about.OnOK();
        });
        QCOMPARE(about.DoModal(), 1);
        QVERIFY2(page.endsWith(QLatin1String("/help/VYRLoomhouse/About_vyrguimfc.htm")), qPrintable(page));
        QVERIFY(viewerAboveDialog);
    }

    void shouldReuseOneViewerForFormatHelp()
    {
        const std::string book = getInstallDirectory() + "help/VYRReadersWriters.chm";
        QCOMPARE(showFormatHelp(book, "POSTGRES", 5), 1);
        QWidget *first = helpViewer();
        QVERIFY(first);
        QVERIFY2(shownPage().endsWith(QLatin1String("/postgres.htm#writer-parameters")), qPrintable(shownPage()));
        QCOMPARE(showFormatHelp(book, "GPX", 0), 1);
        QCOMPARE(helpViewer(), first);
        QVERIFY(shownPage().endsWith(QLatin1String("/gpx.htm")));
        auto *contents = first->findChild<QListWidget *>(QStringLiteral("helpContents"));
        QCOMPARE(contents->item(0)->text(), QStringLiteral("Readers and writers"));
    }

    // The help books follow the language the dialogs' texts are chosen by.
    void shouldShowTheBookOfTheUsersLanguage_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("book");
        QTest::addColumn<QString>("title");
        QTest::newRow("English") << "C.UTF-8" << "VYRLoomhouse" << "Editing feature type properties";
        QTest::newRow("German") << "de_DE.UTF-8" << "VYRLoomhouse_de" << "Eigenschaften eines Feature-Typs bearbeiten";
    }
    void shouldShowTheBookOfTheUsersLanguage()
    {
        QFETCH(QString, locale);
        QFETCH(QString, book);
        QFETCH(QString, title);
        test::ScopedEnvironment environment;
        environment.set("LANG", locale.toStdString());
        QCOMPARE(showLoomhouseHelp("Editing_Feature_Type_Properties.htm"), 1);
        QVERIFY2(shownPage().endsWith(QStringLiteral("/help/%1/Editing_Feature_Type_Properties.htm").arg(book)),
                 qPrintable(shownPage()));
        QVERIFY2(shownText().startsWith(title), qPrintable(shownText().left(80)));
        const QString formats = book == QLatin1String("VYRLoomhouse") ? QStringLiteral("VYRReadersWriters")
                                                                       : QStringLiteral("VYRReadersWriters_de");
        QCOMPARE(showFormatHelp(getInstallDirectory() + "help/VYRReadersWriters.chm", "SHAPEFILE", 1), 1);
        QVERIFY2(shownPage().endsWith(QStringLiteral("/help/%1/shapefile.htm#attributes").arg(formats)),
                 qPrintable(shownPage()));
    }

    void shouldCloseWithEscapeOrControlW_data()
    {
        QTest::addColumn<QString>("focus");
        QTest::addColumn<QKeyCombination>("keys");
        for (const char *focus : {"helpBrowser", "helpContents"}) {
            QTest::addRow("Escape in %s", focus) << focus << QKeyCombination(Qt::Key_Escape);
            QTest::addRow("Control+W in %s", focus) << focus << (Qt::ControlModifier | Qt::Key_W);
        }
    }
    void shouldCloseWithEscapeOrControlW()
    {
        QFETCH(QString, focus);
        QFETCH(QKeyCombination, keys);
        QCOMPARE(showLoomhouseHelp("Editing_Feature_Type_Properties.htm"), 1);
        QWidget *viewer = helpViewer();
        QVERIFY(QTest::qWaitForWindowActive(viewer));
        QWidget *control = viewer->findChild<QWidget *>(focus);
        control->setFocus();
        QTest::keyClick(control, keys.key(), keys.keyboardModifiers());
        QVERIFY(!viewer->isVisible());
    }

    // Back and Forward go through what was shown, whatever its book, a note
    // of what is missing included, each with its book's contents.
    void shouldGoBackAndForwardThroughWhatItShowed()
    {
        QCOMPARE(showLoomhouseHelp("Editing_Feature_Type_Properties.htm"), 1);
        QWidget *viewer = helpViewer();
        viewer->findChild<QTextBrowser *>(QStringLiteral("helpBrowser"))->clearHistory();
        auto *back = viewer->findChild<QAbstractButton *>(QStringLiteral("helpBack"));
        auto *forward = viewer->findChild<QAbstractButton *>(QStringLiteral("helpForward"));
        auto *contents = viewer->findChild<QListWidget *>(QStringLiteral("helpContents"));
        const auto shown = [contents] {
            return shownText().section(u'\n', 0, 0) + " | " + (contents->count() ? contents->item(0)->text() : "-");
        };
        const std::string formats = getInstallDirectory() + "help/VYRReadersWriters.chm";
        QStringList showings{shown()};
        QCOMPARE(showFormatHelp(formats, "GPX", 0), 1);
        showings << shown();
        QCOMPARE(showFormatHelp(formats, "NO_SUCH_FORMAT", 1), 1);
        showings << shown();
        QVERIFY2(showings[0] != showings[1] && showings[2].contains("NO_SUCH_FORMAT"), qPrintable(showings.join(", ")));
        QStringList walked;
        for (QAbstractButton *button : {back, back, forward, forward}) {
            QVERIFY(button->isEnabled());
            button->click();
            walked << shown();
        }
        QCOMPARE(walked, (QStringList{showings[1], showings[0], showings[1], showings[2]}));
        QVERIFY(!forward->isEnabled());
    }

    // A missing format page is named: shouldGoBackAndForwardThroughWhatItShowed.
    void shouldSayWhatIsMissing()
    {
        QCOMPARE(showHelpByString(getInstallDirectory() + "help/Missing.chm", "x.htm"), 1);
        QVERIFY2(shownText().contains(QLatin1String("cannot be found")), qPrintable(shownText()));
    }
};

QTEST_MAIN(HelpViewerTest)
#include "tst_helpviewer.moc"
