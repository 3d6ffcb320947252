// The selection list: items with check marks and icons, OK and Cancel.
#ifndef VYR_SERVICES_SELECTIONDIALOG_H
#define VYR_SERVICES_SELECTIONDIALOG_H

#include <QDialog>
#include <QStringList>

class QListWidget;

namespace vyr::services {

class CheckList;

class SelectionDialog : public QDialog
{
    Q_OBJECT

public:
    // `icons` holds an icon file per item (may be shorter than `items`).
    SelectionDialog(const QString &title, const QStringList &items, const QStringList &preselected,
                    const QStringList &icons, QWidget *parent = nullptr);

    // The checked items, in list order.
    QStringList chosen() const;
    QListWidget *list() const;

private:
    CheckList *m_list;
};

} // namespace vyr::services

#endif // VYR_SERVICES_SELECTIONDIALOG_H
