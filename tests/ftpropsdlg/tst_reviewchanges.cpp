// The review of the feature type properties dialog, on an engine feature:
// what it lists is what OK then writes, it writes nothing itself, and it is
// reached and left with the keyboard.
#include "support/gridwindow.h"
#include "support/modalanswers.h"

#include "ftprops/schemareview.h"
#include "ftprops/vyrobjftpropsformatinfo.h"
#include "ftprops/vyrobjworkspaceschemainfo.h"
#include "ftpropsdlg/capplypreviewdlg.h"
#include "ftpropsdlg/cattrgrid.h"
#include "ftpropsdlg/cfeattypepropsattrs.h"
#include "ftpropsdlg/cfeattypepropsdlg.h"
#include "ftpropsdlg/cfeattypepropsgeneral.h"
#include "ftpropsdlg/creviewchangesdlg.h"
#include "stringobjects/vyrrwstringimp.h"
#include "uikit/application.h"
#include "uikit/dialogutils.h"
#include "uikit/narrowtext.h"
#include "uikit/resourcelibrary.h"
#include "util/capabilityfile.h"

#include "vyr/IVYRFeature.h"
#include "vyr/vyr_featurefile.h"
#include "vyr/vyr_session.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextBrowser>
#include <QtTest>

#include <memory>

using namespace vyr;

namespace {

const std::string kSchemaFile = std::string(VYR_TEST_EXAMPLES_DIR) + "/schemas/shapefile-roads.json";

std::string jsonOf(const IVYRFeature &feature)
{
    VYRRWStringImp text;
    return VYR_FeatureWriteJson(&feature, &text) ? std::string(text.c_str()) : std::string();
}

} // namespace

class ReviewChangesTest : public QObject
{
    Q_OBJECT

private:
    IVYRSession *m_session = nullptr;
    std::unique_ptr<VYRObjFTPropsFormatInfo> m_format;
    // Another format the dataset may move to, with other name rules.
    std::unique_ptr<VYRObjFTPropsFormatInfo> m_postgres;
    // The feature as the example file holds it, and the one the dialog edits.
    IVYRFeature *m_original = nullptr;
    IVYRFeature *m_feature = nullptr;
    std::unique_ptr<VYRObjWorkspaceSchemaInfo> m_schema;
    std::unique_ptr<CFeatTypePropsDlg> m_dialog;

    void open()
    {
        m_dialog.reset();
        m_schema.reset();
        for (IVYRFeature **feature : {&m_original, &m_feature}) {
            if (*feature)
                m_session->destroyFeature(*feature);
            *feature = m_session->createFeature();
            QVERIFY(VYR_FeatureLoadJson(*feature, kSchemaFile.c_str(), nullptr));
        }
        m_schema = std::make_unique<VYRObjWorkspaceSchemaInfo>(
            *m_session, *m_feature, *m_format,
            [this](const std::string &id) { return id == m_postgres->getId() ? m_postgres.get() : m_format.get(); });
        m_dialog = std::make_unique<CFeatTypePropsDlg>(m_session, m_schema.get(), SchemaRecordList(),
                                                       FormatRecordList{m_format.get(), m_postgres.get()},
                                                       FormatRecordList(), nullptr);
        QVERIFY(m_dialog->Create());
    }
    CAttrGrid *attributes() const { return m_dialog->attributesPage()->grid(); }
    void rename(const char *name)
    {
        qobject_cast<QLineEdit *>(m_dialog->generalPage()->GetDlgItem(CFeatTypePropsGeneral::kIdName))
            ->setText(QString::fromLatin1(name));
    }
    // What the review window shows when opened by `open`, then left by `leave`
    // with the keyboard, which must be on the list.
    QString reviewWindowText(const std::function<void()> &open, Qt::Key leave)
    {
        // The dialog has the keyboard back once a window over it went.
        m_dialog->activateWindow();
        if (!QTest::qWaitFor([this] {
                return QApplication::focusWidget() && QApplication::focusWidget()->window() == m_dialog.get();
            }))
            return QStringLiteral("the dialog did not get the keyboard back");
        QString shown;
        bool focused = false;
        test::onNextModalDialog([&](QDialog *window) {
            // The offscreen platform activates a window only when asked.
            window->activateWindow();
            auto *text = window->findChild<QPlainTextEdit *>();
            focused = text && QTest::qWaitFor([text] { return QApplication::focusWidget() == text; }, 2000);
            shown = text ? text->toPlainText() : QString();
            QTest::keyClick(QApplication::focusWidget(), leave);
            if (window->isVisible())
                window->reject();
        });
        open();
        if (!focused)
            qWarning("the keyboard was not on the list");
        return focused ? shown : QString();
    }

private slots:
    void initTestCase()
    {
        QVERIFY(ensureApplication());
        QVERIFY(loadResourceLibrary());
        m_session = VYR_SessionCreate();
        const auto capabilities = readCapabilityFile(std::string(VYR_TEST_EXAMPLES_DIR) + "/formats/shapefile.fmt");
        QVERIFY(capabilities);
        m_format = std::make_unique<VYRObjFTPropsFormatInfo>(*capabilities, m_session, "SHAPEFILE");
        const auto postgres = readCapabilityFile(std::string(VYR_TEST_EXAMPLES_DIR) + "/formats/postgres.fmt");
        QVERIFY(postgres);
        m_postgres = std::make_unique<VYRObjFTPropsFormatInfo>(*postgres, m_session, "POSTGRES");
    }
    void cleanupTestCase()
    {
        m_dialog.reset();
        m_schema.reset();
        m_session->destroyFeature(m_original);
        m_session->destroyFeature(m_feature);
        VYR_SessionDestroy(m_session);
    }

