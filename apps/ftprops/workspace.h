// A translation workspace as vyr-ftprops keeps it: feature types, each a
// schema feature file with its format capability file, and the formats that
// can serve as schema sources. A JSON file; paths are relative to it:
//
//   {
//     "feature_types": [
//       { "feature": "schemas/shapefile-roads.json", "format": "formats/shapefile.fmt" },
//       ...
//     ],
//     "schema_sources": [ "formats/csv.fmt" ]
//   }
//
// A feature type's name is the "feature_type" of its feature file, its role
// (reader or writer) the SOURCE value of its format. When the user moves a
// feature type to another dataset, its entry takes the capability file of a
// feature type of that format, and the workspace file is rewritten.
#ifndef VYR_APPS_FTPROPS_WORKSPACE_H
#define VYR_APPS_FTPROPS_WORKSPACE_H

#include <nlohmann/json.hpp>

#include <memory>
#include <string>
#include <vector>

class IVYRFeature;
class IVYRSession;
class QWidget;

namespace vyr::ftprops {

struct WorkspaceFeatureType
{
    std::string featurePath;
    std::string formatPath;
    std::string formatEntry; // as the workspace file writes it
    std::string capabilities;
    std::string formatName;
    bool source = false;
    IVYRFeature *feature = nullptr;
    // The feature as its file holds it (its text as written now), from the
    // last read or successful save: an edit whose save failed still counts
    // as a change.
    std::string saved;

    std::string name() const;
};

// NotOpened: the dialog library could not show the dialog at all (it says
// why on standard error); nothing was edited.
enum class EditResult { Saved, Cancelled, SaveFailed, NotOpened };

class Workspace
{
public:
    // Null, with the reason in `error`, when the file or one it names cannot
    // be read.
    static std::unique_ptr<Workspace> open(const std::string &path, IVYRSession &session, std::string &error);
    // The workspace in `text`, as if read from the file at `path`.
    static std::unique_ptr<Workspace> parse(const std::string &text, const std::string &path, IVYRSession &session,
                                            std::string &error);
    ~Workspace();
    Workspace(const Workspace &) = delete;
    Workspace &operator=(const Workspace &) = delete;

    const std::string &path() const { return m_path; }
    const std::vector<WorkspaceFeatureType> &featureTypes() const { return m_featureTypes; }
    // The index of the feature type named `name`, or -1.
    int find(const std::string &name) const;

    // Opens the feature type properties dialog on feature type `index`, with
    // the other feature types of its role beside it. On OK every feature
    // file whose feature differs from what the file holds is replaced
    // (written whole, then renamed over the old one), edits whose save
    // failed before included; on Cancel nothing is written. `message` tells
    // what was saved, or why saving failed (every file that failed).
    EditResult edit(int index, QWidget *parent, std::string &message);

    // Whether a feature differs from its file, or the workspace file still
    // names a format a feature type has left: a save failed.
    bool hasUnsavedChanges() const;

private:
    Workspace(std::string path, IVYRSession &session);
    // Follows a feature type that moved to another format: says so in
    // `message`, or why the workspace file cannot be written in `failures`
    // (and answers false).
    bool followFormatChange(std::size_t index, std::string &message, std::string &failures);
    // The format a feature type moved to in the dialog, when it did.
    std::string movedFormat(const WorkspaceFeatureType &featureType) const;

    std::string m_path;
    IVYRSession &m_session;
    std::vector<WorkspaceFeatureType> m_featureTypes;
    std::vector<std::string> m_schemaSources;
    nlohmann::json m_document;
};

} // namespace vyr::ftprops

#endif // VYR_APPS_FTPROPS_WORKSPACE_H
