// The geodatabase picker of the directory dialog library, driven as a person
// would: through its folder tree, its path field and the keyboard.
#include "foldermodel.h"
#include "geodatabasepicker.h"

#include "support/modalanswers.h"
#include "uikit/narrowtext.h"
#include "support/scratchdirectory.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <QtTest>

#include <filesystem>
#include <set>

using vyr::services::FolderModel;
using vyr::services::GeodatabasePath;
using vyr::services::GeodatabasePicker;

Q_DECLARE_METATYPE(GeodatabasePath)

namespace {

constexpr int kMaxBytes = 259;

QPushButton *okButton(GeodatabasePicker &picker)
{
    return picker.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok);
}

QString selectedFolder(GeodatabasePicker &picker)
{
    auto *tree = picker.findChild<QTreeView *>(QStringLiteral("folders"));
    return QDir::cleanPath(tree->currentIndex().data(FolderModel::PathRole).toString());
}

// The mnemonic letters of the window's labels and buttons, in lower case.
QStringList mnemonics(QWidget &window)
{
    QStringList letters;
    const auto take = [&](const QString &text) {
        const qsizetype at = text.indexOf(u'&');
        if (at >= 0 && at + 1 < text.size() && text[at + 1] != u'&')
            letters.append(text[at + 1].toLower());
    };
    for (QLabel *label : window.findChildren<QLabel *>())
        take(label->text());
    for (QAbstractButton *button : window.findChildren<QAbstractButton *>())
        take(button->text());
    return letters;
}

} // namespace

class GeodatabasePickerTest : public QObject
{
    Q_OBJECT

private:
    QString at(const char *relative) const
    {
        return QDir::cleanPath(QString::fromStdString(m_root.path()) + u'/' + QLatin1String(relative));
    }

    vyr::test::ScratchDirectory m_root;

private slots:
    void initTestCase()
    {
        std::filesystem::create_directories(m_root.path() + "/data/city.gdb");
        std::filesystem::create_directories(m_root.path() + "/data/UPPER.GDB");
        std::filesystem::create_directories(m_root.path() + "/data/plain");
        m_root.write("data/file.gdb", "a file, not a folder");
    }

