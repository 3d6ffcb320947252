// The geodatabase picker export as a host calls it: through
// libvyrguimfc.so, which opens the installed libvyr_dirDialog.so.
#include "vyrguimfc/vyrguimfc.h"

#include "support/modalanswers.h"
#include "support/scratchdirectory.h"

#include <QLabel>
#include <QPushButton>
#include <QtTest>

#include <filesystem>
#include <memory>

using vyr::test::onNextModalDialog;

class EsriPickerExportTest : public QObject
{
    Q_OBJECT

private:
    using Handle = std::unique_ptr<VYRStringObject, void (*)(VYRStringHandle)>;
    Handle handleWith(const std::string &text)
    {
        Handle handle(VYR_StringCreate(), VYR_StringDestroy);
        VYR_StringSet(handle.get(), text.c_str());
        return handle;
    }

    vyr::test::ScratchDirectory m_root;

private slots:
    void initTestCase() { std::filesystem::create_directories(m_root.path() + "/roads.gdb"); }

    void shouldBeUnloadableUntilTheLibraryHasShownAWindow()
    {
        QCOMPARE(DllCanUnloadNow(), 0);
    }

    void shouldAnswerWithTheChosenGeodatabase()
    {
        const std::string chosen = m_root.path() + "/roads.gdb";
        Handle location = handleWith(chosen);
        QString title;
        QString prompt;
        onNextModalDialog([&](QDialog *picker) {
            title = picker->windowTitle();
            prompt = picker->findChild<QLabel *>(QStringLiteral("prompt"))->text();
            picker->accept();
        });
        QVERIFY(VYREsriGeoDBDlg(0, location.get(), true, 0, nullptr));
        QCOMPARE(QString::fromUtf8(VYR_StringGet(location.get())), QString::fromStdString(chosen));
        QCOMPARE(title, QStringLiteral("Select Geodatabase"));
        QVERIFY(prompt.contains(QStringLiteral(".gdb")));
    }

    void shouldKeepTheLocationWhenCancelled()
    {
        Handle location = handleWith(m_root.path());
        onNextModalDialog([](QDialog *picker) { picker->reject(); });
        QVERIFY(!VYREsriGeoDBDlg(0, location.get(), false, 0, nullptr));
        QCOMPARE(QString::fromUtf8(VYR_StringGet(location.get())), QString::fromStdString(m_root.path()));
    }

    void shouldOfferANewGeodatabaseOnlyWhenItNeedNotExist_data()
    {
        QTest::addColumn<bool>("mustExist");
        QTest::newRow("must exist") << true;
        QTest::newRow("may be new") << false;
    }
    void shouldOfferANewGeodatabaseOnlyWhenItNeedNotExist()
    {
        QFETCH(bool, mustExist);
        Handle location = handleWith(m_root.path());
        bool offered = false;
        onNextModalDialog([&](QDialog *picker) {
            offered = picker->findChild<QPushButton *>(QStringLiteral("newGeodatabase")) != nullptr;
            picker->reject();
        });
        VYREsriGeoDBDlg(0, location.get(), mustExist, 0, nullptr);
        QCOMPARE(offered, !mustExist);
    }

    void shouldStayLoadedOnceItsHelpRoutineIsInstalled()
    {
        QCOMPARE(DllCanUnloadNow(), 1);
    }
};

QTEST_MAIN(EsriPickerExportTest)
#include "tst_esripickerexport.moc"
