// A dialog's handle on one of its template's controls.
//
// A dialog subclass keeps a DialogControl<QLineEdit> (and so on) as a member
// and binds it by control ID with CVyrDialog::RegisterControl, before or after
// the template's widgets exist. Once bound it points at the widget; when the
// dialog's window goes away it lets go again, so a member never dangles.
//
// A template may lack a control the code binds (a translated or older
// resource library): the binding is then dropped, and the member's arrow
// reaches a stand-in widget of the same type that is never shown, so that
// the dialog works without that control instead of crashing on it. get()
// and the bool conversion still say that nothing is bound.
#ifndef VYR_UIKIT_DIALOGCONTROL_H
#define VYR_UIKIT_DIALOGCONTROL_H

#include <QPointer>
#include <QVariant>
#include <QWidget>

#include <memory>

namespace vyr {

class DialogControlBase
{
public:
    virtual ~DialogControlBase() = default;

    QWidget *widget() const { return m_widget.data(); }
    bool isAttached() const { return !m_widget.isNull(); }

    // Whether a widget is of the type this control stands for.
    virtual bool accepts(QWidget *widget) const = 0;

    // A widget is claimed by the one object that manages it (a bound control,
    // or a window that attached itself to a template item); a control bound
    // to a claimed widget only refers to it and never lets go of it.
    static bool isClaimed(const QWidget *widget) { return widget->property(kClaimedProperty).toBool(); }
    static void setClaimed(QWidget *widget, bool claimed)
    {
        widget->setProperty(kClaimedProperty, claimed ? QVariant(true) : QVariant());
    }

protected:
    DialogControlBase() = default;
    DialogControlBase(const DialogControlBase &) = delete;
    DialogControlBase &operator=(const DialogControlBase &) = delete;

private:
    friend class CVyrDialog;
    void attach(QWidget *widget) { m_widget = widget; }
    void detach() { m_widget.clear(); }

    static constexpr char kClaimedProperty[] = "vyrControlClaimed";
    QPointer<QWidget> m_widget;
};

template <class Widget>
class DialogControl final : public DialogControlBase
{
public:
    DialogControl() = default;

    Widget *get() const { return static_cast<Widget *>(widget()); }
    // The bound widget, else the stand-in: never null, for code that hands
    // the control on (to a helper, to connect) rather than asking after it.
    Widget *orStandIn() const { return isAttached() ? get() : standIn(); }
    Widget *operator->() const { return orStandIn(); }
    explicit operator bool() const { return isAttached(); }

    bool accepts(QWidget *candidate) const override { return qobject_cast<Widget *>(candidate) != nullptr; }

private:
    // Made on first use, inside a parent that is never shown, so that not
    // even show() puts it on the screen.
    Widget *standIn() const
    {
        if (!m_hiddenParent) {
            m_hiddenParent = std::make_unique<QWidget>();
            m_standIn = new Widget(m_hiddenParent.get());
        }
        return m_standIn;
    }

    mutable std::unique_ptr<QWidget> m_hiddenParent;
    mutable Widget *m_standIn = nullptr;
};

} // namespace vyr

#endif // VYR_UIKIT_DIALOGCONTROL_H