    // An attribute renamed, one retyped, one deleted and the feature type
    // renamed: the review lists each, leaves the feature as it was, and
    // equals what the saved feature differs by once OK wrote it.
    void shouldListWhatOkThenWrites()
    {
        open();
        CAttrGrid *grid = attributes();
        grid->StoreUserText(CAttrGrid::kNameColumn, 0, QStringLiteral("street"), ug::TextEdited);
        QCOMPARE(grid->GetCellString(0, 0), QStringLiteral("STREET"));
        grid->StoreUserText(grid->typeColumn(), 1, QStringLiteral("char"), ug::TextChosen);
        grid->StoreUserText(grid->argumentColumn(0), 1, QStringLiteral("8"), ug::TextEdited);
        grid->DeleteRows(2, 1);
        rename("HIGHWAYS");

        const std::optional<std::vector<ReviewChange>> reviewed = m_dialog->ReviewedChanges();
        QVERIFY(reviewed);
        QCOMPARE(jsonOf(*m_feature), jsonOf(*m_original));
        std::vector<std::pair<ReviewKind, std::string>> kinds;
        for (const ReviewChange &change : *reviewed)
            kinds.emplace_back(change.kind, change.key);
        const std::vector<std::pair<ReviewKind, std::string>> expected = {{ReviewKind::Changed, "name"},
                                                                          {ReviewKind::Removed, "OPENED"},
                                                                          {ReviewKind::Renamed, "STREET"},
                                                                          {ReviewKind::Retyped, "LANES"},
                                                                          {ReviewKind::Legalised, "STREET"}};
        QVERIFY2(kinds == expected, ReviewAsText(*reviewed).c_str());
        const std::optional<AttributeRowIdentities> rows = m_dialog->AttributeIdentities();
        const std::vector<NameLegalisation> legalised = m_dialog->AttributeLegalisations();

        m_dialog->OnOK();
        QCOMPARE(m_dialog->result(), kEndOk);
        const VYRObjFTPropsSchemaInfo before(*m_session, *m_original, *m_format);
        SchemaReviewInput input(before, *m_schema, *m_format);
        input.rows = rows;
        input.legalised = legalised;
        input.localisePrompt = [](const std::string &prompt) { return LocalizeText(prompt); };
        const ReviewTexts texts = ReviewTextsFromResources();
        input.texts = &texts;
        const std::vector<ReviewChange> saved = ReviewSchemaChanges(input);
        QVERIFY2(saved == *reviewed, (ReviewAsText(saved) + "--\n" + ReviewAsText(*reviewed)).c_str());
    }

