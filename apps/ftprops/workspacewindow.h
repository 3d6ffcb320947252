// The workspace window: the feature types, and the command that opens the
// feature type properties dialog on the selected one.
#ifndef VYR_APPS_FTPROPS_WORKSPACEWINDOW_H
#define VYR_APPS_FTPROPS_WORKSPACEWINDOW_H

#include <QWidget>

class QLabel;
class QListWidget;

namespace vyr::ftprops {

class Workspace;

class WorkspaceWindow final : public QWidget
{
    Q_OBJECT

public:
    explicit WorkspaceWindow(Workspace &workspace, QWidget *parent = nullptr);

    void editSelected();

protected:
    // Edits whose save failed are not dropped without a word.
    void closeEvent(QCloseEvent *event) override;

private:
    void refresh();

    Workspace &m_workspace;
    QListWidget *m_list;
    QLabel *m_status;
};

} // namespace vyr::ftprops

#endif // VYR_APPS_FTPROPS_WORKSPACEWINDOW_H
