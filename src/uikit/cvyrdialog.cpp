#include "uikit/cvyrdialog.h"

#include "uikit/cvvyrgrid.h"
#include "uikit/helpevents.h"
#include "uikit/outsideservices.h"
#include "uikit/pageaccessible.h"
#include "uikit/templateloader.h"
#include "uikit/tooltipctrl.h"
#include "uikit/resourcelibrary.h"

#include <QAbstractButton>
#include <QApplication>
#include <QBuffer>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QIcon>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLoggingCategory>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>
#include <cstring>

Q_LOGGING_CATEGORY(lcDialog, "vyr.uikit.dialog")

namespace vyr {

namespace {

constexpr char kControlIdProperty[] = "controlId";

bool controlIdOf(const QWidget *widget, unsigned &id)
{
    const QVariant value = widget->property(kControlIdProperty);
    bool ok = false;
    const int number = value.toInt(&ok);
    if (!value.isValid() || !ok || number < 0)
        return false;
    id = static_cast<unsigned>(number);
    return true;
}

} // namespace

CVyrDialog::CVyrDialog(unsigned templateId, unsigned acceleratorId, bool toolTips, std::string helpTopic,
                       QWidget *parent, DialogMode mode)
    : QDialog(parent)
    , m_toolTips(toolTips)
    , m_helpTopic(std::move(helpTopic))
    , m_templateId(templateId)
    , m_mode(mode)
{
    m_template = loadDialogTemplate(templateId);
    if (acceleratorId != 0)
        m_accelerators = loadAcceleratorTable(acceleratorId);
}

// The bound controls are members of the subclass and are already gone here,
// so the table is only forgotten; the widgets go with the dialog.
CVyrDialog::~CVyrDialog() = default;

bool CVyrDialog::Create()
{
    if (m_root)
        return true;
    if (m_template.isEmpty())
        return false;
    QBuffer buffer(&m_template);
    buffer.open(QIODevice::ReadOnly);
    TemplateLoader &loader = TemplateLoader::instance();
    m_root = loader.load(&buffer, this);
    if (!m_root) {
        qCWarning(lcDialog) << "CVyrDialog::Create: template" << m_templateId
                            << "cannot be read:" << loader.errorString();
        return false;
    }
    m_root->setObjectName(QStringLiteral("templateRoot"));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_root);
    setWindowTitle(m_root->windowTitle());
    resize(m_root->size().expandedTo(sizeHint()));

    const QList<QWidget *> widgets = m_root->findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        unsigned id = 0;
        if (controlIdOf(widget, id) && !m_items.contains(id))
            m_items.insert(id, widget);
    }
    OnInitDialog();
    return true;
}

int CVyrDialog::DoModal()
{
    if (!Create())
        return kEndFailed;
    return exec();
}

void CVyrDialog::DestroyWindow()
{
    if (!m_root)
        return;
    OnDestroyDialog();
    hide();
    m_toolTipCtrl.reset();
    delete layout();
    delete m_root;
    m_root = nullptr;
    m_items.clear();
    if (m_mode != DialogMode::ModeModal)
        deleteLater();
}

void CVyrDialog::RegisterControl(DialogControlBase *control, unsigned id)
{
    if (!control)
        return;
    if (!m_root) {
        m_bindings.insert(id, control);
        return;
    }
    QWidget *item = GetDlgItem(id);
    if (!item || !control->accepts(item))
        return;
    control->attach(item);
    if (!DialogControlBase::isClaimed(item)) {
        DialogControlBase::setClaimed(item, true);
        m_bindings.insert(id, control);
    }
}

QWidget *CVyrDialog::GetDlgItem(unsigned id) const
{
    return m_items.value(id);
}

void CVyrDialog::resolveBindings()
{
    QList<unsigned> dropped;
    for (auto it = m_bindings.begin(); it != m_bindings.end(); ++it) {
        QWidget *item = GetDlgItem(it.key());
        if (!item || !it.value()->accepts(item)) {
            dropped.append(it.key());
            continue;
        }
        it.value()->attach(item);
        if (DialogControlBase::isClaimed(item))
            dropped.append(it.key());
        else
            DialogControlBase::setClaimed(item, true);
    }
    for (const unsigned id : std::as_const(dropped))
        m_bindings.remove(id);
}

void CVyrDialog::releaseBindings()
{
    for (DialogControlBase *control : std::as_const(m_bindings)) {
        if (QWidget *widget = control->widget())
            DialogControlBase::setClaimed(widget, false);
        control->detach();
    }
    m_bindings.clear();
}

bool CVyrDialog::OnInitDialog()
{
    SetupToolTips();
    giveLabelHintsToBuddies(this);
    resolveBindings();
    const QString icon = resourceImagePath(ResourceKind::Icon, res::ApplicationIcon);
    if (!icon.isEmpty())
        setWindowIcon(QIcon(icon));
    setUpAccelerators();
    connectStandardButtons();
    setUpOkKeys();
    return true;
}

void CVyrDialog::SetupToolTips()
{
    if (!m_toolTips)
        return;
    m_toolTipCtrl = std::make_unique<CVYRToolTipCtrl>(this);
    for (QWidget *item : std::as_const(m_items))
        m_toolTipCtrl->addTool(item);
}

