#include "helpbook.h"

#include "support/scratchdirectory.h"

#include <gtest/gtest.h>

#include <QFileInfo>

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
        "VYRLoomhouse/editing_geodatabase_domains_and_subtypes.htm",
        "VYRLoomhouse/About_vyrguimfc.htm",
        "VYRTransformers/transformers/Tester.htm",
    };
    for (const char *page : pages)
        EXPECT_TRUE(QFileInfo::exists(help + QLatin1String(page))) << page;
    for (const char *format : {"SHAPEFILE", "POSTGRES", "GEOPACKAGE", "CSV", "GPX", "XLSX"}) {
        const HelpLocation location = resolveFormatHelp(help + "VYRReadersWriters.chm", QLatin1String(format), 5);
        EXPECT_TRUE(QFileInfo::exists(location.page)) << format;
    }
}

} // namespace
} // namespace vyr::services
