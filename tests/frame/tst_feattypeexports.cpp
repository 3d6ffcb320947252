// The feature type properties exports as a host calls them: through the
// shared library, on engine features read from the bundled examples. What OK
// saves is the model-based test's (tests/model); here what a host hands in:
// no capabilities, the workspace's formats and schema sources, help.
#include "stringobjects/vyrrwstringimp.h"
#include "support/modalanswers.h"
#include "util/capabilityfile.h"

#include "vyr/IVYRFeature.h"
#include "vyr/vyr_featurefile.h"
#include "vyr/vyr_session.h"
#include "vyrguimfc/vyrguimfc.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QTabBar>
#include <QTextBrowser>
#include <QtTest>

namespace {

std::string examplePath(const char *relative)
{
    return std::string(VYR_TEST_EXAMPLES_DIR) + "/" + relative;
}

std::string capabilitiesOf(const char *format)
{
    return vyr::readCapabilityFile(examplePath("formats/") + format).value_or("");
}

template <class Widget>
Widget *control(QDialog *dialog, const char *name)
{
    auto *widget = dialog->findChild<Widget *>(QLatin1String(name));
    if (!widget)
        qFatal("no control %s", name);
    return widget;
}

std::string attributeOf(const IVYRFeature *feature, const char *name)
{
    VYRRWStringImp value;
    return feature->getAttribute(name, value) ? std::string(value.c_str()) : std::string("(absent)");
}

} // namespace

class FeatTypeExportsTest : public QObject
{
    Q_OBJECT

private:
    IVYRSession *m_session = nullptr;

    IVYRFeature *load(const char *schema)
    {
        IVYRFeature *feature = m_session->createFeature();
        if (!VYR_FeatureLoadJson(feature, examplePath(schema).c_str(), nullptr))
            qFatal("cannot read %s", schema);
        return feature;
    }

private slots:
    void initTestCase() { m_session = VYR_SessionCreate(); }
    void cleanupTestCase() { VYR_SessionDestroy(m_session); }

    void shouldOpenOnAnEmptyCapabilityString()
    {
        IVYRFeature *feature = load("schemas/csv-stations.json");
        bool sawSource = false;
        vyr::test::onNextModalDialog([&sawSource](QDialog *dialog) {
            // Every key takes its default: a reader, with the merge box.
            sawSource = dialog->findChild<QCheckBox *>(QStringLiteral("mergeCheck")) != nullptr;
            dialog->reject();
        });
        QVERIFY(!VYRFeatTypeProperties(m_session, feature, "", nullptr));
        QVERIFY(sawSource);
        QVERIFY(!VYRFeatTypeProperties(nullptr, feature, "", nullptr));
        m_session->destroyFeature(feature);
    }

    void shouldOfferTheWorkspacesDatasetsAndSchemaSources()
    {
        IVYRFeature *roads = load("schemas/shapefile-roads.json");
        IVYRFeature *wells = load("schemas/shapefile-wells.json");
        IVYRFeature *landUse = load("schemas/geopackage-landuse.json");
        const std::string shapefile = capabilitiesOf("shapefile.fmt");
        const std::string geopackage = capabilitiesOf("geopackage.fmt");
        const std::string csv = capabilitiesOf("csv.fmt");
        const VYRWorkspaceFeatureType others[] = {{wells, shapefile.c_str()}, {landUse, geopackage.c_str()}};
        const char *sources[] = {csv.c_str()};

        QStringList datasets;
        QString sourcesShown;
        vyr::test::onNextModalDialog([&](QDialog *dialog) {
            auto *dataset = control<QComboBox>(dialog, "datasetCombo");
            for (int i = 0; i < dataset->count(); ++i)
                datasets.append(dataset->itemText(i));
            control<QCheckBox>(dialog, "dynamicCheck")->click();
            sourcesShown = control<QLineEdit>(dialog, "sourcesEdit")->text();
            control<QCheckBox>(dialog, "dynamicCheck")->click();
            dialog->accept();
        });
        QVERIFY(VYRFeatTypePropertiesInWorkspace(m_session, roads, shapefile.c_str(), others, 2, sources, 1, nullptr));
        // The writers' formats of the workspace, not the reader's; the
        // schema sources the host names.
        QCOMPARE(datasets, (QStringList{"SHAPEFILE", "GEOPACKAGE"}));
        QCOMPARE(sourcesShown, QStringLiteral("CSV"));
        QCOMPARE(attributeOf(roads, "vyr_dynamic"), std::string("(absent)"));
        for (IVYRFeature *feature : {roads, wells, landUse})
            m_session->destroyFeature(feature);
    }

    // F1 on the parameters page opens the format's page at the parameters
    // of the feature type's role.
    void shouldOpenTheParametersSectionOfTheFormatOnF1_data()
    {
        QTest::addColumn<QString>("schema");
        QTest::addColumn<QString>("format");
        QTest::addColumn<QString>("section");
        QTest::newRow("writer") << "schemas/xlsx-inventory.json" << "xlsx.fmt" << "xlsx.htm#writer-parameters";
        QTest::newRow("reader") << "schemas/csv-stations.json" << "csv.fmt" << "csv.htm#reader-parameters";
    }
    void shouldOpenTheParametersSectionOfTheFormatOnF1()
    {
        QFETCH(QString, schema);
        QFETCH(QString, format);
        QFETCH(QString, section);
        IVYRFeature *feature = load(schema.toStdString().c_str());
        QString shown;
        vyr::test::onNextModalDialog([&shown](QDialog *dialog) {
            auto *tabs = dialog->findChild<QTabBar *>();
            tabs->setCurrentIndex(tabs->count() - 1);
            QWidget *grid = dialog->findChild<QWidget *>(QStringLiteral("parameterGrid"));
            QTest::keyClick(grid ? grid : dialog, Qt::Key_F1);
            if (auto *browser = dialog->findChild<QTextBrowser *>(QStringLiteral("helpBrowser")))
                shown = browser->source().toString();
            dialog->reject();
        });
        const std::string capabilities = capabilitiesOf(format.toStdString().c_str());
        QVERIFY(!VYRFeatTypeProperties(m_session, feature, capabilities.c_str(), nullptr));
        QVERIFY2(shown.endsWith(section), qPrintable(shown));
        m_session->destroyFeature(feature);
    }
};

QTEST_MAIN(FeatTypeExportsTest)
#include "tst_feattypeexports.moc"
