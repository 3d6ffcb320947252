// Where a help request leads: the book folder, the page and the anchor.
#ifndef VYR_SERVICES_HELPBOOK_H
#define VYR_SERVICES_HELPBOOK_H

#include <QList>
#include <QString>

namespace vyr::services {

struct HelpLocation
{
    QString book; // the book's folder, without a trailing "/"
    QString page; // path of the page file; empty for the book's first page
    QString anchor; // without "#"
};

// The folder of the book named by `helpFile`: the path itself when it is a
// folder, else the path without its ".chm" ending.
QString bookFolderOf(const QString &helpFile);

// The page `topic` of the book `helpFile` ("\" counts as "/"; a topic of
// ".." or an absolute path never leaves the book). An empty topic takes the
// one after "#" in `helpFile`, if any.
HelpLocation resolveHelpTopic(const QString &helpFile, const QString &topic);

// The section `topicNumber` of the page of format `formatName`.
HelpLocation resolveFormatHelp(const QString &helpFile, const QString &formatName, int topicNumber);

// `location` in the book of `language` (an ISO 639 code, as the resource
// library is chosen by): the folder "<book>_<language>" beside the book, when
// it is installed. A page that book lacks stays in the book itself, so a
// translation that is not complete still shows every page.
HelpLocation inLanguage(const HelpLocation &location, const QString &language);

// The anchor of a format page's section, empty for the whole page.
QString formatSectionAnchor(int topicNumber);

struct HelpPage
{
    QString path;
    QString title;
};

// The pages of a book for its contents list: "index.htm" first, then the
// others by title.
QList<HelpPage> bookContents(const QString &book);

} // namespace vyr::services

#endif // VYR_SERVICES_HELPBOOK_H
