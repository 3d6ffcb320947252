// vyr-griddemo: a window with a 100,000-row grid, for trying the grid
// control by hand and for screenshots.
//
//   vyr-griddemo [--rows N] [--scene selection|edit] [--screenshot FILE]
//
// --scene sets up a state to look at: a selected block with a drop list
// open, or the masked editor half filled. --screenshot saves the window (and
// any pop-up over it) as a PNG and quits.
#include "demogrid.h"
#include "vyrversion.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QGuiApplication>
#include <QImage>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMenuBar>
#include <QPixmap>
#include <QScreen>
#include <QStatusBar>
#include <QTimer>

#include "grid/cugstandardtypes.h"
#include "uikit/commandlineusage.h"
#include "uikit/headless.h"
#include "uikit/screenshotfile.h"

#include <cstdio>
#include <string>

namespace {

void setUpScene(DemoGrid &grid, const QString &scene)
{
    if (scene == QLatin1String("selection")) {
        grid.MoveToCell(DemoGrid::NameColumn, 2);
        grid.SelectRange(DemoGrid::NameColumn, 2, DemoGrid::ActiveColumn, 5);
        grid.MoveToCell(DemoGrid::ColourColumn, 8);
        grid.SelectRange(DemoGrid::NameColumn, 2, DemoGrid::ActiveColumn, 5);
        auto *dropList = static_cast<vyr::CUGDropListType *>(grid.GetCellType(1));
        dropList->OpenList(DemoGrid::ColourColumn, 8);
    } else if (scene == QLatin1String("edit")) {
        grid.MoveToCell(DemoGrid::PhoneColumn, 4);
        grid.SetCellText(DemoGrid::PhoneColumn, 4, QString());
        grid.BeginEdit(0);
        for (const char typed : {'4', '1', '5', '9', '2'}) {
            QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(QChar::fromLatin1(typed)));
            QApplication::sendEvent(grid.GetEditor(), &press);
        }
    }
}

bool saveWindowPicture(QMainWindow &window, const QString &file, std::string &error)
{
    // The screen shows pop-ups too; without one (offscreen), the window.
    QPixmap shot;
    if (QScreen *screen = window.screen(); screen && QGuiApplication::platformName() != QLatin1String("offscreen")) {
        QRect frame = window.frameGeometry();
        if (const QWidget *popup = QApplication::activePopupWidget())
            frame |= popup->frameGeometry();
        shot = screen->grabWindow(0, frame.x(), frame.y(), frame.width(), frame.height());
    }
    if (shot.isNull())
        shot = window.grab();
    // A picture of one colour means nothing was drawn.
    const QImage image = shot.toImage();
    bool drawn = false;
    for (int y = 0; y < image.height() && !drawn; y += 7) {
        for (int x = 0; x < image.width() && !drawn; x += 7)
            drawn = image.pixel(x, y) != image.pixel(0, 0);
    }
    if (!drawn) {
        error = file.toStdString() + ": the window shows nothing yet";
        return false;
    }
    return vyr::saveScreenshot(shot, file, error);
}

} // namespace

int main(int argc, char **argv)
{
    // Decided before Qt takes its own arguments (-platform) out of argv.
    const bool personThere = vyr::prepareHeadlessRun(argc, argv);
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("vyr-griddemo"));
    QApplication::setApplicationVersion(QString::fromLatin1(kVyrVersion));
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("A grid of many rows with every standard cell type."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption rowsOption(QStringLiteral("rows"), QStringLiteral("Number of rows, 0 to 1000000."),
                                        QStringLiteral("N"), QStringLiteral("100000"));
    const QCommandLineOption sceneOption(QStringLiteral("scene"), QStringLiteral("selection or edit."),
                                         QStringLiteral("NAME"));
    const QCommandLineOption shotOption(QStringLiteral("screenshot"), QStringLiteral("Save a PNG and quit."),
                                        QStringLiteral("FILE"));
    parser.addOption(rowsOption);
    parser.addOption(sceneOption);
    parser.addOption(shotOption);
    vyr::processCommandLine(parser, QCoreApplication::arguments());
    bool ok = false;
    const long rows = parser.value(rowsOption).toLong(&ok);
    // Beyond a million rows the demo shows nothing new and only eats memory.
    constexpr long kMostRows = 1'000'000;
    if (!ok || rows < 0 || rows > kMostRows) {
        std::fputs("vyr-griddemo: --rows needs a number of rows from 0 to 1000000\n", stderr);
        return 2;
    }
    if (!personThere && !parser.isSet(shotOption)) {
        std::fprintf(stderr, "vyr-griddemo: %s; use --screenshot to run without a person\n",
                     vyr::kNobodyCanReachWindows);
        return 2;
    }

    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Grid demo"));
    auto *grid = new DemoGrid(rows, &window);
    window.setCentralWidget(grid);
    QMenu *edit = window.menuBar()->addMenu(QObject::tr("&Edit"));
    edit->addAction(QObject::tr("&Find..."), QKeySequence::Find, grid, &DemoGrid::FindDialog);
    edit->addAction(QObject::tr("&Replace..."), QKeySequence(Qt::CTRL | Qt::Key_H), grid, &DemoGrid::ReplaceDialog);
    edit->addAction(QObject::tr("Fit &columns"), grid,
                    [grid] { grid->FitColumnWidths(0, DemoGrid::ColumnCount - 1, 200, 1); });
    QObject::connect(grid, &DemoGrid::status, window.statusBar(),
                     [&window](const QString &message) { window.statusBar()->showMessage(message, 4000); });
    window.resize(760, 420);
    window.show();
    grid->setFocus();

    if (parser.isSet(sceneOption) || parser.isSet(shotOption)) {
        QTimer::singleShot(200, &window, [&] {
            setUpScene(*grid, parser.value(sceneOption));
            if (!parser.isSet(shotOption))
                return;
            QTimer::singleShot(300, &window, [&] {
                std::string error;
                const bool saved = saveWindowPicture(window, parser.value(shotOption), error);
                if (!saved)
                    std::fprintf(stderr, "vyr-griddemo: %s\n", error.c_str());
                application.exit(saved ? 0 : 2);
            });
        });
    }
    return QApplication::exec();
}
