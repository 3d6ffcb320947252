#include "foldermodel.h"

#include "uikit/narrowtext.h"

#include <QFileIconProvider>

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <vector>

namespace vyr::services {

struct FolderModel::Node
{
    std::string name; // the file system's bytes; "/" for the top folder
    QString shown;
    Node *parent = nullptr;
    int row = 0;
    bool listed = false;
    std::vector<std::unique_ptr<Node>> children;

    std::string path() const
    {
        if (!parent || !parent->parent)
            return name;
        const std::string above = parent->path();
        return above.back() == '/' ? above + name : above + '/' + name;
    }
};

namespace {

// The subfolders of `folder`, from its entries alone: the kind an entry
// carries decides, and only a link or an entry of no stated kind is looked
// up (a link to a folder is a folder). A folder that cannot be read has none.
std::vector<std::string> subfolders(const std::string &folder)
{
    std::vector<std::string> names;
    DIR *dir = ::opendir(folder.c_str());
    if (!dir)
        return names;
    while (const dirent *entry = ::readdir(dir)) {
        if (entry->d_name[0] == '.')
            continue;
        bool isFolder = entry->d_type == DT_DIR;
        if (entry->d_type == DT_LNK || entry->d_type == DT_UNKNOWN) {
            struct stat info {};
            isFolder = ::fstatat(::dirfd(dir), entry->d_name, &info, 0) == 0 && S_ISDIR(info.st_mode);
        }
        if (isFolder)
            names.emplace_back(entry->d_name);
    }
    ::closedir(dir);
    return names;
}

} // namespace

FolderModel::FolderModel(QObject *parent)
    : QAbstractItemModel(parent)
    , root_(std::make_unique<Node>())
    , folderIcon_(QFileIconProvider().icon(QFileIconProvider::Folder))
{
    auto top = std::make_unique<Node>();
    top->name.push_back('/');
    top->shown = QStringLiteral("/");
    top->parent = root_.get();
    root_->children.push_back(std::move(top));
    root_->listed = true;
}

FolderModel::~FolderModel() = default;

FolderModel::Node *FolderModel::nodeOf(const QModelIndex &index) const
{
    return index.isValid() ? static_cast<Node *>(index.internalPointer()) : root_.get();
}

QModelIndex FolderModel::indexOf(const Node &node) const
{
    return node.parent ? createIndex(node.row, 0, const_cast<Node *>(&node)) : QModelIndex();
}

void FolderModel::list(Node &node)
{
    if (node.listed)
        return;
    node.listed = true;
    std::vector<std::unique_ptr<Node>> found;
    for (std::string &name : subfolders(node.path())) {
        auto child = std::make_unique<Node>();
        child->shown = fromNarrow(name);
        child->name = std::move(name);
        child->parent = &node;
        found.push_back(std::move(child));
    }
    if (found.empty())
        return;
    std::sort(found.begin(), found.end(), [](const auto &a, const auto &b) {
        const int order = a->shown.compare(b->shown, Qt::CaseInsensitive);
        return order != 0 ? order < 0 : a->name < b->name;
    });
    for (std::size_t row = 0; row < found.size(); ++row)
        found[row]->row = static_cast<int>(row);
    beginInsertRows(indexOf(node), 0, static_cast<int>(found.size()) - 1);
    node.children = std::move(found);
    endInsertRows();
}

QModelIndex FolderModel::index(const QString &path)
{
    const std::string bytes = toNarrow(path);
    if (bytes.empty() || bytes.front() != '/')
        return {};
    Node *node = root_->children.front().get();
    std::size_t at = 1;
    while (at < bytes.size()) {
        const std::size_t end = std::min(bytes.find('/', at), bytes.size());
        const std::string_view name(bytes.data() + at, end - at);
        at = end + 1;
        if (name.empty())
            continue;
        list(*node);
        const auto found = std::find_if(node->children.begin(), node->children.end(),
                                        [&](const auto &child) { return child->name == name; });
        if (found == node->children.end())
            return {};
        node = found->get();
    }
    return indexOf(*node);
}

QString FolderModel::filePath(const QModelIndex &index) const
{
    return index.isValid() ? fromNarrow(nodeOf(index)->path()) : QString();
}

QString FolderModel::fileName(const QModelIndex &index) const
{
    return index.isValid() ? nodeOf(index)->shown : QString();
}

QModelIndex FolderModel::index(int row, int column, const QModelIndex &parent) const
{
    const Node *above = nodeOf(parent);
    if (column != 0 || row < 0 || static_cast<std::size_t>(row) >= above->children.size())
        return {};
    return createIndex(row, 0, above->children[static_cast<std::size_t>(row)].get());
}

QModelIndex FolderModel::parent(const QModelIndex &child) const
{
    return child.isValid() ? indexOf(*nodeOf(child)->parent) : QModelIndex();
}

int FolderModel::rowCount(const QModelIndex &parent) const
{
    if (parent.column() > 0)
        return 0;
    return static_cast<int>(nodeOf(parent)->children.size());
}

int FolderModel::columnCount(const QModelIndex &) const
{
    return 1;
}

QVariant FolderModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return nodeOf(index)->shown;
    case Qt::DecorationRole:
        return folderIcon_;
    case PathRole:
        return filePath(index);
    default: return {};
    }
}

bool FolderModel::hasChildren(const QModelIndex &parent) const
{
    // A folder not read yet may have subfolders; reading it to know would
    // read every folder the tree shows.
    const Node *node = nodeOf(parent);
    return !node->listed || !node->children.empty();
}

bool FolderModel::canFetchMore(const QModelIndex &parent) const
{
    return !nodeOf(parent)->listed;
}

void FolderModel::fetchMore(const QModelIndex &parent)
{
    list(*nodeOf(parent));
}

} // namespace vyr::services