void CVyrDialog::setUpAccelerators()
{
    if (m_accelerators.isEmpty())
        return;
    const QJsonObject table = QJsonDocument::fromJson(m_accelerators).object();
    for (auto it = table.begin(); it != table.end(); ++it) {
        const QKeySequence keys(it.key());
        const int id = it.value().toInt(-1);
        if (keys.isEmpty() || id < 0)
            continue;
        auto *shortcut = new QShortcut(keys, this);
        connect(shortcut, &QShortcut::activated, this, [this, id] { OnCommand(static_cast<unsigned>(id)); });
    }
}

void CVyrDialog::connectStandardButtons()
{
    const auto wire = [this](unsigned id, auto slot) {
        if (auto *button = qobject_cast<QAbstractButton *>(GetDlgItem(id)))
            connect(button, &QAbstractButton::clicked, this, slot);
    };
    wire(kIdOk, [this] { OnOK(); });
    wire(kIdCancel, [this] { OnCancel(); });
    wire(kIdHelp, [] { requestHelp(); });
    wire(kIdHelpCommand, [] { requestHelp(); });
}

void CVyrDialog::setUpOkKeys()
{
    // A page is part of the window around it, which has the keys.
    if (!isWindow() || !qobject_cast<QAbstractButton *>(GetDlgItem(kIdOk)))
        return;
    m_okKeys = true;
    // A shortcut, so that no control on the way - a cell that opens a list
    // on Enter, a button that presses itself - takes the key first.
    for (const QKeyCombination keys : {Qt::CTRL | Qt::Key_Return, Qt::CTRL | Qt::Key_Enter}) {
        auto *shortcut = new QShortcut(QKeySequence(keys), this);
        connect(shortcut, &QShortcut::activated, this, [this] { pressOkFromAnywhere(); });
    }
}

void CVyrDialog::pressOkFromAnywhere()
{
    const QList<CVVyrGrid *> grids = findChildren<CVVyrGrid *>();
    for (CVVyrGrid *grid : grids) {
        grid->CommitEdit();
        if (grid->IsEditing())
            return;
    }
    auto *ok = qobject_cast<QAbstractButton *>(GetDlgItem(kIdOk));
    if (ok && ok->isEnabled() && ok->isVisible())
        ok->click();
    else
        QApplication::beep();
}

void CVyrDialog::OnCommand(unsigned id)
{
    QWidget *item = GetDlgItem(id);
    if (auto *button = qobject_cast<QAbstractButton *>(item))
        button->click();
    else if (item)
        item->setFocus(Qt::ShortcutFocusReason);
}

void CVyrDialog::OnOK()
{
    QDialog::done(kEndOk);
    if (m_mode == DialogMode::ModeModeless)
        DestroyWindow();
}

void CVyrDialog::OnCancel()
{
    QDialog::done(kEndCancel);
    if (m_mode == DialogMode::ModeModeless)
        DestroyWindow();
}

void CVyrDialog::accept()
{
    OnOK();
}

void CVyrDialog::reject()
{
    OnCancel();
}

qintptr CVyrDialog::OnHelpRequest(qintptr, qintptr)
{
    return 0;
}

qintptr CVyrDialog::ShowTopicHelp() const
{
    if (m_helpTopic.empty())
        return 0;
    return showLoomhouseHelp(m_helpTopic) != 0 ? 1 : 0;
}

void CVyrDialog::OnDestroyDialog()
{
    releaseBindings();
}

void CVyrDialog::OnCloseDialog(QCloseEvent *event)
{
    if (m_mode == DialogMode::ModeModelessHidden) {
        hide();
        event->ignore();
        return;
    }
    QDialog::closeEvent(event);
}

void CVyrDialog::keyPressEvent(QKeyEvent *event)
{
    if (!isWindow()) {
        event->ignore();
        return;
    }
    // Control+Enter passed on by a grid (from its list, say) rather than
    // caught as the shortcut.
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && (event->modifiers() & Qt::ControlModifier) && m_okKeys) {
        pressOkFromAnywhere();
        return;
    }
    QDialog::keyPressEvent(event);
}

void CVyrDialog::closeEvent(QCloseEvent *event)
{
    OnCloseDialog(event);
}

bool CVyrDialog::event(QEvent *event)
{
    if (event->type() == kHelpRequestEvent) {
        auto *request = static_cast<HelpRequestEvent *>(event);
        request->setResult(OnHelpRequest(request->wParam(), request->lParam()));
        return true;
    }
    if (event->type() == kHelpTopicEvent) {
        auto *query = static_cast<HelpTopicEvent *>(event);
        if (m_helpTopic.empty() || !query->buffer()) {
            query->setResult(0);
        } else {
            // The terminator goes in only while it fits.
            const std::size_t count = std::min(m_helpTopic.size() + 1, kHelpTopicBufferSize);
            std::memcpy(query->buffer(), m_helpTopic.c_str(), count);
            query->setResult(1);
        }
        return true;
    }
    return QDialog::event(event);
}

} // namespace vyr
