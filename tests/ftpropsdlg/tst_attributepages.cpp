// The user attributes and format attributes pages inside the feature type
// properties dialog, on engine features and the bundled example formats:
// what the model-based test of the dialog does not reach - the pages' own
// calls, schemas holding what the examples do not, messages and cell tips,
// and a table built by the keyboard alone.
#include "support/gridwindow.h"
#include "support/modalanswers.h"

#include "attrtypesdlg/cdomaindlg.h"
#include "ftprops/vyrobjftpropsformatinfo.h"
#include "ftprops/vyrobjworkspaceschemainfo.h"
#include "ftpropsdlg/cattrgrid.h"
#include "ftpropsdlg/cfeattypepropsattrs.h"
#include "ftpropsdlg/cfeattypepropsdlg.h"
#include "ftpropsdlg/cfeattypepropsexposableattrs.h"
#include "ftpropsdlg/cfeattypepropsgeneral.h"
#include "ftpropsdlg/cfeattypepropsgeneraldest.h"
#include "ftpropsdlg/cfeattypepropsparms.h"
#include "ftpropsdlg/cformatattrgrid.h"
#include "grid/cugstandardtypes.h"
#include "stringobjects/vyrrwstringimp.h"
#include "uikit/application.h"
#include "uikit/resourcelibrary.h"
#include "util/capabilityfile.h"

#include "vyr/IVYRFeature.h"
#include "vyr/vyr_featurefile.h"
#include "vyr/vyr_session.h"

#include <algorithm>

#include <QAbstractButton>
#include <QComboBox>
#include <QTabBar>
#include <QtTest>

#include <functional>
#include <map>
#include <memory>

using namespace vyr;
using vyr::test::answerNextMessageBox;
using vyr::test::ShownMessage;

namespace {

std::string examplePath(const std::string &relative)
{
    return std::string(VYR_TEST_EXAMPLES_DIR) + "/" + relative;
}

std::string attributeOf(const IVYRFeature &feature, const char *name)
{
    VYRRWStringImp value;
    return feature.getAttribute(name, value) ? std::string(value.c_str()) : std::string("(absent)");
}

// An engine feature that counts how often its list of all names is read.
class NameReadCounter final : public IVYRFeature
{
public:
    explicit NameReadCounter(IVYRFeature &feature)
        : m_feature(feature)
    {
    }
    int allNameReads = 0;

    bool getAttribute(const char *name, IVYRString &value) const override { return m_feature.getAttribute(name, value); }
    void setAttribute(const char *name, const char *value) override { m_feature.setAttribute(name, value); }
    void setOrderedAttribute(const char *name, const char *value) override { m_feature.setOrderedAttribute(name, value); }
    void removeAttribute(const char *name) override { m_feature.removeAttribute(name); }
    void getAllAttributeNames(IVYRStringArray &names) const override
    {
        ++const_cast<NameReadCounter *>(this)->allNameReads;
        m_feature.getAllAttributeNames(names);
    }
    void getOrderedAttributeNames(IVYRStringArray &names) const override { m_feature.getOrderedAttributeNames(names); }
    void getListAttribute(const char *name, IVYRStringArray &elements) const override
    {
        m_feature.getListAttribute(name, elements);
    }
    void setListAttribute(const char *name, const IVYRStringArray &elements) override
    {
        m_feature.setListAttribute(name, elements);
    }
    void removeListAttribute(const char *name) override { m_feature.removeListAttribute(name); }
    const char *getFeatureType() const override { return m_feature.getFeatureType(); }
    void setFeatureType(const char *name) override { m_feature.setFeatureType(name); }
    bool performFunction(const char *function, IVYRString &result) override
    {
        return m_feature.performFunction(function, result);
    }

private:
    IVYRFeature &m_feature;
};

QStringList rowOf(CVVyrGrid *grid, long row)
{
    QStringList texts;
    grid->GetRowTexts(row, texts);
    return texts;
}

} // namespace

class AttributePagesTest : public QObject
{
    Q_OBJECT

private:
    IVYRSession *m_session = nullptr;
    std::map<std::string, std::unique_ptr<VYRObjFTPropsFormatInfo>> m_formats;
    IVYRFeature *m_feature = nullptr;
    std::unique_ptr<VYRObjWorkspaceSchemaInfo> m_schema;
    std::unique_ptr<CFeatTypePropsDlg> m_dialog;

