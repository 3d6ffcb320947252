// The dialog templates of every language: each mnemonic letter is used once
// per window (the texts code puts into a dialog's labels counted with it, and
// every page counted with the frame it is shown in), and the tab order names
// every control a person can reach.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QSet>
#include <QXmlStreamReader>

namespace {

// Texts a dialog shows in its templates' labels at run time, in place of
// the template's own.
struct RunTimeLabel
{
    QStringList strings;
    QStringList replaced;
};
const QMap<QString, RunTimeLabel> kRunTimeLabels = {
    {"552", {{"59487", "59529", "59531"}, {"&Values:", "&Werte:"}}},
};

// A template without a window title is a page: it is shown, one at a time,
// inside the window of a frame, the template holding the tab bar, so its
// letters are counted with the frame's. The frames' tab titles are put in at
// run time.
const QMap<QString, QStringList> kTabTitles = {
    {"337", {"59446", "59447", "59448", "59449"}},
};

struct Template
{
    QStringList texts;
    QStringList tabStops;
    QStringList focusable;
    bool titled = false;
    bool tabbed = false;
};

const QSet<QString> kFocusable = {"QLineEdit", "QPushButton", "QCheckBox", "QComboBox", "QRadioButton",
                                  "QSpinBox", "QListWidget", "QTreeWidget", "QPlainTextEdit", "QTextEdit"};

Template readTemplate(const QString &path)
{
    Template read;
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    QXmlStreamReader xml(&file);
    QString property;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == u"widget" && kFocusable.contains(xml.attributes().value("class").toString()))
            read.focusable.append(xml.attributes().value("name").toString());
        else if (xml.name() == u"widget" && xml.attributes().value("class") == u"QTabBar")
            read.tabbed = true;
        else if (xml.name() == u"property")
            property = xml.attributes().value("name").toString();
        if (property == u"windowTitle")
            read.titled = true;
        else if (xml.name() == u"string" && (property == "text" || property == "title"))
            read.texts.append(xml.readElementText());
        else if (xml.name() == u"tabstop")
            read.tabStops.append(xml.readElementText());
    }
    EXPECT_FALSE(xml.hasError()) << path.toStdString() << ": " << xml.errorString().toStdString();
    return read;
}

QChar mnemonicOf(const QString &text)
{
    for (qsizetype i = 0; i + 1 < text.size(); ++i) {
        if (text[i] == u'&') {
            if (text[i + 1] == u'&') {
                ++i;
                continue;
            }
            return text[i + 1].toLower();
        }
    }
    return QChar();
}

// The mnemonic letters of one window, reported by the window's name.
void expectUniqueMnemonics(const QStringList &texts, const std::string &window)
{
    QMap<QChar, QString> used;
    for (const QString &text : texts) {
        const QChar letter = mnemonicOf(text);
        if (letter.isNull())
            continue;
        EXPECT_FALSE(used.contains(letter)) << window << ": \"" << text.toStdString() << "\" and \""
                                            << used.value(letter).toStdString() << "\" share &"
                                            << QString(letter).toStdString();
        used.insert(letter, text);
    }
}

// The texts of `id`'s window as it can be shown: one list per run-time label
// that code puts in place of a template text.
QList<QStringList> shownTexts(const QString &id, const Template &dialog, const QJsonObject &strings)
{
    const RunTimeLabel label = kRunTimeLabels.value(id);
    QStringList texts = dialog.texts;
    for (const QString &title : kTabTitles.value(id))
        texts.append(strings.value(title).toString());
    for (const QString &replaced : label.replaced)
        texts.removeAll(replaced);
    if (label.strings.isEmpty())
        return {texts};
    QList<QStringList> variants;
    for (const QString &string : label.strings)
        variants.append(texts + QStringList{strings.value(string).toString()});
    return variants;
}

TEST(DialogTemplates, mnemonicsAreUniqueInEveryWindowAndTheTabOrderIsComplete)
{
    const QDir resources(QStringLiteral(VYR_TEST_SOURCE_DIR "/resources"));
    for (const QString &language : {QStringLiteral("en"), QStringLiteral("de")}) {
        QFile stringsFile(resources.filePath(language + "/strings.json"));
        ASSERT_TRUE(stringsFile.open(QIODevice::ReadOnly));
        const QJsonObject strings = QJsonDocument::fromJson(stringsFile.readAll()).object();
        const QDir templates(resources.filePath(language + "/templates"));
        const QStringList files = templates.entryList({"*.ui"}, QDir::Files);
        ASSERT_FALSE(files.isEmpty());
        QMap<QString, Template> read;
        for (const QString &name : files)
            read.insert(name.section('.', 0, 0), readTemplate(templates.filePath(name)));
        QStringList frames;
        for (auto it = read.cbegin(); it != read.cend(); ++it) {
            if (it->titled && it->tabbed)
                frames.append(it.key());
        }
        // The feature type properties dialog must be seen as the frame of
        // its pages, or the pages would be counted on their own.
        EXPECT_TRUE(frames.contains(QStringLiteral("337"))) << language.toStdString();
        for (auto it = read.cbegin(); it != read.cend(); ++it) {
            const QString &id = it.key();
            const Template &dialog = it.value();
            const std::string where = language.toStdString() + "/" + id.toStdString() + ".ui";
            const QStringList windows = dialog.titled || frames.isEmpty() ? QStringList{} : frames;
            for (const QStringList &texts : shownTexts(id, dialog, strings)) {
                if (windows.isEmpty())
                    expectUniqueMnemonics(texts, where);
                for (const QString &frame : windows) {
                    for (const QStringList &frameTexts : shownTexts(frame, read.value(frame), strings))
                        expectUniqueMnemonics(frameTexts + texts, where + " in frame " + frame.toStdString());
                }
            }
            if (!dialog.tabStops.isEmpty()) {
                for (const QString &control : dialog.focusable)
                    EXPECT_TRUE(dialog.tabStops.contains(control))
                        << where << ": " << control.toStdString() << " is not in the tab order";
            }
        }
    }
}

} // namespace
