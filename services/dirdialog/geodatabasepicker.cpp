#include "geodatabasepicker.h"

#include "foldermodel.h"
#include "servicetext.h"

#include "uikit/narrowtext.h"

#include <QCompleter>
#include <QDialogButtonBox>
#include <QDir>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

namespace vyr::services {

// Paths are the file system's bytes shown through the narrow code page
// (toNarrow and fromNarrow), never through Qt's file name encoding, which
// turns bytes that are no UTF-8 into U+FFFD and so names another file.
namespace {

bool namedGdb(const QString &name)
{
    return name.endsWith(QStringLiteral(".gdb"), Qt::CaseInsensitive) && name.size() > 4;
}

QString workingFolder()
{
    std::string buffer(256, '\0');
    while (!::getcwd(buffer.data(), buffer.size())) {
        if (errno != ERANGE)
            return QStringLiteral("/");
        buffer.resize(buffer.size() * 2);
    }
    buffer.resize(buffer.find('\0'));
    return fromNarrow(buffer);
}

QString homeFolder()
{
    const char *home = std::getenv("HOME");
    return home && *home == '/' ? fromNarrow(home) : QStringLiteral("/");
}

QString absoluteClean(const QString &path)
{
    return QDir::cleanPath(path.startsWith(u'/') ? path : workingFolder() + u'/' + path);
}

QString nameOf(const QString &path)
{
    return path.mid(path.lastIndexOf(u'/') + 1);
}

QString folderAbove(const QString &path)
{
    const qsizetype slash = path.lastIndexOf(u'/');
    return slash <= 0 ? QStringLiteral("/") : path.left(slash);
}

// The kind of file at `path` (S_IFDIR, S_IFREG ...), 0 when there is none.
// Bytes with a NUL in them name no file; cut at the NUL they would name
// another.
unsigned kindOf(const QString &path)
{
    const std::string bytes = toNarrow(path);
    struct stat info {};
    if (bytes.find('\0') != std::string::npos || ::stat(bytes.c_str(), &info) != 0)
        return 0;
    return info.st_mode & S_IFMT;
}

bool isFolder(const QString &path)
{
    return kindOf(path) == S_IFDIR;
}

} // namespace

GeodatabasePath classifyGeodatabasePath(const QString &typed, bool allowNew, int maxBytes)
{
    if (typed.trimmed().isEmpty())
        return GeodatabasePath::Empty;
    const QString path = absoluteClean(typed);
    const std::string bytes = toNarrow(path);
    // A character the code page cannot hold comes out as "?": another name.
    if (fromNarrow(bytes) != path)
        return GeodatabasePath::NotInCodePage;
    if (bytes.size() > static_cast<std::size_t>(maxBytes))
        return GeodatabasePath::TooLong;
    if (bytes.find('\0') != std::string::npos)
        return GeodatabasePath::Missing;
    if (const unsigned kind = kindOf(path)) {
        if (kind != S_IFDIR)
            return GeodatabasePath::NotAFolder;
        return namedGdb(nameOf(path)) ? GeodatabasePath::Existing : GeodatabasePath::NotNamedGdb;
    }
    if (allowNew && namedGdb(nameOf(path)) && isFolder(folderAbove(path)))
        return GeodatabasePath::New;
    return GeodatabasePath::Missing;
}

namespace {

// Completes a typed absolute path folder by folder along the tree.
class FolderCompleter : public QCompleter
{
public:
    FolderCompleter(FolderModel *folders, QObject *parent)
        : QCompleter(folders, parent)
    {}

    QStringList splitPath(const QString &path) const override
    {
        if (!path.startsWith(u'/'))
            return {path};
        QStringList parts = path.split(u'/');
        parts.front() = QStringLiteral("/");
        return parts;
    }

