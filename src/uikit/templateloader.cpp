#include "uikit/templateloader.h"

#include "uikit/dropdowncombobox.h"
#include "uikit/pageaccessible.h"

namespace vyr {

TemplateLoader &TemplateLoader::instance()
{
    static TemplateLoader *loader = new TemplateLoader;
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
