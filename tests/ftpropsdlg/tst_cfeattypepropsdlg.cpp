#include "ftpropsdlg/recordingschema.h"
#include "support/countingsession.h"
#include "support/modalanswers.h"
#include "support/scopedenvironment.h"
#include "support/scratchdirectory.h"

#include "ftprops/vyrobjftpropsformatinfo.h"
#include "ftpropsdlg/cfeattypepropsdlg.h"
#include "ftpropsdlg/cfeattypepropsgeneraldest.h"
#include "ftpropsdlg/cfeattypepropsgeneralsource.h"
#include "uikit/application.h"
#include "uikit/helpevents.h"
#include "uikit/outsideservices.h"
#include "util/resourcelibrary.h"

#include "vyr/IVYRStringArray.h"

#include <QApplication>
#include <QBitmap>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QRadioButton>
#include <QTabBar>
#include <QtTest>

#include <memory>

using namespace vyr;
using vyr::test::RecordingSchema;
using vyr::test::answerNextDialog;
using vyr::test::answerNextMessageBox;
using vyr::test::ShownMessage;

namespace {

// Formats a test works with; PG is a database (the session says so).
const char kShp[] = "FORMAT,SHP,SOURCE,no,SUPPORTS_FEAT_TYPE_FANOUT,yes,SUPPORTS_MULTI_GEOM,no,"
                    "GEOM_TYPE_MAPPINGS,\"shp_arc,vyr_line,shp_point,vyr_point,vyr_no_map,vyr_no_geom\"";
const char kGpkg[] = "FORMAT,GPKG,SOURCE,no,SUPPORTS_MULTI_GEOM,no,"
                     "GEOM_TYPE_MAPPINGS,\"gpkg_linestring,vyr_line,gpkg_point,vyr_point\"";
const char kPg[] = "FORMAT,PG,SOURCE,no,SUPPORTS_MULTI_GEOM,yes,GEOM_TYPE_MAPPINGS,\"line,vyr_line,point,vyr_point\"";
const char kCsv[] = "FORMAT,CSV,SOURCE,yes,GEOM_TYPE_MAPPINGS,\"csv_point,vyr_point\"";
const char kReaderA[] = "FORMAT,READER_A,SOURCE,yes,ROLE,SCHEMA_READER";
const char kReaderB[] = "FORMAT,READER_B,SOURCE,yes";

// A session whose prompter is the prompter library's, and which knows PG
// as a database.
class TestSession final : public vyr::test::CountingSession
{
public:
    TestSession()
        : m_prompter(createGuiPrompter())
    {}
    ~TestSession() override { releaseGuiPrompter(m_prompter); }
    bool getProperties(const char *, IVYRStringArray &query) override
    {
        const bool database = query.entries() == 1 && std::string(query.elementAt(0)) == "PG";
        query.clear();
        query.append("FORMAT_TYPE");
        query.append(database ? "DATABASE" : "FILE");
        return true;
    }
    IGuiPrompter *getGuiPrompter() override { return m_prompter; }

private:
    IGuiPrompter *m_prompter;
};

template <class Widget>
Widget *item(CVyrDialog *dialog, unsigned id)
{
    auto *widget = qobject_cast<Widget *>(dialog->GetDlgItem(id));
    if (!widget)
        qFatal("no control %u", id);
    return widget;
}

void chooseDataset(CVyrDialog *page, const QString &longName)
{
    auto *combo = item<QComboBox>(page, CFeatTypePropsGeneral::kIdDataset);
    combo->setCurrentIndex(combo->findText(longName));
    emit combo->activated(combo->currentIndex());
}

// Logs compare as text, so that a failure shows both whole.
QString joined(const StringList &lines)
{
    return QString::fromStdString(joinList(lines, '\n'));
}

QImage imageOf(const QIcon &icon)
{
    return icon.pixmap(16, 16).toImage().convertToFormat(QImage::Format_ARGB32);
}

} // namespace

class FeatTypePropsDlgTest : public QObject
{
    Q_OBJECT

private:
    TestSession m_session;
    StringList m_log;
    std::unique_ptr<VYRObjFTPropsFormatInfo> m_shp, m_gpkg, m_pg, m_csv, m_readerA, m_readerB;
    std::vector<std::unique_ptr<RecordingSchema>> m_others;

