// Shows a dialog built from a template on a real X server (Xvfb) and keeps
// what the screen shows as a PNG, for people to look at, after checking that
// it is a real rendering and not an empty or uniform picture.
#include "uikit/application.h"
#include "uikit/caboutdlg.h"

#include <QDir>
#include <QImage>
#include <QScreen>
#include <QSet>
#include <QtTest>

using namespace vyr;

class ScreenshotTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(ensureApplication());
        QCOMPARE(QGuiApplication::platformName(), QStringLiteral("xcb"));
    }

    void shouldRenderTheAboutDialogOnScreen()
    {
        const QString file = qEnvironmentVariable("VYR_SCREENSHOT");
        QVERIFY(!file.isEmpty());
        CAboutDlg about;
        QVERIFY(about.Create());
        about.show();
        QVERIFY(QTest::qWaitForWindowExposed(&about));
        QTest::qWait(200); // let the X server finish drawing

        const QImage shot = about.screen()->grabWindow(about.winId()).toImage();
        QVERIFY(QDir().mkpath(QFileInfo(file).absolutePath()));
        QVERIFY(shot.save(file, "PNG"));

        QCOMPARE(shot.size(), about.size() * about.devicePixelRatio());
        QSet<QRgb> colours;
        int dark = 0;
        for (int y = 0; y < shot.height(); ++y) {
            for (int x = 0; x < shot.width(); ++x) {
                const QRgb pixel = shot.pixel(x, y);
                colours.insert(pixel);
                dark += qGray(pixel) < 96;
            }
        }
        // Text is drawn anti-aliased in a dark colour on a light background.
        QVERIFY2(colours.size() > 16, qPrintable(QString::number(colours.size())));
        QVERIFY2(dark > 200, qPrintable(QString::number(dark)));
    }
};

QTEST_MAIN(ScreenshotTest)
#include "tst_screenshot.moc"
