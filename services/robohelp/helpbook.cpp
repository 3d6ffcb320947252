#include "helpbook.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace vyr::services {

QString bookFolderOf(const QString &helpFile)
{
    QString book = QDir::cleanPath(QString(helpFile).replace(u'\\', u'/'));
    if (!QFileInfo(book).isDir() && book.endsWith(QLatin1String(".chm"), Qt::CaseInsensitive))
        book.chop(4);
    return book;
}

HelpLocation resolveHelpTopic(const QString &helpFile, const QString &topic)
{
    QString file = helpFile;
    QString wanted = topic;
    const qsizetype hash = file.indexOf(QLatin1String(".chm#"), 0, Qt::CaseInsensitive);
    if (hash >= 0) {
        if (wanted.isEmpty())
            wanted = file.mid(hash + 5);
        file.truncate(hash + 4);
    }
    HelpLocation location{bookFolderOf(file), {}, {}};
    wanted.replace(u'\\', u'/');
    if (const qsizetype anchor = wanted.indexOf(u'#'); anchor >= 0) {
        location.anchor = wanted.mid(anchor + 1);
        wanted.truncate(anchor);
    }
    // Only pages inside the book: a topic is a relative path within it.
    const QString clean = QDir::cleanPath(wanted);
    if (!clean.isEmpty() && clean != QLatin1String(".") && !clean.startsWith(QLatin1String(".."))
        && !QDir::isAbsolutePath(clean))
        location.page = location.book + u'/' + clean;
    return location;
}

QString formatSectionAnchor(int topicNumber)
{
    switch (topicNumber) {
    case 0: return {};
    case 1: return QStringLiteral("attributes");
    case 3: return QStringLiteral("reader-parameters");
    case 5: return QStringLiteral("writer-parameters");
    default: return QStringLiteral("topic-%1").arg(topicNumber);
    }
}

HelpLocation resolveFormatHelp(const QString &helpFile, const QString &formatName, int topicNumber)
{
    // Format names are identifiers; anything else would not name a page.
    static const QRegularExpression identifier(QStringLiteral("^[A-Za-z0-9_.-]+$"));
    HelpLocation location{bookFolderOf(helpFile), {}, formatSectionAnchor(topicNumber)};
    if (identifier.match(formatName).hasMatch() && !formatName.startsWith(u'.'))
        location.page = location.book + u'/' + formatName.toLower() + QStringLiteral(".htm");
    return location;
}

HelpLocation inLanguage(const HelpLocation &location, const QString &language)
{
    static const QRegularExpression code(QStringLiteral("^[a-z]+$"));
    // Without a book there is no folder beside it; "_de" would be looked
    // for in the working directory.
    if (location.book.isEmpty() || !code.match(language).hasMatch())
        return location;
    const QString book = location.book + u'_' + language;
    if (!QFileInfo(book).isDir())
        return location;
    HelpLocation translated{book, location.page, location.anchor};
    if (!location.page.isEmpty()) {
        translated.page = book + location.page.mid(location.book.size());
        if (!QFileInfo(translated.page).isFile() && QFileInfo(location.page).isFile())
            return location;
    }
    return translated;
}

QList<HelpPage> bookContents(const QString &book)
{
    static const QRegularExpression titlePattern(QStringLiteral("<title>(.*?)</title>"),
                                                 QRegularExpression::CaseInsensitiveOption
                                                     | QRegularExpression::DotMatchesEverythingOption);
    QList<HelpPage> pages;
    const QStringList files = QDir(book).entryList({QStringLiteral("*.htm"), QStringLiteral("*.html")}, QDir::Files);
    for (const QString &name : files) {
        QFile file(QDir(book).filePath(name));
        QString title = name;
        if (file.open(QIODevice::ReadOnly)) {
            const QRegularExpressionMatch match = titlePattern.match(QString::fromUtf8(file.read(4096)));
            if (match.hasMatch())
                title = match.captured(1).trimmed();
        }
        pages.append({file.fileName(), title});
    }
    std::sort(pages.begin(), pages.end(), [](const HelpPage &a, const HelpPage &b) {
        const bool aIndex = a.path.endsWith(QLatin1String("/index.htm"));
        const bool bIndex = b.path.endsWith(QLatin1String("/index.htm"));
        if (aIndex != bIndex)
            return aIndex;
        return a.title.compare(b.title, Qt::CaseInsensitive) < 0;
    });
    return pages;
}

} // namespace vyr::services