    std::unique_ptr<CFeatTypePropsDlg> open(RecordingSchema &schema, FormatRecordList formats = {},
                                            FormatRecordList additional = {})
    {
        if (formats.empty())
            formats = {m_shp.get(), m_gpkg.get(), m_pg.get(), m_csv.get()};
        SchemaRecordList others;
        for (const auto &other : m_others)
            others.push_back(other.get());
        auto dialog = std::make_unique<CFeatTypePropsDlg>(&m_session, &schema, others, formats, additional, nullptr);
        if (!dialog->Create())
            qFatal("the dialog did not open");
        return dialog;
    }
    RecordingSchema &addOther(const char *name, const char *formatId)
    {
        m_others.push_back(std::make_unique<RecordingSchema>(name, formatId, m_log));
        return *m_others.back();
    }

private slots:
    void initTestCase()
    {
        QVERIFY(ensureApplication());
        QVERIFY(loadResourceLibrary());
        m_shp = std::make_unique<VYRObjFTPropsFormatInfo>(kShp, &m_session, "SHP");
        m_gpkg = std::make_unique<VYRObjFTPropsFormatInfo>(kGpkg, &m_session, "GPKG");
        m_pg = std::make_unique<VYRObjFTPropsFormatInfo>(kPg, &m_session, "PG");
        m_csv = std::make_unique<VYRObjFTPropsFormatInfo>(kCsv, &m_session, "CSV");
        m_readerA = std::make_unique<VYRObjFTPropsFormatInfo>(kReaderA, &m_session, "READER_A");
        m_readerB = std::make_unique<VYRObjFTPropsFormatInfo>(kReaderB, &m_session, "READER_B");
    }
    void init()
    {
        m_log.clear();
        m_others.clear();
    }

