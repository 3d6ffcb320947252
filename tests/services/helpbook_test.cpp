#include "helpbook.h"

#include "support/scratchdirectory.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace vyr::services {
namespace {

TEST(HelpBookTest, TopicsResolveInsideTheirBook)
{
    struct Case
    {
        const char *file;
        const char *topic;
        const char *book;
        const char *page;
        const char *anchor;
    };
    const Case cases[] = {
        {"/opt/vyr/help/VYRLoomhouse.chm", "Editing_Feature_Type_Properties.htm", "/opt/vyr/help/VYRLoomhouse",
         "/opt/vyr/help/VYRLoomhouse/Editing_Feature_Type_Properties.htm", ""},
        {"/opt/vyr/help/VYRTransformers.CHM", "transformers\\Tester.htm#tests", "/opt/vyr/help/VYRTransformers",
         "/opt/vyr/help/VYRTransformers/transformers/Tester.htm", "tests"},
        {"/opt/vyr/help/VYRTransformers.chm#transformers\\Tester.htm", "", "/opt/vyr/help/VYRTransformers",
         "/opt/vyr/help/VYRTransformers/transformers/Tester.htm", ""},
        {"/opt/vyr/help/VYRLoomhouse.chm", "../../etc/passwd", "/opt/vyr/help/VYRLoomhouse", "", ""},
        {"/opt/vyr/help/VYRLoomhouse.chm", "/etc/passwd", "/opt/vyr/help/VYRLoomhouse", "", ""},
        {"/opt/vyr/help/VYRLoomhouse.chm", "", "/opt/vyr/help/VYRLoomhouse", "", ""},
    };
    for (const Case &c : cases) {
        const HelpLocation location = resolveHelpTopic(QString::fromUtf8(c.file), QString::fromUtf8(c.topic));
        EXPECT_EQ(location.book, QString::fromUtf8(c.book)) << c.file << " " << c.topic;
        EXPECT_EQ(location.page, QString::fromUtf8(c.page)) << c.file << " " << c.topic;
        EXPECT_EQ(location.anchor, QString::fromUtf8(c.anchor)) << c.file << " " << c.topic;
    }
}

TEST(HelpBookTest, FormatPagesAndTheirSections)
{
    const QString book = QStringLiteral("/h/VYRReadersWriters.chm");
    const HelpLocation writer = resolveFormatHelp(book, QStringLiteral("POSTGRES"), 5);
    EXPECT_EQ(writer.page, QStringLiteral("/h/VYRReadersWriters/postgres.htm"));
    EXPECT_EQ(writer.anchor, QStringLiteral("writer-parameters"));
    EXPECT_EQ(resolveFormatHelp(book, QStringLiteral("CSV"), 0).anchor, QString());
    EXPECT_EQ(resolveFormatHelp(book, QStringLiteral("CSV"), 1).anchor, QStringLiteral("attributes"));
    EXPECT_EQ(resolveFormatHelp(book, QStringLiteral("CSV"), 3).anchor, QStringLiteral("reader-parameters"));
    EXPECT_TRUE(resolveFormatHelp(book, QStringLiteral("../x"), 0).page.isEmpty());
    EXPECT_TRUE(resolveFormatHelp(book, QString(), 0).page.isEmpty());
}

TEST(HelpBookTest, ContentsStartWithTheIndexThenGoByTitle)
{
    test::ScratchDirectory book;
    book.write("zeta.htm", "<html><head><title>Alpha page</title></head></html>");
    book.write("alpha.htm", "<html><head><title>Zeta page</title></head></html>");
    book.write("index.htm", "<html><head><title>Start</title></head></html>");
    book.write("untitled.htm", "<p>no title</p>");
    book.write("notes.txt", "not a page");
    const QList<HelpPage> pages = bookContents(QString::fromStdString(book.path()));
    QStringList titles;
    for (const HelpPage &page : pages)
        titles.append(page.title);
    EXPECT_EQ(titles, (QStringList{"Start", "Alpha page", "untitled.htm", "Zeta page"}));
}

// Every page the dialogs name is in the built help books.
TEST(HelpBookTest, TopicsTheDialogsNameExist)
{
    const QString help = QStringLiteral(VYR_TEST_STAGE_DIR "/help/");
    const char *pages[] = {
        "VYRLoomhouse/Editing_Feature_Type_Properties.htm",
        "VYRLoomhouse/Editing_Feature_Type_Properties.htm#review-changes",
        "VYRLoomhouse/Editing_Feature_Type_Properties.htm#apply-preview",
        "VYRLoomhouse/editing_geodatabase_domains_and_subtypes.htm",
        "VYRLoomhouse/About_vyrguimfc.htm",
        "VYRTransformers/transformers/Tester.htm",
    };
    // In German too, from the German book.
    for (const QString &language : {QString(), QStringLiteral("de")}) {
        for (const char *page : pages) {
            const QString path = QString::fromLatin1(page);
            const HelpLocation location = inLanguage(
                resolveHelpTopic(help + path.section(u'/', 0, 0) + QStringLiteral(".chm"), path.section(u'/', 1)),
                language);
            EXPECT_TRUE(QFileInfo::exists(location.page)) << page;
            EXPECT_EQ(location.book.endsWith(QLatin1String("_de")), !language.isEmpty()) << page;
            if (!location.anchor.isEmpty()) {
                QFile file(location.page);
                EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << page;
                EXPECT_TRUE(file.readAll().contains(QStringLiteral("name=\"%1\"").arg(location.anchor).toUtf8()))
                    << page;
            }
        }
        for (const char *format : {"SHAPEFILE", "POSTGRES", "GEOPACKAGE", "CSV", "GPX", "XLSX"}) {
            const HelpLocation location =
                inLanguage(resolveFormatHelp(help + "VYRReadersWriters.chm", QLatin1String(format), 5), language);
            EXPECT_TRUE(QFileInfo::exists(location.page)) << format;
            EXPECT_EQ(location.book.endsWith(QLatin1String("_de")), !language.isEmpty()) << format;
        }
    }
}

// A translated book holds every page of its English book with the same
// anchors and links, so that a section the dialogs open and a link between
// pages lead to the same place in either language.
TEST(HelpBookTest, TranslatedBooksMirrorTheirEnglishBook)
{
    static const QRegularExpression targets(QStringLiteral(R"((?:name|id|href)="[^"]*")"));
    const auto targetsOf = [](const QString &path) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        const QString text = QString::fromUtf8(file.readAll());
        QStringList found;
        for (auto it = targets.globalMatch(text); it.hasNext();)
            found.append(it.next().captured());
        found.sort();
        return found;
    };
    const QDir help(QStringLiteral(VYR_TEST_STAGE_DIR "/help"));
    int translated = 0;
    for (const QString &book : help.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (book.contains(u'_'))
            continue;
        const QDir english(help.filePath(book));
        const QDir german(help.filePath(book + QStringLiteral("_de")));
        ASSERT_TRUE(german.exists()) << book.toStdString();
        QDirIterator pages(english.path(), {QStringLiteral("*.htm")}, QDir::Files, QDirIterator::Subdirectories);
        while (pages.hasNext()) {
            const QString page = english.relativeFilePath(pages.next());
            ASSERT_TRUE(QFileInfo(german.filePath(page)).isFile()) << book.toStdString() << "/" << page.toStdString();
            EXPECT_EQ(targetsOf(german.filePath(page)), targetsOf(english.filePath(page)))
                << book.toStdString() << "/" << page.toStdString();
            ++translated;
        }
    }
    EXPECT_GT(translated, 0);
}

TEST(HelpBookTest, TheBookOfTheLanguageShowsThePagesItHas)
{
    test::ScratchDirectory help;
    help.write("Book/a.htm", "<p>a</p>");
    help.write("Book/only.htm", "<p>only in English</p>");
    help.write("Book_de/a.htm", "<p>a auf Deutsch</p>");
    help.write("Other/a.htm", "<p>a</p>");
    const QString root = QString::fromStdString(help.path()) + u'/';
    struct Case
    {
        const char *book;
        const char *topic;
        const char *language;
        const char *shownBook;
        const char *shownPage;
    };
    const Case cases[] = {
        {"Book.chm", "a.htm#x", "de", "Book_de", "Book_de/a.htm"},
        {"Book.chm", "only.htm", "de", "Book", "Book/only.htm"},
        {"Book.chm", "", "de", "Book_de", ""},
        {"Book.chm", "missing.htm", "de", "Book_de", "Book_de/missing.htm"},
        {"Book.chm", "a.htm", "", "Book", "Book/a.htm"},
        {"Book.chm", "a.htm", "en", "Book", "Book/a.htm"},
        {"Other.chm", "a.htm", "de", "Other", "Other/a.htm"},
        {"Book.chm", "a.htm", "de/../../Book_de", "Book", "Book/a.htm"},
    };
    for (const Case &c : cases) {
        const HelpLocation location = inLanguage(
            resolveHelpTopic(root + QLatin1String(c.book), QLatin1String(c.topic)), QLatin1String(c.language));
        const QString page = *c.shownPage ? root + QLatin1String(c.shownPage) : QString();
        EXPECT_EQ(location.book, root + QLatin1String(c.shownBook)) << c.topic << " in " << c.language;
        EXPECT_EQ(location.page, page) << c.topic << " in " << c.language;
    }
}

// A request that names no book stays without one, whatever folders the
// working directory holds.
TEST(HelpBookTest, NoBookHasNoTranslation)
{
    test::ScratchDirectory stranger;
    stranger.write("_de/a.htm", "<p>not ours</p>");
    const QString previous = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(QString::fromStdString(stranger.path())));
    const HelpLocation location = inLanguage(resolveHelpTopic(QString(), QStringLiteral("a.htm")), QStringLiteral("de"));
    QDir::setCurrent(previous);
    EXPECT_EQ(location.book, QString());
}

} // namespace
} // namespace vyr::services