    // A deleted attribute goes with its row: a new row given its name is
    // another attribute, and undoing the deletion gives the attribute back.
    void shouldTakeADeletedAttributeAwayWithItsRow()
    {
        open();
        CAttrGrid *grid = attributes();
        const auto reviewed = [this] {
            std::vector<std::pair<ReviewKind, std::string>> kinds;
            if (const std::optional<std::vector<ReviewChange>> changes = m_dialog->ReviewedChanges()) {
                for (const ReviewChange &change : *changes)
                    kinds.emplace_back(change.kind, change.key);
            }
            return kinds;
        };
        QCOMPARE(grid->GetCellString(2, CAttrGrid::kNameColumn), QStringLiteral("OPENED"));
        grid->GotoCell(CAttrGrid::kNameColumn, 2);
        grid->DeleteSelectedRows();
        {
            CVVyrGrid::UndoStep step(*grid);
            const long row = grid->AppendBlankRow();
            grid->StoreUserText(CAttrGrid::kNameColumn, row, QStringLiteral("OPENED"), ug::TextEdited);
        }
        using Kinds = std::vector<std::pair<ReviewKind, std::string>>;
        QCOMPARE(reviewed(), (Kinds{{ReviewKind::Added, "OPENED"}, {ReviewKind::Removed, "OPENED"}}));
        grid->Undo();
        grid->Undo();
        QCOMPARE(grid->GetAttributeNames(), (StringList{"ROAD_NAME", "LANES", "OPENED", "TOLL"}));
        QCOMPARE(reviewed(), Kinds());
    }

    // The names the rules of another format make when the dataset moves to
    // it are reviewed with the rule, as typed names are.
    void shouldSayWhichRuleMadeTheNamesOfAMove()
    {
        open();
        m_dialog->SetFormat(m_postgres.get());
        const std::optional<std::vector<ReviewChange>> reviewed = m_dialog->ReviewedChanges();
        QVERIFY(reviewed);
        const std::string rule = toNarrow(loadResourceString(res::NameChangedCase));
        std::string legalised;
        for (const ReviewChange &change : *reviewed) {
            if (change.kind == ReviewKind::Legalised)
                legalised += change.oldValue + " -> " + change.newValue + ": " + change.detail + "\n";
        }
        const std::string expected = "ROAD_NAME -> road_name: " + rule + "\nLANES -> lanes: " + rule
            + "\nOPENED -> opened: " + rule + "\nTOLL -> toll: " + rule + "\n";
        QVERIFY2(legalised == expected, (legalised + "--\n" + ReviewAsText(*reviewed)).c_str());
    }

    // F1 in the review and in the preview of Apply to Others opens the
    // section of the dialog's help page about that window.
    void shouldOpenTheWindowsHelpSectionOnF1()
    {
        open();
        const auto helpShownBy = [](CVyrDialog &window) {
            QString shown;
            test::onNextModalDialog([&shown](QDialog *dialog) {
                dialog->activateWindow();
                QWidget *focus = QApplication::focusWidget();
                QTest::keyClick(focus && focus->window() == dialog ? focus : dialog, Qt::Key_F1);
                if (auto *browser = dialog->findChild<QTextBrowser *>(QStringLiteral("helpBrowser")))
                    shown = browser->source().toString();
                dialog->reject();
            });
            window.DoModal();
            return shown;
        };
        CReviewChangesDlg review(ReviewAsText({}), m_dialog.get());
        const QString reviewHelp = helpShownBy(review);
        QVERIFY2(reviewHelp.endsWith(QLatin1String("/Editing_Feature_Type_Properties.htm#review-changes")),
                 qPrintable(reviewHelp));
        CApplyPreviewDlg preview(
            ApplySelection(), [](const ApplySelection &) { return std::vector<ApplyTargetPreview>(); },
            [](const std::string &name) { return name; }, m_dialog.get());
        const QString previewHelp = helpShownBy(preview);
        QVERIFY2(previewHelp.endsWith(QLatin1String("/Editing_Feature_Type_Properties.htm#apply-preview")),
                 qPrintable(previewHelp));
    }