    // Opens the dialog on a copy of an example schema in the named format;
    // the workspace's formats are the dataset choices.
    void open(const char *schemaFile, const char *format,
              const std::function<void(IVYRFeature &)> &prepare = {})
    {
        m_dialog.reset();
        m_schema.reset();
        if (m_feature)
            m_session->destroyFeature(m_feature);
        m_feature = m_session->createFeature();
        QVERIFY(VYR_FeatureLoadJson(m_feature, examplePath(std::string("schemas/") + schemaFile).c_str(), nullptr));
        if (prepare)
            prepare(*m_feature);
        const auto lookup = [this](const std::string &id) -> const FTPropsFormatInfo * {
            const auto found = m_formats.find(id);
            return found == m_formats.end() ? nullptr : found->second.get();
        };
        m_schema = std::make_unique<VYRObjWorkspaceSchemaInfo>(*m_session, *m_feature, *m_formats.at(format), lookup);
        FormatRecordList formats{m_formats.at(format).get()};
        for (const auto &[name, record] : m_formats) {
            if (name != format)
                formats.push_back(record.get());
        }
        m_dialog = std::make_unique<CFeatTypePropsDlg>(m_session, m_schema.get(), SchemaRecordList(), formats,
                                                       FormatRecordList(), nullptr);
        QVERIFY(m_dialog->Create());
    }
    CAttrGrid *attributes() const { return m_dialog->attributesPage()->grid(); }
    CFormatAttrGrid *formatAttributes() const { return m_dialog->formatAttributesPage()->grid(); }
    bool pressOK()
    {
        m_dialog->OnOK();
        return !m_dialog->isVisible() && m_dialog->result() == kEndOk;
    }

private slots:
    void initTestCase()
    {
        QVERIFY(ensureApplication());
        QVERIFY(loadResourceLibrary());
        m_session = VYR_SessionCreate();
        for (const char *name : {"shapefile", "postgres", "gpx", "csv", "geopackage"}) {
            const auto capabilities = readCapabilityFile(examplePath(std::string("formats/") + name + ".fmt"));
            QVERIFY(capabilities);
            const std::string id = VYRObjFTPropsFormatInfo(*capabilities, nullptr).getFormatName();
            m_formats[id] = std::make_unique<VYRObjFTPropsFormatInfo>(*capabilities, m_session, id);
        }
        // The shapefile writer under the two case rules that put something
        // in front of a name.
        const auto shapefile = readCapabilityFile(examplePath("formats/shapefile.fmt"));
        for (const char *rule : {"UPPERFIRSTALPHA", "ANYFIRSTNONNUMERIC"}) {
            const std::string capabilities = *shapefile + ",FORMAT," + rule + ",ATTR_CASE," + rule;
            m_formats[rule] = std::make_unique<VYRObjFTPropsFormatInfo>(capabilities, m_session, rule);
        }
        // The GeoPackage writer, whose types take domains, with format
        // attributes of its own.
        const auto geopackage = readCapabilityFile(examplePath("formats/geopackage.fmt"));
        m_formats["GPKG_ATTRS"] = std::make_unique<VYRObjFTPropsFormatInfo>(
            *geopackage + ",FORMAT,GPKG_ATTRS,FORMAT_ATTRS,\"gpkg_fid,integer,gpkg_layer,text(64)\"", m_session,
            "GPKG_ATTRS");
    }
    void cleanupTestCase()
    {
        m_dialog.reset();
        m_schema.reset();
        m_session->destroyFeature(m_feature);
        VYR_SessionDestroy(m_session);
    }

    // The tabs a format's capabilities call for; the cells a row's type
    // does not take are disabled; the names a fan-out can choose include
    // the exposed format attributes.
    void shouldShowTheTabsAndCellsTheFormatCallsFor()
    {
        open("shapefile-roads.json", "SHAPEFILE");
        QTabBar *tabs = m_dialog->tabControl();
        QCOMPARE(tabs->count(), 4);
        QCOMPARE(tabs->tabText(1), loadResourceString(res::AttributesTabTitle));
        QCOMPARE(tabs->tabText(2), loadResourceString(res::FormatAttributesTabTitle));
        QCOMPARE(tabs->tabText(3), loadResourceString(res::ParametersTabTitle));
        CAttrGrid *grid = attributes();
        QVERIFY2(!grid->IsCellEnabled(grid->argumentColumn(0), 2), "a date takes no width");
        QVERIFY2(!grid->IsCellEnabled(grid->argumentColumn(1), 0), "a char takes no decimals");
        QCOMPARE(m_dialog->PageAttributeNames(),
                 (StringList{"ROAD_NAME", "LANES", "OPENED", "TOLL", "shapefile_type"}));

        // GPX has no user attributes page, but parameters.
        open("gpx-tracks.json", "GPX");
        QCOMPARE(m_dialog->tabControl()->count(), 3);
        QCOMPARE(m_dialog->tabControl()->tabText(2), loadResourceString(res::ParametersTabTitle));
    }

