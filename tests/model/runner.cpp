#include "model/runner.h"

#include "model/dialogdriver.h"
#include "model/reviewcheck.h"
#include "model/screen.h"

#include "services/localizer/guilocalizer.h"
#include "stringobjects/vyrrwstringimp.h"
#include "util/capabilityfile.h"
#include "util/listpacking.h"

#include "vyr/IVYRFeature.h"
#include "vyr/IVYRSession.h"
#include "vyr/vyr_featurefile.h"
#include "vyrguimfc/vyrguimfc.h"

#include <nlohmann/json.hpp>

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QTimer>
#include <QtTest>

#include <fstream>
#include <sstream>

namespace vyr::model {

namespace {

std::string readText(const std::string &path)
{
    std::ifstream in(path, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

std::string jsonOf(const IVYRFeature *feature)
{
    VYRRWStringImp text;
    if (!VYR_FeatureWriteJson(feature, &text))
        return {};
    return std::string(text.data(), text.length());
}

// Message boxes an action is known to show.
std::size_t messagesExpected(const SchemaModel &before, const Action &action)
{
    if (action.kind == ActionKind::ApplyToOthers && !before.refusals().empty())
        return 1;
    if (action.kind == ActionKind::PasteAttributes) {
        SchemaModel after = before;
        return after.pasteRows(action.lines).empty() ? 0 : 1;
    }
    return 0;
}

bool mentions(const std::vector<Refusal> &reasons, const QString &text)
{
    bool any = false;
    for (const Refusal &reason : reasons) {
        if (reason.mention.empty())
            return true;
        any = any || text.contains(QString::fromStdString(reason.mention));
    }
    return any;
}

std::string describeReasons(const std::vector<Refusal> &reasons)
{
    Strings lines;
    for (const Refusal &reason : reasons)
        lines.push_back(reason.reason);
    return joined(lines, "; ");
}

// With VYR_MODEL_TRACE set, what the screen and the model hold after each
// step, to see where they part.
void trace(const DialogDriver &driver, const SchemaModel &model, const Action &action)
{
    const Screen screen = readScreen(driver);
    std::string text = "after " + action.describe() + "\n  focus: ";
    if (QWidget *focus = QApplication::focusWidget())
        text += std::string(focus->metaObject()->className()) + " " + focus->objectName().toStdString();
    text += "\n  screen:";
    for (const ShownAttribute &row : screen.attributes)
        text += " [" + row.name + " " + row.cells.type + " " + row.cells.first + " " + row.cells.second + "]";
    text += "\n  model: ";
    for (const AttributeRow &row : model.page().attributes)
        text += " [" + row.name + " " + row.cells.type + " " + row.cells.first + " " + row.cells.second + "]";
    text += "\n  format attributes:";
    for (const ShownFormatAttribute &row : screen.formatAttributes)
        text += " [" + std::string(row.ticked ? "x " : "  ") + row.name + " " + std::to_string(row.count) + "]";
    for (const std::string &line : differencesFromModel(screen, model, driver))
        text += "\n  differs: " + line;
    qDebug("%s", text.c_str());
}

} // namespace

QString localisedText(const QString &text)
{
    const QByteArray narrow = text.toUtf8();
    char buffer[1024];
    const int length = GuiLoc_Localize(narrow.constData(), buffer, int(sizeof buffer));
    return length > 0 ? QString::fromUtf8(buffer, length) : text;
}

Workspace::Workspace(const std::string &examples)
{
    const nlohmann::json workspace = nlohmann::json::parse(readText(examples + "/workspace.json"));
    for (const auto &item : workspace.at("feature_types")) {
        Entry entry;
        entry.file = item.at("feature").get<std::string>();
        entry.json = readText(examples + "/" + entry.file);
        entry.capabilities = readCapabilityFile(examples + "/" + item.at("format").get<std::string>()).value_or("");
        entry.format = std::make_shared<FormatModel>(entry.capabilities);
        m_entries.push_back(std::move(entry));
    }
    for (const auto &source : workspace.at("schema_sources"))
        m_schemaSource = readCapabilityFile(examples + "/" + source.get<std::string>()).value_or("");
}

std::size_t Workspace::indexOf(const std::string &file) const
{
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        if (m_entries[i].file == file)
            return i;
    }
    qFatal("no feature file %s in the workspace", file.c_str());
}

Runner::Runner(const Workspace &workspace, IVYRSession *session, std::string configHome)
    : m_workspace(workspace)
    , m_session(session)
    , m_configHome(std::move(configHome))
{}

void Runner::writeSetting(bool sourceEditing) const
{
    QDir().mkpath(QString::fromStdString(m_configHome + "/Quenbry Inc."));
    QFile file(QString::fromStdString(m_configHome + "/Quenbry Inc./VYR Loomhouse.conf"));
    if (!sourceEditing) {
        file.remove();
        return;
    }
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write("[Settings]\nAllow Source Feature Type Editing=yes\n");
}

std::vector<std::size_t> Runner::otherEntries(const Session &session, bool source) const
{
    std::vector<std::size_t> indexes;
    for (std::size_t i = 0; i < m_workspace.entries().size() && !session.alone; ++i) {
        if (i != session.edited && m_workspace.entries()[i].format->isSource() == source)
            indexes.push_back(i);
    }
    return indexes;
}

SchemaModel Runner::modelFor(const Session &session) const
{
    const auto &entries = m_workspace.entries();
    const Workspace::Entry &edited = entries.at(session.edited);
    static std::map<std::string, std::shared_ptr<FormatModel>> replaced;
    std::shared_ptr<FormatModel> format = edited.format;
    if (session.capabilities) {
        auto &kept = replaced[*session.capabilities];
        if (!kept)
            kept = std::make_shared<FormatModel>(*session.capabilities);
        format = kept;
    }
    std::map<std::string, const FormatModel *> formats;
    std::vector<OtherFeatureType> others;
    for (std::size_t i : otherEntries(session, format->isSource())) {
        formats[entries[i].format->name()] = entries[i].format.get();
        others.push_back({*FeatureData::fromJson(entries[i].json), entries[i].format.get()});
    }
    const std::string json = session.json.value_or(edited.json);
    const std::optional<FeatureData> data = FeatureData::fromJson(json);
    if (!data)
        qFatal("the feature file of a session cannot be read");
    return SchemaModel(*data, *format, formats, std::move(others), session.sourceEditing);
}

Session Runner::randomSession(std::uint64_t seed, std::size_t edited, bool sourceEditing) const
{
    std::mt19937_64 random(seed);
    Session session;
    session.edited = edited;
    session.sourceEditing = sourceEditing;
    SchemaModel model = modelFor(session);
    const int length = std::uniform_int_distribution<int>(1, 12)(random);
    for (int i = 0; i < length; ++i) {
        std::optional<Action> action = randomAction(model, random);
        if (!action)
            break;
        applyToModel(model, *action);
        session.actions.push_back(*action);
    }
    session.ending = randomEnding(model, random);
    return session;
}

SessionResult Runner::run(const Session &session)
{
    SessionResult result;
    const auto &entries = m_workspace.entries();
    writeSetting(session.sourceEditing);
    SchemaModel model = modelFor(session);

    // The features as a host holds them: the edited one and the others of
    // its role, in the workspace's order.
    std::vector<IVYRFeature *> features;
    std::vector<std::string> capabilities;
    std::vector<std::string> before;
    const std::string editedJson = session.json.value_or(entries[session.edited].json);
    const std::string editedCapabilities = session.capabilities.value_or(entries[session.edited].capabilities);
    const auto load = [&](const std::string &json, const std::string &caps) {
        IVYRFeature *feature = m_session->createFeature();
        if (!VYR_FeatureReadJson(feature, json.data(), json.size(), "session", nullptr))
            qFatal("a session's feature cannot be read");
        features.push_back(feature);
        capabilities.push_back(caps);
        before.push_back(jsonOf(feature));
    };
    load(editedJson, editedCapabilities);
    const std::vector<std::size_t> otherIndexes = otherEntries(session, model.format().isSource());
    for (std::size_t i : otherIndexes)
        load(entries[i].json, entries[i].capabilities);
    std::vector<VYRWorkspaceFeatureType> others;
    for (std::size_t i = 1; i < features.size(); ++i)
        others.push_back({features[i], capabilities[i].c_str()});

    std::string &log = result.transcript;
    log += "feature type " + model.page().name + " (" + entries[session.edited].file + ", " + model.format().name()
        + (session.sourceEditing ? ", source editing allowed" : "") + (session.alone ? ", single-feature export" : "")
        + ")\n";
    for (std::size_t i = 0; i < session.actions.size(); ++i)
        log += "  " + std::to_string(i + 1) + ". " + session.actions[i].describe() + "\n";
    log += "  " + session.ending.describe() + "\n";

    Strings &failures = result.failures;
    Prediction prediction;
    Screen shown;
    bool predicted = false;
    bool scriptDone = false;
    QPointer<QDialog> dialog;
    std::optional<QString> review;

    const auto script = [&] {
        QTRY_VERIFY_WITH_TIMEOUT(qobject_cast<QDialog *>(QApplication::activeModalWidget()), 5000);
        dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        ModalWatcher watcher(dialog);
        DialogDriver driver(dialog, watcher);
        driver.setLocaliser(localisedText);
        if (!ModalWatcher::activate(dialog))
            driver.problem(QStringLiteral("the dialog did not become active"));
        bool unmodelled = false;
        const auto abort = [&](const std::string &why) {
            failures.push_back(why);
            if (driver.isOpen())
                dialog->reject();
            scriptDone = true;
        };
        // What the pages show at opening is the first thing the rules fix.
        shown = readScreen(driver);
        const Strings differences = differencesFromModel(shown, model, driver);
        for (const std::string &line : differences)
            failures.push_back("[screen] " + line + " (at opening)");
        if (!differences.empty())
            return abort("[screen] the screen differs from the model at opening");
        for (std::size_t i = 0; i < session.actions.size(); ++i) {
            const Action &action = session.actions[i];
            const SchemaModel before = model;
            const std::size_t expected = messagesExpected(model, action);
            perform(driver, model, action);
            applyToModel(model, action);
            const std::string after = " (after step " + std::to_string(i + 1) + ")";
            if (std::getenv("VYR_MODEL_TRACE"))
                trace(driver, model, action);
            for (const QString &problem : driver.problems())
                failures.push_back("[driver] " + problem.toStdString() + after);
            for (const QString &finding : driver.findings())
                failures.push_back("[check] " + finding.toStdString() + after);
            driver.clearFindings();
            if (!driver.problems().isEmpty())
                return abort("[driver] the sequence stopped");
            const auto &messages = watcher.messages();
            if (messages.size() > expected) {
                for (const ShownMessage &message : messages)
                    failures.push_back("[message] unexpected: \"" + message.text.toStdString() + "\"" + after);
                return abort("[message] the sequence stopped");
            }
            if (messages.size() < expected) {
                if (action.kind == ActionKind::ApplyToOthers) {
                    const std::string went = watcher.strays().isEmpty()
                        ? "said nothing"
                        : "opened " + watcher.strays().join(QStringLiteral(", ")).toStdString();
                    return abort("[refusal] Apply to Others " + went + " though " + describeReasons(before.refusals())
                                 + after);
                }
                return abort("[message] no message was shown" + after);
            }
            for (const ShownMessage &message : messages) {
                if (message.text.trimmed().isEmpty())
                    failures.push_back("[message] an empty message" + after);
            }
            watcher.clearMessages();
            if (!watcher.strays().isEmpty())
                return abort("[driver] windows nobody expected: " + watcher.strays().join(QStringLiteral(", ")).toStdString()
                             + after);
            if (!watcher.allAnswered())
                return abort("[driver] an expected window did not open" + after);
            if (!driver.isOpen())
                return abort("[dialog] the dialog closed by itself" + after);
            unmodelled = unmodelled || action.unmodelled;
            if (unmodelled)
                continue;
            // The model and the screen part at the first step that shows
            // something else than the rules say.
            shown = readScreen(driver);
            std::map<std::string, int> counts;
            for (const ShownFormatAttribute &row : shown.formatAttributes)
                counts[row.name] = row.count;
            model.adoptShownCounts(counts);
            std::vector<TypeCells> cells;
            for (const ShownAttribute &row : shown.attributes)
                cells.push_back(row.cells);
            model.adoptShownArguments(cells);
            model.adoptShownGeometry(shown.geometry);
            const Strings differences = differencesFromModel(shown, model, driver);
            for (const std::string &line : differences)
                failures.push_back("[screen] " + line + after);
            if (!differences.empty())
                return abort("[screen] the screen differs from the model; the sequence stopped at step "
                             + std::to_string(i + 1));
        }
        if (unmodelled && session.ending.isOk())
            return abort("[driver] a session the model does not follow can only end with Cancel");
        // What OK is about to write, as the review shows it; going there and
        // back must leave OK to save what it would have saved.
        if (session.ending.isOk() && model.refusals().empty() && model.possibleRefusals().empty()) {
            review = readReview(driver);
            for (const QString &problem : driver.problems())
                failures.push_back("[review] " + problem.toStdString());
            if (!driver.problems().isEmpty())
                return abort("[review] the sequence stopped");
            for (const ShownMessage &message : watcher.messages())
                failures.push_back("[review] the review said \"" + message.text.toStdString() + "\"");
            watcher.clearMessages();
            if (!driver.isOpen())
                return abort("[review] the dialog closed with the review");
        }
        prediction = model.predict();
        predicted = true;
        performEnding(driver, model, session.ending);
        if (session.ending.isOk() && driver.isOpen()) {
            result.refused = true;
            const auto messages = watcher.messages();
            for (const ShownMessage &message : messages)
                result.refusalMessages.append(message.text);
            if (messages.empty()) {
                std::string where;
                if (QWidget *focus = QApplication::focusWidget())
                    where = " (the keyboard is on " + focus->objectName().toStdString() + ")";
                failures.push_back("[refusal] OK neither saved nor said why" + where);
            } else {
                const QString text = messages.back().text;
                if (text.trimmed().isEmpty())
                    failures.push_back("[refusal] OK refused with an empty message");
                else if (!prediction.mustRefuse.empty() && !mentions(prediction.mustRefuse, text))
                    failures.push_back("[refusal] OK's message \"" + text.toStdString() + "\" does not name "
                                       + prediction.mustRefuse.front().mention);
                if (prediction.mustRefuse.empty() && prediction.mayRefuse.empty())
                    failures.push_back("[refusal] OK refused: \"" + text.toStdString()
                                       + "\", though the model sees nothing wrong");
            }
            driver.click(driver.control("cancelButton"));
        } else if (session.ending.isOk()) {
            if (!watcher.allAnswered())
                failures.push_back("[apply] OK asked nothing before applying to the others");
        } else if (driver.isOpen()) {
            failures.push_back("[dialog] the dialog stayed open after " + session.ending.describe());
        }
        if (!watcher.strays().isEmpty())
            failures.push_back("[dialog] " + session.ending.describe() + " opened "
                               + watcher.strays().join(QStringLiteral(", ")).toStdString());
        watcher.forgetExpected();
        if (driver.isOpen())
            dialog->reject();
        scriptDone = true;
    };
    // Nothing may leave an event handler by an exception: a fault of the
    // harness is reported as such, and the dialog is closed.
    // Both timers belong to this call: none of them outlives the session.
    QTimer start;
    start.setSingleShot(true);
    QObject::connect(&start, &QTimer::timeout, qApp, [&] {
        try {
            script();
        } catch (const std::exception &error) {
            failures.push_back(std::string("[harness] ") + error.what());
            if (dialog && dialog->isVisible())
                dialog->reject();
            scriptDone = true;
        }
    });
    start.start(0);
    // Nothing waits for a person: a session that runs too long is ended.
    QTimer deadline;
    deadline.setSingleShot(true);
    QObject::connect(&deadline, &QTimer::timeout, qApp, [&] {
        if (scriptDone)
            return;
        failures.push_back("[driver] the session did not end within two minutes");
        while (QWidget *modal = QApplication::activeModalWidget()) {
            if (auto *window = qobject_cast<QDialog *>(modal))
                window->reject();
            else
                modal->close();
            QCoreApplication::processEvents();
        }
    });
    deadline.start(120000);

    const char *sources[] = {m_workspace.schemaSource().c_str()};
    const bool ok = session.alone
        ? VYRFeatTypeProperties(m_session, features[0], editedCapabilities.c_str(), nullptr)
        : VYRFeatTypePropertiesInWorkspace(m_session, features[0], editedCapabilities.c_str(), others.data(),
                                           others.size(), sources, 1, nullptr);
    result.saved = ok;

    const bool okEnding = session.ending.isOk() && predicted;
    const bool mustRefuse = !prediction.mustRefuse.empty();
    if (predicted && okEnding) {
        if (mustRefuse && ok)
            failures.push_back("[refusal] OK saved though " + describeReasons(prediction.mustRefuse));
        if (!mustRefuse && !ok && prediction.mayRefuse.empty())
            failures.push_back("[refusal] OK did not save");
    }
    if (predicted && !okEnding && ok)
        failures.push_back("[dialog] " + session.ending.describe() + " returned true");

    result.savedJson = jsonOf(features[0]);
    for (std::size_t i = 0; i < features.size(); ++i) {
        const std::string now = jsonOf(features[i]);
        const std::string who = i == 0 ? "the edited feature" : "the other feature " + entries[otherIndexes[i - 1]].file;
        if (!ok || !predicted) {
            if (now != before[i])
                failures.push_back("[bytes] " + who + " changed though nothing was saved");
            continue;
        }
        const std::optional<FeatureData> saved = FeatureData::fromJson(now);
        if (!saved) {
            failures.push_back("[saved] " + who + " is no longer a feature file");
            continue;
        }
        if (i == 0 && mustRefuse)
            continue; // said above: OK saved what it had to refuse
        if (i == 0) {
            for (const std::string &line : prediction.edited.differences(*saved))
                failures.push_back("[saved] " + line);
            if (prediction.unchanged && now != before[0])
                failures.push_back("[bytes] OK after no visible change rewrote the feature");
            for (const std::string &line : rowsMissingFromFile(shown, *saved, model))
                failures.push_back("[rows] " + line);
            if (review) {
                HandedOver handedOver{editedJson, editedCapabilities, {}};
                if (!session.alone)
                    handedOver.workspaceFormats.assign(capabilities.begin() + 1, capabilities.end());
                const std::string expected = expectedReview(*m_session, handedOver, *features[0], model);
                for (const std::string &line : reviewDifferences(*review, expected))
                    failures.push_back("[review] " + line);
            }
            const Strings names = saved->list(kParameterNames), values = saved->list(kParameterValues);
            for (const auto &[parameter, allowed] : prediction.references) {
                for (std::size_t p = 0; p < names.size() && p < values.size(); ++p) {
                    if (names[p] != parameter)
                        continue;
                    for (const std::string &name : splitList(values[p], ',')) {
                        if (!name.empty() && !allowed.count(name))
                            failures.push_back("[saved] the parameter " + parameter + " still names " + name
                                               + ", which is gone");
                    }
                }
            }
            continue;
        }
        const auto expected = prediction.others.find(i - 1);
        if (expected == prediction.others.end()) {
            if (now != before[i])
                failures.push_back("[others] " + who + " changed though nothing was applied to it");
            continue;
        }
        for (const std::string &line : expected->second.differences(*saved))
            failures.push_back("[others] " + who + ": " + line);
    }
    for (IVYRFeature *feature : features)
        m_session->destroyFeature(feature);
    return result;
}

} // namespace vyr::model
