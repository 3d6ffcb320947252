// The review of the feature type properties dialog, on an engine feature:
// what it lists is what OK then writes, it writes nothing itself, and it is
// reached and left with the keyboard.
#include "support/gridwindow.h"
#include "support/modalanswers.h"

#include "ftprops/schemareview.h"
#include "ftprops/vyrobjftpropsformatinfo.h"
#include "ftprops/vyrobjworkspaceschemainfo.h"
#include "ftpropsdlg/cattrgrid.h"
#include "ftpropsdlg/cfeattypepropsattrs.h"
#include "ftpropsdlg/cfeattypepropsdlg.h"
#include "ftpropsdlg/cfeattypepropsgeneral.h"
#include "ftpropsdlg/creviewchangesdlg.h"
#include "stringobjects/vyrrwstringimp.h"
#include "uikit/application.h"
#include "uikit/dialogutils.h"
#include "uikit/resourcelibrary.h"
#include "util/capabilityfile.h"

#include "vyr/IVYRFeature.h"
#include "vyr/vyr_featurefile.h"
#include "vyr/vyr_session.h"

#include <QLineEdit>
#include <QPlainTextEdit>
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
        m_schema = std::make_unique<VYRObjWorkspaceSchemaInfo>(*m_session, *m_feature, *m_format,
                                                               [this](const std::string &) { return m_format.get(); });
        m_dialog = std::make_unique<CFeatTypePropsDlg>(m_session, m_schema.get(), SchemaRecordList(),
                                                       FormatRecordList{m_format.get()}, FormatRecordList(), nullptr);
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
