#include "uikit/templateloader.h"

#include "uikit/dropdowncombobox.h"
#include "uikit/pageaccessible.h"

#include <QCoreApplication>

namespace vyr {

TemplateLoader &TemplateLoader::instance()
{
    static TemplateLoader *loader = [] {
        // A form loader loads every Designer plugin in the library paths
        // as it is made. The templates hold Qt's widgets and ours alone;
        // the plugins would map Qt Quick into every host for nothing, and
        // their folders follow QT_PLUGIN_PATH and the host's directory,
        // which are not the installation's. So it is made with none.
        const QStringList paths = QCoreApplication::libraryPaths();
        QCoreApplication::setLibraryPaths({});
        auto *made = new TemplateLoader;
        QCoreApplication::setLibraryPaths(paths);
        return made;
    }();
    return *loader;
}

QWidget *TemplateLoader::createWidget(const QString &className, QWidget *parent, const QString &name)
{
    if (className == QLatin1String("VyrDropDownComboBox")) {
        auto *combo = new DropDownComboBox(parent);
        combo->setObjectName(name);
        return combo;
    }
    if (className == QLatin1String("QComboBox")) {
        auto *combo = new ComboBox(parent);
        combo->setObjectName(name);
        return combo;
    }
    // Designer has no tab bar of its own; the frames that page their
    // dialogs themselves need one.
    if (className == QLatin1String("QTabBar")) {
        auto *tabBar = new PageTabBar(parent);
        tabBar->setObjectName(name);
        return tabBar;
    }
    return QUiLoader::createWidget(className, parent, name);
}

} // namespace vyr
