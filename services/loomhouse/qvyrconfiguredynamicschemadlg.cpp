#include "qvyrconfiguredynamicschemadlg.h"

#include "servicetext.h"

#include "stringobjects/vyrrwstringimp.h"

#include <QButtonGroup>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <iterator>

using vyr::services::localized;

namespace {

// Narrow text of the host (its code page is the process's) for the widgets.
QString textOf(const char *text)
{
    return QString::fromLocal8Bit(text);
}


QRadioButton *addOption(QButtonGroup *group, QGridLayout *grid, int id, const char *text, QWidget *field = nullptr)
{
    auto *button = new QRadioButton(localized(text));
    button->setObjectName(QStringLiteral("%1_%2").arg(group->objectName()).arg(id));
    group->addButton(button, id);
    grid->addWidget(button, id, 0);
    if (field)
        grid->addWidget(field, id, 1);
    return button;
}

QGroupBox *optionGroup(QWidget *parent, const char *title, QButtonGroup *&group, const char *name, QGridLayout *&grid)
{
    auto *box = new QGroupBox(localized(title), parent);
    grid = new QGridLayout(box);
    grid->setColumnStretch(1, 1);
    group = new QButtonGroup(box);
    group->setObjectName(QLatin1String(name));
    return box;
}

void checkOption(QButtonGroup *group, int option)
{
    QAbstractButton *button = group->button(option);
    (button ? button : group->button(0))->setChecked(true);
}

} // namespace

QVYRConfigureDynamicSchemaDlg::QVYRConfigureDynamicSchemaDlg(const vyr::IDynamicSchemaInfo &settings,
                                                             const IVYRString &name, const IVYRString &geometry,
                                                             const IVYRStringArray &fanoutChoices,
                                                             const IVYRStringArray &geometryChoices, QWidget *parent)
    : QVYRDialog(parent)
    , m_startOptions{settings.getOption1(), settings.getOption2(), settings.getOption3()}
{
    setWindowTitle(localized("Dynamic Schema Settings"));
    setObjectName(QStringLiteral("dynamicSchemaDialog"));
    VYRRWStringImp texts[3];
    settings.getText1(texts[0]);
    settings.getText2(texts[1]);
    settings.getText3(texts[2]);
    for (int i = 0; i < 3; ++i)
        m_startTexts[i] = std::string(texts[i].data(), texts[i].length());

    auto *layout = new QVBoxLayout(this);
    auto *intro = new QLabel(localized("The schema of this feature type is read from its schema sources when the "
                                       "translation runs. Choose how it is shaped."),
                             this);
    intro->setWordWrap(true);
    layout->addWidget(intro);

    QGridLayout *grid = nullptr;
    layout->addWidget(optionGroup(this, "Feature type names", m_names, "names", grid));
    m_fixedName = new QLineEdit(this);
    m_fixedName->setObjectName(QStringLiteral("fixedName"));
    m_nameAttribute = new QComboBox(this);
    m_nameAttribute->setObjectName(QStringLiteral("nameAttribute"));
    m_nameAttribute->setEditable(true);
    for (std::size_t i = 0; i < fanoutChoices.entries(); ++i)
        m_nameAttribute->addItem(textOf(fanoutChoices.elementAt(i)));
    addOption(m_names, grid, 0, "&As the schema sources name them");
    addOption(m_names, grid, 1, "&One feature type, named:", m_fixedName);
    addOption(m_names, grid, 2, "&Named by the value of attribute:", m_nameAttribute);

    layout->addWidget(optionGroup(this, "Geometry", m_geometries, "geometries", grid));
    m_geometry = new QComboBox(this);
    m_geometry->setObjectName(QStringLiteral("geometry"));
    for (std::size_t i = 0; i < geometryChoices.entries(); ++i)
        m_geometry->addItem(textOf(geometryChoices.elementAt(i)));
    addOption(m_geometries, grid, 0, "As &each schema source gives it");
    addOption(m_geometries, grid, 1, "Al&ways:", m_geometry);

    layout->addWidget(optionGroup(this, "Attributes", m_attributes, "attributes", grid));
    m_attributeList = new QLineEdit(this);
    m_attributeList->setObjectName(QStringLiteral("attributeList"));
    m_attributeList->setPlaceholderText(localized("names separated by blanks"));
    addOption(m_attributes, grid, 0, "E&very attribute of the sources");
    addOption(m_attributes, grid, 1, "Only &these:");
    addOption(m_attributes, grid, 2, "All e&xcept these:");
    grid->addWidget(m_attributeList, 1, 1, 2, 1);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setText(localized("OK"));
    buttons->button(QDialogButtonBox::Cancel)->setText(localized("Cancel"));
    layout->addWidget(buttons);

    // Each field right after the choice it belongs to, so that the keyboard
    // meets a choice before what it lets one type.
    QWidget *const order[] = {
        m_names->button(0),      m_names->button(1),      m_fixedName,         m_names->button(2),
        m_nameAttribute,         m_geometries->button(0), m_geometries->button(1), m_geometry,
        m_attributes->button(0), m_attributes->button(1), m_attributes->button(2), m_attributeList,
    };
    for (std::size_t i = 1; i < std::size(order); ++i)
        QWidget::setTabOrder(order[i - 1], order[i]);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    // Start from the settings; a field whose option is off still shows its
    // text, or what the feature type has now.
    m_fixedName->setText(textOf(m_startOptions[0] == 1 ? m_startTexts[0].c_str() : name.c_str()));
    m_nameAttribute->setCurrentText(textOf(m_startOptions[0] == 2 ? m_startTexts[0].c_str() : ""));
    const QString startGeometry = textOf(m_startOptions[1] == 1 ? m_startTexts[1].c_str() : geometry.c_str());
    if (m_geometry->findText(startGeometry) >= 0)
        m_geometry->setCurrentText(startGeometry);
    m_attributeList->setText(textOf(m_startTexts[2].c_str()));
    checkOption(m_names, m_startOptions[0]);
    checkOption(m_geometries, m_startOptions[1]);
    checkOption(m_attributes, m_startOptions[2]);
    for (QButtonGroup *group : {m_names, m_geometries, m_attributes})
        connect(group, &QButtonGroup::idClicked, this, [this] { updateEnabling(); });
    updateEnabling();
}

QVYRConfigureDynamicSchemaDlg::~QVYRConfigureDynamicSchemaDlg() = default;

void QVYRConfigureDynamicSchemaDlg::updateEnabling()
{
    m_fixedName->setEnabled(m_names->checkedId() == 1);
    m_nameAttribute->setEnabled(m_names->checkedId() == 2);
    m_geometry->setEnabled(m_geometries->checkedId() == 1);
    m_attributeList->setEnabled(m_attributes->checkedId() != 0);
}

void QVYRConfigureDynamicSchemaDlg::dynamicSchemaInfo(vyr::IDynamicSchemaInfo &settings) const
{
    const int options[3] = {m_names->checkedId(), m_geometries->checkedId(), m_attributes->checkedId()};
    const QString shown[3] = {
        options[0] == 2 ? m_nameAttribute->currentText() : m_fixedName->text(),
        m_geometry->currentText(),
        m_attributeList->text().simplified(),
    };
    VYRRWStringImp texts[3];
    for (int i = 0; i < 3; ++i)
        texts[i].assign((options[i] == 0 ? m_startTexts[i] : shown[i].toLocal8Bit().toStdString()).c_str());
    settings.setOption1(options[0]);
    settings.setText1(texts[0]);
    settings.setOption2(options[1]);
    settings.setText2(texts[1]);
    settings.setOption3(options[2]);
    settings.setText3(texts[2]);
}
