#include "ftpropsdlg/recordingschema.h"
#include "ftpropsdlg/promptingsession.h"
#include "support/gridwindow.h"
#include "support/modalanswers.h"
#include "support/scopedenvironment.h"
#include "support/scratchdirectory.h"

#include "ftprops/vyrobjftpropsformatinfo.h"
#include "ftpropsdlg/capplypreviewdlg.h"
#include "ftpropsdlg/cattrgrid.h"
#include "ftpropsdlg/cfeattypepropsattrs.h"
#include "ftpropsdlg/cfeattypepropsdlg.h"
#include "ftpropsdlg/cfeattypepropsexposableattrs.h"
#include "ftpropsdlg/cfeattypepropsgeneraldest.h"
#include "ftpropsdlg/cfeattypepropsgeneralsource.h"
#include "ftpropsdlg/cformatattrgrid.h"
#include "uikit/application.h"
#include "uikit/outsideservices.h"
#include "uikit/resourcelibrary.h"

#include "vyr/IVYRStringArray.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QRadioButton>
#include <QTabBar>
#include <QtTest>

#include <algorithm>
#include <map>
#include <memory>

using namespace vyr;
using vyr::test::answerNextDialog;
using vyr::test::answerNextMessageBox;
using vyr::test::Offer;
using vyr::test::recheck;
using vyr::test::RecordingSchema;
using vyr::test::ShownMessage;
using General = CFeatTypePropsGeneral;
using Dest = CFeatTypePropsGeneralDest;
using Source = CFeatTypePropsGeneralSource;

