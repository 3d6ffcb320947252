// The two help messages of the library's windows, as Qt events.
//
// A help request travels from the widget with the keyboard focus up through
// its parents until one answers non-zero; that widget has shown help. A help
// topic query asks a dialog for the topic it was built with. Both keep the
// numbers of the original window messages, which lie in Qt's user range.
#ifndef VYR_UIKIT_HELPEVENTS_H
#define VYR_UIKIT_HELPEVENTS_H

#include <QEvent>
#include <QtGlobal>

#include <cstddef>

class QWidget;

namespace vyr {

inline constexpr QEvent::Type kHelpRequestEvent = static_cast<QEvent::Type>(0x80F3);
inline constexpr QEvent::Type kHelpTopicEvent = static_cast<QEvent::Type>(0x81D2);

// The size of the buffer a help topic query must provide.
inline constexpr std::size_t kHelpTopicBufferSize = 2048;

class HelpRequestEvent : public QEvent
{
public:
    explicit HelpRequestEvent(qintptr wParam = 0, qintptr lParam = 0)
        : QEvent(kHelpRequestEvent)
        , m_wParam(wParam)
        , m_lParam(lParam)
    {}

    qintptr wParam() const { return m_wParam; }
    qintptr lParam() const { return m_lParam; }
    // Non-zero once a widget has handled the request.
    qintptr result() const { return m_result; }
    void setResult(qintptr result) { m_result = result; }

private:
    qintptr m_wParam;
    qintptr m_lParam;
    qintptr m_result = 0;
};

class HelpTopicEvent : public QEvent
{
public:
    // `buffer` holds at least kHelpTopicBufferSize bytes.
    explicit HelpTopicEvent(char *buffer)
        : QEvent(kHelpTopicEvent)
        , m_buffer(buffer)
    {}

    char *buffer() const { return m_buffer; }
    // 1 when a topic was copied into the buffer, 0 when there is none.
    qintptr result() const { return m_result; }
    void setResult(qintptr result) { m_result = result; }

private:
    char *m_buffer;
    qintptr m_result = 0;
};

// Sends a help request to `start`, then to each of its parents, stopping at
// the first non-zero answer, which is returned; 0 when nobody answered.
qintptr routeHelpRequest(QWidget *start);

// The application's help routine: routes a help request from the widget that
// has the keyboard focus. Without a focus widget nothing happens.
qintptr requestHelp();

} // namespace vyr

#endif // VYR_UIKIT_HELPEVENTS_H
