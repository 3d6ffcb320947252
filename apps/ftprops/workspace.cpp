#include "workspace.h"

#include "stringobjects/vyrrwstringimp.h"
#include "ftprops/formatcapabilities.h"
#include "util/capabilityfile.h"
#include "util/jsonlocation.h"
#include "util/jsonnesting.h"
#include "util/safefiles.h"

#include "vyr/IVYRFeature.h"
#include "vyr/IVYRSession.h"
#include "vyr/vyr_featurefile.h"
#include "vyrguimfc/vyrguimfc.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>

#include <filesystem>
#include <optional>

namespace vyr::ftprops {
namespace {

namespace fs = std::filesystem;

// The feature as its file would hold it now, taken in memory: whether a
// feature changed must never depend on files that may not be writable.
std::string snapshotOf(const IVYRFeature &feature)
{
    VYRRWStringImp text;
    if (!VYR_FeatureWriteJson(&feature, &text))
        return {};
    return std::string(text.data(), text.length());
}

// Whether two snapshots hold the same feature. Compared as JSON, the order
// in which attributes were last set does not count as a change; equal texts
// are the same feature without being parsed, which spares parsing every
// feature as a workspace opens.
bool sameFeature(const std::string &one, const std::string &other)
{
    return one == other || nlohmann::json::parse(one, nullptr, false) == nlohmann::json::parse(other, nullptr, false);
}

// Whether a dialog showed while the watch lived. The export answers false
// both for a dialog the user cancelled and for one that could not open.
class DialogShowWatch : public QObject
{
public:
    DialogShowWatch()
    {
        if (qApp)
            qApp->installEventFilter(this);
        else
            m_shown = true; // nothing to watch with; take the export's word
    }
    bool shown() const { return m_shown; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Show && qobject_cast<QDialog *>(watched))
            m_shown = true;
        return false;
    }

private:
    bool m_shown = false;
};

// What a JSON value is, in the words of a message about a workspace file.
std::string kindOf(const nlohmann::json &value)
{
    if (value.is_object())
        return "an object";
    if (value.is_array())
        return "a list";
    if (value.is_string())
        return "a text";
    if (value.is_boolean())
        return "true or false";
    if (value.is_null())
        return "null";
    return "a number";
}

// What is wrong with the layout of a parsed workspace file, as "FILE:LINE:
// COLUMN: what", or nothing when every member the program reads has the
// kind it needs.
std::optional<std::string> layoutProblem(const nlohmann::json &document, const std::string &path,
                                         std::string_view text)
{
    const auto at = [&](const JsonPath &where, const std::string &what) {
        return std::optional<std::string>(jsonPlace(path, text, where) + what);
    };
    if (!document.is_object())
        return at({}, "a workspace is a JSON object with a \"feature_types\" list, not " + kindOf(document));
    const auto featureTypes = document.find("feature_types");
    if (featureTypes == document.end())
        return at({}, "the workspace has no \"feature_types\" list");
    if (!featureTypes->is_array())
        return at({"feature_types"}, "\"feature_types\" must be a list of feature types, not " + kindOf(*featureTypes));
    for (std::size_t i = 0; i < featureTypes->size(); ++i) {
        const nlohmann::json &entry = (*featureTypes)[i];
        const std::string which = "feature type " + std::to_string(i + 1);
        if (!entry.is_object())
            return at({"feature_types", i}, which + " must be an object with \"feature\" and \"format\", not "
                                                + kindOf(entry));
        for (const char *member : {"feature", "format"}) {
            const auto value = entry.find(member);
            if (value == entry.end())
                return at({"feature_types", i}, which + " has no \"" + member + "\"");
            if (!value->is_string() || value->get_ref<const std::string &>().empty())
                return at({"feature_types", i, std::string(member)},
                          std::string("\"") + member + "\" of " + which + " must name a file, not be "
                              + (value->is_string() ? std::string("empty") : kindOf(*value)));
        }
    }
    const auto sources = document.find("schema_sources");
    if (sources == document.end())
        return std::nullopt;
    if (!sources->is_array())
        return at({"schema_sources"}, "\"schema_sources\" must be a list of capability files, not " + kindOf(*sources));
    for (std::size_t i = 0; i < sources->size(); ++i) {
        if (!(*sources)[i].is_string() || (*sources)[i].get_ref<const std::string &>().empty())
            return at({"schema_sources", i}, "schema source " + std::to_string(i + 1) + " must name a capability file");
    }
    return std::nullopt;
}

} // namespace

