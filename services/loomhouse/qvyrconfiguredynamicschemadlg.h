/* The authoring application's dynamic schema dialog: how a destination
 * feature type that takes its schema from schema sources at run time names
 * its feature types, which geometry it gives them, and which attributes it
 * writes. The choices travel in the three options and texts of the settings
 * record:
 *
 *   option 1  feature type names  0 as the schema sources name them
 *                                 1 one feature type, named text 1
 *                                 2 named by the value of attribute text 1
 *   option 2  geometry            0 as each schema source gives it
 *                                 1 the geometry text 2
 *   option 3  attributes          0 every attribute of the sources
 *                                 1 only the attributes in text 3
 *                                 2 every attribute except those in text 3
 *                                 (text 3: names separated by blanks)
 *
 * All options 0 is the default. Texts of options set to 0 are kept as they
 * were, so switching back and forth loses nothing. */
#ifndef VYR_QVYRCONFIGUREDYNAMICSCHEMADLG_H
#define VYR_QVYRCONFIGUREDYNAMICSCHEMADLG_H

#include "qvyrext.h"

#include "ftprops/dynamicschemainfo.h"
#include "vyr/IVYRString.h"
#include "vyr/IVYRStringArray.h"

#if defined(VYR_QT_LOOMHOUSE_BUILDING)
#define VYR_QT_LOOMHOUSE_API __attribute__((visibility("default")))
#else
#define VYR_QT_LOOMHOUSE_API
#endif

class QButtonGroup;
class QComboBox;
class QLineEdit;

class VYR_QT_LOOMHOUSE_API QVYRConfigureDynamicSchemaDlg : public QVYRDialog
{
    Q_OBJECT

public:
    /* Starts from `settings`; `name` and `geometry` are the feature type's
     * current name and geometry, the choice lists fill the attribute and
     * geometry boxes. Nothing is kept of the arguments but copies. */
    QVYRConfigureDynamicSchemaDlg(const vyr::IDynamicSchemaInfo &settings, const IVYRString &name,
                                  const IVYRString &geometry, const IVYRStringArray &fanoutChoices,
                                  const IVYRStringArray &geometryChoices, QWidget *parent);
    ~QVYRConfigureDynamicSchemaDlg() override;

    /* The settings as the dialog shows them. */
    void dynamicSchemaInfo(vyr::IDynamicSchemaInfo &settings) const;

private:
    void updateEnabling();

    QButtonGroup *m_names;
    QButtonGroup *m_geometries;
    QButtonGroup *m_attributes;
    QLineEdit *m_fixedName;
    QComboBox *m_nameAttribute;
    QComboBox *m_geometry;
    QLineEdit *m_attributeList;
    int m_startOptions[3];
    std::string m_startTexts[3];
};

#endif /* VYR_QVYRCONFIGUREDYNAMICSCHEMADLG_H */