    QString pathFromIndex(const QModelIndex &index) const override
    {
        return index.data(FolderModel::PathRole).toString();
    }
};

} // namespace

struct GeodatabasePicker::Private
{
    bool allowNew = false;
    int maxBytes = 0;
    FolderModel *folders = nullptr;
    QTreeView *tree = nullptr;
    QLineEdit *path = nullptr;
    QLabel *status = nullptr;
    QPushButton *ok = nullptr;
    // Set while the tree follows the typed path, so that it does not write
    // the path back over what is being typed.
    bool following = false;
    // The start path as the field showed it, when it filled the caller's
    // buffer: it may be a longer path cut short, so it is not an answer.
    QString cutStart;
};

GeodatabasePicker::GeodatabasePicker(const QString &title, const QString &prompt, const QString &startPath,
                                     bool allowNew, int maxBytes, QWidget *parent)
    : QDialog(parent)
    , d(std::make_unique<Private>())
{
    d->allowNew = allowNew;
    d->maxBytes = maxBytes;
    setObjectName(QStringLiteral("geodatabasePicker"));
    setWindowTitle(title.isEmpty() ? localized("Select Geodatabase") : title);

    auto *layout = new QVBoxLayout(this);
    if (!prompt.isEmpty()) {
        auto *promptLabel = new QLabel(prompt, this);
        promptLabel->setObjectName(QStringLiteral("prompt"));
        promptLabel->setWordWrap(true);
        layout->addWidget(promptLabel);
    }

    d->path = new QLineEdit(this);
    d->path->setObjectName(QStringLiteral("path"));
    auto *pathLabel = new QLabel(localized("&Geodatabase:"), this);
    pathLabel->setBuddy(d->path);
    d->folders = new FolderModel(this);
    // Typed paths complete to folders only, as the tree shows them.
    d->path->setCompleter(new FolderCompleter(d->folders, this));
    auto *pathRow = new QHBoxLayout;
    pathRow->addWidget(pathLabel);
    pathRow->addWidget(d->path, 1);
    layout->addLayout(pathRow);

    d->tree = new QTreeView(this);
    d->tree->setObjectName(QStringLiteral("folders"));
    d->tree->setModel(d->folders);
    d->tree->header()->hide();
    d->tree->setSelectionMode(QAbstractItemView::SingleSelection);
    // Enter and a double click both reach folderActivated: a geodatabase
    // answers, any other folder opens or closes.
    d->tree->setExpandsOnDoubleClick(false);
    auto *treeLabel = new QLabel(localized("&Folders:"), this);
    treeLabel->setBuddy(d->tree);
    layout->addWidget(treeLabel);
    layout->addWidget(d->tree, 1);

    d->status = new QLabel(this);
    d->status->setObjectName(QStringLiteral("status"));
    d->status->setWordWrap(true);
    layout->addWidget(d->status);

    // Made before the dialog's buttons, so that Tab reaches it first, in the
    // order the row shows.
    auto *bottomRow = new QHBoxLayout;
    if (allowNew) {
        auto *newButton = new QPushButton(localized("&New Geodatabase..."), this);
        newButton->setObjectName(QStringLiteral("newGeodatabase"));
        newButton->setAutoDefault(false);
        connect(newButton, &QPushButton::clicked, this, &GeodatabasePicker::nameNewGeodatabase);
        bottomRow->addWidget(newButton);
    }
    bottomRow->addStretch(1);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    d->ok = buttons->button(QDialogButtonBox::Ok);
    d->ok->setText(localized("OK"));
    buttons->button(QDialogButtonBox::Cancel)->setText(localized("Cancel"));
    bottomRow->addWidget(buttons);
    layout->addLayout(bottomRow);

    connect(buttons, &QDialogButtonBox::accepted, this, &GeodatabasePicker::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(d->path, &QLineEdit::textEdited, this, &GeodatabasePicker::pathEdited);
    connect(d->tree->selectionModel(), &QItemSelectionModel::currentChanged, this, &GeodatabasePicker::folderChosen);
    connect(d->tree, &QTreeView::activated, this, &GeodatabasePicker::folderActivated);

    const QString start = startPath.isEmpty() ? homeFolder() : startPath;
    d->path->setText(startPath.isEmpty() ? QString() : absoluteClean(startPath));
    if (toNarrow(startPath).size() >= static_cast<std::size_t>(maxBytes))
        d->cutStart = d->path->text();
    showFolderOf(start);
    updateState();
    (isFolder(absoluteClean(start)) ? static_cast<QWidget *>(d->tree) : d->path)->setFocus();
    resize(480, 520);
}

GeodatabasePicker::~GeodatabasePicker() = default;

QString GeodatabasePicker::path() const
{
    const QString typed = d->path->text();
    return typed.trimmed().isEmpty() ? QString() : absoluteClean(typed);
}

QString GeodatabasePicker::problem() const
{
    if (!d->cutStart.isEmpty() && d->path->text() == d->cutStart)
        return localized("The starting path fills all %1 bytes the caller can take and may have been cut short: "
                         "choose or type the geodatabase.")
            .arg(d->maxBytes);
    const QString shown = QDir::toNativeSeparators(path());
    switch (classifyGeodatabasePath(d->path->text(), d->allowNew, d->maxBytes)) {
    case GeodatabasePath::Existing:
    case GeodatabasePath::New:
        return {};
    case GeodatabasePath::Empty:
        return localized("Choose or type a geodatabase folder.");
    case GeodatabasePath::NotNamedGdb:
        return localized("%1 is not a geodatabase: its name does not end in \".gdb\".").arg(shown);
    case GeodatabasePath::NotAFolder:
        return localized("%1 is a file, not a folder.").arg(shown);
    case GeodatabasePath::Missing:
        return localized("%1 does not exist.").arg(shown);
    case GeodatabasePath::TooLong:
        return localized("The path is longer than %1 bytes.").arg(d->maxBytes);
    case GeodatabasePath::NotInCodePage:
        return localized("%1 holds characters the code page of the text cannot hold.").arg(shown);
    }
    return {};
}

void GeodatabasePicker::accept()
{
    if (problem().isEmpty())
        QDialog::accept();
}

void GeodatabasePicker::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    // Only now has the tree its height, to centre the chosen folder in.
    if (d->tree->currentIndex().isValid())
        d->tree->scrollTo(d->tree->currentIndex(), QAbstractItemView::PositionAtCenter);
}

// The tree shows the path itself when it is a folder, else the nearest
// folder above it, so that a new name or a typing slip still starts near.
void GeodatabasePicker::showFolderOf(const QString &path)
{
    // A hidden folder is not in the tree: the nearest shown one above it is.
    QString folder = absoluteClean(path);
    QModelIndex index;
    for (;;) {
        if (isFolder(folder))
            index = d->folders->index(folder);
        if (index.isValid() || folder == u'/')
            break;
        folder = folderAbove(folder);
    }
    if (!index.isValid())
        return;
    d->following = true;
    d->tree->setCurrentIndex(index);
    d->tree->scrollTo(index, QAbstractItemView::PositionAtCenter);
    d->following = false;
}

void GeodatabasePicker::pathEdited()
{
    // A typed folder shows in the tree; else the folder being typed in is
    // read, for the completer to offer its subfolders.
    const QString typed = absoluteClean(d->path->text());
    if (isFolder(typed))
        showFolderOf(typed);
    else if (!d->path->text().trimmed().isEmpty())
        d->folders->index(folderAbove(typed));
    updateState();
}

void GeodatabasePicker::folderChosen()
{
    if (d->following)
        return;
    const QModelIndex current = d->tree->currentIndex();
    if (current.isValid())
        d->path->setText(QDir::cleanPath(d->folders->filePath(current)));
    updateState();
}

void GeodatabasePicker::folderActivated()
{
    const QModelIndex current = d->tree->currentIndex();
    if (!current.isValid())
        return;
    if (namedGdb(d->folders->fileName(current))) {
        accept();
        return;
    }
    d->tree->setExpanded(current, !d->tree->isExpanded(current));
}

void GeodatabasePicker::nameNewGeodatabase()
{
    QString folder = path().isEmpty() ? homeFolder() : path();
    if (!isFolder(folder) || namedGdb(nameOf(folder)))
        folder = folderAbove(folder);
    QInputDialog ask(this);
    ask.setObjectName(QStringLiteral("newGeodatabaseName"));
    ask.setWindowTitle(localized("New Geodatabase"));
    ask.setLabelText(localized("Name of the new geodatabase in %1:").arg(QDir::toNativeSeparators(folder)));
    ask.setOkButtonText(localized("OK"));
    ask.setCancelButtonText(localized("Cancel"));
    if (ask.exec() != QDialog::Accepted || ask.textValue().trimmed().isEmpty())
        return;
    QString name = ask.textValue().trimmed();
    if (!namedGdb(name))
        name += QStringLiteral(".gdb");
    d->path->setText(QDir::cleanPath(folder + u'/' + name));
    d->path->setFocus();
    updateState();
}

void GeodatabasePicker::updateState()
{
    const QString reason = problem();
    d->ok->setEnabled(reason.isEmpty());
    d->status->setText(reason);
}

} // namespace vyr::services