std::string WorkspaceFeatureType::name() const
{
    return feature ? std::string(feature->getFeatureType()) : std::string();
}

Workspace::Workspace(std::string path, IVYRSession &session)
    : m_path(std::move(path))
    , m_session(session)
{}

Workspace::~Workspace()
{
    for (WorkspaceFeatureType &featureType : m_featureTypes)
        m_session.destroyFeature(featureType.feature);
}

std::unique_ptr<Workspace> Workspace::open(const std::string &path, IVYRSession &session, std::string &error)
{
    const std::optional<std::string> text = readUntrustedFile(path, error);
    if (!text) {
        error = "cannot read the workspace file " + error;
        return nullptr;
    }
    return parse(*text, path, session, error);
}

std::unique_ptr<Workspace> Workspace::parse(const std::string &text, const std::string &path, IVYRSession &session,
                                            std::string &error)
{
    if (const auto refusal = refuseDeepJson(text)) {
        error = path + ": " + *refusal;
        return nullptr;
    }
    nlohmann::json document;
    try {
        document = nlohmann::json::parse(text);
    } catch (const nlohmann::json::parse_error &failure) {
        error = jsonSyntaxError(path, text, failure.byte) + " (a workspace is a JSON file; see the README)";
        return nullptr;
    } catch (const nlohmann::json::out_of_range &failure) {
        error = jsonNumberTooLarge(path, text, failure.what());
        return nullptr;
    }
    if (const std::optional<std::string> problem = layoutProblem(document, path, text)) {
        error = *problem + " (see the workspace layout in the README)";
        return nullptr;
    }

    std::unique_ptr<Workspace> workspace(new Workspace(path, session));
    const fs::path base = fs::path(path).parent_path();
    const auto relative = [&](const nlohmann::json &value) { return (base / value.get<std::string>()).string(); };
    for (const nlohmann::json &entry : document.at("feature_types")) {
        WorkspaceFeatureType featureType;
        featureType.featurePath = relative(entry.at("feature"));
        featureType.formatPath = relative(entry.at("format"));
        featureType.formatEntry = entry.at("format").get<std::string>();
        const auto capabilities = readCapabilityFile(featureType.formatPath, &error);
        if (!capabilities) {
            error = "cannot read the capability file " + error;
            return nullptr;
        }
        featureType.capabilities = *capabilities;
        // Only the name and the role: the dialog builds the format's record.
        const FormatCapabilities format(featureType.capabilities);
        featureType.formatName = format.formatName();
        featureType.source = format.isSource();
        featureType.feature = session.createFeature();
        workspace->m_featureTypes.push_back(featureType);
        VYRRWStringImp reason;
        if (!VYR_FeatureLoadJson(featureType.feature, featureType.featurePath.c_str(), &reason)) {
            error = std::string(reason.c_str());
            return nullptr;
        }
        workspace->m_featureTypes.back().saved = snapshotOf(*featureType.feature);
    }
    if (document.contains("schema_sources")) {
        for (const nlohmann::json &entry : document.at("schema_sources")) {
            const auto capabilities = readCapabilityFile(relative(entry), &error);
            if (!capabilities) {
                error = "cannot read the capability file " + error;
                return nullptr;
            }
            workspace->m_schemaSources.push_back(*capabilities);
        }
    }
    workspace->m_document = std::move(document);
    return workspace;
}

std::string Workspace::movedFormat(const WorkspaceFeatureType &featureType) const
{
    VYRRWStringImp moved;
    if (!featureType.feature->getAttribute("vyr_format", moved) || std::string(moved.c_str()) == featureType.formatName)
        return {};
    for (const WorkspaceFeatureType &other : m_featureTypes) {
        if (other.formatName == std::string(moved.c_str()))
            return other.formatName;
    }
    return {};
}

