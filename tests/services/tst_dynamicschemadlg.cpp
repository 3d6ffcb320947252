// The dynamic schema settings dialog as a person with a keyboard meets it, in
// English and in German: every choice has a letter of its own, and Tab
// reaches each field right after the choice it belongs to.
#include "qvyrconfiguredynamicschemadlg.h"

#include "support/gridwindow.h"
#include "support/scopedenvironment.h"

#include "ftprops/dynamicschemainfo.h"

#include "vyr/vyr_session.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QtTest>

#include <clocale>
#include <memory>

namespace {

// The dialog as a host opens it, with texts made by its engine session: a
// feature type named after one source, the second choice of every group
// taken.
std::unique_ptr<QVYRConfigureDynamicSchemaDlg> openDialog(IVYRSession &session)
{
    vyr::DynamicSchemaInfo settings;
    settings.setOption1(1);
    settings.setOption2(1);
    settings.setOption3(1);
    IVYRString *name = session.createString();
    IVYRString *geometry = session.createString();
    IVYRStringArray *fanout = session.createStringArray();
    IVYRStringArray *geometries = session.createStringArray();
    name->assign("roads");
    geometry->assign("line");
    fanout->append("ROAD_NAME");
    geometries->append("line");
    geometries->append("point");
    auto dialog =
        std::make_unique<QVYRConfigureDynamicSchemaDlg>(settings, *name, *geometry, *fanout, *geometries, nullptr);
    session.destroyString(name);
    session.destroyString(geometry);
    session.destroyStringArray(fanout);
    session.destroyStringArray(geometries);
    return dialog;
}

QString nameOf(const QWidget *widget)
{
    if (!widget)
        return QStringLiteral("(none)");
    if (!widget->objectName().isEmpty())
        return widget->objectName();
    if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
        return button->text();
    return QString::fromLatin1(widget->metaObject()->className());
}

} // namespace

class DynamicSchemaDialogTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // The dialog's texts follow the process's locale, as a host sets it.
        std::setlocale(LC_ALL, "");
        m_session = VYR_SessionCreate();
        QVERIFY(m_session);
    }
    void cleanupTestCase()
    {
        VYR_SessionDestroy(m_session);
    }

    void shouldGiveEveryChoiceALetterOfItsOwn_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("firstChoice");
        QTest::newRow("English") << "C.UTF-8" << "&As the schema sources name them";
        QTest::newRow("German") << "de_DE.UTF-8" << "&Wie die Schemaquellen sie benennen";
    }
    void shouldGiveEveryChoiceALetterOfItsOwn()
    {
        QFETCH(QString, locale);
        QFETCH(QString, firstChoice);
        vyr::test::ScopedEnvironment environment;
        environment.set("LANGUAGE", std::nullopt);
        environment.set("LC_ALL", locale.toStdString());
        QVERIFY(std::setlocale(LC_ALL, ""));
        const auto dialog = openDialog(*m_session);
        std::setlocale(LC_ALL, "C.UTF-8");

        QCOMPARE(dialog->findChild<QRadioButton *>(QStringLiteral("names_0"))->text(), firstChoice);
        QStringList texts;
        for (const QAbstractButton *button : dialog->findChildren<QAbstractButton *>())
            texts.append(button->text());
        for (const QLabel *label : dialog->findChildren<QLabel *>())
            texts.append(label->text());
        for (const QGroupBox *box : dialog->findChildren<QGroupBox *>())
            texts.append(box->title());
        QHash<QKeySequence, QString> used;
        for (const QString &text : std::as_const(texts)) {
            const QKeySequence letter = QKeySequence::mnemonic(text);
            if (letter.isEmpty())
                continue;
            QVERIFY2(!used.contains(letter), qPrintable(QStringLiteral("\"%1\" and \"%2\" share %3")
                                                            .arg(text, used.value(letter), letter.toString())));
            used.insert(letter, text);
        }
        for (const QRadioButton *choice : dialog->findChildren<QRadioButton *>())
            QVERIFY2(!QKeySequence::mnemonic(choice->text()).isEmpty(), qPrintable(choice->text()));
    }

    // The tab order as set: every choice, each field right behind its own.
    void shouldPutEachFieldRightAfterItsChoiceInTheTabOrder()
    {
        const auto dialog = openDialog(*m_session);
        QWidget *first = dialog->findChild<QRadioButton *>(QStringLiteral("names_0"));
        QStringList chain{nameOf(first)};
        for (QWidget *next = first->nextInFocusChain(); next != first; next = next->nextInFocusChain()) {
            // An editable list's own edit goes with the list.
            if ((next->focusPolicy() & Qt::TabFocus) && !qobject_cast<QComboBox *>(next->parentWidget()))
                chain.append(nameOf(next));
        }
        // Joined, so that a failure shows the whole order.
        QCOMPARE(chain.join(u' '), QStringList({"names_0", "names_1", "fixedName", "names_2", "nameAttribute",
                                                "geometries_0", "geometries_1", "geometry", "attributes_0",
                                                "attributes_1", "attributes_2", "attributeList", "OK", "Cancel"})
                                       .join(u' '));
    }

    // As the keyboard meets it: the arrow keys choose within a group, Tab
    // goes on to the field of that choice and Shift+Tab back to the choice.
    void shouldTabFromAChoiceToItsField_data()
    {
        QTest::addColumn<QString>("group");
        QTest::addColumn<int>("downs");
        QTest::addColumn<QString>("field");
        QTest::newRow("one name") << "names" << 1 << "fixedName";
        QTest::newRow("name from attribute") << "names" << 2 << "nameAttribute";
        QTest::newRow("one geometry") << "geometries" << 1 << "geometry";
        QTest::newRow("only these") << "attributes" << 1 << "attributeList";
        QTest::newRow("all except") << "attributes" << 2 << "attributeList";
    }
    void shouldTabFromAChoiceToItsField()
    {
        QFETCH(QString, group);
        QFETCH(int, downs);
        QFETCH(QString, field);
        const auto dialog = openDialog(*m_session);
        QVERIFY(vyr::test::showActive(*dialog));
        QWidget *first = dialog->findChild<QRadioButton *>(group + QStringLiteral("_0"));
        first->setFocus(Qt::TabFocusReason);
        QVERIFY(QTest::qWaitFor([first] { return first->hasFocus(); }));
        for (int i = 0; i < downs; ++i)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
        auto *choice = qobject_cast<QRadioButton *>(QApplication::focusWidget());
        QVERIFY(choice);
        QCOMPARE(choice->objectName(), QStringLiteral("%1_%2").arg(group).arg(downs));
        QVERIFY(choice->isChecked());
        QTest::keyClick(choice, Qt::Key_Tab);
        QCOMPARE(nameOf(QApplication::focusWidget()), field);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(choice));
    }

private:
    IVYRSession *m_session = nullptr;
};

QTEST_MAIN(DynamicSchemaDialogTest)
#include "tst_dynamicschemadlg.moc"