    // With the keyboard alone: an attribute renamed in its cell, the review
    // names the rename, Escape goes back to the dialog with the edit as it
    // was, and Enter on the General tab saves it.
    void shouldReviewAnAttributeRenamedWithTheKeyboard()
    {
        open();
        QVERIFY(test::showActive(*m_dialog));
        const auto press = [](int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key(key), modifiers);
        };
        m_dialog->activateWindow();
        QTRY_VERIFY(QApplication::focusWidget() && QApplication::focusWidget()->window() == m_dialog.get());
        press(Qt::Key_Tab, Qt::ControlModifier);
        CAttrGrid *grid = attributes();
        QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget *>(grid));
        QCOMPARE(grid->GetCurrentRow(), 0L);
        QCOMPARE(grid->GetCurrentCol(), CAttrGrid::kNameColumn);
        press(Qt::Key_F2);
        press(Qt::Key_A, Qt::ControlModifier);
        for (const QChar c : QStringLiteral("STREET"))
            QTest::keyClick(QApplication::focusWidget(), c.toLatin1());
        press(Qt::Key_Return);
        QCOMPARE(grid->GetCellString(0, CAttrGrid::kNameColumn), QStringLiteral("STREET"));

        const QString shown
            = reviewWindowText([&press] { press(Qt::Key_R, Qt::ControlModifier | Qt::ShiftModifier); }, Qt::Key_Escape);
        QVERIFY2(shown.contains(fromNarrow(ReviewAsText({{ReviewGroup::UserAttributes,
                                                          ReviewKind::Renamed,
                                                          "STREET",
                                                          "STREET",
                                                          "ROAD_NAME",
                                                          "STREET",
                                                          {},
                                                          {},
                                                          {}}},
                                                        ReviewTextsFromResources()))
                                    .section(u'\n', 1, 1)
                                    .trimmed()),
                 qPrintable(shown));
        QVERIFY(m_dialog->isVisible());
        QCOMPARE(grid->GetCellString(0, CAttrGrid::kNameColumn), QStringLiteral("STREET"));
        QCOMPARE(jsonOf(*m_feature), jsonOf(*m_original));

        // The offscreen platform gives the dialog the keyboard back only
        // when asked.
        m_dialog->activateWindow();
        QTRY_VERIFY(QApplication::focusWidget() && QApplication::focusWidget()->window() == m_dialog.get());
        press(Qt::Key_Tab, Qt::ControlModifier | Qt::ShiftModifier);
        QTRY_VERIFY(QApplication::focusWidget() && m_dialog->generalPage()->isAncestorOf(QApplication::focusWidget()));
        press(Qt::Key_Return);
        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(m_dialog->result(), kEndOk);
        QCOMPARE(m_schema->getAttributeNames(true, false), (StringList{"STREET", "LANES", "OPENED", "TOLL"}));
    }

    // A dialog without changes says so, in the user's language; Control+
    // Shift+R opens the window with the keyboard on the list, Escape goes
    // back to the dialog with nothing written, Enter saves.
    void shouldSayNoChangesAndAnswerTheKeyboard()
    {
        open();
        QVERIFY(test::showActive(*m_dialog));
        const auto pressReview
            = [] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_R, Qt::ControlModifier | Qt::ShiftModifier); };
        const QString none = reviewWindowText(pressReview, Qt::Key_Escape);
        QCOMPARE(none.trimmed(), loadResourceString(res::ReviewNoChanges));
        if (qEnvironmentVariableIsSet("VYR_EXPECT_GERMAN"))
            QCOMPARE(none.trimmed(), QStringLiteral("Keine Änderungen."));
        QVERIFY(m_dialog->isVisible());

        rename("HIGHWAYS");
        const QString changed = reviewWindowText(pressReview, Qt::Key_Escape);
        QVERIFY2(changed.contains(QLatin1String("HIGHWAYS")), qPrintable(changed));
        QVERIFY(m_dialog->isVisible());
        QCOMPARE(jsonOf(*m_feature), jsonOf(*m_original));

        QVERIFY(!reviewWindowText(pressReview, Qt::Key_Return).isEmpty());
        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(m_dialog->result(), kEndOk);
        QCOMPARE(m_schema->getName(), std::string("HIGHWAYS"));
    }
};

QTEST_MAIN(ReviewChangesTest)
#include "tst_reviewchanges.moc"
