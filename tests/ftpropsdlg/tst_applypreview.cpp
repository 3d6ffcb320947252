// Apply to Others shows, per feature type, what it will write before it
// writes: where a property does not land as the edited feature type has it,
// and that what the person leaves out of the preview is not written.
#include "ftpropsdlg/recordingschema.h"
#include "ftpropsdlg/promptingsession.h"
#include "support/modalanswers.h"

#include "ftprops/vyrobjftpropsformatinfo.h"
#include "ftpropsdlg/capplypreviewdlg.h"
#include "ftpropsdlg/cfeattypepropsdlg.h"
#include "ftpropsdlg/cfeattypepropsgeneral.h"
#include "ftpropsdlg/creviewchangesdlg.h"
#include "uikit/application.h"
#include "uikit/outsideservices.h"
#include "uikit/resourcelibrary.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QtTest>

#include <map>
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
    std::unique_ptr<VYRObjFTPropsFormatInfo> m_shp, m_gpkg, m_multi;
    std::vector<std::unique_ptr<RecordingSchema>> m_records;

    RecordingSchema &record(const char *name, const char *formatId, const char *geometry)
    {
        m_records.push_back(std::make_unique<RecordingSchema>(name, formatId, m_log));
        m_records.back()->geometry = geometry;
        return *m_records.back();
    }
    std::unique_ptr<CFeatTypePropsDlg> open(RecordingSchema &edited, const SchemaRecordList &others)
    {
        auto dialog = std::make_unique<CFeatTypePropsDlg>(&m_session, &edited, others,
                                                          FormatRecordList{m_shp.get(), m_gpkg.get(), m_multi.get()},
                                                          FormatRecordList(), nullptr);
        if (!dialog->Create())
            qFatal("the dialog did not open");
        return dialog;
    }
    // "roads" of SHP with text and date attributes, an encoding and a sort
    // attribute, and the other feature types: "rivers" of SHP, "parks" of
    // GPKG, which exposes its format attribute NOTE, and `more`.
    std::unique_ptr<CFeatTypePropsDlg> open(const SchemaRecordList &more = {})
    {
        RecordingSchema &rivers = record("rivers", "SHP", "shp_point");
        RecordingSchema &parks = record("parks", "GPKG", "gpkg_point");
        parks.formatAttributes = {"NOTE"};
        RecordingSchema &roads = record("roads", "SHP", "shp_arc");
        roads.userAttributes = {"NOTE", "WHEN", "DESCRIPTION"};
        roads.attributeTypes = {{"NOTE", "char(10)"}, {"WHEN", "date"}, {"DESCRIPTION", "char(80)"}};
        roads.parameters["ENCODING"] = "latin1";
        roads.parameters["SORT_BY"] = "NOTE";
        SchemaRecordList others{&rivers, &parks};
        others.insert(others.end(), more.begin(), more.end());
        return open(roads, others);
    }
    // The previews the preview window shows at OK, with `items` of the
    // prompt chosen, and the records as they were before.
    std::vector<ApplyTargetPreview> applyAtOK(CFeatTypePropsDlg &dialog, const QStringList &items,
                                              std::vector<ScratchSchema> &before)
    {
        test::answerNextDialog([&](QDialog *form) {
            for (const QString &item : items)
                form->findChild<QComboBox *>(QStringLiteral("prompt_") + item)->setCurrentIndex(0);
            return true;
        });
        dialog.ApplyToOthers();
        for (const FTPropsSchemaInfo *other : dialog.otherFeatureTypes())
            before.push_back(other->makeScratchCopy());
        std::vector<ApplyTargetPreview> previews;
        test::answerNextDialog([&](QDialog *window) {
            previews = qobject_cast<CApplyPreviewDlg *>(window)->previews();
            return true;
        });
        dialog.OnOK();
        return previews;
    }

