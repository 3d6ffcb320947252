// NameListModel: the items of a combo box that may list thousands of names
// (the attributes of a schema): the names stay as the model's narrow texts,
// each turned into the text a widget shows only when it is shown or asked
// for, so that filling the box costs nothing per name. The box edits it as
// it edits its own items: inserting, removing, renaming.
#ifndef VYR_UIKIT_NAMELISTMODEL_H
#define VYR_UIKIT_NAMELISTMODEL_H

#include <QAbstractListModel>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vyr {

class NameListModel final : public QAbstractListModel
{
    Q_OBJECT

public:
    explicit NameListModel(QObject *parent = nullptr);
    ~NameListModel() override;

    // Appends `names` as items, in order.
    void appendNames(std::vector<std::string> names);
    // The first item whose text is `name` read in the narrow code page, or
    // -1.
    int rowOfName(std::string_view name) const;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    // Only an item's text (display or edit role) is kept.
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool insertRows(int row, int count, const QModelIndex &parent = QModelIndex()) override;
    bool removeRows(int row, int count, const QModelIndex &parent = QModelIndex()) override;

private:
    struct Item
    {
        std::string name;
        // The text shown, once made (or set).
        mutable std::optional<QString> shown;
    };
    std::vector<Item> m_items;
};

} // namespace vyr

#endif // VYR_UIKIT_NAMELISTMODEL_H
