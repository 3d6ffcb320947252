#include "checklist.h"

#include "servicetext.h"

#include <QDir>
#include <QHBoxLayout>
#include <QIcon>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include <cstdlib>

namespace vyr::services {

namespace {

QString iconPath(const QString &file)
{
    if (file.isEmpty() || QDir::isAbsolutePath(file))
        return file;
    const char *home = std::getenv("VYR_HOME");
    return QDir(QString::fromLocal8Bit(home ? home : "")).filePath(file);
}

} // namespace

CheckList::CheckList(QWidget *parent)
    : QWidget(parent)
    , m_list(new QListWidget(this))
{
    m_list->setObjectName(QStringLiteral("checkList"));
    auto *all = new QPushButton(localized("Select all"), this);
    auto *none = new QPushButton(localized("Select none"), this);
    all->setObjectName(QStringLiteral("selectAll"));
    none->setObjectName(QStringLiteral("selectNone"));
    connect(all, &QPushButton::clicked, this, [this] { setAllChecked(true); });
    connect(none, &QPushButton::clicked, this, [this] { setAllChecked(false); });

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(all);
    buttons->addWidget(none);
    buttons->addStretch();
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_list);
    layout->addLayout(buttons);
}

void CheckList::setItems(const QStringList &items, const QStringList &checked, const QStringList &icons)
{
    m_list->clear();
    for (qsizetype i = 0; i < items.size(); ++i) {
        auto *item = new QListWidgetItem(items[i], m_list);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(checked.contains(items[i]) ? Qt::Checked : Qt::Unchecked);
        if (i < icons.size() && !icons[i].isEmpty())
            item->setIcon(QIcon(iconPath(icons[i])));
    }
}

QStringList CheckList::checkedItems() const
{
    QStringList checked;
    for (int i = 0; i < m_list->count(); ++i) {
        if (m_list->item(i)->checkState() == Qt::Checked)
            checked.append(m_list->item(i)->text());
    }
    return checked;
}

void CheckList::setAllChecked(bool checked)
{
    for (int i = 0; i < m_list->count(); ++i)
        m_list->item(i)->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
}

} // namespace vyr::services
