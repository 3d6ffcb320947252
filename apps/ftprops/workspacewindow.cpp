#include "workspacewindow.h"

#include "workspace.h"

#include <QCloseEvent>
#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace vyr::ftprops {

WorkspaceWindow::WorkspaceWindow(Workspace &workspace, QWidget *parent)
    : QWidget(parent)
    , m_workspace(workspace)
    , m_list(new QListWidget(this))
    , m_status(new QLabel(this))
{
    setWindowTitle(tr("Workspace: %1").arg(QString::fromStdString(workspace.path())));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(tr("&Feature types:"), this));
    layout->addWidget(m_list);
    auto *buttons = new QDialogButtonBox(this);
    QPushButton *properties = buttons->addButton(tr("&Properties..."), QDialogButtonBox::AcceptRole);
    QPushButton *close = buttons->addButton(QDialogButtonBox::Close);
    layout->addWidget(buttons);
    layout->addWidget(m_status);
    static_cast<QLabel *>(layout->itemAt(0)->widget())->setBuddy(m_list);
    connect(properties, &QPushButton::clicked, this, [this] { editSelected(); });
    connect(close, &QPushButton::clicked, this, &QWidget::close);
    connect(m_list, &QListWidget::itemActivated, this, [this] { editSelected(); });
    refresh();
    m_list->setCurrentRow(0);
    resize(480, 360);
}

void WorkspaceWindow::refresh()
{
    const int row = m_list->currentRow();
    m_list->clear();
    for (const WorkspaceFeatureType &featureType : m_workspace.featureTypes()) {
        const QString role = featureType.source ? tr("reader") : tr("writer");
        m_list->addItem(tr("%1    (%2, %3)")
                            .arg(QString::fromStdString(featureType.name()),
                                 QString::fromStdString(featureType.formatName), role));
    }
    m_list->setCurrentRow(row);
}

void WorkspaceWindow::editSelected()
{
    const int row = m_list->currentRow();
    if (row < 0)
        return;
    std::string message;
    const EditResult result = m_workspace.edit(row, this, message);
    m_status->setText(result == EditResult::Cancelled ? tr("Cancelled: nothing saved.")
                                                      : QString::fromStdString(message));
    // A failed save must not pass as a line in the status bar: the edits
    // live only in this window until the user frees the folder or the disk.
    if (result == EditResult::SaveFailed)
        QMessageBox::warning(this, windowTitle(), tr("Saving failed: %1").arg(QString::fromStdString(message)));
    else if (result == EditResult::NotOpened)
        QMessageBox::warning(this, windowTitle(), QString::fromStdString(message));
    refresh();
}

void WorkspaceWindow::closeEvent(QCloseEvent *event)
{
    if (m_workspace.hasUnsavedChanges()
        && QMessageBox::question(this, windowTitle(),
                                 tr("Some changes could not be saved. Close anyway and lose them?"),
                                 QMessageBox::Close | QMessageBox::Cancel, QMessageBox::Cancel)
            != QMessageBox::Close) {
        event->ignore();
        return;
    }
    event->accept();
}

} // namespace vyr::ftprops
