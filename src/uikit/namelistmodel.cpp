#include "uikit/namelistmodel.h"

#include "uikit/narrowtext.h"

namespace vyr {

NameListModel::NameListModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

NameListModel::~NameListModel() = default;

void NameListModel::appendNames(std::vector<std::string> names)
{
    if (names.empty())
        return;
    const int first = int(m_items.size());
    beginInsertRows(QModelIndex(), first, first + int(names.size()) - 1);
    m_items.reserve(m_items.size() + names.size());
    for (std::string &name : names)
        m_items.push_back({std::move(name), std::nullopt});
    endInsertRows();
}

int NameListModel::rowOfName(std::string_view name) const
{
    for (std::size_t row = 0; row < m_items.size(); ++row) {
        if (m_items[row].name == name)
            return int(row);
    }
    return -1;
}

int NameListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_items.size());
}

QVariant NameListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= int(m_items.size()) || (role != Qt::DisplayRole && role != Qt::EditRole))
        return {};
    const Item &item = m_items[std::size_t(index.row())];
    if (!item.shown)
        item.shown = fromNarrow(item.name);
    return *item.shown;
}

bool NameListModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || index.row() >= int(m_items.size()) || (role != Qt::DisplayRole && role != Qt::EditRole))
        return false;
    Item &item = m_items[std::size_t(index.row())];
    item.shown = value.toString();
    item.name = toNarrow(*item.shown);
    emit dataChanged(index, index, {Qt::DisplayRole, Qt::EditRole});
    return true;
}

Qt::ItemFlags NameListModel::flags(const QModelIndex &index) const
{
    return index.isValid() ? Qt::ItemIsSelectable | Qt::ItemIsEnabled : Qt::NoItemFlags;
}

bool NameListModel::insertRows(int row, int count, const QModelIndex &parent)
{
    if (parent.isValid() || row < 0 || row > int(m_items.size()) || count < 0)
        return false;
    if (count == 0)
        return true;
    beginInsertRows(parent, row, row + count - 1);
    m_items.insert(m_items.begin() + row, std::size_t(count), Item{{}, QString()});
    endInsertRows();
    return true;
}

bool NameListModel::removeRows(int row, int count, const QModelIndex &parent)
{
    if (parent.isValid() || row < 0 || count < 0 || row + count > int(m_items.size()))
        return false;
    if (count == 0)
        return true;
    beginRemoveRows(parent, row, row + count - 1);
    m_items.erase(m_items.begin() + row, m_items.begin() + row + count);
    endRemoveRows();
    return true;
}

} // namespace vyr
