// A list of items with check marks and the buttons to check all or none;
// the selection dialog and the prompter's list prompts are made of it.
#ifndef VYR_SERVICES_CHECKLIST_H
#define VYR_SERVICES_CHECKLIST_H

#include <QStringList>
#include <QWidget>

class QListWidget;

namespace vyr::services {

class CheckList : public QWidget
{
    Q_OBJECT

public:
    explicit CheckList(QWidget *parent = nullptr);

    // Adds the items, checking those in `checked`. `icons` holds an icon
    // file per item (may be shorter than `items`).
    void setItems(const QStringList &items, const QStringList &checked, const QStringList &icons = {});
    QStringList checkedItems() const;
    void setAllChecked(bool checked);
    QListWidget *list() const { return m_list; }

private:
    QListWidget *m_list;
};

} // namespace vyr::services

#endif // VYR_SERVICES_CHECKLIST_H