namespace {

// A session whose prompter is the prompter library's, and which knows PG
// as a database.
class TestSession final : public vyr::test::PromptingSession
{
public:
    bool getProperties(const char *, IVYRStringArray &query) override
    {
        const bool database = query.entries() == 1 && std::string(query.elementAt(0)) == "PG";
        query.clear();
        query.append("FORMAT_TYPE");
        query.append(database ? "DATABASE" : "FILE");
        return true;
    }
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
    auto *combo = item<QComboBox>(page, General::kIdDataset);
    combo->setCurrentIndex(combo->findText(longName));
    emit combo->activated(combo->currentIndex());
}

QStringList textsOf(const QComboBox *combo)
{
    QStringList texts;
    for (int i = 0; i < combo->count(); ++i)
        texts.append(combo->itemText(i));
    return texts;
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
    std::vector<std::unique_ptr<RecordingSchema>> m_records;
    std::vector<RecordingSchema *> m_others;

    std::unique_ptr<CFeatTypePropsDlg> open(RecordingSchema &schema, FormatRecordList additional = {})
    {
        const FormatRecordList formats{m_shp.get(), m_gpkg.get(), m_pg.get(), m_csv.get()};
        auto dialog = std::make_unique<CFeatTypePropsDlg>(
            &m_session, &schema, SchemaRecordList(m_others.begin(), m_others.end()), formats, additional, nullptr);
        if (!dialog->Create())
            qFatal("the dialog did not open");
        return dialog;
    }
    RecordingSchema &record(const char *name, const char *formatId, const char *geometry = "")
    {
        m_records.push_back(std::make_unique<RecordingSchema>(name, formatId, m_log));
        m_records.back()->geometry = geometry;
        return *m_records.back();
    }
    RecordingSchema &addOther(const char *name, const char *formatId, const char *geometry = "")
    {
        m_others.push_back(&record(name, formatId, geometry));
        return *m_others.back();
    }

private slots:
    void initTestCase()
    {
        QVERIFY(ensureApplication());
        QVERIFY(loadResourceLibrary());
        // A definition goes on from whether the format is a source; PG is a
        // database, as the session says.
        const auto format = [this](const char *id, const char *rest) {
            const std::string definition = std::string("FORMAT,") + id + ",SOURCE," + rest;
            return std::make_unique<VYRObjFTPropsFormatInfo>(definition, &m_session, id);
        };
        m_shp = format("SHP", "no,SUPPORTS_FEAT_TYPE_FANOUT,yes,SUPPORTS_MULTI_GEOM,no,"
                              "GEOM_TYPE_MAPPINGS,\"shp_arc,vyr_line,shp_point,vyr_point,vyr_no_map,vyr_no_geom\","
                              "DATA_TYPE_MAPPINGS,\"char(width),vyr_char\","
                              "FORMAT_ATTRS,\"shp_type,char(20),items{}.x,char(8)\"");
        m_gpkg = format("GPKG", "no,SUPPORTS_MULTI_GEOM,no,"
                                "GEOM_TYPE_MAPPINGS,\"gpkg_linestring,vyr_line,gpkg_point,vyr_point\"");
        m_pg = format("PG", "no,SUPPORTS_MULTI_GEOM,yes,GEOM_TYPE_MAPPINGS,\"line,vyr_line,point,vyr_point\"");
        m_csv = format("CSV", "yes,GEOM_TYPE_MAPPINGS,\"csv_point,vyr_point\"");
        m_readerA = format("READER_A", "yes,ROLE,SCHEMA_READER");
        m_readerB = format("READER_B", "yes");
    }
    void init()
    {
        m_log.clear();
        m_others.clear();
        m_records.clear();
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
        RecordingSchema &schema = record("roads", qPrintable(format));
        schema.flagB = flags;
        schema.merged = schema.fanout = roleFlag;
        auto dialog = open(schema);
        QTabBar *tabs = dialog->tabControl();
        // General, then the attribute pages (user attributes by default).
        QCOMPARE(tabs->count(), 3);
        QCOMPARE(tabs->tabText(0), loadResourceString(res::GeneralTabTitle));
        QCOMPARE(imageOf(tabs->tabIcon(0)), imageOf(QIcon(resourceImagePath(ResourceKind::Bitmap, bitmap))));
        QCOMPARE(dialog->currentPage(), static_cast<QWidget *>(dialog->generalPage()));
        QCOMPARE(dialog->generalPage()->isSource(), format == QLatin1String("CSV"));
    }

    void shouldApplyTheChosenPropertiesToTheChosenFeatureTypes_data()
    {
        QTest::addColumn<bool>("chosen");
        QTest::addColumn<bool>("confirm");
        QTest::newRow("Yes") << true << true;
        QTest::newRow("No") << true << false;
        QTest::newRow("prompt cancelled") << false << false;
    }
    void shouldApplyTheChosenPropertiesToTheChosenFeatureTypes()
    {
        QFETCH(bool, chosen);
        QFETCH(bool, confirm);
        addOther("rivers", "SHP", "shp_point");
        addOther("lakes", "SHP");
        auto dialog = open(record("roads", "SHP", "shp_arc"));
        Offer offer;
        answerNextDialog([&](QDialog *form) {
            QWidget *prompt = form->findChild<QWidget *>(QStringLiteral("prompt_FEAT_TYPES"));
            offer = recheck(prompt->findChild<QListWidget *>(), {"rivers"});
            form->findChild<QComboBox *>(QStringLiteral("prompt_GEOM"))->setCurrentIndex(0);
            return chosen;
        });
        dialog->ApplyToOthers();
        QCOMPARE(offer.items, (QStringList{"rivers", "lakes"}));
        QCOMPARE(offer.checked, offer.items);
        QCOMPARE(dialog->applySelection().targets, chosen ? StringList{"rivers"} : StringList{});
        QCOMPARE(dialog->applySelection().generalMask, chosen ? general::Geometry : 0u);

        // Without a selection there is nothing to confirm.
        QStringList previewed;
        if (chosen)
            answerNextDialog([&](QDialog *preview) {
                auto *targets = qobject_cast<CApplyPreviewDlg *>(preview)->targetTree();
                for (int i = 0; i < targets->topLevelItemCount(); ++i)
                    previewed.append(targets->topLevelItem(i)->text(0));
                return confirm;
            });
        dialog->OnOK();
        QCOMPARE(previewed, chosen ? QStringList{"rivers"} : QStringList());
        // The previews were written into copies.
        std::erase_if(m_log, [](const std::string &line) { return line.starts_with("copy of "); });
        // Everything of the General page to the edited type; to the others,
        // in the same update, only what was chosen.
        StringList expected{"roads: beginUpdate",      "roads: setFormatId(SHP)",    "roads: setName(roads)",
                            "roads: setFanout(no)",    "roads: setGeometry(shp_arc)", "roads: setDynamic(no)",
                            "roads: setSchemaSources", "roads: setAdditionalNames",  "roads: setDynamicSchemaInfo",
                            "roads: setAttributes"};
        if (confirm)
            expected.insert(expected.end(), {"rivers: setGeometry(shp_arc)", "rivers: setAdditionalNames",
                                             "rivers: notifyApplied", "lakes: notifyApplied"});
        expected.push_back("roads: endUpdate");
        QCOMPARE(joined(m_log), joined(expected));
    }

    // The attribute pages' lists of the apply prompt: what the edited type
    // gained and lost of both kinds is offered, and only what was chosen is
    // written into the chosen type, after the edited type's own write, in
    // the pages' order.
    void shouldApplyTheChosenAttributesToTheChosenFeatureTypes()
    {
        RecordingSchema &rivers = addOther("rivers", "SHP", "shp_point");
        rivers.userAttributes = {"KIND", "WIDTH", "OLD"};
        rivers.formatAttributes = {"shp_type"};
        RecordingSchema &roads = record("roads", "SHP", "shp_arc");
        roads.userAttributes = {"KIND", "WIDTH", "NOTE"};
        for (const char *name : {"KIND", "WIDTH", "NOTE"})
            roads.attributeTypes[name] = "char(10)";
        roads.formatAttributes = {"shp_type"};
        auto dialog = open(roads);
        CAttrGrid *grid = dialog->attributesPage()->grid();
        grid->DeleteRows(1, 1);
        grid->StoreUserText(CAttrGrid::kNameColumn, grid->GetRowCount() - 1, QStringLiteral("NEW"), ug::TextEdited);
        CFormatAttrGrid *formatGrid = dialog->formatAttributesPage()->grid();
        QCOMPARE(formatGrid->GetCellString(0, 1), QStringLiteral("items{}.x"));
        formatGrid->SetCellText(0, 0, QStringLiteral("1"));
        formatGrid->SetCellText(2, 0, QStringLiteral("2"));
        formatGrid->SetCellText(0, 1, QStringLiteral("0"));

        std::map<QString, Offer> offers;
        answerNextDialog([&](QDialog *form) {
            const std::map<QString, QStringList> wanted{{"FEAT_TYPES", {"rivers"}},
                                                        {"ATTRIBUTES", {"NEW"}},
                                                        {"DELETE_ATTRIBUTES", {"WIDTH"}},
                                                        {"FORMAT_ATTRIBUTES", {"items{}.x"}},
                                                        {"DELETE_FORMAT_ATTRIBUTES", {"shp_type"}}};
            for (const auto &[key, names] : wanted) {
                auto *prompt = form->findChild<QWidget *>(QStringLiteral("prompt_") + key);
                if (auto *list = prompt ? prompt->findChild<QListWidget *>() : nullptr)
                    offers[key] = recheck(list, names);
            }
            return true;
        });
        dialog->ApplyToOthers();
        QCOMPARE(offers["ATTRIBUTES"].items, (QStringList{"KIND", "NOTE", "NEW"}));
        QCOMPARE(offers["DELETE_ATTRIBUTES"].items, QStringList{"WIDTH"});
        QCOMPARE(offers["FORMAT_ATTRIBUTES"].items, QStringList{"items{}.x"});
        QCOMPARE(offers["DELETE_FORMAT_ATTRIBUTES"].items, QStringList{"shp_type"});

        answerNextDialog([](QDialog *) { return true; });
        dialog->OnOK();
        const auto attributeCalls = [this](const std::string &label) {
            StringList calls;
            for (const std::string &line : m_log) {
                if (line.starts_with(label + ": ")
                    && (line.find("Attribute") != std::string::npos || line.find("notifyApplied") != std::string::npos))
                    calls.push_back(line);
            }
            return calls;
        };
        // A list attribute is exposed by its elements, never by its "{}"
        // name; an attribute reaches another feature type as a user
        // attribute, with its generic type.
        QCOMPARE(joined(attributeCalls("roads")),
                 joined({"roads: setAttributes", "roads: expandListAttribute(items{}.x)",
                         "roads: removeAttribute(shp_type)"}));
        QCOMPARE(joined(attributeCalls("rivers")),
                 joined({"rivers: removeAttribute(WIDTH)", "rivers: storeUserAttribute(NEW char(10) vyr_char(10))",
                         "rivers: expandListAttribute(items{}.x)", "rivers: removeAttribute(shp_type)",
                         "rivers: notifyApplied"}));
    }

    void shouldRefuseWithTheMessageOfTheFirstProblem_data()
    {
        // The controls a row upsets: a box is clicked, a list left without a
        // choice, a text emptied.
        QTest::addColumn<QString>("format");
        QTest::addColumn<QList<unsigned>>("upset");
        QTest::addColumn<unsigned>("message");
        using Ids = QList<unsigned>;
        const Ids dynamic{Dest::kIdDynamic, Dest::kIdSchemaSources};
        QTest::newRow("empty name") << "SHP" << Ids{General::kIdName} << res::NameRequired;
        QTest::newRow("source empty name") << "CSV" << Ids{General::kIdName} << res::NameRequired;
        QTest::newRow("merge without filter") << "CSV" << Ids{Source::kIdMerge, Source::kIdMergeFilter}
                                              << res::MergeFilterRequired;
        QTest::newRow("merge without kind") << "CSV" << Ids{Source::kIdMerge, Source::kIdMergeKind}
                                            << res::MergeKindRequired;
        QTest::newRow("no dataset") << "SHP" << Ids{General::kIdDataset} << res::DatasetRequired;
        QTest::newRow("no geometry") << "SHP" << Ids{General::kIdGeometry} << res::GeometryRequired;
        QTest::newRow("fan-out without attribute") << "SHP" << Ids{Dest::kIdFanout} << res::FanoutAttributeRequired;
        QTest::newRow("dynamic without sources") << "SHP" << dynamic << res::SchemaSourceRequired;
        QTest::newRow("dynamic without readers") << "SHP" << dynamic << res::NoSchemaSourceFormats;
    }
    void shouldRefuseWithTheMessageOfTheFirstProblem()
    {
        QFETCH(QString, format);
        QFETCH(QList<unsigned>, upset);
        QFETCH(unsigned, message);
        RecordingSchema &schema = record("roads", qPrintable(format), format == "CSV" ? "csv_point" : "shp_arc");
        schema.userAttributes = {"KIND"};
        schema.mergeFilter = "road*";
        const bool readers = message != res::NoSchemaSourceFormats;
        auto dialog = open(schema, readers ? FormatRecordList{m_readerA.get()} : FormatRecordList{});
        General *page = dialog->generalPage();
        for (const unsigned id : upset) {
            if (auto *box = qobject_cast<QCheckBox *>(page->GetDlgItem(id)))
                box->click();
            else if (auto *list = qobject_cast<QComboBox *>(page->GetDlgItem(id)))
                list->setCurrentIndex(-1);
            else
                item<QLineEdit>(page, id)->clear();
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

    void shouldSplitAndApplyTheDatabaseUser()
    {
        RecordingSchema &roads = addOther("old.roads", "PG");
        RecordingSchema &bridges = addOther("bridges", "PG");
        RecordingSchema &schema = record("owner.parcels", "PG");
        auto dialog = open(schema);
        General *page = dialog->generalPage();
        auto *name = item<QLineEdit>(page, General::kIdName);
        auto *user = item<QLineEdit>(page, General::kIdDatabaseUser);
        QCOMPARE(name->text() + '|' + user->text(), QStringLiteral("parcels|owner"));
        // Applied to others, the user replaces only their owner.
        user->setText(QStringLiteral("survey"));
        page->WriteToSchema(roads, general::DatabaseUser);
        page->WriteToSchema(bridges, general::DatabaseUser);
        QCOMPARE(roads.name, std::string("survey.roads"));
        QCOMPARE(bridges.name, std::string("survey.bridges"));
        user->clear();
        page->WriteToSchema(roads, general::DatabaseUser);
        QCOMPARE(roads.name, std::string("roads"));
        user->setText(QStringLiteral("survey"));
        dialog->OnOK();
        QCOMPARE(schema.name, std::string("survey.parcels"));
    }

    void shouldEnableFanoutAndDynamicSchemaControlsAndFollowTheDataset()
    {
        RecordingSchema &schema = record("roads", "SHP", "shp_arc");
        schema.userAttributes = {"KIND", "NAME"};
        auto dialog = open(schema, {m_readerA.get(), m_readerB.get()});
        auto *page = static_cast<Dest *>(dialog->generalPage());
        auto *fanout = item<QCheckBox>(page, Dest::kIdFanout);
        auto *attribute = item<QComboBox>(page, Dest::kIdFanoutAttribute);
        auto *dynamic = item<QCheckBox>(page, Dest::kIdDynamic);
        auto *sources = item<QLineEdit>(page, Dest::kIdSchemaSources);
        auto *geometry = item<QComboBox>(page, General::kIdGeometry);
        // One text of the enabled ones, so that a failure shows every state.
        const auto enabled = [page] {
            QStringList names;
            for (const auto &[name, id] : {std::pair{"name", General::kIdName}, {"geometry", General::kIdGeometry},
                                           {"fanout", Dest::kIdFanout}, {"attribute", Dest::kIdFanoutAttribute},
                                           {"dynamic", Dest::kIdDynamic}, {"sources", Dest::kIdSchemaSources}})
                if (page->GetDlgItem(id)->isEnabled())
                    names.append(QLatin1String(name));
            return names.join(' ');
        };
        QCOMPARE(enabled(), QStringLiteral("name geometry fanout dynamic"));
        QCOMPARE(textsOf(geometry), (QStringList{"shp_arc", "shp_point"}));
        QCOMPARE(attribute->currentIndex(), -1);
        fanout->click();
        QCOMPARE(enabled(), QStringLiteral("geometry fanout attribute dynamic"));
        fanout->click();
        QCOMPARE(enabled(), QStringLiteral("name geometry fanout dynamic"));

        dynamic->click();
        QCOMPARE(enabled(), QStringLiteral("dynamic sources"));
        // Every reader at once, the last one entered first.
        QCOMPARE(sources->text(), QStringLiteral("READER_B; READER_A"));
        QCOMPARE(page->schemaSources(), (StringList{"READER_B", "READER_A"}));
        dynamic->click();
        QVERIFY(sources->text().isEmpty());
        QCOMPARE(enabled(), QStringLiteral("name geometry fanout dynamic"));

        // A format without fan-out disables it; the geometry is carried over.
        QCOMPARE(geometry->currentText(), QStringLiteral("shp_arc"));
        chooseDataset(page, QStringLiteral("GPKG"));
        QCOMPARE(dialog->currentFormat(), m_gpkg.get());
        QCOMPARE(enabled(), QStringLiteral("name geometry dynamic"));
        QCOMPARE(textsOf(geometry), (QStringList{"gpkg_linestring", "gpkg_point"}));
        QCOMPARE(geometry->currentText(), QStringLiteral("gpkg_linestring"));
        QCOMPARE(dialog->tabControl()->count(), 3);
    }

    // The fan-out list opens holding the schema's choice alone; wanted, it
    // holds every attribute with the choice as the page shows it.
    void shouldListEveryAttributeForFanoutWhenWanted_data()
    {
        QTest::addColumn<QString>("chosen");
        QTest::addColumn<QString>("renamedTo");
        QTest::addColumn<QString>("shown");
        QTest::newRow("an attribute") << "NAME" << QString() << "NAME";
        QTest::newRow("renamed before the list was wanted") << "NAME" << "STREET" << "STREET";
        QTest::newRow("not an attribute") << "GONE" << QString() << QString();
    }
    void shouldListEveryAttributeForFanoutWhenWanted()
    {
        QFETCH(QString, chosen);
        QFETCH(QString, renamedTo);
        QFETCH(QString, shown);
        RecordingSchema &schema = record("roads", "SHP", "shp_arc");
        schema.userAttributes = {"KIND", "NAME"};
        schema.fanout = true;
        schema.fanoutAttribute = chosen.toStdString();
        auto dialog = open(schema);
        auto *attribute = item<QComboBox>(dialog->generalPage(), Dest::kIdFanoutAttribute);
        QCOMPARE(attribute->currentText(), chosen == "GONE" ? QString() : chosen);
        if (!renamedTo.isEmpty())
            dialog->AttributeRenamed(chosen.toStdString(), renamedTo.toStdString());
        // A key that moves nothing: the list is wanted all the same.
        QTest::keyClick(attribute, Qt::Key_Shift);
        QCOMPARE(attribute->count(), 2);
        QCOMPARE(attribute->currentText(), shown);
    }

    void shouldShowSeveralGeometriesAsOneAndNeverWriteThem()
    {
        RecordingSchema &schema = record("roads", "PG", "line point");
        auto dialog = open(schema);
        auto *geometry = item<QComboBox>(dialog->generalPage(), General::kIdGeometry);
        QCOMPARE(textsOf(geometry), QStringList{loadResourceString(res::MultipleGeometries)});
        QCOMPARE(geometry->currentIndex(), 0);
        QVERIFY(!geometry->isEnabled());
        dialog->OnOK();
        QCOMPARE(schema.geometry, std::string("line point"));
        QVERIFY(std::none_of(m_log.begin(), m_log.end(), [](auto &l) { return l.find("setGeometry") != l.npos; }));
    }

    // A feature type without a geometry shows the format's first one from
    // the start, in sight before OK, and OK writes what is shown.
    void shouldOfferTheFirstGeometryToAFeatureTypeWithoutOne()
    {
        RecordingSchema &schema = record("roads", "SHP", "");
        auto dialog = open(schema);
        auto *geometry = item<QComboBox>(dialog->generalPage(), General::kIdGeometry);
        QCOMPARE(textsOf(geometry), (QStringList{"shp_arc", "shp_point"}));
        QCOMPARE(geometry->currentText(), QStringLiteral("shp_arc"));
        QVERIFY(geometry->isEnabled());
        dialog->OnOK();
        QCOMPARE(schema.geometry, std::string("shp_arc"));
    }

    void shouldTakeSchemaSourcesAndDynamicSettingsOnlyWhenAccepted()
    {
        RecordingSchema &schema = record("roads", "SHP", "shp_arc");
        schema.dynamic = true;
        schema.schemaSources = {"READER_A"};
        auto dialog = open(schema, {m_readerA.get(), m_readerB.get()});
        auto *dest = static_cast<Dest *>(dialog->generalPage());
        auto *sources = item<QLineEdit>(dest, Dest::kIdSchemaSources);
        auto *summary = item<QLineEdit>(dest, Dest::kIdDynamicSummary);
        QCOMPARE(sources->text(), QStringLiteral("READER_A"));
        QCOMPARE(summary->text(), loadResourceString(res::DynamicSettingsDefault));

        Offer offer;
        answerNextDialog([&](QDialog *selection) {
            offer = recheck(selection->findChild<QListWidget *>(), {"READER_B"});
            return true;
        });
        m_log.clear();
        dest->ChooseSchemaSources();
        QCOMPARE(offer.items, (QStringList{"READER_B", "READER_A"}));
        QCOMPARE(offer.checked, QStringList{"READER_A"});
        QCOMPARE(offer.withIcon, (QList<bool>{true, true}));
        // Handed to the schema at once, not only on OK.
        QCOMPARE(joined(m_log), QStringLiteral("roads: setSchemaSources(READER_B)"));
        answerNextDialog([](QDialog *selection) {
            recheck(selection->findChild<QListWidget *>(), {"READER_A"});
            return false;
        });
        dest->ChooseSchemaSources();
        QCOMPARE(dest->schemaSources(), StringList{"READER_B"});
        QCOMPARE(sources->text(), QStringLiteral("READER_B"));

        QString offeredName;
        for (const bool accept : {false, true}) {
            answerNextDialog([&](QDialog *settings) {
                offeredName = settings->findChild<QLineEdit *>(QStringLiteral("fixedName"))->text();
                settings->findChild<QRadioButton *>(QStringLiteral("geometries_1"))->click();
                return accept;
            });
            dest->EditDynamicSettings();
            QCOMPARE(dest->dynamicSettings().isDefault(), !accept);
        }
        QCOMPARE(offeredName, QStringLiteral("roads"));
        QCOMPARE(dest->dynamicSettings().getOption2(), 1);
        QCOMPARE(summary->text(), loadResourceString(res::DynamicSettingsCustom));
        dialog->OnOK();
        QCOMPARE(schema.dynamicSettings.getOption2(), 1);
    }

    void shouldLetAReaderBeRenamedOnlyWhenTheSettingSaysSo()
    {
        test::ScratchDirectory home;
        test::ScopedEnvironment env;
        env.set("XDG_CONFIG_HOME", home.path());
        RecordingSchema &schema = record("stations", "CSV");
        // Read again for every dialog: a changed setting counts at once.
        for (const auto &[setting, readOnly] : {std::pair{"", true}, {"Yes", false}, {"1", true}}) {
            if (*setting)
                home.write("Quenbry Inc./VYR Loomhouse.conf",
                           std::string("[Settings]\nAllow Source Feature Type Editing=") + setting + "\n");
            auto dialog = open(schema);
            QCOMPARE(item<QLineEdit>(dialog->generalPage(), General::kIdName)->isReadOnly(), readOnly);
        }
    }

    void shouldStayHarmlessForASchemaOfAnUnknownFormat()
    {
        auto dialog = open(record("roads", "NOWHERE"));
        QVERIFY(!dialog->generalPage());
        dialog->ApplyToOthers();
        dialog->OnOK();
        QCOMPARE(joined(m_log), QStringLiteral("roads: beginUpdate\nroads: endUpdate"));
    }

    // Chosen schema sources reach the schema record at once; Cancel puts
    // back what the dialog found, and only when something was chosen.
    void shouldTakeChosenSchemaSourcesBackOnCancel()
    {
        addOther("rivers", "SHP");
        for (const bool choose : {true, false}) {
            RecordingSchema &schema = record("roads", "SHP", "shp_arc");
            schema.dynamic = true;
            schema.schemaSources = {"READER_A"};
            auto dialog = open(schema, {m_readerA.get(), m_readerB.get()});
            auto *dest = static_cast<Dest *>(dialog->generalPage());
            if (choose) {
                answerNextDialog([&](QDialog *selection) {
                    recheck(selection->findChild<QListWidget *>(), {"READER_B"});
                    return true;
                });
                dest->ChooseSchemaSources();
                QCOMPARE(schema.schemaSources, StringList{"READER_B"});
            }
            // A review meanwhile lists the choice against what the record
            // held at open, and writes into its copies only (a copy's log
            // says "copy of").
            m_log.clear();
            const std::optional<std::vector<ReviewChange>> reviewed = dialog->ReviewedChanges();
            QVERIFY(reviewed);
            QCOMPARE(std::count_if(reviewed->begin(), reviewed->end(),
                                   [](const ReviewChange &change) { return change.key == "schema_sources"; }),
                     choose ? 1 : 0);
            for (const std::string &entry : m_log)
                QVERIFY2(entry.starts_with("copy of roads: "), entry.c_str());
            m_log.clear();
            QTest::keyClick(dialog.get(), Qt::Key_Escape);
            QCOMPARE(schema.schemaSources, StringList{"READER_A"});
            QCOMPARE(joined(m_log), choose ? QStringLiteral("roads: setSchemaSources(READER_A)") : QString());
        }
    }

    // Apply to Others with nothing to apply to says why instead of doing
    // nothing.
    void shouldOfferApplyToOthersOnlyWithOtherFeatureTypes()
    {
        auto alone = open(record("roads", "SHP"));
        QWidget *apply = alone->GetDlgItem(CFeatTypePropsDlg::kIdApplyToOthers);
        QVERIFY(!apply->isEnabled());
        QCOMPARE(apply->toolTip(), loadResourceString(res::ApplyNoOthers));
        addOther("rivers", "SHP");
        QVERIFY(open(record("roads", "SHP"))->GetDlgItem(CFeatTypePropsDlg::kIdApplyToOthers)->isEnabled());
    }

    // The keyboard starts on the first field and goes through the page
    // before the frame's buttons, the tabs last; turning the page with
    // Control+Tab takes it to the new page's first field.
    void shouldStartOnTheFirstFieldAndTabThroughThePageFirst_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<QStringList>("chain");
        const QStringList frame{"helpButton", "reviewButton", "applyButton", "okButton", "cancelButton", "tabControl"};
        QTest::newRow("writer") << "SHP"
                                << QStringList{"nameEdit",    "datasetCombo", "geometryCombo",
                                               "fanoutCheck", "dynamicCheck", "formatHelpButton"} + frame;
        // A source's geometry is the data's, shown but not chosen.
        QTest::newRow("reader") << "CSV" << QStringList{"nameEdit", "mergeCheck", "formatHelpButton"} + frame;
    }
    void shouldStartOnTheFirstFieldAndTabThroughThePageFirst()
    {
        QFETCH(QString, format);
        QFETCH(QStringList, chain);
        // Apply to Others takes the keyboard only when there is another
        // feature type to apply to.
        addOther("rivers", qPrintable(format));
        auto dialog = open(record("roads", qPrintable(format)));
        QVERIFY(test::showActive(*dialog));
        QWidget *name = dialog->generalPage()->GetDlgItem(General::kIdName);
        QVERIFY(QTest::qWaitFor([name] { return QApplication::focusWidget() == name; }));
        QStringList walked{QApplication::focusWidget()->objectName()};
        for (int step = 0; step < 30; ++step) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            if (QApplication::focusWidget() == name)
                break;
            walked.append(QApplication::focusWidget()->objectName());
        }
        // Joined, so that a failure shows the whole walk.
        QCOMPARE(walked.join(u' '), chain.join(u' '));

        // From the tabs, where the chain ends, to the next page and back,
        // and on from a field: each turn moves the focus once, straight to
        // the page's first field (a screen reader tells every stop).
        QTest::keyClick(name, Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(QApplication::focusWidget(), static_cast<QWidget *>(dialog->tabControl()));
        QList<QWidget *> stops;
        const QMetaObject::Connection watch = connect(qApp, &QApplication::focusChanged, dialog.get(),
                                                      [&stops](QWidget *, QWidget *now) { stops << now; });
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(dialog->currentPage(), static_cast<QWidget *>(dialog->attributesPage()));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageUp, Qt::ControlModifier);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
        disconnect(watch);
        QWidget *grid = dialog->attributesPage()->grid();
        QCOMPARE(stops, (QList<QWidget *>{grid, name, grid}));
    }

    // A listener hears the pages by their tabs' names, which one is shown,
    // each field by its label (with the key that reaches it) and a grid's
    // usage with the grid; nothing of a page not shown claims to be seen.
    void shouldNameItsPagesTabsAndFieldsToAssistiveTechnology()
    {
        auto dialog = open(record("roads", "SHP"));
        QVERIFY(test::showActive(*dialog));
        QAccessibleInterface *tabs = QAccessible::queryAccessibleInterface(dialog->tabControl());
        QCOMPARE(tabs->role(), QAccessible::PageTabList);
        QCOMPARE(tabs->childCount(), dialog->tabControl()->count());
        QCOMPARE(tabs->child(0)->role(), QAccessible::PageTab);
        QCOMPARE(tabs->child(0)->text(QAccessible::Name), loadResourceString(res::GeneralTabTitle).remove(u'&'));
        QVERIFY(tabs->child(0)->state().selected && !tabs->child(1)->state().selected);

        QAccessibleInterface *general = QAccessible::queryAccessibleInterface(dialog->generalPage());
        QCOMPARE(general->role(), QAccessible::Pane);
        QCOMPARE(general->text(QAccessible::Name), tabs->child(0)->text(QAccessible::Name));
        QAccessibleInterface *grid = QAccessible::queryAccessibleInterface(dialog->attributesPage()->grid());
        QVERIFY(grid->tableInterface()->cellAt(0, 0)->state().invisible);
        QVERIFY(!grid->text(QAccessible::Description).isEmpty());

        const auto labelOf = [&dialog](QWidget *field) {
            const QList<QLabel *> labels = dialog->findChildren<QLabel *>();
            const auto found
                = std::find_if(labels.begin(), labels.end(), [field](QLabel *label) { return label->buddy() == field; });
            return found == labels.end() ? nullptr : *found;
        };
        auto *dataset = dialog->findChild<QComboBox *>("datasetCombo");
        QAccessibleInterface *combo = QAccessible::queryAccessibleInterface(dataset);
        QVERIFY(labelOf(dataset));
        QCOMPARE(combo->text(QAccessible::Name), labelOf(dataset)->text().remove(u'&'));
        QCOMPARE(combo->text(QAccessible::Value), dataset->currentText());
        QCOMPARE(combo->actionInterface()->keyBindingsForAction(QAccessibleActionInterface::showMenuAction()),
                 QStringList{QKeySequence::mnemonic(labelOf(dataset)->text()).toString(QKeySequence::NativeText)});
        auto *sources = dialog->findChild<QLineEdit *>("sourcesEdit");
        QCOMPARE(QAccessible::queryAccessibleInterface(sources)->text(QAccessible::Name),
                 labelOf(sources)->text().remove(u'&'));

        dialog->tabControl()->setCurrentIndex(1);
        QVERIFY(!tabs->child(0)->state().selected && tabs->child(1)->state().selected);
        QVERIFY(!grid->tableInterface()->cellAt(0, 0)->state().invisible);
    }

    void shouldNotShrinkBelowItsFirstSize()
    {
        auto dialog = open(record("roads", "SHP"));
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