    void shouldClassifyPaths_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("allowNew");
        QTest::addColumn<GeodatabasePath>("expected");
        const auto row = [&](const char *name, const QString &path, bool allowNew, GeodatabasePath expected) {
            QTest::newRow(name) << path << allowNew << expected;
        };
        row("existing geodatabase", at("data/city.gdb"), false, GeodatabasePath::Existing);
        row("upper-case suffix", at("data/UPPER.GDB"), false, GeodatabasePath::Existing);
        row("trailing slash", at("data/city.gdb") + u'/', false, GeodatabasePath::Existing);
        row("plain folder", at("data/plain"), true, GeodatabasePath::NotNamedGdb);
        row("file named .gdb", at("data/file.gdb"), true, GeodatabasePath::NotAFolder);
        row("new one, allowed", at("data/new.gdb"), true, GeodatabasePath::New);
        row("new one, not allowed", at("data/new.gdb"), false, GeodatabasePath::Missing);
        row("new one in a missing folder", at("nowhere/new.gdb"), true, GeodatabasePath::Missing);
        row("new one without a name", at("data/.gdb"), true, GeodatabasePath::Missing);
        row("nothing typed", QStringLiteral("  "), true, GeodatabasePath::Empty);
        row("too long for the caller", at("data/") + QString(300, u'x') + QStringLiteral(".gdb"), true,
            GeodatabasePath::TooLong);
    }
    void shouldClassifyPaths()
    {
        QFETCH(QString, path);
        QFETCH(bool, allowNew);
        QFETCH(GeodatabasePath, expected);
        QCOMPARE(vyr::services::classifyGeodatabasePath(path, allowNew, kMaxBytes), expected);
    }

    void shouldStartAtTheGivenPath()
    {
        GeodatabasePicker picker(QStringLiteral("Pick"), QStringLiteral("Choose one"), at("data/city.gdb"), false,
                                 kMaxBytes);
        QCOMPARE(picker.findChild<QLineEdit *>(QStringLiteral("path"))->text(), at("data/city.gdb"));
        QCOMPARE(selectedFolder(picker), at("data/city.gdb"));
        QVERIFY(okButton(picker)->isEnabled());
        QVERIFY(!picker.findChild<QPushButton *>(QStringLiteral("newGeodatabase")));
    }

    void shouldOfferOkOnlyForAGeodatabase()
    {
        GeodatabasePicker picker(QString(), QString(), at("data/plain"), false, kMaxBytes);
        QVERIFY(!okButton(picker)->isEnabled());
        QVERIFY(picker.findChild<QLabel *>(QStringLiteral("status"))->text().contains(QStringLiteral(".gdb")));
        picker.accept();
        QCOMPARE(picker.result(), int(QDialog::Rejected));

        auto *path = picker.findChild<QLineEdit *>(QStringLiteral("path"));
        path->clear();
        QTest::keyClicks(path, at("data/city.gdb"));
        QVERIFY(okButton(picker)->isEnabled());
        QCOMPARE(selectedFolder(picker), at("data/city.gdb"));
        QCOMPARE(picker.path(), at("data/city.gdb"));
    }

    // Chosen in the tree, a folder answers with its own bytes, a name that is
    // no UTF-8 too (not with U+FFFD in their place); the tree lists folders
    // only, and the path field follows it.
    void shouldAnswerWithTheBytesOfAFolderChosenInTheTree()
    {
        const std::string odd = m_root.path() + "/odd/bad\xff" "name.gdb";
        std::filesystem::create_directories(odd);
        GeodatabasePicker picker(QString(), QString(), at("odd"), false, kMaxBytes);
        picker.show();
        QVERIFY(QTest::qWaitForWindowExposed(&picker));
        auto *tree = picker.findChild<QTreeView *>(QStringLiteral("folders"));
        auto *model = qobject_cast<FolderModel *>(tree->model());
        const QModelIndex folder = tree->currentIndex();
        QVERIFY(model->index(at("data/city.gdb")).isValid());
        QCOMPARE(model->rowCount(model->index(at("data"))), 3);
        tree->setCurrentIndex(model->index(at("data/city.gdb")));
        QCOMPARE(picker.findChild<QLineEdit *>(QStringLiteral("path"))->text(), at("data/city.gdb"));
        tree->expand(folder);
        QTRY_COMPARE(model->rowCount(folder), 1);
        tree->setCurrentIndex(model->index(0, 0, folder));
        tree->setFocus();
        QTest::keyClick(tree, Qt::Key_Return);
        QCOMPARE(picker.result(), int(QDialog::Accepted));
        QCOMPARE(vyr::toNarrow(picker.path()), odd);
    }

    void shouldNameANewGeodatabaseWhenAllowed()
    {
        GeodatabasePicker picker(QString(), QString(), at("data"), true, kMaxBytes);
        auto *newButton = picker.findChild<QPushButton *>(QStringLiteral("newGeodatabase"));
        QVERIFY(newButton);
        vyr::test::onNextModalDialog([](QDialog *dialog) {
            auto *ask = qobject_cast<QInputDialog *>(dialog);
            QVERIFY(ask);
            ask->setTextValue(QStringLiteral("harbour"));
            ask->accept();
        });
        newButton->click();
        QCOMPARE(picker.path(), at("data/harbour.gdb"));
        QVERIFY(okButton(picker)->isEnabled());
        QVERIFY(!QFileInfo::exists(at("data/harbour.gdb")));
    }

    void shouldBeReachableByKeyboard()
    {
        GeodatabasePicker picker(QString(), QString(), at("data"), true, kMaxBytes);
        picker.show();
        QVERIFY(QTest::qWaitForWindowExposed(&picker));
        QList<QWidget *> order;
        QWidget *widget = picker.findChild<QLineEdit *>(QStringLiteral("path"));
        for (int i = 0; i < 6 && !order.contains(widget); ++i) {
            order.append(widget);
            widget = widget->nextInFocusChain();
            while (widget->focusPolicy() == Qt::NoFocus || !widget->isVisible())
                widget = widget->nextInFocusChain();
        }
        QCOMPARE(order.size(), 5);
        QCOMPARE(order[1]->objectName(), QStringLiteral("folders"));
        QCOMPARE(order[2]->objectName(), QStringLiteral("newGeodatabase"));
        const QStringList letters = mnemonics(picker);
        QCOMPARE(letters.size(), 3);
        QCOMPARE(QSet<QString>(letters.begin(), letters.end()).size(), letters.size());
    }

    // Run with LANG=de_DE.UTF-8 as a second test.
    void shouldSpeakTheUsersLanguage()
    {
        GeodatabasePicker picker(QString(), QString(), at("data"), true, kMaxBytes);
        const bool german = qEnvironmentVariable("LANG").startsWith(QStringLiteral("de"));
        QCOMPARE(picker.windowTitle(),
                 german ? QStringLiteral("Geodatenbank auswählen") : QStringLiteral("Select Geodatabase"));
        QCOMPARE(okButton(picker)->text(), QStringLiteral("OK"));
        QCOMPARE(picker.findChild<QPushButton *>(QStringLiteral("newGeodatabase"))->text(),
                 german ? QStringLiteral("&Neue Geodatenbank...") : QStringLiteral("&New Geodatabase..."));
    }
};

QTEST_MAIN(GeodatabasePickerTest)
#include "tst_geodatabasepicker.moc"
