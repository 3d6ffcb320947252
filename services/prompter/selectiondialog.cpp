#include "selectiondialog.h"

#include "checklist.h"
#include "servicetext.h"

#include <QDialogButtonBox>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace vyr::services {

SelectionDialog::SelectionDialog(const QString &title, const QStringList &items, const QStringList &preselected,
                                 const QStringList &icons, QWidget *parent)
    : QDialog(parent)
    , m_list(new CheckList(this))
{
    setObjectName(QStringLiteral("selectionDialog"));
    setWindowTitle(title.isEmpty() ? localized("Select") : title);
    m_list->setItems(items, preselected, icons);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setText(localized("OK"));
    buttons->button(QDialogButtonBox::Cancel)->setText(localized("Cancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_list);
    layout->addWidget(buttons);
    resize(360, 420);
}

QStringList SelectionDialog::chosen() const
{
    return m_list->checkedItems();
}

QListWidget *SelectionDialog::list() const
{
    return m_list->list();
}

} // namespace vyr::services
