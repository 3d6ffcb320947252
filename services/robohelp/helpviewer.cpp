#include "helpviewer.h"

#include "servicetext.h"

#include <QApplication>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPointer>
#include <QShortcut>
#include <QSplitter>
#include <QTextBrowser>
#include <QToolButton>
#include <QUrl>
#include <QUrlQuery>
#include <QVBoxLayout>

namespace vyr::services {

namespace {

// A note saying what is missing is shown as a page of its own, so that the
// browser's history holds it like any page: its address carries the book it
// was asked of and its text.
constexpr char kNoteScheme[] = "vyrhelp-note";

QUrl noteUrl(const QString &book, const QString &text)
{
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("book"), book);
    query.addQueryItem(QStringLiteral("text"), text);
    QUrl url;
    url.setScheme(QLatin1String(kNoteScheme));
    url.setQuery(query);
    return url;
}

QString noteItem(const QUrl &url, const QString &item)
{
    return QUrlQuery(url).queryItemValue(item, QUrl::FullyDecoded);
}

class HelpBrowser final : public QTextBrowser
{
public:
    using QTextBrowser::QTextBrowser;

    QVariant loadResource(int type, const QUrl &name) override
    {
        if (name.scheme() == QLatin1String(kNoteScheme))
            return QStringLiteral("<p>%1</p>").arg(noteItem(name, QStringLiteral("text")).toHtmlEscaped());
        return QTextBrowser::loadResource(type, name);
    }
};

} // namespace

HelpViewer::HelpViewer(QWidget *parent)
    : QWidget(parent, Qt::Window)
    , m_browser(new HelpBrowser(this))
    , m_contents(new QListWidget(this))
    , m_back(new QToolButton(this))
    , m_forward(new QToolButton(this))
    , m_home(new QToolButton(this))
{
    setObjectName(QStringLiteral("helpViewer"));
    setWindowTitle(localized("Help"));
    m_browser->setObjectName(QStringLiteral("helpBrowser"));
    m_browser->setOpenExternalLinks(true);
    m_contents->setObjectName(QStringLiteral("helpContents"));
    m_contents->setAccessibleName(localized("Contents"));

    const struct
    {
        QToolButton *button;
        const char *text;
        QStyle::StandardPixmap icon;
        const char *name;
    } buttons[] = {
        {m_back, "Back", QStyle::SP_ArrowBack, "helpBack"},
        {m_forward, "Forward", QStyle::SP_ArrowForward, "helpForward"},
        {m_home, "Home", QStyle::SP_DirHomeIcon, "helpHome"},
    };
    auto *toolbar = new QHBoxLayout;
    for (const auto &entry : buttons) {
        entry.button->setObjectName(QLatin1String(entry.name));
        entry.button->setText(localized(entry.text));
        entry.button->setIcon(style()->standardIcon(entry.icon));
        entry.button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        toolbar->addWidget(entry.button);
    }
    toolbar->addStretch();
    m_back->setShortcut(QKeySequence::Back);
    m_forward->setShortcut(QKeySequence::Forward);
    m_back->setEnabled(false);
    m_forward->setEnabled(false);

    auto *splitter = new QSplitter(this);
    splitter->addWidget(m_contents);
    splitter->addWidget(m_browser);
    splitter->setStretchFactor(1, 3);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(toolbar);
    layout->addWidget(splitter);
    resize(860, 600);

    connect(m_back, &QToolButton::clicked, m_browser, &QTextBrowser::backward);
    connect(m_forward, &QToolButton::clicked, m_browser, &QTextBrowser::forward);
    connect(m_home, &QToolButton::clicked, m_browser, &QTextBrowser::home);
    connect(m_browser, &QTextBrowser::backwardAvailable, m_back, &QToolButton::setEnabled);
    connect(m_browser, &QTextBrowser::forwardAvailable, m_forward, &QToolButton::setEnabled);
    connect(m_browser, &QTextBrowser::sourceChanged, this, [this](const QUrl &shown) {
        const QString book = bookOf(shown);
        if (shown.isLocalFile())
            m_bookOfPage.insert(shown.adjusted(QUrl::RemoveFragment).toString(), book);
        fillContents(book);
    });
    for (const QKeyCombination keys : {QKeyCombination(Qt::Key_Escape), Qt::CTRL | Qt::Key_W}) {
        auto *shortcut = new QShortcut(QKeySequence(keys), this);
        connect(shortcut, &QShortcut::activated, this, &QWidget::close);
    }
    connect(m_contents, &QListWidget::itemActivated, this, [this](QListWidgetItem *item) {
        m_browser->setSource(QUrl::fromLocalFile(item->data(Qt::UserRole).toString()));
    });
    connect(m_contents, &QListWidget::itemClicked, this, [this](QListWidgetItem *item) {
        m_browser->setSource(QUrl::fromLocalFile(item->data(Qt::UserRole).toString()));
    });
}

HelpViewer *HelpViewer::instance()
{
    static QPointer<HelpViewer> viewer;
    QWidget *modal = QApplication::activeModalWidget();
    if (!viewer)
        viewer = new HelpViewer(modal);
    else if (viewer->parentWidget() != modal)
        viewer->setParent(modal, Qt::Window);
    return viewer;
}

void HelpViewer::fillContents(const QString &book)
{
    if (book == m_book)
        return;
    m_book = book;
    m_contents->clear();
    const QList<HelpPage> pages = bookContents(book);
    for (const HelpPage &page : pages) {
        auto *item = new QListWidgetItem(page.title, m_contents);
        item->setData(Qt::UserRole, page.path);
    }
}

QString HelpViewer::bookOf(const QUrl &shown) const
{
    if (shown.scheme() == QLatin1String(kNoteScheme))
        return noteItem(shown, QStringLiteral("book"));
    // A page reached by a link is in the book of the page that linked it.
    return m_bookOfPage.value(shown.adjusted(QUrl::RemoveFragment).toString(), m_book);
}

void HelpViewer::showLocation(const HelpLocation &location, const QString &missingNote)
{
    fillContents(location.book);
    QString page = location.page;
    if (page.isEmpty() && m_contents->count() > 0)
        page = m_contents->item(0)->data(Qt::UserRole).toString();
    if (!page.isEmpty() && QFileInfo(page).isFile()) {
        QUrl url = QUrl::fromLocalFile(page);
        // A page a translation lacks comes from the book itself, but belongs
        // to the book it was asked of.
        m_bookOfPage.insert(url.toString(), location.book);
        if (!location.anchor.isEmpty())
            url.setFragment(location.anchor);
        m_browser->setSource(url, QTextDocument::HtmlResource);
    } else {
        m_browser->setSource(noteUrl(location.book, missingNote), QTextDocument::HtmlResource);
    }
    show();
    raise();
    activateWindow();
}

} // namespace vyr::services
