// Apply to Others shows, per feature type, what it will write before it
// writes: where a property does not land as the edited feature type has it,
// and that what the person leaves out of the preview is not written.
#include "ftpropsdlg/recordingschema.h"
#include "ftpropsdlg/promptingsession.h"
#include "support/modalanswers.h"

#include "ftprops/vyrobjftpropsformatinfo.h"
#include "ftpropsdlg/capplypreviewdlg.h"
#include "ftpropsdlg/cfeattypepropsdlg.h"
#include "ftpropsdlg/creviewchangesdlg.h"
#include "uikit/application.h"
#include "uikit/outsideservices.h"
#include "uikit/resourcelibrary.h"

#include <QComboBox>
#include <QListWidget>
#include <QtTest>

#include <memory>

using namespace vyr;
using vyr::test::RecordingSchema;

namespace {

using TestSession = vyr::test::PromptingSession;

QStringList conflictTexts(const std::vector<ApplyTargetPreview> &previews)
{
    QStringList texts;
    for (const ApplyTargetPreview &preview : previews) {
        for (const ApplyConflict &conflict : preview.conflicts)
            texts.append(QString::fromStdString(preview.longName + ": " + ApplyConflictAsText(conflict)));
    }
    return texts;
}

} // namespace

class ApplyPreviewTest : public QObject
{
    Q_OBJECT

private:
    TestSession m_session;
    StringList m_log;
    std::unique_ptr<VYRObjFTPropsFormatInfo> m_shp, m_gpkg;
    std::vector<std::unique_ptr<RecordingSchema>> m_records;

    RecordingSchema &record(const char *name, const char *formatId, const char *geometry)
    {
        m_records.push_back(std::make_unique<RecordingSchema>(name, formatId, m_log));
        m_records.back()->geometry = geometry;
        return *m_records.back();
    }
    // "roads" of SHP with text and date attributes and an encoding, and
    // the other feature types: "rivers" of SHP, "parks" of GPKG, which
    // exposes its format attribute NOTE.
    std::unique_ptr<CFeatTypePropsDlg> open()
    {
        RecordingSchema &rivers = record("rivers", "SHP", "shp_point");
        RecordingSchema &parks = record("parks", "GPKG", "gpkg_point");
        parks.formatAttributes = {"NOTE"};
        RecordingSchema &roads = record("roads", "SHP", "shp_arc");
        roads.userAttributes = {"NOTE", "WHEN", "DESCRIPTION"};
        roads.attributeTypes = {{"NOTE", "char(10)"}, {"WHEN", "date"}, {"DESCRIPTION", "char(80)"}};
        roads.parameters["ENCODING"] = "latin1";
        auto dialog = std::make_unique<CFeatTypePropsDlg>(&m_session, &roads, SchemaRecordList{&rivers, &parks},
                                                          FormatRecordList{m_shp.get(), m_gpkg.get()},
                                                          FormatRecordList(), nullptr);
        if (!dialog->Create())
            qFatal("the dialog did not open");
        return dialog;
    }

private slots:
    void initTestCase()
    {
        QVERIFY(ensureApplication());
        QVERIFY(loadResourceLibrary());
        // GPKG has no line, no date, no encoding and no names over 8 bytes.
        m_shp = std::make_unique<VYRObjFTPropsFormatInfo>(
            "FORMAT,SHP,SOURCE,no,SUPPORTS_MULTI_GEOM,no,GEOM_TYPE_MAPPINGS,\"shp_arc,vyr_line,shp_point,vyr_point\","
            "DATA_TYPE_MAPPINGS,\"char(width),vyr_char,date,vyr_date\",DEFLINE_PARMS,\"GUI TEXT ENCODING Encoding,utf8\"",
            &m_session, "SHP");
        m_gpkg = std::make_unique<VYRObjFTPropsFormatInfo>(
            "FORMAT,GPKG,SOURCE,no,SUPPORTS_MULTI_GEOM,no,GEOM_TYPE_MAPPINGS,\"gpkg_point,vyr_point\","
            "DATA_TYPE_MAPPINGS,\"char(width),vyr_char\",FORMAT_ATTRS,\"NOTE,char(20)\",MAX_ATTR_LENGTH,8",
            &m_session, "GPKG");
    }
    void init()
    {
        m_log.clear();
        m_records.clear();
    }

