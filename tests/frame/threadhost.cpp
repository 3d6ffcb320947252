// A host of the library as an application developer writes one: it links the
// shared library, and calls its dialog exports from the threads and with the
// owners a host may choose. One scenario per run, since whether there is an
// application yet is part of what is tried:
//
//   thread-first     a second thread calls before any application exists
//                    (refused), then the main thread shows the dialog
//   library-made     the main thread has the library make the application,
//                    then a second thread calls (refused)
//   concurrent       a second thread calls the exports and DllCanUnloadNow
//                    over and over while the main thread is in the dialog
//   raw-window-id    an X11 window id passed where an owner belongs
//   native-parent    a native window as owner (needs an X server)
//
// Exit status 0 when the library behaved, 1 with the reason otherwise.
#include "vyr/IVYRFeature.h"
#include "vyr/vyr_featurefile.h"
#include "vyr/vyr_session.h"
#include "vyrguimfc/vyrguimfc.h"

#include <QApplication>
#include <QDialog>
#include <QTimer>
#include <QWindow>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <thread>

namespace {

int failures = 0;

void expect(bool holds, const char *what)
{
    if (!holds) {
        std::fprintf(stderr, "threadhost: %s\n", what);
        ++failures;
    }
}

struct Host
{
    IVYRSession *session = VYR_SessionCreate();
    IVYRFeature *feature = session->createFeature();

    explicit Host(const char *schema)
    {
        if (!VYR_FeatureLoadJson(feature, schema, nullptr)) {
            std::fprintf(stderr, "threadhost: cannot read %s\n", schema);
            std::exit(1);
        }
    }
    ~Host()
    {
        session->destroyFeature(feature);
        VYR_SessionDestroy(session);
    }

    bool showDialog(void *parent = nullptr) { return VYRFeatTypeProperties(session, feature, "", parent); }

    bool pickGeodatabase(void *parent = nullptr)
    {
        VYRStringHandle location = VYR_StringCreate();
        VYR_StringSet(location, "/tmp");
        const bool chosen = VYREsriGeoDBDlg(0, location, true, 0, parent);
        VYR_StringDestroy(location);
        return chosen;
    }
};

// The host's own application, as a Qt host has one.
struct HostApplication
{
    int argc = 1;
    char name[11] = "threadhost";
    char *argv[2] = {name, nullptr};
    QApplication application{argc, argv};
};

// Cancels the next modal dialog once `inDialog` has looked at it; `shown`
// says whether one came up.
void cancelNextDialog(bool *shown, std::function<void(QDialog *)> inDialog = {})
{
    *shown = false;
    QTimer::singleShot(0, qApp, [shown, inDialog] {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        *shown = true;
        if (inDialog)
            inDialog(dialog);
        else
            dialog->reject();
    });
}

void expectRefusedOnASecondThread(Host &host)
{
    bool dialogAnswer = true;
    bool pickerAnswer = true;
    std::thread second([&] {
        dialogAnswer = host.showDialog();
        pickerAnswer = host.pickGeodatabase();
    });
    second.join();
    expect(!dialogAnswer && !pickerAnswer, "a second thread's call was not refused");
}

int threadFirst(Host &host)
{
    expectRefusedOnASecondThread(host);
    expect(QCoreApplication::instance() == nullptr, "a second thread's call made an application");

    // The library still serves the main thread afterwards.
    HostApplication application;
    bool shown = false;
    cancelNextDialog(&shown);
    expect(!host.showDialog() && shown, "the main thread's dialog did not show after a refused thread");
    return failures;
}

int libraryMade(Host &host)
{
    // Asking for an owner makes the application, as any export would.
    expect(VYRNativeParentWindow(0) == nullptr && QCoreApplication::instance(), "the library made no application");
    expectRefusedOnASecondThread(host);
    return failures;
}

int concurrent(Host &host)
{
    HostApplication application;
    std::atomic<int> accepted{0};
    std::atomic<int> unloadable{0};
    std::atomic<bool> finished{false};
    bool shown = false;
    std::thread second;
    cancelNextDialog(&shown, [&](QDialog *dialog) {
        second = std::thread([&] {
            for (int round = 0; round < 50; ++round) {
                accepted += host.showDialog() ? 1 : 0;
                accepted += host.pickGeodatabase() ? 1 : 0;
                unloadable += DllCanUnloadNow() == 0 ? 1 : 0;
            }
            finished = true;
        });
        // The main thread keeps its dialog's events going meanwhile.
        auto *poll = new QTimer(dialog);
        QObject::connect(poll, &QTimer::timeout, dialog, [&finished, dialog] {
            if (finished)
                dialog->reject();
        });
        poll->start(5);
    });
    expect(!host.showDialog(), "the main thread's dialog was not cancelled");
    if (second.joinable())
        second.join();
    expect(shown, "the main thread's dialog did not show");
    expect(accepted == 0, "a second thread's call was not refused while the dialog was open");
    expect(unloadable == 0, "DllCanUnloadNow let the library go while its dialog was open");
    return failures;
}

int rawWindowId(Host &host)
{
    HostApplication application;
    bool shown = false;
    cancelNextDialog(&shown);
    void *windowId = reinterpret_cast<void *>(std::uintptr_t{0x3a00007});
    expect(!host.showDialog(windowId), "a window id was taken for an owner");
    expect(!host.pickGeodatabase(windowId), "the picker took a window id for an owner");
    expect(!shown, "a dialog showed for a window id");
    return failures;
}

int nativeParent(Host &host)
{
    HostApplication application;
    // Another toolkit's window, as far as the library can tell: a bare
    // native window that no widget stands for.
    QWindow hostWindow;
    hostWindow.setGeometry(100, 100, 600, 400);
    hostWindow.show();
    const std::uintptr_t windowId = hostWindow.winId();
    void *owner = VYRNativeParentWindow(windowId);
    expect(owner != nullptr, "no owner for a native window");
    expect(VYRNativeParentWindow(windowId) == owner, "a second owner for the same window");
    expect(VYRNativeParentWindow(0) == nullptr, "an owner for window id 0");
    WId transientFor = 0;
    bool shown = false;
    cancelNextDialog(&shown, [&transientFor](QDialog *dialog) {
        if (QWindow *transientParent = dialog->windowHandle()->transientParent())
            transientFor = transientParent->winId();
        dialog->reject();
    });
    expect(!host.showDialog(owner) && shown, "the dialog did not show over a native window");
    expect(transientFor == windowId, "the dialog is not transient for the host's native window");
    return failures;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3) {
        std::fputs("usage: threadhost thread-first|library-made|concurrent|raw-window-id|native-parent SCHEMA.json\n",
                   stderr);
        return 2;
    }
    Host host(argv[2]);
    const std::string scenario = argv[1];
    if (scenario == "thread-first")
        return threadFirst(host) ? 1 : 0;
    if (scenario == "library-made")
        return libraryMade(host) ? 1 : 0;
    if (scenario == "concurrent")
        return concurrent(host) ? 1 : 0;
    if (scenario == "raw-window-id")
        return rawWindowId(host) ? 1 : 0;
    if (scenario == "native-parent")
        return nativeParent(host) ? 1 : 0;
    std::fprintf(stderr, "threadhost: no scenario %s\n", scenario.c_str());
    return 2;
}
