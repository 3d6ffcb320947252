#include "uikit/application.h"
#include "uikit/dialogutils.h"
#include "uikit/outsideservices.h"
#include "util/installdir.h"
#include "util/tempfiles.h"

#include "support/modalanswers.h"

#include "vyr/IGuiPrompter.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QTimer>
#include <QtTest>

#include <functional>

using namespace vyr;
using vyr::test::answerNextDialog;

namespace {

QListWidget *listOf(QDialog *form, const char *key)
{
    QWidget *prompt = form->findChild<QWidget *>(QStringLiteral("prompt_") + QLatin1String(key));
    return prompt ? prompt->findChild<QListWidget *>() : nullptr;
}

QStringList checkedIn(const QListWidget *list)
{
    QStringList checked;
    for (int i = 0; i < list->count(); ++i) {
        if (list->item(i)->checkState() == Qt::Checked)
            checked.append(list->item(i)->text());
    }
    return checked;
}

void setChecked(QListWidget *list, const QStringList &wanted)
{
    for (int i = 0; i < list->count(); ++i)
        list->item(i)->setCheckState(wanted.contains(list->item(i)->text()) ? Qt::Checked : Qt::Unchecked);
}

} // namespace

class PrompterTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(ensureApplication());
        m_prompter = createGuiPrompter();
        QVERIFY2(m_prompter, "libvyrprompter.so not found under VYR_HOME");
    }
    void cleanupTestCase() { releaseGuiPrompter(m_prompter); }

    void shouldReadKeyValueAnswersInPairs()
    {
        const StringList definitions{
            "GUI LISTBOX FEAT_TYPES " + JoinMacroValues({"roads", "land use", "rivers"}) + " Feature types:",
            "GUI DIVIDER",
            "GUI CHOICE DATASET Yes%No Apply the dataset",
        };
        const StringList defaults{"DEFAULT_MACRO FEAT_TYPES roads \"land use\" ", "DEFAULT_MACRO DATASET No"};
        QStringList preselected;
        QString titleShown;
        answerNextDialog([&](QDialog *form) {
            titleShown = form->windowTitle();
            QListWidget *list = listOf(form, "FEAT_TYPES");
            preselected = checkedIn(list);
            setChecked(list, {"land use", "rivers"});
            form->findChild<QComboBox *>(QStringLiteral("prompt_DATASET"))->setCurrentText(QStringLiteral("Yes"));
            return true;
        });
        std::map<std::string, std::string> values{{"KEPT", "old"}};
        QVERIFY(PromptKeyValues(m_prompter, "Apply", defaults, definitions, values, {}));
        QCOMPARE(titleShown, QStringLiteral("Apply"));
        QCOMPARE(preselected, (QStringList{"roads", "land use"}));
        QCOMPARE(values.at("FEAT_TYPES"), std::string("\"land use\" rivers"));
        QCOMPARE(values.at("DATASET"), std::string("Yes"));
        QCOMPARE(values.at("KEPT"), std::string("old"));
    }

    void shouldLeaveValuesAloneOnCancel()
    {
        answerNextDialog([](QDialog *) { return false; });
        std::map<std::string, std::string> values;
        QVERIFY(!PromptKeyValues(m_prompter, "Apply", {}, {"GUI CHOICE K Yes%No Sure?"}, values, {}));
        QVERIFY(values.empty());

        answerNextDialog([](QDialog *) { return false; });
        StringList chosen{"a"};
        QVERIFY(!PromptSelectionBox(m_prompter, "Pick", "Which", {"a", "b"}, chosen, {}));
        QCOMPARE(chosen, StringList{"a"});
    }

    void shouldReplaceSelectionBoxValuesWithThePickedOnes()
    {
        QStringList offered;
        QStringList preselected;
        answerNextDialog([&](QDialog *form) {
            QListWidget *list = listOf(form, "SELECTION_BOX_ONLY");
            for (int i = 0; i < list->count(); ++i)
                offered.append(list->item(i)->text());
            preselected = checkedIn(list);
            setChecked(list, {"first choice", "third"});
            return true;
        });
        StringList values{"second"};
        QVERIFY(PromptSelectionBox(m_prompter, "Pick", "Which ones", {"first choice", "second", "third"}, values, {}));
        QCOMPARE(offered, (QStringList{"first choice", "second", "third"}));
        QCOMPARE(preselected, QStringList{"second"});
        QCOMPARE(values, (StringList{"first choice", "third"}));

        StringList untouched{"x"};
        QVERIFY(!PromptSelectionBox(m_prompter, "Pick", "Nothing to pick", {}, untouched, {}));
        QCOMPARE(untouched, StringList{"x"});
    }

    void shouldTakeTheIconFromTheSecondAnswerLine()
    {
        QString shown;
        answerNextDialog([&](QDialog *form) {
            auto *edit = form->findChild<QLineEdit *>(QStringLiteral("iconFile"));
            shown = edit->text();
            edit->setText(QStringLiteral("/icons/new.png"));
            return true;
        });
        std::string icon = "/icons/old.png";
        QVERIFY(PromptIconPick(m_prompter, "Icon", icon));
        QCOMPARE(shown, QStringLiteral("/icons/old.png"));
        QCOMPARE(icon, std::string("/icons/new.png"));
    }

    void shouldShowTheHelpButtonOnlyWithAHelpReference()
    {
        bool hasHelp = false;
        answerNextDialog([&](QDialog *form) {
            const auto buttons = form->findChildren<QAbstractButton *>();
            for (const QAbstractButton *button : buttons)
                hasHelp = hasHelp || button->text() == QLatin1String("Help");
            return false;
        });
        StringList answers;
        RunGuiDefinition(m_prompter, "T", {}, {"GUI CHOICE K a%b k"}, answers, AnswerReadMode::AllLines,
                         "transformers\\Tester.htm");
        QVERIFY(hasHelp);
    }

    void shouldRemoveTheDefinitionFileInEveryCase()
    {
        const auto leftovers = [] {
            return QDir(QString::fromStdString(getTempDirectory()))
                .entryList({QStringLiteral("lh-dlg-*")}, QDir::Files)
                .filter(QString::number(QCoreApplication::applicationPid()));
        };
        answerNextDialog([](QDialog *) { return true; });
        StringList answers;
        QVERIFY(RunGuiDefinition(m_prompter, "T", {}, {"GUI CHOICE K a%b k"}, answers, AnswerReadMode::AllLines, {}));
        QCOMPARE(answers, (StringList{"K", "a"}));
        QVERIFY(leftovers().isEmpty());
        QVERIFY(!RunGuiDefinition(nullptr, "T", {}, {}, answers, AnswerReadMode::AllLines, {}));
        QVERIFY(leftovers().isEmpty());
    }

    void shouldReturnTheCheckedItemsOfTheSelectionDialog()
    {
        QStringList preselected;
        QString title;
        answerNextDialog([&](QDialog *dialog) {
            title = dialog->windowTitle();
            auto *list = dialog->findChild<QListWidget *>(QStringLiteral("checkList"));
            preselected = checkedIn(list);
            setChecked(list, {"b", "c"});
            return true;
        });
        StringList chosen{"earlier"};
        QVERIFY(RunSelectionDialog({"a", "b", "c"}, {"a"}, {"", "icons/none.png"}, "Schema sources", 0, 0, chosen,
                                   nullptr));
        QCOMPARE(title, QStringLiteral("Schema sources"));
        QCOMPARE(preselected, QStringList{"a"});
        QCOMPARE(chosen, (StringList{"earlier", "b", "c"}));

        answerNextDialog([](QDialog *) { return false; });
        StringList none;
        QVERIFY(!RunSelectionDialog({"a"}, {}, {}, "T", 0, 0, none, nullptr));
        QVERIFY(none.empty());
    }

private:
    IGuiPrompter *m_prompter = nullptr;
};

QTEST_MAIN(PrompterTest)
#include "tst_prompter.moc"
