// A host built against an installation only (its headers, libraries and
// build files): it encodes a text, then opens the feature type properties
// dialog on an example schema and presses OK in it, as a person would.
//
//   vyr_host EXAMPLES_DIR
//
// Prints where libvyrguimfc.so was loaded from and the installation
// directory the library settled on, so that the caller can tell the
// installation from the build tree. Exit status 0 when all went as it should.
#include "vyr/IVYRFeature.h"
#include "vyr/vyr_featurefile.h"
#include "vyr/vyr_session.h"
#include "vyr/vyr_string.h"
#include "vyrguimfc/vyrguimfc.h"

#include <QApplication>
#include <QCoreApplication>
#include <QPushButton>
#include <QTimer>
#include <QWidget>

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

namespace {

int fail(const std::string &what)
{
    std::fprintf(stderr, "vyr_host: %s\n", what.c_str());
    return 1;
}

// A capability file is one KEY,VALUE line each; the export takes them joined
// with commas.
std::string capabilitiesOf(const std::string &path)
{
    std::ifstream file(path);
    std::string line;
    std::string joined;
    while (std::getline(file, line)) {
        if (line.empty() || line[0] == '#')
            continue;
        if (!joined.empty())
            joined += ',';
        joined += line;
    }
    return joined;
}

// Presses the default button (OK) of whatever modal window is up, like a
// person who agrees to everything; gives up after a while so a dialog that
// never closes fails the run instead of hanging it.
void pressOkInModalWindows(QApplication &app)
{
    auto *timer = new QTimer(&app);
    QObject::connect(timer, &QTimer::timeout, &app, [ticks = 0]() mutable {
        if (++ticks > 400) {
            std::fprintf(stderr, "vyr_host: the dialog did not close\n");
            std::_Exit(3);
        }
        QWidget *modal = QApplication::activeModalWidget();
        if (!modal)
            return;
        for (QPushButton *button : modal->findChildren<QPushButton *>()) {
            if (!button->isDefault() || !button->isVisible())
                continue;
            std::printf("pressing %s in \"%s\"\n", qPrintable(button->text().remove(QLatin1Char('&'))),
                        qPrintable(modal->windowTitle()));
            // Queued, so that the dialog closes from the event loop as it
            // does for a click, not from inside this timer.
            QMetaObject::invokeMethod(button, &QPushButton::click, Qt::QueuedConnection);
            return;
        }
    });
    timer->start(50);
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    if (argc != 2)
        return fail("usage: vyr_host EXAMPLES_DIR");
    const std::string examples = argv[1];

    Dl_info library{};
    if (dladdr(reinterpret_cast<void *>(&VYRWWJDEncode), &library) && library.dli_fname)
        std::printf("library: %s\n", library.dli_fname);

    VYRStringHandle text = VYR_StringCreate();
    VYR_StringSet(text, "main street, 5 $");
    VYRWWJDEncode(text);
    const std::string encoded(VYR_StringGet(text), VYR_StringLength(text));
    VYR_StringDestroy(text);
    if (encoded != "main<space>street<comma><space>5<space><dollar>")
        return fail("unexpected encoding " + encoded);
    std::printf("encoded: %s\n", encoded.c_str());

    IVYRSession *session = VYR_SessionCreate();
    IVYRFeature *feature = session->createFeature();
    IVYRString *error = session->createString();
    if (!VYR_FeatureLoadJson(feature, (examples + "/schemas/shapefile-roads.json").c_str(), error))
        return fail(std::string("cannot read the example: ") + error->c_str());
    const std::string name = feature->getFeatureType();
    const std::string capabilities = capabilitiesOf(examples + "/formats/shapefile.fmt");
    if (capabilities.empty())
        return fail("no capabilities in the example format");

    pressOkInModalWindows(app);
    const bool accepted = VYRFeatTypeProperties(session, feature, capabilities.c_str(), nullptr);
    std::printf("installation: %s\n", std::getenv("VYR_HOME") ? std::getenv("VYR_HOME") : "(none)");
    const std::string after = feature->getFeatureType();

    session->destroyString(error);
    session->destroyFeature(feature);
    VYR_SessionDestroy(session);
    if (!accepted)
        return fail("the dialog did not end with OK");
    if (after != name)
        return fail("OK renamed " + name + " to " + after);
    std::printf("accepted: %s\n", after.c_str());
    return 0;
}
