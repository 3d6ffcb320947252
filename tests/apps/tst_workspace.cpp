// The workspace of vyr-ftprops: a feature type moved to another format is
// saved in two files, its feature and the workspace that names its format;
// both are written, or neither.
#include "workspace.h"

#include "support/modalanswers.h"
#include "support/scratchdirectory.h"

#include "vyr/vyr_session.h"

#include <QComboBox>
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
        QVERIFY(contentOf(featurePath) != featureBefore);
        QVERIFY(!m_workspace->hasUnsavedChanges());
    }

private:
    std::unique_ptr<test::ScratchDirectory> m_scratch;
    IVYRSession *m_session = nullptr;
    std::unique_ptr<ftprops::Workspace> m_workspace;
};

QTEST_MAIN(WorkspaceTest)
#include "tst_workspace.moc"
