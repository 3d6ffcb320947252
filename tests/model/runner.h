// Runs one dialog session through the library's export on the example
// workspace: the actions done with keys and the mouse, the model following
// them, and afterwards every feature checked against the model's
// prediction.
#ifndef VYR_TESTS_MODEL_RUNNER_H
#define VYR_TESTS_MODEL_RUNNER_H

#include "model/actions.h"
#include "model/formatmodel.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class IVYRSession;

namespace vyr::model {

// The example workspace: its feature files with their formats.
class Workspace
{
public:
    struct Entry
    {
        std::string file;        // the feature file, relative to the examples
        std::string json;        // its text
        std::string capabilities;
        std::shared_ptr<FormatModel> format;
    };

    explicit Workspace(const std::string &examples);
    const std::vector<Entry> &entries() const { return m_entries; }
    const std::string &schemaSource() const { return m_schemaSource; }
    std::size_t indexOf(const std::string &file) const;

private:
    std::vector<Entry> m_entries;
    std::string m_schemaSource;
};

struct Session
{
    std::size_t edited = 0;      // the workspace entry the dialog edits
    bool sourceEditing = false;  // "Allow Source Feature Type Editing=yes"
    bool alone = false;          // through the single-feature export, no others
    // Replacements of the edited feature's file text or its format.
    std::optional<std::string> json, capabilities;
    std::vector<Action> actions;
    Ending ending;
};

// A session's result: what failed, each line beginning with its kind in
// brackets, and a transcript to print.
struct SessionResult
{
    Strings failures;
    std::string transcript;
    bool refused = false;
    bool saved = false;
    QStringList refusalMessages; // what a refused OK said
    std::string savedJson;       // the edited feature afterwards
};

class Runner
{
public:
    Runner(const Workspace &workspace, IVYRSession *session, std::string configHome);

    // The model a session starts from.
    SchemaModel modelFor(const Session &session) const;
    // A random sequence of `length` actions and an ending.
    Session randomSession(std::uint64_t seed, std::size_t edited, bool sourceEditing) const;
    SessionResult run(const Session &session);

private:
    void writeSetting(bool sourceEditing) const;
    // The workspace entries the host hands over as the others: those of the
    // edited one's role, none in the single-feature export.
    std::vector<std::size_t> otherEntries(const Session &session, bool source) const;

    const Workspace &m_workspace;
    IVYRSession *m_session;
    std::string m_configHome;
};

// The user's language's words for a format's text, through the localiser.
QString localisedText(const QString &text);

} // namespace vyr::model

#endif // VYR_TESTS_MODEL_RUNNER_H