private slots:
    void initTestCase()
    {
        QVERIFY(ensureApplication());
        QVERIFY(loadResourceLibrary());
        // GPKG has no line, no date, no encoding and no names over 8 bytes.
        m_shp = std::make_unique<VYRObjFTPropsFormatInfo>(
            "FORMAT,SHP,SOURCE,no,SUPPORTS_MULTI_GEOM,no,GEOM_TYPE_MAPPINGS,\"shp_arc,vyr_line,shp_point,vyr_point\","
            "DATA_TYPE_MAPPINGS,\"char(width),vyr_char,date,vyr_date\","
            "DEFLINE_PARMS,\"GUI TEXT ENCODING Encoding,utf8,GUI OPTIONAL ATTR SORT_BY % Sort Rows By,\"",
            &m_session, "SHP");
        m_gpkg = std::make_unique<VYRObjFTPropsFormatInfo>(
            "FORMAT,GPKG,SOURCE,no,SUPPORTS_MULTI_GEOM,no,GEOM_TYPE_MAPPINGS,\"gpkg_point,vyr_point\","
            "DATA_TYPE_MAPPINGS,\"char(width),vyr_char\",FORMAT_ATTRS,\"NOTE,char(20)\",MAX_ATTR_LENGTH,8",
            &m_session, "GPKG");
        // A feature type of MULTI may have several geometries.
        m_multi = std::make_unique<VYRObjFTPropsFormatInfo>(
            "FORMAT,MULTI,SOURCE,no,SUPPORTS_MULTI_GEOM,yes,GEOM_TYPE_MAPPINGS,\"m_line,vyr_line,m_point,vyr_point\","
            "DATA_TYPE_MAPPINGS,\"char(width),vyr_char,date,vyr_date\","
            "DEFLINE_PARMS,\"GUI TEXT ENCODING Encoding,utf8\"",
            &m_session, "MULTI");
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
        // The page's GONE was deleted after it was chosen.
        QTest::newRow("not stored") << 0u << "GONE" << ""
                                    << QStringList{"rivers: Attribute GONE: not stored there",
                                                   "parks: Attribute GONE: not stored there",
                                                   "lakes: Attribute GONE: not stored there"};
        QTest::newRow("parameter") << 0u << "" << "ENCODING"
                                   << QStringList{"parks: Parameter Encoding: its format does not define it, skipped"};
        // Rivers has no NOTE for it to name.
        QTest::newRow("parameter kept")
            << 0u << "" << "SORT_BY"
            << QStringList{"rivers: Parameter Sort Rows By: kept as it is there ((empty))",
                           "parks: Parameter Sort Rows By: its format does not define it, skipped",
                           "lakes: Parameter Sort Rows By: its format does not define it, skipped"};
        // Moved into the edited one's format first, both land as they are.
        QTest::newRow("the dataset with them")
            << general::Dataset << "DESCRIPTION" << "ENCODING" << QStringList{};
        QTest::newRow("geometry") << general::Geometry << "" << ""
                                  << QStringList{"parks: Geometry shp_arc: its format lacks it, it becomes (empty)",
                                                 "lakes: Geometry shp_arc: kept as it is there (m_point)"};
    }
    void shouldNameEveryConflictOfEachTarget()
    {
        QFETCH(unsigned, mask);
        QFETCH(QString, attribute);
        QFETCH(QString, parameter);
        QFETCH(QStringList, conflicts);
        auto dialog = open({&record("lakes", "MULTI", "m_point")});
        ApplySelection selection;
        selection.targets = {"rivers", "parks", "lakes"};
        selection.generalMask = mask;
        if (!attribute.isEmpty())
            selection.attributes = {attribute.toStdString()};
        if (!parameter.isEmpty())
            selection.parameters = {parameter.toStdString()};
        const std::vector<ApplyTargetPreview> previews = dialog->ApplyPreviews(selection);
        QCOMPARE(previews.size(), std::size_t(3));
        QCOMPARE(previews[0].longName, std::string("rivers"));
        // Rivers, of the edited type's format, takes what the page has as it is.
        if (conflicts.isEmpty() || !conflicts.first().startsWith("rivers"))
            QVERIFY(!previews[0].changes.empty());
        QCOMPARE(conflictTexts(previews), conflicts);
        // Nothing reached a record itself.
        for (const std::string &line : m_log)
            QVERIFY2(line.starts_with("copy of "), line.c_str());
    }

    // The apply names the feature types one after another, each among the
    // names the ones written before it took, the edited one's first: the
    // previews name them so too.
    void shouldPreviewTheNamesOfTheApplyInItsOrder_data()
    {
        QTest::addColumn<QString>("newName");
        QTest::addColumn<QStringList>("others");
        QTest::addColumn<QStringList>("written");
        QTest::newRow("two moved into one dataset")
            << "" << QStringList{"lakes GPKG", "lakes MULTI"} << QStringList{"lakes", "lakes00"};
        QTest::newRow("the edited one's new name")
            << "streets" << QStringList{"streets GPKG", "roads MULTI"} << QStringList{"streets00", "roads"};
    }
    void shouldPreviewTheNamesOfTheApplyInItsOrder()
    {
        QFETCH(QString, newName);
        QFETCH(QStringList, others);
        QFETCH(QStringList, written);
        SchemaRecordList records;
        std::vector<const FTPropsFormatInfo *> formats;
        for (const QString &other : others) {
            const QStringList parts = other.split(' ');
            records.push_back(&record(qPrintable(parts[0]), qPrintable(parts[1]), ""));
            formats.push_back(parts[1] == "GPKG" ? m_gpkg.get() : m_multi.get());
        }
        auto dialog = open(record("roads", "SHP", "shp_arc"), records);
        if (!newName.isEmpty())
            qobject_cast<QLineEdit *>(dialog->generalPage()->GetDlgItem(CFeatTypePropsGeneral::kIdName))
                ->setText(newName);
        std::vector<ScratchSchema> before;
        const std::vector<ApplyTargetPreview> previews = applyAtOK(*dialog, {"DATASET"}, before);
        QCOMPARE(previews.size(), records.size());
        const ReviewTexts texts = ReviewTextsFromResources();
        for (std::size_t i = 0; i < records.size(); ++i) {
            const QString name = written[qsizetype(i)];
            QCOMPARE(QString::fromStdString(records[i]->getName()), name);
            if (name != others[qsizetype(i)].section(' ', 0, 0))
                QVERIFY(QString::fromStdString(ReviewAsText(previews[i].changes, texts)).contains(name));
            SchemaReviewInput review(*before[i], *records[i], *formats[i]);
            review.texts = &texts;
            QVERIFY(ReviewSchemaChanges(review) == previews[i].changes);
        }
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

    // A tick works out again only what it changes: the edited feature type
    // is written once for the window, and a target again only when a
    // target before it changed.
    void shouldWorkOutOnlyWhatATickChanges()
    {
        auto dialog = open();
        test::answerNextDialog([](QDialog *form) {
            form->findChild<QComboBox *>(QStringLiteral("prompt_GEOM"))->setCurrentIndex(0);
            return true;
        });
        dialog->ApplyToOthers();
        std::map<std::string, int> writes;
        test::answerNextDialog([&](QDialog *window) {
            QTreeWidget *targets = qobject_cast<CApplyPreviewDlg *>(window)->targetTree();
            m_log.clear();
            // Parks out and back: nothing before it changed.
            targets->topLevelItem(1)->setCheckState(0, Qt::Unchecked);
            targets->topLevelItem(1)->setCheckState(0, Qt::Checked);
            // Rivers out: parks follows it no more.
            targets->topLevelItem(0)->setCheckState(0, Qt::Unchecked);
            for (const std::string &line : m_log) {
                if (line.ends_with(": beginUpdate"))
                    ++writes[line.substr(0, line.find(':'))];
            }
            return false;
        });
        dialog->OnOK();
        QCOMPARE(writes, (std::map<std::string, int>{{"copy of parks", 1}}));
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