bool Workspace::followFormatChange(std::size_t index, std::string &message, std::string &failures)
{
    WorkspaceFeatureType &featureType = m_featureTypes[index];
    const std::string moved = movedFormat(featureType);
    if (moved.empty())
        return true;
    for (const WorkspaceFeatureType &other : m_featureTypes) {
        if (other.formatName != moved)
            continue;
        nlohmann::json document = m_document;
        document["feature_types"][index]["format"] = other.formatEntry;
        std::string reason;
        if (!replaceFileContent(m_path, document.dump(4) + '\n', reason)) {
            failures += (failures.empty() ? "" : "; ") + reason;
            return false;
        }
        m_document = std::move(document);
        featureType.formatPath = other.formatPath;
        featureType.formatEntry = other.formatEntry;
        featureType.capabilities = other.capabilities;
        featureType.formatName = other.formatName;
        message += (message.empty() ? "" : ", ") + featureType.name() + " now in " + other.formatName + " ("
            + m_path + ")";
        return true;
    }
    return true;
}

bool Workspace::hasUnsavedChanges() const
{
    for (const WorkspaceFeatureType &featureType : m_featureTypes) {
        if (!sameFeature(snapshotOf(*featureType.feature), featureType.saved) || !movedFormat(featureType).empty())
            return true;
    }
    return false;
}

int Workspace::find(const std::string &name) const
{
    for (std::size_t i = 0; i < m_featureTypes.size(); ++i) {
        if (m_featureTypes[i].name() == name)
            return static_cast<int>(i);
    }
    return -1;
}

EditResult Workspace::edit(int index, QWidget *parent, std::string &message)
{
    const WorkspaceFeatureType &edited = m_featureTypes.at(static_cast<std::size_t>(index));
    std::vector<std::size_t> involved{static_cast<std::size_t>(index)};
    std::vector<VYRWorkspaceFeatureType> others;
    for (std::size_t i = 0; i < m_featureTypes.size(); ++i) {
        const WorkspaceFeatureType &other = m_featureTypes[i];
        if (static_cast<int>(i) == index || other.source != edited.source)
            continue;
        involved.push_back(i);
        others.push_back({other.feature, other.capabilities.c_str()});
    }
    std::vector<const char *> sources;
    for (const std::string &capabilities : m_schemaSources)
        sources.push_back(capabilities.c_str());

    const DialogShowWatch watch;
    if (!VYRFeatTypePropertiesInWorkspace(&m_session, edited.feature, edited.capabilities.c_str(), others.data(),
                                          others.size(), sources.data(), sources.size(), parent)) {
        if (watch.shown())
            return EditResult::Cancelled;
        message = "the feature type properties dialog could not be opened (the dialog library says why on "
                  "standard error); nothing was edited";
        return EditResult::NotOpened;
    }

    message.clear();
    std::string failures;
    for (const std::size_t at : involved) {
        WorkspaceFeatureType &featureType = m_featureTypes[at];
        std::string now = snapshotOf(*featureType.feature);
        const bool changed = !sameFeature(now, featureType.saved);
        // A feature type that moves to another format is saved in two files,
        // its feature and the workspace naming its format: when the second
        // cannot be written, the first gets back what it held, so that
        // neither names a format the other does not.
        const bool moving = !movedFormat(featureType).empty();
        std::optional<std::string> before;
        std::string unread;
        if (moving && changed)
            before = readUntrustedFile(featureType.featurePath, unread);
        bool featureSaved = false;
        if (changed) {
            VYRRWStringImp reason;
            if (!VYR_FeatureSaveJson(featureType.feature, featureType.featurePath.c_str(), &reason)) {
                failures += (failures.empty() ? "" : "; ") + std::string(reason.c_str());
                continue;
            }
            featureSaved = true;
        }
        const std::size_t said = message.size();
        if (featureSaved)
            message += (message.empty() ? "saved " : ", ") + featureType.featurePath;
        // Also when only an earlier workspace write failed: it is retried.
        if (!followFormatChange(at, message, failures) && featureSaved && before) {
            std::string reason;
            if (!replaceFileContent(featureType.featurePath, *before, reason))
                failures += "; " + reason + " (it holds the feature type in its new format)";
            message.resize(said);
            continue;
        }
        if (featureSaved)
            featureType.saved = std::move(now);
    }
    if (!failures.empty()) {
        message = message.empty() ? failures : message + "; " + failures;
        return EditResult::SaveFailed;
    }
    if (message.empty())
        message = "nothing changed, nothing saved";
    return EditResult::Saved;
}

} // namespace vyr::ftprops
