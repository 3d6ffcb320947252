// The feature type properties exports as a host calls them: through the
// shared library, on engine features read from the bundled examples.
#include "stringobjects/vyrrwstringarrayimp.h"
#include "stringobjects/vyrrwstringimp.h"
#include "support/modalanswers.h"
#include "util/capabilityfile.h"

#include "vyr/IVYRFeature.h"
#include "vyr/vyr_featurefile.h"
#include "vyr/vyr_session.h"
#include "vyrguimfc/vyrguimfc.h"

#include <QApplication>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDialog>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabBar>
#include <QTemporaryDir>
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

// Edits on the attribute pages by the keyboard, as a person makes them: the
// first attribute renamed, the second deleted, the rows sorted, and the
// first format attribute's exposure turned over.
void editAttributePages(QDialog *dialog)
{
    // Keys go to the focus, which only an active window has.
    dialog->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(dialog));
    auto *tabs = dialog->findChild<QTabBar *>();
    tabs->setCurrentIndex(1);
    QWidget *grid = control<QWidget>(dialog, "attributeGrid");
    grid->setFocus();
    QTest::keyClicks(grid, QStringLiteral("r"));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("enamed"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QTest::keyClick(grid, Qt::Key_Down);
    QTest::keyClick(grid, Qt::Key_Delete);
    control<QPushButton>(dialog, "sortButton")->click();
    tabs->setCurrentIndex(2);
    QWidget *formatGrid = control<QWidget>(dialog, "formatAttributeGrid");
    formatGrid->setFocus();
    QTest::keyClick(formatGrid, Qt::Key_Space);
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
    QTemporaryDir m_scratch;

    IVYRFeature *load(const char *schema)
    {
        IVYRFeature *feature = m_session->createFeature();
        if (!VYR_FeatureLoadJson(feature, examplePath(schema).c_str(), nullptr))
            qFatal("cannot read %s", schema);
        return feature;
    }
    QByteArray bytesOf(const IVYRFeature *feature)
    {
        const QString path = m_scratch.filePath(QStringLiteral("snapshot.json"));
        if (!VYR_FeatureSaveJson(feature, path.toLocal8Bit().constData(), nullptr))
            return {};
        QFile file(path);
        file.open(QIODevice::ReadOnly);
        return file.readAll();
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_scratch.isValid());
        m_session = VYR_SessionCreate();
    }
    void cleanupTestCase() { VYR_SessionDestroy(m_session); }

    void shouldLeaveTheFeatureAloneUnlessOk_data()
    {
        QTest::addColumn<QString>("ending");
        QTest::addColumn<bool>("result");
        QTest::newRow("Cancel") << "cancel" << false;
        QTest::newRow("close box") << "close" << false;
        QTest::newRow("Escape in a field") << "escape" << false;
        QTest::newRow("OK") << "ok" << true;
        QTest::newRow("Enter in a field") << "enter" << true;
    }
    void shouldLeaveTheFeatureAloneUnlessOk()
    {
        QFETCH(QString, ending);
        QFETCH(bool, result);
        IVYRFeature *feature = load("schemas/postgres-parcels.json");
        const QByteArray before = bytesOf(feature);
        const bool edit = !result;
        vyr::test::onNextModalDialog([ending, edit](QDialog *dialog) {
            if (edit) {
                control<QLineEdit>(dialog, "nameEdit")->setText(QStringLiteral("renamed"));
                control<QLineEdit>(dialog, "userEdit")->setText(QStringLiteral("someone"));
                editAttributePages(dialog);
            }
            if (ending == QLatin1String("cancel"))
                control<QPushButton>(dialog, "cancelButton")->click();
            else if (ending == QLatin1String("close"))
                dialog->close();
            else if (ending == QLatin1String("escape"))
                QTest::keyClick(control<QLineEdit>(dialog, "nameEdit"), Qt::Key_Escape);
            else if (ending == QLatin1String("enter"))
                QTest::keyClick(control<QLineEdit>(dialog, "nameEdit"), Qt::Key_Return);
            else
                control<QPushButton>(dialog, "okButton")->click();
        });
        const std::string capabilities = capabilitiesOf("postgres.fmt");
        QCOMPARE(VYRFeatTypeProperties(m_session, feature, capabilities.c_str(), nullptr), result);
        // Cancel leaves every byte; OK without an edit changes nothing
        // either, though it writes the schema back in an order of its own.
        const QByteArray after = bytesOf(feature);
        if (result)
            QCOMPARE(QJsonDocument::fromJson(after).object(), QJsonDocument::fromJson(before).object());
        else
            QCOMPARE(after, before);
        m_session->destroyFeature(feature);
    }

    // The same edits saved: the renamed attribute in the format's case with
    // its type, the deleted one gone with its generic type, the rows in the
    // sorted order, and the first format attribute exposed beside the one
    // that was.
    void shouldWriteTheAttributePagesEditsOnOk()
    {
        IVYRFeature *feature = load("schemas/shapefile-roads.json");
        vyr::test::onNextModalDialog([](QDialog *dialog) {
            editAttributePages(dialog);
            dialog->accept();
        });
        const std::string capabilities = capabilitiesOf("shapefile.fmt");
        QVERIFY(VYRFeatTypeProperties(m_session, feature, capabilities.c_str(), nullptr));
        VYRRWStringArrayImp names;
        feature->getOrderedAttributeNames(names);
        QStringList ordered;
        for (std::size_t i = 0; i < names.entries(); ++i)
            ordered << QString::fromUtf8(names.elementAt(i));
        QCOMPARE(ordered, (QStringList{"OPENED", "RENAMED", "TOLL"}));
        QCOMPARE(attributeOf(feature, "RENAMED"), std::string("vyr_char(40)"));
        QCOMPARE(attributeOf(feature, "*RENAMED"), std::string("char(40)"));
        QCOMPARE(attributeOf(feature, "LANES"), std::string("(absent)"));
        feature->getListAttribute("*vyr_format_attr_name", names);
        QStringList exposed;
        for (std::size_t i = 0; i < names.entries(); ++i)
            exposed << QString::fromUtf8(names.elementAt(i));
        QCOMPARE(exposed, (QStringList{"shapefile_type", "shapefile_record_number"}));
        m_session->destroyFeature(feature);
    }

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

    void shouldWriteWhatTheUserChangedOnOk()
    {
        IVYRFeature *feature = load("schemas/shapefile-roads.json");
        vyr::test::onNextModalDialog([](QDialog *dialog) {
            control<QLineEdit>(dialog, "nameEdit")->setText(QStringLiteral("MAIN_ROADS"));
            control<QComboBox>(dialog, "geometryCombo")->setCurrentText(QStringLiteral("shapefile_polygon"));
            dialog->accept();
        });
        const std::string capabilities = capabilitiesOf("shapefile.fmt");
        QVERIFY(VYRFeatTypeProperties(m_session, feature, capabilities.c_str(), nullptr));
        QCOMPARE(std::string(feature->getFeatureType()), std::string("MAIN_ROADS"));
        QCOMPARE(attributeOf(feature, "*vyr_geometry{0}"), std::string("shapefile_polygon"));
        QCOMPARE(attributeOf(feature, "vyr_geometry{0}"), std::string("vyr_area"));
        m_session->destroyFeature(feature);
    }

    void shouldKeepWorkspaceSettingsAndMovesToAnotherDataset()
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
            control<QCheckBox>(dialog, "fanoutCheck")->click();
            control<QComboBox>(dialog, "fanoutCombo")->setCurrentIndex(0);
            control<QCheckBox>(dialog, "dynamicCheck")->click();
            sourcesShown = control<QLineEdit>(dialog, "sourcesEdit")->text();
            control<QCheckBox>(dialog, "dynamicCheck")->click();
            dataset->setCurrentText(QStringLiteral("GEOPACKAGE"));
            emit dataset->activated(dataset->currentIndex());
            dialog->accept();
        });
        QVERIFY(VYRFeatTypePropertiesInWorkspace(m_session, roads, shapefile.c_str(), others, 2, sources, 1, nullptr));
        QCOMPARE(datasets, (QStringList{"SHAPEFILE", "GEOPACKAGE"}));
        QCOMPARE(sourcesShown, QStringLiteral("CSV"));
        QCOMPARE(attributeOf(roads, "vyr_format"), std::string("GEOPACKAGE"));
        // The geometry in the new format's words; fan-out is off with a
        // format that has none, as the page showed it, but the attribute
        // chosen is kept.
        QCOMPARE(attributeOf(roads, "*vyr_geometry{0}"), std::string("gpkg_linestring"));
        QCOMPARE(attributeOf(roads, "vyr_geometry{0}"), std::string("vyr_line"));
        QCOMPARE(attributeOf(roads, "vyr_fanout"), std::string("(absent)"));
        QVERIFY(attributeOf(roads, "vyr_fanout_attribute") != "(absent)");
        QCOMPARE(attributeOf(roads, "vyr_dynamic"), std::string("(absent)"));
        for (IVYRFeature *feature : {roads, wells, landUse})
            m_session->destroyFeature(feature);
    }
    // The workbook writer's parameters page, by keyboard only, through the
    // export: every type the page edits is changed and saved, the disable
    // rule lets only its own rows be edited, and the DISABLE parameter
    // itself is not a value of the feature type.
    void shouldSaveEveryParameterTypeEditedByKeyboard()
    {
        IVYRFeature *feature = load("schemas/xlsx-inventory.json");
        QString fault;
        vyr::test::onNextModalDialog([&fault](QDialog *dialog) {
            const auto check = [&fault](bool ok, const char *what) {
                if (!ok && fault.isEmpty())
                    fault = QLatin1String(what);
                return ok;
            };
            dialog->activateWindow();
            check(QTest::qWaitForWindowActive(dialog), "the dialog did not become active");
            auto *tabs = dialog->findChild<QTabBar *>();
            tabs->setCurrentIndex(tabs->count() - 1);
            // Alt+P is the grid's label; the focus lands on the first prompt.
            QTest::keyClick(dialog, Qt::Key_P, Qt::AltModifier);
            QWidget *grid = dialog->findChild<QWidget *>(QStringLiteral("parameterGrid"));
            if (!check(grid && QTest::qWaitFor([grid] { return grid->hasFocus(); }, 2000),
                       "Alt+P did not reach the grid")) {
                dialog->reject();
                return;
            }
            // Keys go where the focus is: the grid, its editor or its list.
            const auto focused = [grid] { return QApplication::focusWidget() ? QApplication::focusWidget() : grid; };
            const auto key = [focused](Qt::Key k, Qt::KeyboardModifiers modifiers = {}) {
                QTest::keyClick(focused(), k, modifiers);
            };
            const auto typeIn = [&](const char *text) {
                QTest::keyClicks(grid, QString(QLatin1Char(text[0])));
                QTest::keyClicks(focused(), QLatin1String(text + 1));
                key(Qt::Key_Return);
            };
            const auto pick = [&](Qt::Key first) {
                key(Qt::Key_F4);
                key(first);
                key(Qt::Key_Return);
            };
            key(Qt::Key_Right);
            pick(Qt::Key_Y);           // Copy Formatting from a Template: Yes
            key(Qt::Key_Down);
            typeIn("Styles");          // Template Sheet, enabled by it
            key(Qt::Key_Down);
            pick(Qt::Key_N);           // Write Header Row, always enabled
            key(Qt::Key_Down);
            key(Qt::Key_Down);
            typeIn("99");              // Column Width, turned off: refused
            key(Qt::Key_Home, Qt::ControlModifier);
            pick(Qt::Key_N);           // back to No: Template Sheet empty again
            key(Qt::Key_Down);
            key(Qt::Key_Down);
            key(Qt::Key_Down);
            vyr::test::onNextModalDialog([](QDialog *colours) {
                if (auto *picker = qobject_cast<QColorDialog *>(colours))
                    picker->setCurrentColor(QColor(255, 0, 0));
                colours->accept();
            });
            key(Qt::Key_F4);           // Header Row Colour
            // The offscreen platform gives the activation back only when asked.
            dialog->activateWindow();
            check(QTest::qWaitForWindowActive(dialog), "the dialog did not come back after the colours");
            key(Qt::Key_Down);
            typeIn("2x0");             // Column Width: digits only
            key(Qt::Key_Down);
            vyr::test::answerNextDialog([](QDialog *form) {
                auto *list = form->findChild<QListWidget *>();
                for (int i = 0; list && i < list->count(); ++i)
                    list->item(i)->setCheckState(list->item(i)->text() == "Checked" ? Qt::Unchecked : Qt::Checked);
                return list != nullptr;
            });
            key(Qt::Key_F4);           // Hidden Columns: Item and Count
            dialog->activateWindow();
            check(QTest::qWaitForWindowActive(dialog), "the dialog did not come back after the selection");
            key(Qt::Key_Down);
            pick(Qt::Key_C);           // Sort Rows By: the first attribute with C
            dialog->accept();
        });
        const std::string capabilities = capabilitiesOf("xlsx.fmt");
        const bool saved = VYRFeatTypeProperties(m_session, feature, capabilities.c_str(), nullptr);
        QVERIFY2(fault.isEmpty(), qPrintable(fault));
        QVERIFY(saved);
        const auto list = [feature](const char *name) {
            VYRRWStringArrayImp values;
            feature->getListAttribute(name, values);
            QStringList texts;
            for (unsigned i = 0; i < values.entries(); ++i)
                texts.append(QString::fromUtf8(values.elementAt(i)));
            return texts;
        };
        QCOMPARE(list("*vyr_parameter_name"), (QStringList{"TEMPLATE_SHEET", "WRITE_HEADER", "HEADER_COLOR",
                                                           "COLUMN_WIDTH", "HIDDEN_COLUMNS", "SORT_BY"}));
        QCOMPARE(list("*vyr_parameter_value"),
                 (QStringList{"", "No", "1,0,0", "20", "Item,Count", "Count"}));
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
