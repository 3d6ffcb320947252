/* The authoring application's dialog base and native-window wrapper: what
 * its dialogs share, and how a window of a host is made the parent of one. */
#ifndef VYR_QVYREXT_H
#define VYR_QVYREXT_H

#include <QDialog>

#if defined(VYR_QVYREXT_BUILDING)
#define VYR_QVYREXT_API __attribute__((visibility("default")))
#else
#define VYR_QVYREXT_API
#endif

class QWidget;

/* The base of the authoring application's dialogs: modal, without the
 * window's context-help button, closed by Escape. exec() answers non-zero
 * when the user accepted. */
class VYR_QVYREXT_API QVYRDialog : public QDialog
{
    Q_OBJECT

public:
    explicit QVYRDialog(QWidget *parent = nullptr);
    ~QVYRDialog() override;
};

/* A host's window handle as a widget a dialog can take as parent. On this
 * platform a handle is a QWidget pointer already (null: no parent). */
class VYR_QVYREXT_API QVYRNativeWidget
{
public:
    explicit QVYRNativeWidget(void *nativeWindow);
    ~QVYRNativeWidget();
    QVYRNativeWidget(const QVYRNativeWidget &) = delete;
    QVYRNativeWidget &operator=(const QVYRNativeWidget &) = delete;

    QWidget *widget() const { return m_widget; }

private:
    QWidget *m_widget; /* first field: what the dialogs receive as parent */
};

#endif /* VYR_QVYREXT_H */
