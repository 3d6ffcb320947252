// The folder picker behind VYR_SelectGeodatabase.
#ifndef VYR_SERVICES_GEODATABASEPICKER_H
#define VYR_SERVICES_GEODATABASEPICKER_H

#include <QDialog>
#include <QString>

#include <memory>

class QLineEdit;
class QTreeView;

namespace vyr::services {

// What a typed or chosen path is to the picker.
enum class GeodatabasePath {
    Existing,      // a folder named "*.gdb": OK
    New,           // with new ones allowed: "*.gdb" not there yet, its folder is: OK
    Empty,         // nothing typed
    NotNamedGdb,   // a folder, but not a geodatabase
    NotAFolder,    // a file
    Missing,       // neither it nor (for a new one) its folder exists
    TooLong,       // does not fit the caller's buffer
    NotInCodePage, // holds characters the narrow code page cannot write
};

// Classifies `path` (absolute or relative to the working directory): the
// file system's bytes read through the narrow code page (uikit/narrowtext.h),
// so that bytes that are no text there keep their place. `maxBytes` is the
// longest path, in bytes, the caller can take.
GeodatabasePath classifyGeodatabasePath(const QString &path, bool allowNew, int maxBytes);

class GeodatabasePicker : public QDialog
{
    Q_OBJECT
public:
    // `maxBytes`: see classifyGeodatabasePath. A start path of `maxBytes`
    // bytes or more fills the caller's buffer and may be a longer path cut
    // short: it is shown, but not answered with until it is changed.
    GeodatabasePicker(const QString &title, const QString &prompt, const QString &startPath, bool allowNew,
                      int maxBytes, QWidget *parent = nullptr);
    ~GeodatabasePicker() override;

    // The chosen path, absolute and clean.
    QString path() const;
    // Why OK is not available now; empty when it is.
    QString problem() const;

    // Takes OK only for a path the picker can answer with.
    void accept() override;

protected:
    void showEvent(QShowEvent *event) override;

private:
    void showFolderOf(const QString &path);
    void pathEdited();
    void folderChosen();
    void folderActivated();
    void nameNewGeodatabase();
    void updateState();

    struct Private;
    std::unique_ptr<Private> const d;
};

} // namespace vyr::services

#endif // VYR_SERVICES_GEODATABASEPICKER_H