    // New rows: the first gets the format's char(30), the next copies the
    // row above; typed names follow the format's rules at once.
    void shouldGiveNewRowsATypeAndLegalNames()
    {
        open("shapefile-roads.json", "SHAPEFILE");
        CAttrGrid *grid = attributes();
        grid->DeleteRows(0, 4);
        QCOMPARE(grid->GetRowCount(), 1L);
        QVERIFY(grid->AppendBlankRow() == 0);
        QCOMPARE(rowOf(grid, 0).mid(1, 2), (QStringList{"char", "30"}));
        grid->StoreUserText(CAttrGrid::kNameColumn, 0, QStringLiteral("road name"), ug::TextEdited);
        QCOMPARE(grid->GetCellString(0, 0), QStringLiteral("ROAD_NAME"));
        grid->StoreUserText(grid->typeColumn(), 0, QStringLiteral("number"), ug::TextChosen);
        grid->StoreUserText(grid->argumentColumn(0), 0, QStringLiteral("5"), ug::TextEdited);
        grid->StoreUserText(grid->argumentColumn(1), 0, QStringLiteral("0"), ug::TextEdited);
        QCOMPARE(grid->AppendBlankRow(), 1L);
        QCOMPARE(rowOf(grid, 1).mid(1, 3), (QStringList{"number", "5", "0"}));
        // Taken by the row above, too long for the format, or the format's own.
        const struct
        {
            const char *typed, *legal;
        } names[] = {{"road_name", "ROAD_NAM00"}, {"averyverylongname", "AVERYVERYL"},
                     {"shapefile_type", "SHAPEFILE_"}};
        for (const auto &name : names) {
            grid->StoreUserText(CAttrGrid::kNameColumn, 1, QString::fromLatin1(name.typed), ug::TextEdited);
            QCOMPARE(grid->GetCellString(1, 0), QString::fromLatin1(name.legal));
        }
        // The cell says why, to the eye and to a screen reader (each rule's
        // words: shouldSayWhichRulesChangedATypedName).
        QVERIFY(grid->OnCellDescription(CAttrGrid::kNameColumn, 1).contains(QLatin1String("shapefile_type")));
        QVERIFY(pressOK());
        QCOMPARE(m_schema->getAttributeNames(true, false), (StringList{"ROAD_NAME", "SHAPEFILE_"}));
        QCOMPARE(QString::fromStdString(m_schema->getAttributeType("ROAD_NAME")), QStringLiteral("number(5,0)"));
        QCOMPARE(QString::fromStdString(attributeOf(*m_feature, "ROAD_NAME")), QStringLiteral("vyr_decimal(5,0)"));
    }

