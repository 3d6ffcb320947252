// Random sequences of what a person does in the feature type properties
// dialog, on every feature type of the example workspace, checked against
// an independent model of what OK must save: the saved feature equals the
// prediction, every row on screen is in the file, nothing untouched
// changes, Cancel, Escape and the close box change nothing, a refused OK
// says why.
//
// VYR_MODEL_RUNS=<count> runs that many seeds (from VYR_MODEL_FIRST_SEED,
// default 1); VYR_MODEL_SEED=<n> replays one, and VYR_MODEL_STEPS=<k> keeps
// only its first k steps (to find the step that matters). The process's
// language (LANG) picks the English or German resources.
#include "model/runner.h"

#include "vyr/vyr_session.h"

#include <QTemporaryDir>
#include <QtTest>

#include <cstdlib>
#include <map>

using namespace vyr::model;

namespace {

std::uint64_t environmentNumber(const char *name, std::uint64_t otherwise)
{
    const char *value = std::getenv(name);
    return value && *value ? std::strtoull(value, nullptr, 10) : otherwise;
}

} // namespace

class DialogModelTest : public QObject
{
    Q_OBJECT

private:
    IVYRSession *m_session = nullptr;
    QTemporaryDir m_config;
    std::unique_ptr<Workspace> m_workspace;

private slots:
    void initTestCase()
    {
        QVERIFY(m_config.isValid());
        // The authoring application's settings live in a folder of our own.
        qputenv("XDG_CONFIG_HOME", m_config.path().toUtf8());
        m_session = VYR_SessionCreate();
        m_workspace = std::make_unique<Workspace>(VYR_TEST_EXAMPLES_DIR);
    }
    void cleanupTestCase() { VYR_SessionDestroy(m_session); }

    // Each seed picks the feature type (every one in turn, readers with and
    // without source editing), the actions and the ending.
    void randomSequencesKeepWhatTheScreenShows()
    {
        Runner runner(*m_workspace, m_session, m_config.path().toStdString());
        const std::size_t types = m_workspace->entries().size();
        const bool replay = std::getenv("VYR_MODEL_SEED") != nullptr;
        const std::uint64_t first = replay ? environmentNumber("VYR_MODEL_SEED", 1)
                                           : environmentNumber("VYR_MODEL_FIRST_SEED", 1);
        const std::uint64_t runs = replay ? 1 : environmentNumber("VYR_MODEL_RUNS", 40);
        std::map<std::string, std::vector<std::uint64_t>> byCause;
        std::string report;
        for (std::uint64_t seed = first; seed < first + runs; ++seed) {
            const std::size_t edited = std::size_t(seed % types);
            const bool sourceEditing = (seed / types) % 2 == 1;
            Session session = runner.randomSession(seed, edited, sourceEditing);
            if (replay && std::getenv("VYR_MODEL_STEPS"))
                session.actions.resize(std::min<std::size_t>(session.actions.size(),
                                                             environmentNumber("VYR_MODEL_STEPS", 0)));
            const SessionResult result = runner.run(session);
            if (result.failures.empty())
                continue;
            const std::string &cause = result.failures.front();
            byCause[cause.substr(0, cause.find(']') + 1) + " " + cause.substr(cause.find(']') + 2, 60)].push_back(seed);
            report += "\nseed " + std::to_string(seed) + " (replay with VYR_MODEL_SEED=" + std::to_string(seed)
                + "):\n" + result.transcript;
            for (const std::string &failure : result.failures)
                report += "  ! " + failure + "\n";
        }
        if (byCause.empty())
            return;
        std::string summary = "failing seeds by their first failure:\n";
        for (const auto &[cause, seeds] : byCause) {
            summary += "  " + cause + ":";
            for (std::uint64_t seed : seeds)
                summary += " " + std::to_string(seed);
            summary += "\n";
        }
        QFAIL(qPrintable(QString::fromStdString(summary + report)));
    }
};

QTEST_MAIN(DialogModelTest)
#include "tst_dialogmodel.moc"
