// CVyrDialog: the base of the library's dialogs and of most property pages.
//
// It adds to QDialog what every dialog of the library shares:
// - its layout is a Designer template of the resource library, chosen by ID,
//   whose controls carry their dialog item IDs in the "controlId" property;
// - controls are bound to members by ID (RegisterControl);
// - help requests reach OnHelpRequest, and the help topic query is answered
//   with the topic given at construction;
// - optional tool tips that also show over disabled controls, and optional
//   accelerator keys from the resource library;
// - icon 128 of the resource library as the window icon;
// - what OK, Cancel, closing and destruction do, by construction mode;
// - Control+Enter presses OK from wherever the focus is in the window,
//   after the edit open in one of its grids was taken.
//
// The template's widgets are made by Create (modeless) or DoModal (modal);
// until then the dialog "has no window" and bindings wait.
#ifndef VYR_UIKIT_CVYRDIALOG_H
#define VYR_UIKIT_CVYRDIALOG_H

#include "uikit/dialogcontrol.h"

#include <QByteArray>
#include <QDialog>
#include <QHash>

#include <memory>
#include <string>

namespace vyr {

class CVYRToolTipCtrl;

// Dialog end codes, as the original design's hosts expect them.
inline constexpr int kEndOk = 1;
inline constexpr int kEndCancel = 2;
inline constexpr int kEndFailed = -1;

// Control IDs with a meaning of their own.
inline constexpr unsigned kIdOk = 1;
inline constexpr unsigned kIdCancel = 2;
inline constexpr unsigned kIdHelp = 9;
inline constexpr unsigned kIdHelpCommand = 57670;

enum class DialogMode {
    ModeModal = 0, // run with DoModal
    ModeModeless = 1, // OK and Cancel destroy the window; the object deletes itself afterwards
    ModeModelessHidden = 2, // closing only hides; the object deletes itself once its window is destroyed
};

class CVyrDialog : public QDialog
{
    Q_OBJECT

public:
    // Loads template `templateId` from the resource library (a missing one
    // leaves the dialog without a template, and it will not open), and
    // accelerator table `acceleratorId` when not 0.
    CVyrDialog(unsigned templateId, unsigned acceleratorId, bool toolTips, std::string helpTopic, QWidget *parent,
               DialogMode mode);
    ~CVyrDialog() override;

    unsigned templateId() const { return m_templateId; }
    DialogMode mode() const { return m_mode; }
    const std::string &helpTopic() const { return m_helpTopic; }
    bool hasTemplate() const { return !m_template.isEmpty(); }
    // Whether the template's widgets exist.
    bool hasWindow() const { return m_root != nullptr; }

    // Makes the template's widgets and runs OnInitDialog; false without a
    // template or when the template cannot be read. Does nothing the second
    // time.
    bool Create();
    // Create, then run modally: kEndOk, kEndCancel, or kEndFailed when the
    // window could not be made (nothing is shown then).
    int DoModal();
    // Lets go of the bound controls and removes the template's widgets; in
    // the modeless modes the object then deletes itself.
    void DestroyWindow();

    // Binds `control` to the item `id`: at once when the window exists (and
    // not at all when there is no such item), else in OnInitDialog. The
    // control must live as long as the dialog (a member of the subclass).
    void RegisterControl(DialogControlBase *control, unsigned id);
    // The template's control with `id`, or null.
    QWidget *GetDlgItem(unsigned id) const;

    virtual void OnOK();
    virtual void OnCancel();

    // QDialog's accept and reject (the Enter and Escape keys, the buttons
    // with IDs 1 and 2) go through OnOK and OnCancel.
    void accept() override;
    void reject() override;

protected:
    // Resolves the bindings and sets up tool tips, accelerators and the
    // icon. Subclasses call it first from their own.
    virtual bool OnInitDialog();
    // Shows help for the dialog and returns non-zero, or returns 0 so that
    // the request goes on to the parent. The base shows nothing.
    virtual qintptr OnHelpRequest(qintptr wParam, qintptr lParam);
    // Shows the dialog's help topic in the authoring application's help
    // book, for an OnHelpRequest that has nothing else to show; 0 without a
    // topic or a help library.
    qintptr ShowTopicHelp() const;
    virtual void SetupToolTips();
    virtual void OnDestroyDialog();
    virtual void OnCloseDialog(QCloseEvent *event);
    // What a command (an accelerator) with control ID `id` does: a button is
    // clicked, another control gets the focus.
    virtual void OnCommand(unsigned id);

    bool event(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    // A dialog embedded in another (a page) leaves Enter and Escape to the
    // window it is part of.
    void keyPressEvent(QKeyEvent *event) override;

private:
    void resolveBindings();
    void releaseBindings();
    void setUpAccelerators();
    void connectStandardButtons();
    // Control+Enter, in a window with an OK button: an edit open in a grid
    // is taken first (a text the grid refuses keeps the window open, the
    // grid says why), then OK is clicked.
    void setUpOkKeys();
    void pressOkFromAnywhere();

    QByteArray m_template;
    QByteArray m_accelerators;
    bool m_toolTips;
    std::unique_ptr<CVYRToolTipCtrl> m_toolTipCtrl;
    QHash<unsigned, DialogControlBase *> m_bindings;
    QHash<unsigned, QWidget *> m_items;
    std::string m_helpTopic;
    unsigned m_templateId;
    DialogMode m_mode;
    QWidget *m_root = nullptr;
    // Control+Enter presses OK (setUpOkKeys).
    bool m_okKeys = false;
};

} // namespace vyr

#endif // VYR_UIKIT_CVYRDIALOG_H