    // The tip of a changed name gives each rule that changed it, and
    // nothing once a name is typed as it stands.
    void shouldSayWhichRulesChangedATypedName_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("legal");
        QTest::addColumn<QStringList>("reasons");
        const QString characters = loadResourceString(res::NameChangedCharacters);
        const QString letters = loadResourceString(res::NameChangedCase);
        const QString taken = loadResourceString(res::NameChangedNumber);
        const QString reserved = loadResourceString(res::NameChangedReserved);
        QTest::newRow("reserved in another case")
            << "SHAPEFILE" << "shape" << "SHAPE00" << QStringList{letters, reserved};
        QTest::newRow("another row's") << "SHAPEFILE" << "LANES" << "LANES00" << QStringList{taken};
        QTest::newRow("a letter in front, in upper case")
            << "UPPERFIRSTALPHA" << "2nd" << "Q_2ND"
            << QStringList{formatResourceString(res::NameChangedPrefix, {QStringLiteral("Q_")}), letters};
        QTest::newRow("a letter in front only")
            << "ANYFIRSTNONNUMERIC" << "2ND" << "_2ND"
            << QStringList{formatResourceString(res::NameChangedPrefix, {QStringLiteral("_")})};
        QTest::newRow("characters and letters") << "SHAPEFILE" << "a-b" << "A_B" << QStringList{characters, letters};
        QTest::newRow("letters and length")
            << "SHAPEFILE" << "averyverylongname" << "AVERYVERYL"
            << QStringList{letters, formatResourceString(res::NameChangedLength, {QStringLiteral("10")})};
    }
    void shouldSayWhichRulesChangedATypedName()
    {
        QFETCH(QString, format);
        QFETCH(QString, typed);
        QFETCH(QString, legal);
        QFETCH(QStringList, reasons);
        open("shapefile-roads.json", format.toLatin1().constData());
        CAttrGrid *grid = attributes();
        grid->StoreUserText(CAttrGrid::kNameColumn, 0, typed, ug::TextEdited);
        QCOMPARE(grid->GetCellString(0, CAttrGrid::kNameColumn), legal);
        QCOMPARE(grid->OnCellDescription(CAttrGrid::kNameColumn, 0),
                 formatResourceString(res::NameChangedBy, {typed, reasons.join(QStringLiteral("; "))}));
        // The row gives the name up; another row typed exactly so is not
        // told the first one's story.
        grid->StoreUserText(CAttrGrid::kNameColumn, 0, QStringLiteral("OTHER"), ug::TextEdited);
        grid->StoreUserText(CAttrGrid::kNameColumn, 2, legal, ug::TextEdited);
        QCOMPARE(grid->GetCellString(2, CAttrGrid::kNameColumn), legal);
        QCOMPARE(grid->OnCellDescription(CAttrGrid::kNameColumn, 2), QString());
    }

    // Only what a person gives a name cell is made legal: the schema's own
    // names, which the format would change, stay as they are through a
    // sort, a move, an undo and a redo, and OK writes them back unchanged.
    void shouldKeepTheNamesASortAMoveOrAnUndoPutsBack()
    {
        open("postgres-roads.json", "POSTGRES", [](IVYRFeature &feature) {
            feature.setOrderedAttribute("user", "vyr_int32");
            feature.setOrderedAttribute("Mixed Case", "vyr_int32");
        });
        CAttrGrid *grid = attributes();
        const StringList loaded = grid->GetAttributeNames();
        QVERIFY(std::find(loaded.begin(), loaded.end(), "Mixed Case") != loaded.end());
        grid->SortByColumn(CAttrGrid::kNameColumn);
        grid->GotoCell(CAttrGrid::kNameColumn, 0);
        grid->MoveSelectedRowsDown();
        grid->Undo();
        grid->Undo();
        grid->Redo();
        StringList sorted = loaded;
        std::sort(sorted.begin(), sorted.end(), [](const std::string &a, const std::string &b) {
            return QString::fromStdString(a).compare(QString::fromStdString(b), Qt::CaseInsensitive) < 0;
        });
        QCOMPARE(grid->GetAttributeNames(), sorted);
        QCOMPARE(grid->OnCellDescription(CAttrGrid::kNameColumn, 0), QString());
        // A typed name is made legal once; its undo and redo give back what
        // was there before and what it became.
        const long last = grid->GetRowCount() - 2;
        const QString before = grid->GetCellString(last, CAttrGrid::kNameColumn);
        grid->StoreUserText(CAttrGrid::kNameColumn, last, QStringLiteral("New Name"), ug::TextEdited);
        QCOMPARE(grid->GetCellString(last, CAttrGrid::kNameColumn), QStringLiteral("new_name"));
        grid->Undo();
        QCOMPARE(grid->GetCellString(last, CAttrGrid::kNameColumn), before);
        grid->Redo();
        QCOMPARE(grid->GetCellString(last, CAttrGrid::kNameColumn), QStringLiteral("new_name"));
        grid->Undo();
        QVERIFY(pressOK());
        StringList written = m_schema->getAttributeNames(true, false);
        std::sort(written.begin(), written.end());
        StringList expected = loaded;
        std::sort(expected.begin(), expected.end());
        QCOMPARE(written, expected);
    }

    // Rows pasted from a spreadsheet become attributes with legal names and
    // the format's types, generic ones mapped; what has no counterpart is
    // said once and kept as pasted.
    void shouldTurnPastedRowsIntoAttributes()
    {
        open("shapefile-roads.json", "SHAPEFILE");
        CAttrGrid *grid = attributes();
        grid->GotoCell(CAttrGrid::kNameColumn, grid->GetRowCount() - 1);
        ShownMessage shown;
        answerNextMessageBox(&shown);
        grid->PasteText(QStringLiteral("speed limit\tvyr_real64\nsurface\tvyr_char\t12\nnotes\tjsonb\nextra\tjsonb\n"));
        QCOMPARE(rowOf(grid, 4).mid(0, 2), (QStringList{"SPEED_LIMI", "float"}));
        QCOMPARE(rowOf(grid, 5).mid(0, 3), (QStringList{"SURFACE", "char", "12"}));
        QCOMPARE(rowOf(grid, 6).mid(0, 2), (QStringList{"NOTES", "jsonb"}));
        QCOMPARE(shown.text, formatResourceString(res::UnmappedPastedTypes, {QStringLiteral("jsonb")}));
    }

    // OK stays open: an attribute without a name says why, a type the
    // format does not know shows the cell.
    void shouldRefuseRowsWithoutANameOrAKnownType()
    {
        open("shapefile-roads.json", "SHAPEFILE");
        CAttrGrid *grid = attributes();
        grid->SetCellText(CAttrGrid::kNameColumn, 2, QString());
        ShownMessage shown;
        answerNextMessageBox(&shown);
        QVERIFY(!pressOK());
        QCOMPARE(shown.text, loadResourceString(res::AttributeNameRequired));

        grid->SetCellText(CAttrGrid::kNameColumn, 2, QStringLiteral("OPENED"));
        // A row is never dropped silently: a type the format has no template
        // of, or one without the width it takes, is named, and the cell at
        // fault becomes current.
        grid->SetCellText(grid->typeColumn(), 1, QStringLiteral("varchar"));
        answerNextMessageBox(&shown);
        QVERIFY(!pressOK());
        QCOMPARE(grid->GetCurrentRow(), 1L);
        QCOMPARE(grid->GetCurrentCol(), grid->typeColumn());
        QVERIFY(shown.text.contains(QStringLiteral("\"varchar\"")));
        QVERIFY(shown.text.contains(QStringLiteral("LANES")));

        grid->StoreUserText(grid->typeColumn(), 1, QStringLiteral("char"), ug::TextChosen);
        grid->StoreUserText(grid->argumentColumn(0), 1, QString(), ug::TextEdited);
        answerNextMessageBox(&shown);
        QVERIFY(!pressOK());
        QCOMPARE(grid->GetCurrentCol(), grid->argumentColumn(0));
        QVERIFY(shown.text.contains(loadResourceString(res::WidthHeading)));
        grid->StoreUserText(grid->argumentColumn(0), 1, QStringLiteral("5"), ug::TextEdited);
        QVERIFY(pressOK());
        QCOMPARE(m_schema->getAttributeType("LANES"), std::string("char(5)"));
    }

    // A list attribute counts the elements the schema exposes; clearing a
    // row exposed at opening removes it, checking one exposes it with the
    // format's type and its elements.
    void shouldExposeAndRemoveFormatAttributes()
    {
        open("gpx-tracks.json", "GPX");
        for (const char *name : {"gpx_link{0}.href", "gpx_link{3}.href", "gpx_link{}.href", "other{7}"})
            m_schema->storeAttribute(name, "string", true);
        CFormatAttrGrid *grid = formatAttributes();
        grid->Fill();
        const auto rowNamed = [grid](const char *name) {
            for (long row = 0; row < grid->GetRowCount(); ++row) {
                if (grid->GetCellString(row, CFormatAttrGrid::kNameColumn) == QLatin1String(name))
                    return row;
            }
            return -1L;
        };
        QCOMPARE(grid->GetRowCount(), 5L);
        QCOMPARE(rowOf(grid, rowNamed("gpx_link{}.href")), (QStringList{"1", "gpx_link{}.href", "4"}));
        QVERIFY(grid->IsCellEnabled(CFormatAttrGrid::kCountColumn, rowNamed("gpx_link{}.href")));
        QVERIFY(!grid->IsCellEnabled(CFormatAttrGrid::kCountColumn, rowNamed("gpx_name")));

        grid->SetCellText(CFormatAttrGrid::kExposedColumn, rowNamed("gpx_name"), QStringLiteral("0"));
        grid->SetCellText(CFormatAttrGrid::kExposedColumn, rowNamed("gpx_desc"), QStringLiteral("1"));
        grid->SetCellText(CFormatAttrGrid::kCountColumn, rowNamed("gpx_link{}.href"), QStringLiteral("2"));
        QVERIFY(pressOK());
        QCOMPARE(m_schema->getAttributeNames(false, true),
                 (StringList{"gpx_time", "gpx_link{0}.href", "gpx_link{}.href", "other{7}", "gpx_desc",
                             "gpx_link{1}.href"}));
    }

    // The General page in a new format: turning dynamic schema on and off
    // keeps the geometry the move gave it, and another feature type moved
    // there by Apply to Others takes a name its new format allows.
    void shouldKeepTheGeneralPageInTheNewFormat()
    {
        open("shapefile-roads.json", "SHAPEFILE");
        auto *general = static_cast<CFeatTypePropsGeneralDest *>(m_dialog->generalPage());
        auto *dataset = qobject_cast<QComboBox *>(general->GetDlgItem(CFeatTypePropsGeneral::kIdDataset));
        dataset->setCurrentIndex(dataset->findText(QStringLiteral("GPX")));
        emit dataset->activated(dataset->currentIndex());
        auto *geometry = qobject_cast<QComboBox *>(general->GetDlgItem(CFeatTypePropsGeneral::kIdGeometry));
        auto *dynamic = qobject_cast<QAbstractButton *>(general->GetDlgItem(CFeatTypePropsGeneralDest::kIdDynamic));
        QCOMPARE(geometry->currentText(), QStringLiteral("gpx_line"));
        dynamic->click();
        dynamic->click();
        QCOMPARE(geometry->currentText(), QStringLiteral("gpx_line"));

        IVYRFeature *wells = m_session->createFeature();
        QVERIFY(VYR_FeatureLoadJson(wells, examplePath("schemas/shapefile-wells.json").c_str(), nullptr));
        VYRObjWorkspaceSchemaInfo record(*m_session, *wells, *m_formats.at("SHAPEFILE"),
                                         [this](const std::string &id) { return m_formats.at(id).get(); });
        general->WriteToSchema(record, general::Dataset);
        QCOMPARE(QString::fromStdString(record.getFormatId()), QStringLiteral("GPX"));
        QCOMPARE(QString::fromStdString(record.getName()), QStringLiteral("waypoints"));
        m_session->destroyFeature(wells);
    }

    // Opening reads none of the schema's names: the attribute pages read
    // them when first shown or asked about, and then show every attribute.
    void shouldReadNoNamesWhileOpening()
    {
        open("shapefile-roads.json", "SHAPEFILE");
        m_dialog.reset();
        NameReadCounter counted(*m_feature);
        VYRObjWorkspaceSchemaInfo schema(*m_session, counted, *m_formats.at("SHAPEFILE"),
                                         [](const std::string &) -> const FTPropsFormatInfo * { return nullptr; });
        CFeatTypePropsDlg dialog(m_session, &schema, SchemaRecordList(), {m_formats.at("SHAPEFILE").get()},
                                 FormatRecordList(), nullptr);
        QVERIFY(dialog.Create());
        QCOMPARE(counted.allNameReads, 0);
        QCOMPARE(dialog.PageAttributeNames(), (StringList{"ROAD_NAME", "LANES", "OPENED", "TOLL", "shapefile_type"}));
    }

    // Two rows of one name would be written as one attribute: OK names it.
    void shouldRefuseTwoAttributesOfOneName()
    {
        open("shapefile-roads.json", "SHAPEFILE");
        attributes()->SetCellText(CAttrGrid::kNameColumn, 3, QStringLiteral("LANES"));
        ShownMessage shown;
        answerNextMessageBox(&shown);
        QVERIFY(!pressOK());
        QCOMPARE(shown.text, formatResourceString(res::AttributeNameRepeated, {QStringLiteral("LANES")}));
        QCOMPARE(attributes()->GetCurrentRow(), 3L);
    }

    // A type's suffix is its domain: the domains the schema's types carry
    // are offered, shown in their rows and written back.
    void shouldShowAndKeepTheDomainsOfTheSchemasTypes_data()
    {
        QTest::addColumn<bool>("shown");
        QTest::newRow("rows asked for") << false;
        // Its rows are made as the shown grid is first laid out.
        QTest::newRow("page shown") << true;
    }
    void shouldShowAndKeepTheDomainsOfTheSchemasTypes()
    {
        QFETCH(bool, shown);
        open("shapefile-roads.json", "SHAPEFILE", [](IVYRFeature &feature) {
            feature.setAttribute("*OPENED", "date,local");
            feature.setAttribute("*TOLL", "logical,strict");
        });
        if (shown) {
            m_dialog->show();
            m_dialog->ShowPage(m_dialog->attributesPage());
        }
        CAttrGrid *grid = attributes();
        QVERIFY(grid->hasDomains());
        QCOMPARE(rowOf(grid, 2), (QStringList{"OPENED", "date", "", "", "local"}));
        QCOMPARE(grid->GetCellString(0, grid->domainColumn()), QStringLiteral("none"));
        grid->StoreUserText(grid->domainColumn(), 3, QStringLiteral("none"), ug::TextChosen);
        grid->StoreUserText(grid->domainColumn(), 0, QStringLiteral("local"), ug::TextChosen);
        QVERIFY(pressOK());
        QCOMPARE(m_schema->getAttributeType("OPENED"), std::string("date,local"));
        QCOMPARE(m_schema->getAttributeType("TOLL"), std::string("logical"));
        QCOMPARE(m_schema->getAttributeType("ROAD_NAME"), std::string("char(40),local"));
    }

    // A list exposing more elements than the count cell lets a person type
    // keeps them all through OK.
    void shouldKeepEveryExposedListElement()
    {
        open("gpx-tracks.json", "GPX");
        m_schema->storeAttribute("gpx_link{}.href", "string", true);
        for (int element = 0; element < 120; ++element)
            m_schema->storeAttribute("gpx_link{" + std::to_string(element) + "}.href", "string", true);
        CFormatAttrGrid *grid = formatAttributes();
        grid->Fill();
        long row = 0;
        while (row < grid->GetRowCount() && grid->GetCellString(row, CFormatAttrGrid::kNameColumn) != "gpx_link{}.href")
            ++row;
        QCOMPARE(grid->GetCellString(row, CFormatAttrGrid::kCountColumn), QStringLiteral("120"));
        QVERIFY(pressOK());
        const StringList exposed = m_schema->getAttributeNames(false, true);
        QVERIFY(std::find(exposed.begin(), exposed.end(), "gpx_link{119}.href") != exposed.end());
    }

    // A reader's attributes are shown but not edited or written unless the
    // authoring application allows it.
    void shouldShowAReadersAttributesReadOnly()
    {
        open("csv-stations.json", "CSV");
        QVERIFY(!attributes()->IsGridEnabled());
        for (const unsigned id : {CFeatTypePropsAttrs::kIdMoveUp, CFeatTypePropsAttrs::kIdMoveDown,
                                  CFeatTypePropsAttrs::kIdSort, CFeatTypePropsAttrs::kIdDelete})
            QVERIFY(!m_dialog->attributesPage()->GetDlgItem(id)->isEnabled());
        attributes()->SetCellText(CAttrGrid::kNameColumn, 0, QStringLiteral("renamed"));
        QVERIFY(pressOK());
        QCOMPARE(m_schema->getAttributeNames(true, false), (StringList{"station", "x", "y"}));
    }

    // Control+Enter presses OK wherever the keyboard is, an edit open in a
    // grid taken first; no control on the way takes the key for itself.
    void shouldPressOkWithControlEnterFromAnywhere_data()
    {
        QTest::addColumn<int>("page");
        QTest::addColumn<QString>("where");
        QTest::newRow("the name field") << 0 << "name";
        QTest::newRow("a button of the page") << 0 << "format help";
        QTest::newRow("a type list cell") << 1 << "type";
        QTest::newRow("an open type list") << 1 << "list";
        QTest::newRow("the editor of a new attribute") << 1 << "editor";
        QTest::newRow("the filter field") << 3 << "filter";
    }
    void shouldPressOkWithControlEnterFromAnywhere()
    {
        QFETCH(int, page);
        QFETCH(QString, where);
        open("shapefile-roads.json", "SHAPEFILE");
        QVERIFY(test::showActive(*m_dialog));
        m_dialog->tabControl()->setCurrentIndex(page);
        CAttrGrid *grid = attributes();
        QWidget *target = grid;
        if (where == "name")
            target = m_dialog->generalPage()->GetDlgItem(CFeatTypePropsGeneral::kIdName);
        else if (where == "format help")
            target = m_dialog->generalPage()->GetDlgItem(CFeatTypePropsGeneral::kIdFormatHelp);
        else if (where == "filter")
            target = m_dialog->parametersPage()->GetDlgItem(CFeatTypePropsParms::kIdFilter);
        target->setFocus();
        QTRY_VERIFY(target->hasFocus());
        if (where == "type" || where == "list") {
            grid->GotoCell(grid->typeColumn(), 0);
        }
        if (where == "list") {
            QTest::keyClick(grid, Qt::Key_F4);
            auto *type = static_cast<CUGDropListType *>(grid->GetCellType(grid->DropListTypeId()));
            QTRY_VERIFY(type->IsListOpen());
            QTest::keyClick(type->ListBox(), Qt::Key_D);
            target = type->ListBox();
        } else if (where == "editor") {
            grid->GotoCell(CAttrGrid::kNameColumn, grid->GetRowCount() - 1);
            QTest::keyClicks(grid, "e");
            QTest::keyClicks(grid->GetEditor(), "xtra");
            QVERIFY(grid->IsEditing());
        }
        QTest::keyClick(where == "list" ? target : QApplication::focusWidget(), Qt::Key_Return, Qt::ControlModifier);
        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(m_dialog->result(), kEndOk);
        QCOMPARE(m_schema->getAttributeType("ROAD_NAME") == "date", where == "list");
        const StringList names = m_schema->getAttributeNames(true, false);
        QCOMPARE(std::count(names.begin(), names.end(), "EXTRA"), where == "editor" ? 1 : 0);
    }

    // A person with a keyboard only builds a table: twenty attributes typed
    // into the last row, some given another type from the list, a width, or
    // a ranged integer with its domain named in the domain dialog; rows
    // moved up and down and deleted with the buttons' letters, format
    // attributes exposed with Space, and OK with Control+Enter.
    void shouldBuildATableWithTheKeyboardAlone()
    {
        open("geopackage-landuse.json", "GPKG_ATTRS");
        QVERIFY(test::showActive(*m_dialog));
        const auto focused = [] { return QApplication::focusWidget(); };
        const auto press = [&](int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
            QVERIFY(focused());
            QTest::keyClick(focused(), Qt::Key(key), modifiers);
        };
        const auto type = [&](const QString &text) {
            for (const QChar c : text)
                QTest::keyClick(focused(), c.toLatin1());
        };
        press(Qt::Key_Tab, Qt::ControlModifier);
        CAttrGrid *grid = attributes();
        QVERIFY(grid->hasFocus());
        press(Qt::Key_End, Qt::ControlModifier);
        QCOMPARE(grid->GetCurrentRow(), 3L);

        StringList names{"class", "storeys", "note"};
        // Picks the type that begins with `letter`, and `further` after it.
        const auto pickType = [&](int letter, int further = 0) {
            press(Qt::Key_F4);
            press(letter);
            for (int step = 0; step < further; ++step)
                press(Qt::Key_Down);
            press(Qt::Key_Return);
        };
        const auto typeWidth = [&](const QString &width) {
            press(Qt::Key_Right);
            type(width);
            press(Qt::Key_Return);
        };
        for (int i = 0; i < 20; ++i) {
            const QString name = QStringLiteral("field%1").arg(i, 2, 10, QLatin1Char('0'));
            names.push_back(name.toStdString());
            type(name);
            press(Qt::Key_Tab);
            if (i == 5) {
                pickType(Qt::Key_I);
            } else if (i == 6 || i == 10) {
                pickType(Qt::Key_T);
                typeWidth(QStringLiteral("4%1").arg(i));
            } else if (i == 9) {
                // The type after "integer" takes a range domain: its button
                // opens the domain dialog, where a name is enough.
                pickType(Qt::Key_I, 1);
                press(Qt::Key_Right);
                test::onNextModalDialog([&](QDialog *domain) {
                    domain->activateWindow();
                    QVERIFY(QTest::qWaitForWindowActive(domain));
                    QWidget *nameField = static_cast<CDomainDlg *>(domain)->GetDlgItem(CDomainDlg::kIdName);
                    QTRY_COMPARE(focused(), nameField);
                    type(QStringLiteral("Levels"));
                    press(Qt::Key_Return);
                });
                press(Qt::Key_F4);
                // The offscreen platform gives the activation back only when
                // asked.
                m_dialog->activateWindow();
                QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
            } else if (i == 0 || i == 4) {
                typeWidth(QStringLiteral("4%1").arg(i));
            }
            // On to the new row's first cell (the new row's other cells wait
            // for its type, so the keyboard does not land there).
            press(Qt::Key_Home);
            press(Qt::Key_End, Qt::ControlModifier);
        }
        QCOMPARE(grid->GetAttributeNames(), names);
        QCOMPARE(rowOf(grid, 3).mid(0, 3), (QStringList{"field00", "text", "40"}));
        QCOMPARE(rowOf(grid, 8).mid(0, 2), (QStringList{"field05", "integer"}));
        QCOMPARE(rowOf(grid, 9).mid(0, 3), (QStringList{"field06", "text", "46"}));
        QCOMPARE(rowOf(grid, 12).mid(0, 3), (QStringList{"field09", "integer_in_range", "Levels"}));
        QCOMPARE(rowOf(grid, 15).mid(0, 3), (QStringList{"field12", "text", "410"}));

        // The drop lists' windows have come and gone: the offscreen platform
        // gives the activation back only when asked.
        QTest::qWait(20);
        m_dialog->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
        QTRY_VERIFY(grid->hasFocus());

        // field00 up above note, field01 down below field02, field03 and
        // field04 deleted; the buttons' letters, then back to the grid by
        // its label's.
        press(Qt::Key_Home, Qt::ControlModifier);
        for (int step = 0; step < 3; ++step)
            press(Qt::Key_Down);
        press(Qt::Key_U, Qt::AltModifier);
        QTRY_COMPARE(grid->GetCellString(2, CAttrGrid::kNameColumn), QStringLiteral("field00"));
        press(Qt::Key_B, Qt::AltModifier);
        QTRY_VERIFY(grid->hasFocus());
        press(Qt::Key_Down);
        press(Qt::Key_Down);
        QCOMPARE(grid->GetCellString(4, CAttrGrid::kNameColumn), QStringLiteral("field01"));
        press(Qt::Key_W, Qt::AltModifier);
        QTRY_COMPARE(grid->GetCellString(5, CAttrGrid::kNameColumn), QStringLiteral("field01"));
        press(Qt::Key_B, Qt::AltModifier);
        QTRY_VERIFY(grid->hasFocus());
        press(Qt::Key_Down);
        press(Qt::Key_Down, Qt::ShiftModifier);
        press(Qt::Key_L, Qt::AltModifier);
        QTRY_COMPARE(grid->attributeRowCount(), 21L);
        QCOMPARE(grid->GetCellString(6, CAttrGrid::kNameColumn), QStringLiteral("field05"));

        press(Qt::Key_PageDown, Qt::ControlModifier);
        QVERIFY(formatAttributes()->hasFocus());
        press(Qt::Key_Space);
        press(Qt::Key_Down);
        press(Qt::Key_Space);
        press(Qt::Key_Return, Qt::ControlModifier);
        QVERIFY(!m_dialog->isVisible());
        const StringList written = m_schema->getAttributeNames(true, false);
        QCOMPARE(written.size(), std::size_t(21));
        QCOMPARE(QString::fromStdString(m_schema->getAttributeType("field09")),
                 QStringLiteral("integer_in_range(Levels)"));
        QCOMPARE(QString::fromStdString(m_schema->getAttributeType("field12")), QStringLiteral("text(410)"));
        QCOMPARE(m_schema->getAttributeNames(false, true), (StringList{"gpkg_fid", "gpkg_layer"}));
    }
};

QTEST_MAIN(AttributePagesTest)
#include "tst_attributepages.moc"
