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
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QtTest>

using namespace vyr;
using vyr::test::answerNextDialog;
using vyr::test::recheck;

namespace {

QListWidget *listOf(QDialog *form, const char *key)
{
    QWidget *prompt = form->findChild<QWidget *>(QStringLiteral("prompt_") + QLatin1String(key));
    return prompt ? prompt->findChild<QListWidget *>() : nullptr;
}

// A prompter that accepts and leaves `answer` in the definition file.
class AnsweringPrompter final : public IGuiPrompter
{
public:
    explicit AnsweringPrompter(QByteArray answer)
        : m_answer(std::move(answer))
    {}
    void setParentWindow(void *) override {}
    int run(const char *definitionPath) override
    {
        QFile file(QString::fromLocal8Bit(definitionPath));
        return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(m_answer) == m_answer.size();
    }

private:
    QByteArray m_answer;
};

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
            preselected = recheck(listOf(form, "FEAT_TYPES"), {"land use", "rivers"}).checked;
            form->findChild<QComboBox *>(QStringLiteral("prompt_DATASET"))->setCurrentText(QStringLiteral("Yes"));
            return true;
        });
        std::map<std::string, std::string> values{{"KEPT", "old"}};
        QVERIFY(PromptKeyValues(m_prompter, "Apply", defaults, definitions, values, {}));
        QCOMPARE(titleShown, QStringLiteral("Apply"));
        QCOMPARE(preselected, (QStringList{"roads", "land use"}));
        const std::map<std::string, std::string> expected{
            {"FEAT_TYPES", "\"land use\" rivers"}, {"DATASET", "Yes"}, {"KEPT", "old"}};
        QVERIFY(values == expected);

        // Cancelled, the values stay as they were.
        answerNextDialog([](QDialog *form) {
            form->findChild<QComboBox *>(QStringLiteral("prompt_DATASET"))->setCurrentText(QStringLiteral("No"));
            return false;
        });
        QVERIFY(!PromptKeyValues(m_prompter, "Apply", defaults, definitions, values, {}));
        QVERIFY(values == expected);
    }

    void shouldReplaceSelectionBoxValuesWithThePickedOnes()
    {
        QStringList offered;
        QStringList preselected;
        answerNextDialog([&](QDialog *form) {
            const vyr::test::Offer offer = recheck(listOf(form, "SELECTION_BOX_ONLY"), {"first choice", "third"});
            offered = offer.items;
            preselected = offer.checked;
            return true;
        });
        const StringList choices{"first choice", "second", "third"};
        StringList values{"second"};
        QVERIFY(PromptSelectionBox(m_prompter, "Pick", "Which ones", choices, values, {}));
        QCOMPARE(offered, (QStringList{"first choice", "second", "third"}));
        QCOMPARE(preselected, QStringList{"second"});
        QCOMPARE(values, (StringList{"first choice", "third"}));

        // Cancelled, whatever was checked, they stay.
        answerNextDialog([](QDialog *form) {
            recheck(listOf(form, "SELECTION_BOX_ONLY"), {"second"});
            return false;
        });
        QVERIFY(!PromptSelectionBox(m_prompter, "Pick", "Which ones", choices, values, {}));
        QCOMPARE(values, (StringList{"first choice", "third"}));
        // Nothing to choose from: no prompt at all.
        QVERIFY(!PromptSelectionBox(m_prompter, "Pick", "Nothing to pick", {}, values, {}));
        QCOMPARE(values, (StringList{"first choice", "third"}));
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

        // An answer without its second line names no icon: the old one stays.
        for (const QByteArray &answer : {QByteArray("ICONMAC\n"), QByteArray()}) {
            AnsweringPrompter oneLine(answer);
            QVERIFY(!PromptIconPick(&oneLine, "Icon", icon));
            QCOMPARE(icon, std::string("/icons/new.png"));
        }
    }

    void shouldOfferHelpOnlyWithAReferenceAndAlwaysRemoveTheDefinitionFile()
    {
        const auto leftovers = [] {
            return QDir(QString::fromStdString(getTempDirectory()))
                .entryList({QStringLiteral("lh-dlg-*")}, QDir::Files)
                .filter(QString::number(QCoreApplication::applicationPid()));
        };
        // Accepted without a help reference, cancelled with one.
        for (const std::string help : {"", "transformers\\Tester.htm"}) {
            bool hasHelp = false;
            answerNextDialog([&](QDialog *form) {
                for (const QAbstractButton *button : form->findChildren<QAbstractButton *>())
                    hasHelp = hasHelp || button->text() == QLatin1String("Help");
                return help.empty();
            });
            StringList answers;
            const StringList definition{"GUI CHOICE K a%b k"};
            QCOMPARE(RunGuiDefinition(m_prompter, "T", {}, definition, answers, AnswerReadMode::AllLines, help),
                     help.empty());
            QCOMPARE(answers, (help.empty() ? StringList{"K", "a"} : StringList{}));
            QCOMPARE(hasHelp, !help.empty());
            QVERIFY(leftovers().isEmpty());
        }
        StringList answers;
        QVERIFY(!RunGuiDefinition(nullptr, "T", {}, {}, answers, AnswerReadMode::AllLines, {}));
        QVERIFY(leftovers().isEmpty());
    }

    void shouldReturnTheCheckedItemsOfTheSelectionDialog()
    {
        QStringList preselected;
        QString title;
        answerNextDialog([&](QDialog *dialog) {
            title = dialog->windowTitle();
            preselected = recheck(dialog->findChild<QListWidget *>(QStringLiteral("checkList")), {"b", "c"}).checked;
            return true;
        });
        StringList chosen{"earlier"};
        QVERIFY(RunSelectionDialog({"a", "b", "c"}, {"a"}, {"", "icons/none.png"}, "Schema sources", 0, 0, chosen,
                                   nullptr));
        QCOMPARE(title, QStringLiteral("Schema sources"));
        QCOMPARE(preselected, QStringList{"a"});
        QCOMPARE(chosen, (StringList{"earlier", "b", "c"}));

        answerNextDialog([](QDialog *dialog) {
            recheck(dialog->findChild<QListWidget *>(QStringLiteral("checkList")), {"a"});
            return false;
        });
        StringList none;
        QVERIFY(!RunSelectionDialog({"a"}, {}, {}, "T", 0, 0, none, nullptr));
        QVERIFY(none.empty());
    }

private:
    IGuiPrompter *m_prompter = nullptr;
};

QTEST_MAIN(PrompterTest)
#include "tst_prompter.moc"
