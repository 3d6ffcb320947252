// The library's application object.
//
// The library runs inside hosts that may have no Qt application of their
// own. Every entry point that shows a window first calls ensureApplication,
// which makes a QApplication when there is none (never destroyed) and
// installs the library's help routine on whichever application there is:
// F1 in the library's dialogs (and windows over them) sends a help request
// along the focus chain; the host's own windows keep their F1. Notices of
// the model's checks are shown as message boxes from then on.
#ifndef VYR_UIKIT_APPLICATION_H
#define VYR_UIKIT_APPLICATION_H

class QApplication;

namespace vyr {

// The application, made on first use when the host has none. Null when the
// host runs a QCoreApplication, under which no window can be shown, and when
// there is neither a display nor a Qt platform the host chose: a window
// nobody can reach would never end, so the caller answers false at once
// (the reason goes to standard error). A host that runs without a display
// sets QT_QPA_PLATFORM=offscreen itself.
//
// Windows belong to one thread: the one that runs the application's events
// or, before there is an application, the process's main thread (where the
// library makes it). A call from any other thread is refused the same way,
// before anything of Qt is touched.
QApplication *ensureApplication();

// Whether the calling thread is that one.
bool onApplicationThread();

// How many of the library's objects the GUI framework holds now: the help
// routine installed on the application (which stands for an application
// the library made as well) and every dialog of the library that still
// exists. While any is there, the library must stay loaded: the framework
// would call into code that is gone. Without an application there is
// nothing; off the application's thread nothing can be counted safely,
// and the answer is 1.
int libraryObjectsInFramework();

} // namespace vyr

#endif // VYR_UIKIT_APPLICATION_H
