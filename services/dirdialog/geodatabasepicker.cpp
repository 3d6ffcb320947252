#include "geodatabasepicker.h"

#include "servicetext.h"

#include <QCompleter>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QTreeView>
#include <QVBoxLayout>

namespace vyr::services {

namespace {

bool namedGdb(const QString &name)
{
    return name.endsWith(QStringLiteral(".gdb"), Qt::CaseInsensitive) && name.size() > 4;
}

QString absoluteClean(const QString &path)
{
    return QDir::cleanPath(QDir::current().absoluteFilePath(path));
}

} // namespace

GeodatabasePath classifyGeodatabasePath(const QString &typed, bool allowNew, int maxBytes)
{
    if (typed.trimmed().isEmpty())
        return GeodatabasePath::Empty;
    const QString path = absoluteClean(typed);
    if (QFile::encodeName(path).size() > maxBytes)
        return GeodatabasePath::TooLong;
    const QFileInfo info(path);
    if (info.exists()) {
        if (!info.isDir())
            return GeodatabasePath::NotAFolder;
        return namedGdb(info.fileName()) ? GeodatabasePath::Existing : GeodatabasePath::NotNamedGdb;
    }
    if (allowNew && namedGdb(info.fileName()) && QFileInfo(info.path()).isDir())
        return GeodatabasePath::New;
    return GeodatabasePath::Missing;
}

struct GeodatabasePicker::Private
{
    bool allowNew = false;
    int maxBytes = 0;
    QFileSystemModel *folders = nullptr;
    QTreeView *tree = nullptr;
    QLineEdit *path = nullptr;
    QLabel *status = nullptr;
    QPushButton *ok = nullptr;
    // Set while the tree follows the typed path, so that it does not write
    // the path back over what is being typed.
    bool following = false;
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
    // Typed paths complete to folders only, as the tree shows them.
    auto *completionModel = new QFileSystemModel(this);
    completionModel->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot | QDir::Drives);
    completionModel->setRootPath(QDir::rootPath());
    auto *completer = new QCompleter(completionModel, this);
    d->path->setCompleter(completer);
    auto *pathRow = new QHBoxLayout;
    pathRow->addWidget(pathLabel);
    pathRow->addWidget(d->path, 1);
    layout->addLayout(pathRow);

    d->folders = new QFileSystemModel(this);
    d->folders->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot | QDir::Drives);
    d->folders->setReadOnly(true);
    d->folders->setRootPath(QDir::rootPath());
    d->tree = new QTreeView(this);
    d->tree->setObjectName(QStringLiteral("folders"));
    d->tree->setModel(d->folders);
    for (int column = 1; column < d->folders->columnCount(); ++column)
        d->tree->hideColumn(column);
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
    // Folders are read in the background: the chosen one moves as its
    // parents fill, so it is brought back into view each time one of them
    // has been read.
    connect(d->folders, &QFileSystemModel::directoryLoaded, this, [this](const QString &loaded) {
        const QModelIndex current = d->tree->currentIndex();
        if (!current.isValid() || !d->folders->filePath(current).startsWith(loaded))
            return;
        // After the view has laid out the rows just read.
        QTimer::singleShot(0, this, [this] {
            if (d->tree->currentIndex().isValid())
                d->tree->scrollTo(d->tree->currentIndex(), QAbstractItemView::PositionAtCenter);
        });
    });

    const QString start = startPath.isEmpty() ? QDir::homePath() : startPath;
    d->path->setText(startPath.isEmpty() ? QString() : absoluteClean(startPath));
    showFolderOf(start);
    updateState();
    (QFileInfo(absoluteClean(start)).isDir() ? static_cast<QWidget *>(d->tree) : d->path)->setFocus();
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
    }
    return {};
}

void GeodatabasePicker::accept()
{
    if (problem().isEmpty())
        QDialog::accept();
}

// The tree shows the path itself when it is a folder, else the nearest
// folder above it, so that a new name or a typing slip still starts near.
void GeodatabasePicker::showFolderOf(const QString &path)
{
    QString folder = absoluteClean(path);
    while (!QFileInfo(folder).isDir() && folder != QDir::rootPath())
        folder = QFileInfo(folder).path();
    const QModelIndex index = d->folders->index(folder);
    if (!index.isValid())
        return;
    d->following = true;
    d->tree->setCurrentIndex(index);
    d->tree->scrollTo(index, QAbstractItemView::PositionAtCenter);
    d->following = false;
}

void GeodatabasePicker::pathEdited()
{
    if (QFileInfo(absoluteClean(d->path->text())).isDir())
        showFolderOf(d->path->text());
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
    QString folder = path().isEmpty() ? QDir::homePath() : path();
    if (!QFileInfo(folder).isDir() || namedGdb(QFileInfo(folder).fileName()))
        folder = QFileInfo(folder).path();
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
    d->path->setText(QDir(folder).absoluteFilePath(name));
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
