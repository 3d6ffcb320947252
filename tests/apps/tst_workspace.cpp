// The workspace of vyr-ftprops: a feature type moved to another format is
// saved in two files, its feature and the workspace that names its format;
// both are written, or neither.
#include "workspace.h"

#include "support/modalanswers.h"
#include "support/scratchdirectory.h"

#include "vyr/vyr_session.h"

#include <QComboBox>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sys/stat.h>

using namespace vyr;
namespace fs = std::filesystem;

namespace {

constexpr int kIdDataset = 1169;

std::string contentOf(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

// Picks `longName` in the next dialog's dataset list and presses OK.
void moveNextDialogTo(const QString &longName)
{
    test::answerNextDialog([longName](QDialog *dialog) {
        for (QComboBox *combo : dialog->findChildren<QComboBox *>()) {
            if (combo->property("controlId").toInt() != kIdDataset)
                continue;
            combo->setCurrentIndex(combo->findText(longName));
            emit combo->activated(combo->currentIndex());
            return true;
        }
        return false;
    });
}

} // namespace

class WorkspaceTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_scratch = std::make_unique<test::ScratchDirectory>();
        fs::copy(VYR_TEST_EXAMPLES_DIR, m_scratch->path(), fs::copy_options::recursive);
        m_session = VYR_SessionCreate();
    }
    void cleanup()
    {
        m_workspace.reset();
        VYR_SessionDestroy(m_session);
        m_scratch.reset();
    }

    void shouldKeepBothFilesAsTheyWereWhenTheWorkspaceCannotBeWritten()
    {
        const std::string workspacePath = m_scratch->path() + "/workspace.json";
        const std::string featurePath = m_scratch->path() + "/schemas/shapefile-roads.json";
        const std::string workspaceBefore = contentOf(workspacePath);
        const std::string featureBefore = contentOf(featurePath);
        std::string error;
        m_workspace = ftprops::Workspace::open(workspacePath, *m_session, error);
        QVERIFY2(m_workspace, error.c_str());
        const int roads = m_workspace->find("ROADS");
        QVERIFY(roads >= 0);

        ::chmod(workspacePath.c_str(), 0444);
        moveNextDialogTo(QStringLiteral("POSTGRES"));
        std::string message;
        QCOMPARE(m_workspace->edit(roads, nullptr, message), ftprops::EditResult::SaveFailed);
        QVERIFY2(message.find("workspace.json") != std::string::npos, message.c_str());
        QCOMPARE(contentOf(workspacePath), workspaceBefore);
        QCOMPARE(contentOf(featurePath), featureBefore);
        QVERIFY(m_workspace->hasUnsavedChanges());

        // Once the workspace may be written, the same move is saved whole.
        ::chmod(workspacePath.c_str(), 0644);
        moveNextDialogTo(QStringLiteral("POSTGRES"));
        QCOMPARE(m_workspace->edit(roads, nullptr, message), ftprops::EditResult::Saved);
        QVERIFY(contentOf(workspacePath) != workspaceBefore);
        QVERIFY(!m_workspace->hasUnsavedChanges());
        // The feature file holds the new format's names.
        const QJsonObject saved = QJsonDocument::fromJson(QByteArray::fromStdString(contentOf(featurePath))).object();
        QCOMPARE(saved.value(QStringLiteral("attribute_order")).toArray(),
                 (QJsonArray{"road_name", "lanes", "opened", "toll"}));
    }

    // A workspace that is not what the program reads is refused with the
    // place and the problem in the file's own terms.
    void shouldSayWhereAndWhatIsWrongWithAWorkspace_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("message");
        QTest::newRow("not JSON") << "{\"feature_types\": [\n  {\"feature\": 1,}\n]}"
                                  << "w.json:2:17: not valid JSON: unexpected '}'";
        QTest::newRow("number too large") << "{\"feature_types\": [],\n \"n\": \"1e999\", \"m\": [1e999]}"
                                          << "w.json:2:22: not valid JSON: the number 1e999 is too large";
        QTest::newRow("cut short") << "{\"feature_types\": [" << "w.json:1:20: not valid JSON: the text ends too early";
        QTest::newRow("a list") << "[]" << "w.json:1:1: a workspace is a JSON object";
        QTest::newRow("no feature types") << "{\"types\": []}" << "w.json:1:1: the workspace has no \"feature_types\"";
        QTest::newRow("feature types a number") << "{\"feature_types\": 3}"
                                                << "w.json:1:19: \"feature_types\" must be a list of feature types, "
                                                   "not a number";
        QTest::newRow("entry a text") << "{\"feature_types\": [\"roads\"]}"
                                      << "w.json:1:20: feature type 1 must be an object";
        QTest::newRow("no format") << "{\"feature_types\": [\n {\"feature\": \"a.json\"}]}"
                                   << "w.json:2:2: feature type 1 has no \"format\"";
        QTest::newRow("format a number") << "{\"feature_types\": [\n {\"feature\": \"a.json\",\n  \"format\": 7}]}"
                                         << "w.json:3:13: \"format\" of feature type 1 must name a file, not be a number";
        QTest::newRow("source not a text") << "{\"feature_types\": [], \"schema_sources\": [\"a.fmt\", null]}"
                                           << "w.json:1:51: schema source 2 must name a capability file";
    }
    void shouldSayWhereAndWhatIsWrongWithAWorkspace()
    {
        QFETCH(QString, text);
        QFETCH(QString, message);
        std::string error;
        QVERIFY(!ftprops::Workspace::parse(text.toStdString(), "w.json", *m_session, error));
        QVERIFY2(QString::fromStdString(error).startsWith(message), error.c_str());
        QVERIFY2(error.find("json.exception") == std::string::npos, error.c_str());
    }

private:
    std::unique_ptr<test::ScratchDirectory> m_scratch;
    IVYRSession *m_session = nullptr;
    std::unique_ptr<ftprops::Workspace> m_workspace;
};

QTEST_MAIN(WorkspaceTest)
#include "tst_workspace.moc"
