// The dialog templates of every language: each mnemonic letter is used once
// per dialog (the texts code puts into a dialog's labels counted with it),
// and the tab order names every control a person can reach.
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

struct Template
{
    QStringList texts;
    QStringList tabStops;
    QStringList focusable;
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
        else if (xml.name() == u"property")
            property = xml.attributes().value("name").toString();
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

TEST(DialogTemplates, mnemonicsAreUniqueAndTheTabOrderIsComplete)
{
    const QDir resources(QStringLiteral(VYR_TEST_SOURCE_DIR "/resources"));
    for (const QString &language : {QStringLiteral("en"), QStringLiteral("de")}) {
        QFile stringsFile(resources.filePath(language + "/strings.json"));
        ASSERT_TRUE(stringsFile.open(QIODevice::ReadOnly));
        const QJsonObject strings = QJsonDocument::fromJson(stringsFile.readAll()).object();
        const QDir templates(resources.filePath(language + "/templates"));
        const QStringList files = templates.entryList({"*.ui"}, QDir::Files);
        ASSERT_FALSE(files.isEmpty());
        for (const QString &name : files) {
            const QString id = name.section('.', 0, 0);
            const Template dialog = readTemplate(templates.filePath(name));
            const RunTimeLabel label = kRunTimeLabels.value(id);
            const QStringList &runTime = label.strings;
            // A run-time label replaces one template text at a time.
            for (qsizetype variant = 0; variant < std::max<qsizetype>(1, runTime.size()); ++variant) {
                QStringList texts = dialog.texts;
                for (const QString &replaced : label.replaced)
                    texts.removeAll(replaced);
                if (!runTime.isEmpty())
                    texts.append(strings.value(runTime[variant]).toString());
                QMap<QChar, QString> used;
                for (const QString &text : std::as_const(texts)) {
                    const QChar letter = mnemonicOf(text);
                    if (letter.isNull())
                        continue;
                    EXPECT_FALSE(used.contains(letter))
                        << language.toStdString() << "/" << name.toStdString() << ": \"" << text.toStdString()
                        << "\" and \"" << used.value(letter).toStdString() << "\" share &" << letter.toLatin1();
                    used.insert(letter, text);
                }
            }
            if (!dialog.tabStops.isEmpty()) {
                for (const QString &control : dialog.focusable)
                    EXPECT_TRUE(dialog.tabStops.contains(control))
                        << language.toStdString() << "/" << name.toStdString() << ": " << control.toStdString()
                        << " is not in the tab order";
            }
        }
    }
}

} // namespace
