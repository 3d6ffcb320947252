// The library's application object.
//
// The library runs inside hosts that may have no Qt application of their
// own. Every entry point that shows a window first calls ensureApplication,
// which makes a QApplication when there is none (never destroyed) and
// installs the library's help routine on whichever application there is:
// F1 anywhere sends a help request along the focus chain. Notices of the
// model's checks are shown as message boxes from then on.
#ifndef VYR_UIKIT_APPLICATION_H
#define VYR_UIKIT_APPLICATION_H

class QApplication;

namespace vyr {

// The application, made on first use when the host has none; null only when
// the host runs a QCoreApplication, under which no window can be shown.
// Without a display and without a chosen Qt platform the application is
// made on the offscreen platform, so a headless host gets results, not an
// abort.
QApplication *ensureApplication();

} // namespace vyr

#endif // VYR_UIKIT_APPLICATION_H