    void shouldNameEveryConflictOfEachTarget_data()
    {
        QTest::addColumn<unsigned>("mask");
        QTest::addColumn<QString>("attribute");
        QTest::addColumn<QString>("parameter");
        QTest::addColumn<QStringList>("conflicts");
        QTest::newRow("name taken") << 0u << "NOTE" << ""
                                    << QStringList{"parks: Attribute NOTE: the name is taken there, it becomes NOTE00"};
        QTest::newRow("name made legal")
            << 0u << "DESCRIPTION" << "" << QStringList{"parks: Attribute DESCRIPTION: its format names it DESCRIPT"};
        QTest::newRow("type") << 0u << "WHEN" << ""
                              << QStringList{"parks: Attribute WHEN: its format cannot take date, it becomes vyr_date"};
        QTest::newRow("parameter") << 0u << "" << "ENCODING"
                                   << QStringList{"parks: Parameter Encoding: its format does not define it, skipped"};
        QTest::newRow("geometry") << general::Geometry << "" << ""
                                  << QStringList{"parks: Geometry shp_arc: its format lacks it, it becomes (empty)"};
    }
    void shouldNameEveryConflictOfEachTarget()
    {
        QFETCH(unsigned, mask);
        QFETCH(QString, attribute);
        QFETCH(QString, parameter);
        QFETCH(QStringList, conflicts);
        auto dialog = open();
        ApplySelection selection;
        selection.targets = {"rivers", "parks"};
        selection.generalMask = mask;
        if (!attribute.isEmpty())
            selection.attributes = {attribute.toStdString()};
        if (!parameter.isEmpty())
            selection.parameters = {parameter.toStdString()};
        const std::vector<ApplyTargetPreview> previews = dialog->ApplyPreviews(selection);
        // Rivers, of the edited type's format, takes everything as it is.
        QCOMPARE(previews.size(), std::size_t(2));
        QCOMPARE(previews[0].longName, std::string("rivers"));
        QVERIFY(!previews[0].changes.empty());
        QCOMPARE(conflictTexts(previews), conflicts);
        // Nothing reached a record itself.
        for (const std::string &line : m_log)
            QVERIFY2(line.starts_with("copy of "), line.c_str());
    }

    // What is left out in the preview is not written, and what is written
    // into each ticked feature type is what its preview listed.
    void shouldWriteWhatThePreviewShows()
    {
        auto dialog = open();
        test::answerNextDialog([](QDialog *form) {
            form->findChild<QComboBox *>(QStringLiteral("prompt_GEOM"))->setCurrentIndex(0);
            return true;
        });
        dialog->ApplyToOthers();
        QCOMPARE(dialog->applySelection().targets, (StringList{"rivers", "parks"}));
        QCOMPARE(dialog->applySelection().generalMask, general::Geometry);
        RecordingSchema &rivers = *m_records[0];
        RecordingSchema &parks = *m_records[1];
        const ScratchSchema parksBefore = parks.makeScratchCopy();

        std::vector<ApplyTargetPreview> previews;
        QStringList entries;
        test::answerNextDialog([&](QDialog *window) {
            auto *preview = qobject_cast<CApplyPreviewDlg *>(window);
            QTreeWidget *targets = preview->targetTree();
            for (int i = 0; i < targets->topLevelItemCount(); ++i)
                entries.append(targets->topLevelItem(i)->text(0));
            // Geometry (the one property) stays; rivers is left out.
            targets->topLevelItem(0)->setCheckState(0, Qt::Unchecked);
            previews = preview->previews();
            return true;
        });
        dialog->OnOK();
        QCOMPARE(entries, (QStringList{"rivers", formatResourceString(res::ApplyTargetConflicts, {"parks"})}));
        QCOMPARE(previews.size(), std::size_t(1));
        QCOMPARE(rivers.geometry, std::string("shp_point"));
        QCOMPARE(parks.geometry, std::string());
        SchemaReviewInput written(*parksBefore, parks, *m_gpkg);
        const ReviewTexts texts = ReviewTextsFromResources();
        written.texts = &texts;
        QVERIFY(ReviewSchemaChanges(written) == previews[0].changes);
        QVERIFY(!previews[0].changes.empty());
    }

    // A property left out is left out of every feature type, and out of
    // its preview.
    void shouldLeaveOutAnUntickedProperty()
    {
        auto dialog = open();
        test::answerNextDialog([](QDialog *form) {
            form->findChild<QComboBox *>(QStringLiteral("prompt_GEOM"))->setCurrentIndex(0);
            auto *list = form->findChild<QWidget *>(QStringLiteral("prompt_ATTRIBUTES"))->findChild<QListWidget *>();
            for (int i = 0; i < list->count(); ++i)
                list->item(i)->setCheckState(Qt::Checked);
            return true;
        });
        dialog->ApplyToOthers();
        QCOMPARE(dialog->applySelection().attributes, (StringList{"NOTE", "WHEN", "DESCRIPTION"}));
        RecordingSchema &rivers = *m_records[0];
        RecordingSchema &parks = *m_records[1];
        QStringList before, after;
        int items = 0;
        test::answerNextDialog([&](QDialog *window) {
            auto *preview = qobject_cast<CApplyPreviewDlg *>(window);
            before = conflictTexts(preview->previews());
            // The items: the geometry, NOTE, WHEN, DESCRIPTION.
            QListWidget *properties = preview->propertyList();
            items = properties->count();
            if (items != 4)
                return false;
            properties->item(0)->setCheckState(Qt::Unchecked);
            properties->item(2)->setCheckState(Qt::Unchecked);
            properties->item(3)->setCheckState(Qt::Unchecked);
            after = conflictTexts(preview->previews());
            return true;
        });
        dialog->OnOK();
        QCOMPARE(items, 4);
        QCOMPARE(before.size(), 4);
        QCOMPARE(after, QStringList{"parks: Attribute NOTE: the name is taken there, it becomes NOTE00"});
        QCOMPARE(rivers.userAttributes, StringList{"NOTE"});
        QCOMPARE(parks.userAttributes, StringList{"NOTE00"});
        QCOMPARE(rivers.geometry, std::string("shp_point"));
        QCOMPARE(parks.geometry, std::string("gpkg_point"));
    }
};

QTEST_MAIN(ApplyPreviewTest)
#include "tst_applypreview.moc"