    void shouldShowTheGeneralTabWithTheBitmapOfItsRoleAndFlags_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<bool>("flags");
        QTest::addColumn<bool>("roleFlag");
        QTest::addColumn<unsigned>("bitmap");
        QTest::newRow("source") << "CSV" << true << false << 196u;
        QTest::newRow("source merged") << "CSV" << true << true << 649u;
        QTest::newRow("source plain") << "CSV" << false << false << 484u;
        QTest::newRow("source plain merged") << "CSV" << false << true << 655u;
        QTest::newRow("destination") << "SHP" << true << false << 197u;
        QTest::newRow("destination fan-out") << "SHP" << true << true << 647u;
        QTest::newRow("destination plain") << "SHP" << false << false << 483u;
        QTest::newRow("destination plain fan-out") << "SHP" << false << true << 654u;
    }
    void shouldShowTheGeneralTabWithTheBitmapOfItsRoleAndFlags()
    {
        QFETCH(QString, format);
        QFETCH(bool, flags);
        QFETCH(bool, roleFlag);
        QFETCH(unsigned, bitmap);
        RecordingSchema schema("roads", format.toStdString(), m_log);
        schema.flagB = flags;
        schema.merged = schema.fanout = roleFlag;
        auto dialog = open(schema);
        QTabBar *tabs = dialog->tabControl();
        QCOMPARE(tabs->count(), 1);
        QCOMPARE(tabs->tabText(0), loadResourceString(res::GeneralTabTitle));
        QCOMPARE(imageOf(tabs->tabIcon(0)), imageOf(QIcon(resourceImagePath(ResourceKind::Bitmap, bitmap))));
        QCOMPARE(dialog->currentPage(), static_cast<QWidget *>(dialog->generalPage()));
        QCOMPARE(dialog->generalPage()->isSource(), format == QLatin1String("CSV"));
    }

    void shouldKeepItsTabsAcrossADatasetSwitch()
    {
        RecordingSchema schema("roads", "SHP", m_log);
        auto dialog = open(schema);
        chooseDataset(dialog->generalPage(), QStringLiteral("GPKG"));
        QCOMPARE(dialog->currentFormat(), m_gpkg.get());
        QCOMPARE(dialog->tabControl()->count(), 1);
        QVERIFY(!dialog->hasParameters());
    }

    void shouldWriteBackBetweenBeginAndEndUpdate()
    {
        RecordingSchema schema("roads", "SHP", m_log);
        schema.geometry = "shp_arc";
        auto dialog = open(schema);
        dialog->OnOK();
        QCOMPARE(dialog->result(), kEndOk);
        QVERIFY(m_log.size() > 2);
        QCOMPARE(QString::fromStdString(m_log.front()), QStringLiteral("roads: beginUpdate"));
        QCOMPARE(QString::fromStdString(m_log.back()), QStringLiteral("roads: endUpdate"));
        // Everything of the General page, nothing else, nothing to others.
        const StringList expected{"roads: beginUpdate",
                                  "roads: setFormatId(SHP)",
                                  "roads: setName(roads)",
                                  "roads: setFanout(no)",
                                  "roads: setGeometry(shp_arc)",
                                  "roads: setDynamic(no)",
                                  "roads: setSchemaSources",
                                  "roads: setAdditionalNames",
                                  "roads: setDynamicSchemaInfo",
                                  "roads: endUpdate"};
        QCOMPARE(joined(m_log), joined(expected));
    }

    void shouldApplyTheChosenPropertiesToTheChosenFeatureTypes_data()
    {
        QTest::addColumn<bool>("confirm");
        QTest::newRow("Yes") << true;
        QTest::newRow("No") << false;
    }
    void shouldApplyTheChosenPropertiesToTheChosenFeatureTypes()
    {
        QFETCH(bool, confirm);
        addOther("rivers", "SHP").geometry = "shp_point";
        addOther("lakes", "SHP");
        RecordingSchema schema("roads", "SHP", m_log);
        schema.geometry = "shp_arc";
        auto dialog = open(schema);

        QStringList offered;
        QStringList preselected;
        answerNextDialog([&](QDialog *form) {
            QListWidget *list = form->findChild<QWidget *>(QStringLiteral("prompt_FEAT_TYPES"))->findChild<QListWidget *>();
            for (int i = 0; i < list->count(); ++i) {
                offered.append(list->item(i)->text());
                if (list->item(i)->checkState() == Qt::Checked)
                    preselected.append(list->item(i)->text());
                list->item(i)->setCheckState(i == 0 ? Qt::Checked : Qt::Unchecked);
            }
            form->findChild<QComboBox *>(QStringLiteral("prompt_GEOM"))->setCurrentIndex(0);
            return true;
        });
        dialog->ApplyToOthers();
        QCOMPARE(offered, (QStringList{"rivers", "lakes"}));
        QCOMPARE(preselected, offered);
        QCOMPARE(dialog->applySelection().targets, StringList{"rivers"});
        QCOMPARE(dialog->applySelection().generalMask, general::Geometry);

        ShownMessage question;
        answerNextMessageBox(&question, confirm ? QMessageBox::Yes : QMessageBox::No);
        m_log.clear();
        dialog->OnOK();
        QCOMPARE(dialog->result(), kEndOk);
        QCOMPARE(question.text, formatResourceString(res::ApplyConfirm, {QStringLiteral("1")}));
        StringList others;
        for (const std::string &line : m_log) {
            if (!line.starts_with("roads: "))
                others.push_back(line);
        }
        if (confirm)
            QCOMPARE(joined(others),
                     joined({"rivers: setGeometry(shp_arc)", "rivers: setAdditionalNames", "rivers: notifyApplied",
                             "lakes: notifyApplied"}));
        else
            QVERIFY(others.empty());
        QCOMPARE(QString::fromStdString(m_log.back()), QStringLiteral("roads: endUpdate"));
    }

    void shouldLeaveTheApplySelectionEmptyWhenThePromptIsCancelled()
    {
        addOther("rivers", "SHP");
        RecordingSchema schema("roads", "SHP", m_log);
        auto dialog = open(schema);
        answerNextDialog([](QDialog *) { return false; });
        dialog->ApplyToOthers();
        QVERIFY(dialog->applySelection().targets.empty());
        dialog->OnOK();
        QVERIFY(std::none_of(m_log.begin(), m_log.end(), [](const std::string &l) { return l.starts_with("rivers"); }));
    }

    void shouldRefuseWithTheMessageOfTheFirstProblem_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<QString>("problem");
        QTest::addColumn<unsigned>("message");
        QTest::newRow("empty name") << "SHP" << "name" << unsigned(res::NameRequired);
        QTest::newRow("source empty name") << "CSV" << "name" << unsigned(res::NameRequired);
        QTest::newRow("merge without filter") << "CSV" << "filter" << unsigned(res::MergeFilterRequired);
        QTest::newRow("merge without kind") << "CSV" << "kind" << unsigned(res::MergeKindRequired);
        QTest::newRow("no dataset") << "SHP" << "dataset" << unsigned(res::DatasetRequired);
        QTest::newRow("no geometry") << "SHP" << "geometry" << unsigned(res::GeometryRequired);
        QTest::newRow("fan-out without attribute") << "SHP" << "fanout" << unsigned(res::FanoutAttributeRequired);
        QTest::newRow("dynamic without sources") << "SHP" << "sources" << unsigned(res::SchemaSourceRequired);
        QTest::newRow("dynamic without readers") << "SHP" << "readers" << unsigned(res::NoSchemaSourceFormats);
    }
    void shouldRefuseWithTheMessageOfTheFirstProblem()
    {
        QFETCH(QString, format);
        QFETCH(QString, problem);
        QFETCH(unsigned, message);
        RecordingSchema schema("roads", format.toStdString(), m_log);
        schema.geometry = format == QLatin1String("CSV") ? "csv_point" : "shp_arc";
        schema.userAttributes = {"KIND"};
        FormatRecordList additional;
        if (problem != QLatin1String("readers"))
            additional = {m_readerA.get()};
        auto dialog = open(schema, {}, additional);
        CFeatTypePropsGeneral *page = dialog->generalPage();
        if (problem == QLatin1String("name")) {
            item<QLineEdit>(page, CFeatTypePropsGeneral::kIdName)->clear();
        } else if (problem == QLatin1String("filter") || problem == QLatin1String("kind")) {
            item<QCheckBox>(page, CFeatTypePropsGeneralSource::kIdMerge)->click();
            if (problem == QLatin1String("kind")) {
                item<QLineEdit>(page, CFeatTypePropsGeneralSource::kIdMergeFilter)->setText("road*");
                item<QComboBox>(page, CFeatTypePropsGeneralSource::kIdMergeKind)->setCurrentIndex(-1);
            }
        } else if (problem == QLatin1String("dataset")) {
            item<QComboBox>(page, CFeatTypePropsGeneral::kIdDataset)->setCurrentIndex(-1);
        } else if (problem == QLatin1String("geometry")) {
            item<QComboBox>(page, CFeatTypePropsGeneral::kIdGeometry)->setCurrentIndex(-1);
        } else if (problem == QLatin1String("fanout")) {
            item<QCheckBox>(page, CFeatTypePropsGeneralDest::kIdFanout)->click();
        } else {
            item<QCheckBox>(page, CFeatTypePropsGeneralDest::kIdDynamic)->click();
            item<QLineEdit>(page, CFeatTypePropsGeneralDest::kIdSchemaSources)->clear();
        }
        ShownMessage shown;
        answerNextMessageBox(&shown);
        QVERIFY(!page->ValidatePage());
        QCOMPARE(shown.text, loadResourceString(message));
        QCOMPARE(shown.icon, int(QMessageBox::Warning));
        // OK stops at the page: nothing is written, the dialog stays.
        answerNextMessageBox(&shown);
        dialog->OnOK();
        QVERIFY(m_log.empty());
    }

    void shouldFoldAndSplitTheDatabaseUserAcrossDatasets()
    {
        RecordingSchema schema("owner.parcels", "PG", m_log);
        auto dialog = open(schema);
        CFeatTypePropsGeneral *page = dialog->generalPage();
        auto *name = item<QLineEdit>(page, CFeatTypePropsGeneral::kIdName);
        auto *user = item<QLineEdit>(page, CFeatTypePropsGeneral::kIdDatabaseUser);
        QCOMPARE(name->text(), QStringLiteral("parcels"));
        QCOMPARE(user->text(), QStringLiteral("owner"));
        QVERIFY(user->isEnabled());

        chooseDataset(page, QStringLiteral("SHP"));
        QCOMPARE(name->text(), QStringLiteral("owner.parcels"));
        QVERIFY(user->text().isEmpty());
        QVERIFY(!user->isEnabled());

        chooseDataset(page, QStringLiteral("PG"));
        QCOMPARE(name->text(), QStringLiteral("parcels"));
        QCOMPARE(user->text(), QStringLiteral("owner"));

        user->setText(QStringLiteral("survey"));
        dialog->OnOK();
        QCOMPARE(schema.name, std::string("survey.parcels"));
    }

    void shouldReplaceOnlyTheOwnerWhenTheUserIsApplied()
    {
        addOther("old.roads", "PG");
        addOther("bridges", "PG");
        RecordingSchema schema("owner.parcels", "PG", m_log);
        auto dialog = open(schema);
        CFeatTypePropsGeneral *page = dialog->generalPage();
        item<QLineEdit>(page, CFeatTypePropsGeneral::kIdDatabaseUser)->setText(QStringLiteral("survey"));
        page->WriteToSchema(*m_others[0], general::DatabaseUser);
        page->WriteToSchema(*m_others[1], general::DatabaseUser);
        QCOMPARE(m_others[0]->name, std::string("survey.roads"));
        QCOMPARE(m_others[1]->name, std::string("survey.bridges"));
        item<QLineEdit>(page, CFeatTypePropsGeneral::kIdDatabaseUser)->clear();
        page->WriteToSchema(*m_others[0], general::DatabaseUser);
        QCOMPARE(m_others[0]->name, std::string("roads"));
    }

    void shouldEnableFanoutAndDynamicSchemaControls()
    {
        RecordingSchema schema("roads", "SHP", m_log);
        schema.geometry = "shp_arc";
        schema.userAttributes = {"KIND", "NAME"};
        auto dialog = open(schema, {}, {m_readerA.get(), m_readerB.get()});
        CFeatTypePropsGeneral *page = dialog->generalPage();
        auto *name = item<QLineEdit>(page, CFeatTypePropsGeneral::kIdName);
        auto *fanout = item<QCheckBox>(page, CFeatTypePropsGeneralDest::kIdFanout);
        auto *attribute = item<QComboBox>(page, CFeatTypePropsGeneralDest::kIdFanoutAttribute);
        auto *dynamic = item<QCheckBox>(page, CFeatTypePropsGeneralDest::kIdDynamic);
        auto *sources = item<QLineEdit>(page, CFeatTypePropsGeneralDest::kIdSchemaSources);
        QVERIFY(fanout->isEnabled());
        QVERIFY(!attribute->isEnabled());
        QCOMPARE(attribute->count(), 2);
        QCOMPARE(attribute->currentIndex(), -1);

        fanout->click();
        QVERIFY(!name->isEnabled());
        QVERIFY(attribute->isEnabled());
        fanout->click();
        QVERIFY(name->isEnabled());
        QVERIFY(!attribute->isEnabled());

        dynamic->click();
        QVERIFY(sources->isEnabled());
        QVERIFY(!name->isEnabled());
        QVERIFY(!fanout->isEnabled());
        QVERIFY(!item<QComboBox>(page, CFeatTypePropsGeneral::kIdGeometry)->isEnabled());
        // Every reader at once, the last one entered first.
        QCOMPARE(sources->text(), QStringLiteral("READER_B; READER_A"));
        auto *dest = static_cast<CFeatTypePropsGeneralDest *>(page);
        QCOMPARE(dest->schemaSources(), (StringList{"READER_B", "READER_A"}));
        dynamic->click();
        QVERIFY(sources->text().isEmpty());
        QVERIFY(name->isEnabled());

        // A format without fan-out disables it.
        chooseDataset(page, QStringLiteral("GPKG"));
        QVERIFY(!fanout->isEnabled());
    }

    void shouldCarryTheGeometryToTheNewDataset()
    {
        RecordingSchema schema("roads", "SHP", m_log);
        schema.geometry = "shp_arc";
        auto dialog = open(schema);
        auto *geometry = item<QComboBox>(dialog->generalPage(), CFeatTypePropsGeneral::kIdGeometry);
        QStringList items;
        for (int i = 0; i < geometry->count(); ++i)
            items.append(geometry->itemText(i));
        QCOMPARE(items, (QStringList{"shp_arc", "shp_point"}));
        QCOMPARE(geometry->currentText(), QStringLiteral("shp_arc"));
        chooseDataset(dialog->generalPage(), QStringLiteral("GPKG"));
        QCOMPARE(geometry->currentText(), QStringLiteral("gpkg_linestring"));
        QCOMPARE(geometry->count(), 2);
    }

    void shouldShowSeveralGeometriesAsOneAndNeverWriteThem()
    {
        RecordingSchema schema("roads", "PG", m_log);
        schema.geometry = "line point";
        auto dialog = open(schema);
        auto *geometry = item<QComboBox>(dialog->generalPage(), CFeatTypePropsGeneral::kIdGeometry);
        QCOMPARE(geometry->count(), 1);
        QCOMPARE(geometry->currentText(), loadResourceString(res::MultipleGeometries));
        QVERIFY(!geometry->isEnabled());
        dialog->OnOK();
        QCOMPARE(schema.geometry, std::string("line point"));
        QVERIFY(std::none_of(m_log.begin(), m_log.end(), [](const std::string &l) { return l.find("setGeometry") != std::string::npos; }));
    }

    void shouldKeepTheDynamicSettingsOnlyWhenAccepted()
    {
        RecordingSchema schema("roads", "SHP", m_log);
        schema.geometry = "shp_arc";
        schema.dynamic = true;
        schema.schemaSources = {"READER_A"};
        auto dialog = open(schema, {}, {m_readerA.get()});
        auto *dest = static_cast<CFeatTypePropsGeneralDest *>(dialog->generalPage());
        auto *summary = item<QLineEdit>(dest, CFeatTypePropsGeneralDest::kIdDynamicSummary);
        QCOMPARE(item<QLineEdit>(dest, CFeatTypePropsGeneralDest::kIdSchemaSources)->text(), QStringLiteral("READER_A"));
        QCOMPARE(summary->text(), loadResourceString(res::DynamicSettingsDefault));

        answerNextDialog([](QDialog *settings) {
            settings->findChild<QRadioButton *>(QStringLiteral("geometries_1"))->click();
            return false;
        });
        dest->EditDynamicSettings();
        QVERIFY(dest->dynamicSettings().isDefault());

        QString offeredName;
        answerNextDialog([&](QDialog *settings) {
            offeredName = settings->findChild<QLineEdit *>(QStringLiteral("fixedName"))->text();
            settings->findChild<QRadioButton *>(QStringLiteral("geometries_1"))->click();
            return true;
        });
        dest->EditDynamicSettings();
        QCOMPARE(offeredName, QStringLiteral("roads"));
        QCOMPARE(dest->dynamicSettings().getOption2(), 1);
        QCOMPARE(summary->text(), loadResourceString(res::DynamicSettingsCustom));
        dialog->OnOK();
        QCOMPARE(schema.dynamicSettings.getOption2(), 1);
    }

    void shouldResolveTheNameWhenItLosesTheFocus()
    {
        addOther("roads", "SHP");
        RecordingSchema schema("streets", "SHP", m_log);
        auto dialog = open(schema);
        auto *name = item<QLineEdit>(dialog->generalPage(), CFeatTypePropsGeneral::kIdName);
        name->setText(QStringLiteral("roads"));
        QFocusEvent leaving(QEvent::FocusOut, Qt::TabFocusReason);
        QApplication::sendEvent(name, &leaving);
        QCOMPARE(name->text(), QStringLiteral("roads00"));
        name->setText(QStringLiteral("rivers"));
        QApplication::sendEvent(name, &leaving);
        QCOMPARE(name->text(), QStringLiteral("rivers"));
    }

    void shouldLetAReaderBeRenamedOnlyWhenTheSettingSaysSo()
    {
        test::ScratchDirectory home;
        test::ScopedEnvironment env;
        env.set("XDG_CONFIG_HOME", home.path());
        RecordingSchema schema("stations", "CSV", m_log);
        const auto nameIsReadOnly = [&] {
            auto dialog = open(schema);
            return item<QLineEdit>(dialog->generalPage(), CFeatTypePropsGeneral::kIdName)->isReadOnly();
        };
        QVERIFY(nameIsReadOnly());
        // Read again for every dialog: a changed setting counts at once.
        home.write("Quenbry Inc./VYR Loomhouse.conf", "[Settings]\nAllow Source Feature Type Editing=Yes\n");
        QVERIFY(!nameIsReadOnly());
        home.write("Quenbry Inc./VYR Loomhouse.conf", "[Settings]\nAllow Source Feature Type Editing=1\n");
        QVERIFY(nameIsReadOnly());
    }

    void shouldRefillTheFanoutChoicesWhenTheListDropsDown()
    {
        RecordingSchema schema("roads", "SHP", m_log);
        schema.userAttributes = {"KIND", "NAME"};
        schema.fanout = true;
        schema.fanoutAttribute = "NAME";
        auto dialog = open(schema);
        auto *attribute = item<QComboBox>(dialog->generalPage(), CFeatTypePropsGeneralDest::kIdFanoutAttribute);
        QCOMPARE(attribute->currentText(), QStringLiteral("NAME"));
        schema.userAttributes = {"TYPE", "NAME"};
        schema.formatAttributes = {"shape_type"};
        dialog->show();
        attribute->showPopup();
        attribute->hidePopup();
        QStringList items;
        for (int i = 0; i < attribute->count(); ++i)
            items.append(attribute->itemText(i));
        QCOMPARE(items, (QStringList{"TYPE", "NAME", "shape_type"}));
        QCOMPARE(attribute->currentText(), QStringLiteral("NAME"));
    }

    void shouldChooseSchemaSourcesAmongTheReaders()
    {
        RecordingSchema schema("roads", "SHP", m_log);
        schema.geometry = "shp_arc";
        auto dialog = open(schema, {}, {m_readerA.get(), m_readerB.get()});
        auto *dest = static_cast<CFeatTypePropsGeneralDest *>(dialog->generalPage());
        item<QCheckBox>(dest, CFeatTypePropsGeneralDest::kIdDynamic)->click();

        QStringList offered;
        QStringList checked;
        QList<bool> withIcon;
        answerNextDialog([&](QDialog *selection) {
            auto *list = selection->findChild<QListWidget *>();
            for (int i = 0; i < list->count(); ++i) {
                offered.append(list->item(i)->text());
                withIcon.append(!list->item(i)->icon().isNull());
                if (list->item(i)->checkState() == Qt::Checked)
                    checked.append(list->item(i)->text());
                list->item(i)->setCheckState(i == 1 ? Qt::Checked : Qt::Unchecked);
            }
            return true;
        });
        m_log.clear();
        dest->ChooseSchemaSources();
        QCOMPARE(offered, (QStringList{"READER_B", "READER_A"}));
        QCOMPARE(checked, offered);
        QCOMPARE(withIcon, (QList<bool>{true, true}));
        QCOMPARE(dest->schemaSources(), StringList{"READER_A"});
        QCOMPARE(item<QLineEdit>(dest, CFeatTypePropsGeneralDest::kIdSchemaSources)->text(), QStringLiteral("READER_A"));
        // Handed to the schema at once, not only on OK.
        QCOMPARE(joined(m_log), QStringLiteral("roads: setSchemaSources(READER_A)"));

        answerNextDialog([](QDialog *) { return false; });
        dest->ChooseSchemaSources();
        QCOMPARE(dest->schemaSources(), StringList{"READER_A"});
    }

    void shouldAnswerHelpRequestsFromItsPages()
    {
        RecordingSchema schema("roads", "SHP", m_log);
        auto dialog = open(schema);
        // From any control of the page the request reaches the frame, which
        // shows the dialog's help page and says it did.
        QCOMPARE(routeHelpRequest(dialog->generalPage()->GetDlgItem(CFeatTypePropsGeneral::kIdName)), qintptr(1));
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (window != dialog.get() && window->isVisible())
                window->close();
        }
    }

    void shouldStayHarmlessForASchemaOfAnUnknownFormat()
    {
        RecordingSchema schema("roads", "NOWHERE", m_log);
        auto dialog = open(schema);
        QVERIFY(!dialog->generalPage());
        dialog->ApplyToOthers();
        dialog->OnOK();
        QCOMPARE(joined(m_log), QStringLiteral("roads: beginUpdate\nroads: endUpdate"));
    }

    void shouldNotShrinkBelowItsFirstSize()
    {
        RecordingSchema schema("roads", "SHP", m_log);
        auto dialog = open(schema);
        const QSize first = dialog->minimumWindowSize();
        QVERIFY(first.width() > 100 && first.height() > 100);
        dialog->show();
        dialog->resize(50, 50);
        QCOMPARE(dialog->size(), first);
        dialog->resize(first + QSize(200, 100));
        // The buttons follow the edge, the page grows with the window.
        QWidget *cancel = dialog->GetDlgItem(kIdCancel);
        QCOMPARE(cancel->geometry().right(), dialog->width() - 1 - CFeatTypePropsDlg::kMargin);
        QCOMPARE(cancel->geometry().bottom(), dialog->height() - 1 - CFeatTypePropsDlg::kMargin);
        QCOMPARE(dialog->GetDlgItem(kIdHelpCommand)->x(), CFeatTypePropsDlg::kMargin);
        QVERIFY(dialog->currentPage()->width() > first.width());
    }
};

QTEST_MAIN(FeatTypePropsDlgTest)
#include "tst_cfeattypepropsdlg.moc"
