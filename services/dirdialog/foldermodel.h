// The folder tree of the geodatabase picker.
#ifndef VYR_SERVICES_FOLDERMODEL_H
#define VYR_SERVICES_FOLDERMODEL_H

#include <QAbstractItemModel>
#include <QIcon>

#include <memory>
#include <string>

namespace vyr::services {

// The folders under "/" (hidden ones left out), one column, a folder's
// subfolders read when it is first opened or reached by index(path).
//
// Names are the file system's bytes shown through the narrow code page, so a
// name that is no text there still comes back as its own bytes: toNarrow of
// filePath gives the folder's path byte for byte. Only folder entries are
// read, never a file's content, and every folder shows the same icon, so a
// folder full of devices (/proc, /dev) lists as quickly as any other.
class FolderModel : public QAbstractItemModel
{
    Q_OBJECT
public:
    // The folder's path, as filePath gives it.
    static constexpr int PathRole = Qt::UserRole + 1;

    explicit FolderModel(QObject *parent = nullptr);
    ~FolderModel() override;

    // The folder at an absolute, clean path, reading the folders on the way
    // as needed; invalid when one of them is missing or hidden.
    QModelIndex index(const QString &path);
    QString filePath(const QModelIndex &index) const;
    QString fileName(const QModelIndex &index) const;

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool hasChildren(const QModelIndex &parent = {}) const override;
    bool canFetchMore(const QModelIndex &parent) const override;
    void fetchMore(const QModelIndex &parent) override;

private:
    struct Node;
    Node *nodeOf(const QModelIndex &index) const;
    QModelIndex indexOf(const Node &node) const;
    void list(Node &node);

    std::unique_ptr<Node> const root_;
    QIcon const folderIcon_;
};

} // namespace vyr::services

#endif // VYR_SERVICES_FOLDERMODEL_H
