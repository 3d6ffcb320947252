#include "ftpropsdlg/cfeattypepropsgeneraldest.h"

#include "stringobjects/vyrrwstringarrayimp.h"
#include "stringobjects/vyrrwstringimp.h"
#include "ftprops/geometrytranslation.h"
#include "ftprops/geometrytypemappings.h"
#include "ftpropsdlg/applyselection.h"
#include "ftpropsdlg/cfeattypepropsdlg.h"
#include "uikit/dialogutils.h"
#include "uikit/dropdowncombobox.h"
#include "uikit/namelistmodel.h"
#include "uikit/narrowtext.h"
#include "uikit/resourcelibrary.h"

#include "qvyrconfiguredynamicschemadlg.h"

#include <QEvent>
#include <QSet>

#include <algorithm>
#include <optional>
#include <string_view>
#include <unordered_set>

namespace vyr {
namespace {

constexpr char kNoGeometryMapping[] = "vyr_no_map";
constexpr char kSchemaReaderIcon[] = "schema_reader_item.png";
constexpr char kReaderIcon[] = "reader.png";

std::string joinLongNames(const StringList &names)
{
    std::string joined;
    for (const std::string &name : names)
        joined += (joined.empty() ? "" : "; ") + name;
    return joined;
}

// The first item that begins with `text`, ignoring case, as a Windows combo
// box selects a string; -1 when none does.
int findItemStartingWith(const QComboBox *combo, const QString &text)
{
    for (int i = 0; i < combo->count(); ++i) {
        if (combo->itemText(i).startsWith(text, Qt::CaseInsensitive))
            return i;
    }
    return -1;
}

QStringList itemsOf(const QComboBox *combo)
{
    QStringList items;
    for (int i = 0; i < combo->count(); ++i)
        items.append(combo->itemText(i));
    return items;
}

} // namespace

CFeatTypePropsGeneralDest::CFeatTypePropsGeneralDest(FTPropsSchemaInfo *schema, const FTPropsFormatInfo *format,
                                                     CFeatTypePropsDlg *dialog)
    : CFeatTypePropsGeneral(kTemplateId, schema, format, dialog)
{
    RegisterControl(&m_fanout, kIdFanout);
    RegisterControl(&m_fanoutAttribute, kIdFanoutAttribute);
    RegisterControl(&m_dynamic, kIdDynamic);
    RegisterControl(&m_schemaSourcesDisplay, kIdSchemaSources);
    RegisterControl(&m_chooseSchemaSources, kIdChooseSchemaSources);
    RegisterControl(&m_dynamicSummary, kIdDynamicSummary);
    RegisterControl(&m_dynamicSettingsButton, kIdDynamicSettings);
}

bool CFeatTypePropsGeneralDest::OnInitDialog()
{
    CFeatTypePropsGeneral::OnInitDialog();

    m_dataset->clear();
    for (const auto &[id, format] : m_dialog->formats()) {
        m_datasets.insert(format->getFormatLongName(), format);
        m_dataset->addItem(fromNarrow(format->getFormatLongName()));
    }
    SelectComboItem(m_dataset.orStandIn(), fromNarrow(m_format->getFormatLongName()));
    m_dataset->setEnabled(m_dataset->count() >= 2);

    m_fanoutChoices = new NameListModel(m_fanoutAttribute.orStandIn());
    m_fanoutAttribute->setModel(m_fanoutChoices);
    const std::string chosen = m_schema->getFanoutAttribute();
    FillFanoutChoices(m_schema->isAttribute(chosen) ? StringList{chosen} : StringList(), true);
    m_fanoutAttribute->setCurrentIndex(-1);
    m_fanout->setChecked(m_schema->isFanout());
    m_fanoutWanted = m_schema->isFanout();
    // The schema's name as the items hold it: no item's text is made.
    if (const int row = m_fanoutChoices->rowOfName(chosen); row >= 0)
        m_fanoutAttribute->setCurrentIndex(row);
    m_fanoutAttribute->installEventFilter(this);

    m_schemaSources = m_schema->getSchemaSources();
    StringList shown;
    for (const std::string &id : m_schemaSources) {
        if (const FTPropsFormatInfo *format = m_dialog->additionalFormats().find(id))
            shown.push_back(format->getFormatLongName());
    }
    ShowSchemaSources(shown);
    m_dynamic->setChecked(m_schema->isDynamic() && !m_schemaSources.empty());
    m_dynamicSettings = m_schema->getDynamicSchemaInfo();
    ShowDynamicSummary();
    UpdateDynamicControls();

    m_additionalNames = m_schema->getAdditionalNames();
    FillGeometry(m_format, m_schema->getGeometry());
    m_initialSchemaSources = m_schemaSources;

    connect(m_fanout.orStandIn(), &QCheckBox::clicked, this, [this] {
        m_fanoutWanted = m_fanout->isChecked();
        UpdateFanoutControls(m_format);
    });
    connect(m_dynamic.orStandIn(), &QCheckBox::clicked, this, [this] { OnDynamicToggled(); });
    connect(m_chooseSchemaSources.orStandIn(), &QPushButton::clicked, this, [this] { ChooseSchemaSources(); });
    connect(m_dynamicSettingsButton.orStandIn(), &QPushButton::clicked, this, [this] { EditDynamicSettings(); });
    if (auto *dropDown = qobject_cast<DropDownComboBox *>(m_fanoutAttribute.get()))
        connect(dropDown, &DropDownComboBox::dropDown, this, [this] { RefillFanoutChoices(); });
    return true;
}

void CFeatTypePropsGeneralDest::UpdateDynamicControls()
{
    const bool dynamic = m_dynamic->isChecked();
    m_schemaSourcesDisplay->setEnabled(dynamic);
    m_chooseSchemaSources->setEnabled(dynamic);
    m_dynamicSummary->setEnabled(dynamic);
    m_dynamicSettingsButton->setEnabled(dynamic);
    m_name->setEnabled(!dynamic);
    m_geometry->setEnabled(!dynamic);
    m_fanoutAttribute->setEnabled(m_fanout->isChecked() && !dynamic);
    UpdateFanoutControls(m_format);
}

void CFeatTypePropsGeneralDest::UpdateFanoutControls(const FTPropsFormatInfo *format)
{
    if (format->supportsFeatTypeFanout() && !m_dynamic->isChecked()) {
        m_fanout->setEnabled(true);
        const bool fanout = m_fanout->isChecked();
        m_name->setEnabled(!fanout);
        m_fanoutAttribute->setEnabled(fanout);
    } else {
        m_fanout->setEnabled(false);
        m_fanoutAttribute->setEnabled(false);
    }
}

void CFeatTypePropsGeneralDest::FillFanoutChoices(const StringList &names, bool distinct)
{
    std::vector<std::string> added;
    added.reserve(m_extraFanoutNames.size() + names.size());
    // A schema of thousands of attributes: each name is looked up once, and
    // only what may repeat is looked up at all.
    std::unordered_set<std::string_view> seen;
    for (const std::string &name : m_extraFanoutNames) {
        if (seen.insert(name).second)
            added.push_back(name);
    }
    const std::size_t extras = seen.size();
    for (const std::string &name : names) {
        const bool repeated = distinct ? extras > 0 && seen.contains(name) : !seen.insert(name).second;
        if (!repeated)
            added.push_back(name);
    }
    m_fanoutChoices->appendNames(std::move(added));
}

bool CFeatTypePropsGeneralDest::eventFilter(QObject *watched, QEvent *event)
{
    // The keys and the wheel step through the list in place.
    if (watched == m_fanoutAttribute.get()
        && (event->type() == QEvent::FocusIn || event->type() == QEvent::KeyPress || event->type() == QEvent::Wheel))
        EnsureFanoutChoices();
    return CFeatTypePropsGeneral::eventFilter(watched, event);
}

void CFeatTypePropsGeneralDest::EnsureFanoutChoices()
{
    if (m_fanoutChoicesMade)
        return;
    m_fanoutChoicesMade = true;
    // Until now the one item was the schema's choice, perhaps renamed since;
    // it keeps its shown name in the list the schema gives.
    const std::optional<QString> shown
        = m_fanoutAttribute->currentIndex() >= 0 ? std::optional(m_fanoutAttribute->currentText()) : std::nullopt;
    m_fanoutAttribute->clear();
    FillFanoutChoices(m_schema->getAttributeNames(true, true), true);
    m_fanoutAttribute->setCurrentIndex(-1);
    if (const int row = m_fanoutChoices->rowOfName(m_schema->getFanoutAttribute()); shown && row >= 0) {
        m_fanoutAttribute->setItemText(row, *shown);
        m_fanoutAttribute->setCurrentIndex(row);
    }
}

void CFeatTypePropsGeneralDest::RefillFanoutChoices()
{
    m_fanoutChoicesMade = true;
    const QString selected = m_fanoutAttribute->currentText();
    m_fanoutAttribute->clear();
    // The names as the attribute pages have them now, edits included.
    FillFanoutChoices(m_dialog->PageAttributeNames());
    m_fanoutAttribute->setCurrentIndex(-1);
    SelectComboItem(m_fanoutAttribute.orStandIn(), selected);
}

void CFeatTypePropsGeneralDest::FillGeometry(const FTPropsFormatInfo *format, const std::string &geometry)
{
    m_geometryValue = geometry;
    m_geometry->clear();
    if ((!format->supportsMultiGeom() || format->isSource()) && geometry.find(' ') == std::string::npos) {
        // A format may name its geometries by the hundred thousand: each
        // name is looked up in a set, not in the list made so far.
        QStringList names;
        QSet<QString> listed;
        for (const auto &[native, generic] : format->getGeometryTypeMappings()->pairs()) {
            if (native == kNoGeometryMapping)
                continue;
            const QString name = fromNarrow(native);
            if (!listed.contains(name)) {
                listed.insert(name);
                names.append(name);
            }
        }
        m_geometry->addItems(names);
        m_geometry->setCurrentIndex(findItemStartingWith(m_geometry.orStandIn(), fromNarrow(geometry)));
        m_geometry->setEnabled(!m_dynamic->isChecked());
    } else {
        m_geometry->addItem(loadResourceString(res::MultipleGeometries));
        m_geometry->setCurrentIndex(0);
        m_geometry->setEnabled(false);
    }
}

void CFeatTypePropsGeneralDest::RenameAttribute(const std::string &before, const std::string &after)
{
    // Only the chosen attribute needs its new name now: the list is filled
    // anew from the pages whenever it opens. A schema of thousands of
    // attributes renames one per keystroke.
    const int chosen = m_fanoutAttribute->currentIndex();
    if (chosen >= 0 && m_fanoutAttribute->itemText(chosen) == fromNarrow(before))
        m_fanoutAttribute->setItemText(chosen, fromNarrow(after));
}

void CFeatTypePropsGeneralDest::ChangeFormat(const FTPropsFormatInfo *format)
{
    CFeatTypePropsGeneral::ChangeFormat(format);
    // A format that writes no feature type per value shows fan-out off, as
    // it is saved; one that does shows what the person chose.
    m_fanout->setChecked(m_fanoutWanted && format->supportsFeatTypeFanout());
    UpdateFanoutControls(format);
}

std::vector<const FTPropsFormatInfo *> CFeatTypePropsGeneralDest::SchemaSourceFormats() const
{
    std::vector<const FTPropsFormatInfo *> formats;
    for (auto it = m_dialog->additionalFormats().rbegin(); it != m_dialog->additionalFormats().rend(); ++it)
        formats.push_back(it->second);
    return formats;
}

void CFeatTypePropsGeneralDest::ShowSchemaSources(const StringList &longNames)
{
    m_schemaSourcesDisplay->setText(fromNarrow(joinLongNames(longNames)));
}

void CFeatTypePropsGeneralDest::ShowDynamicSummary()
{
    m_dynamicSummary->setText(
        loadResourceString(m_dynamicSettings.isDefault() ? res::DynamicSettingsDefault : res::DynamicSettingsCustom));
}

void CFeatTypePropsGeneralDest::OnDynamicToggled()
{
    UpdateDynamicControls();
    if (m_dynamic->isChecked() && m_schemaSources.empty()) {
        StringList longNames;
        for (const FTPropsFormatInfo *format : SchemaSourceFormats()) {
            m_schemaSources.push_back(format->getId());
            longNames.push_back(format->getFormatLongName());
        }
        ShowSchemaSources(longNames);
    } else if (!m_dynamic->isChecked() && m_initialSchemaSources.empty()) {
        m_schemaSources.clear();
        ShowSchemaSources({});
    }
    // The geometry the page holds, chosen or carried by a move.
    FillGeometry(m_format, geometryValue());
}

void CFeatTypePropsGeneralDest::ChooseSchemaSources()
{
    StringList items;
    StringList icons;
    for (const FTPropsFormatInfo *format : SchemaSourceFormats()) {
        items.push_back(format->getFormatLongName());
        icons.push_back(format->isSchemaReader() ? kSchemaReaderIcon : kReaderIcon);
    }
    StringList preselected;
    for (const std::string &id : m_schemaSources) {
        if (const FTPropsFormatInfo *format = m_dialog->additionalFormats().find(id))
            preselected.push_back(format->getFormatLongName());
    }
    StringList chosen;
    if (!RunSelectionDialog(items, preselected, icons, toNarrow(loadResourceString(res::SchemaSourcesTitle)), 0, 0,
                            chosen, m_dialog))
        return;
    StringList ids;
    for (const std::string &longName : chosen) {
        if (const FTPropsFormatInfo *format = m_dialog->formatsByLongName().find(longName))
            ids.push_back(format->getId());
    }
    m_schemaSources = ids;
    ShowSchemaSources(chosen);
    m_schema->setSchemaSources(ids);
    m_schemaSourcesHandedOver = true;
}

void CFeatTypePropsGeneralDest::TakeBackHandedOver()
{
    WriteAsOpened(*m_schema);
    m_schemaSourcesHandedOver = false;
}

void CFeatTypePropsGeneralDest::WriteAsOpened(FTPropsSchemaInfo &target) const
{
    if (m_schemaSourcesHandedOver)
        target.setSchemaSources(m_initialSchemaSources);
}

void CFeatTypePropsGeneralDest::EditDynamicSettings()
{
    VYRRWStringImp name(nameText().c_str());
    VYRRWStringImp geometry;
    if (m_geometry->currentIndex() >= 0)
        geometry.assign(toNarrow(m_geometry->currentText()).c_str());
    EnsureFanoutChoices();
    VYRRWStringArrayImp fanoutChoices;
    for (const QString &item : itemsOf(m_fanoutAttribute.orStandIn()))
        fanoutChoices.append(toNarrow(item).c_str());
    VYRRWStringArrayImp geometryChoices;
    for (const QString &item : itemsOf(m_geometry.orStandIn()))
        geometryChoices.append(toNarrow(item).c_str());
    QVYRNativeWidget parent(m_dialog);
    QVYRConfigureDynamicSchemaDlg settingsDialog(m_dynamicSettings, name, geometry, fanoutChoices, geometryChoices,
                                                 parent.widget());
    if (settingsDialog.exec() == 0)
        return;
    DynamicSchemaInfo chosen;
    settingsDialog.dynamicSchemaInfo(chosen);
    m_dynamicSettings = chosen;
    ShowDynamicSummary();
}

bool CFeatTypePropsGeneralDest::FanoutAttributeGone() const
{
    if (m_fanoutAttribute->currentIndex() < 0)
        return false;
    const std::string chosen = toNarrow(m_fanoutAttribute->currentText());
    const StringList names = m_dialog->PageAttributeNames();
    if (std::find(names.begin(), names.end(), chosen) != names.end()
        || std::find(m_extraFanoutNames.begin(), m_extraFanoutNames.end(), chosen) != m_extraFanoutNames.end())
        return false;
    // Under dynamic schema fan-out may name an attribute the schema sources
    // bring, which no page shows; one the pages had is gone all the same.
    return m_fanoutAttribute->isEnabled() || !m_dynamic->isChecked() || m_dialog->WasAttribute(chosen);
}

bool CFeatTypePropsGeneralDest::ValidatePage()
{
    if (!CFeatTypePropsGeneral::ValidatePage())
        return false;
    if (m_dataset->currentText().isEmpty())
        return Refuse(res::DatasetRequired, m_dataset.orStandIn());
    if (m_geometry->isEnabled() && (m_geometry->currentIndex() < 0 || m_geometry->currentText().isEmpty()))
        return Refuse(res::GeometryRequired, m_geometry.orStandIn());
    if (m_fanout->isChecked() && m_fanoutAttribute->currentIndex() < 0)
        return Refuse(res::FanoutAttributeRequired, m_fanoutAttribute.orStandIn());
    if (m_fanout->isChecked() && m_format->supportsFeatTypeFanout() && FanoutAttributeGone()) {
        // Under dynamic schema the list is out of reach: the way back to it
        // starts at the dynamic schema box.
        QWidget *place = m_fanoutAttribute->isEnabled() ? static_cast<QWidget *>(m_fanoutAttribute.orStandIn())
                                                        : m_dynamic.orStandIn();
        return Refuse(formatResourceString(res::FanoutAttributeGone, {m_fanoutAttribute->currentText()}), place);
    }
    if (m_dynamic->isChecked() && !m_dialog->additionalFormats().empty() && m_schemaSourcesDisplay->text().isEmpty())
        return Refuse(res::SchemaSourceRequired, m_chooseSchemaSources.orStandIn());
    if (m_dynamic->isChecked() && m_dialog->additionalFormats().empty())
        return Refuse(res::NoSchemaSourceFormats, m_dynamic.orStandIn());
    return true;
}

void CFeatTypePropsGeneralDest::WriteToSchema(FTPropsSchemaInfo &target, unsigned mask)
{
    CFeatTypePropsGeneral::WriteToSchema(target, mask);
    const FTPropsFormatInfo *targetFormat = FormatOf(target);
    const bool formatChanged = m_format->getFormatName() != targetFormat->getFormatName();
    if (mask & general::Fanout) {
        target.setFanout(m_fanout->isChecked() && targetFormat->supportsFeatTypeFanout());
        if (m_fanoutAttribute->currentIndex() >= 0) {
            // Off, fan-out may name an attribute that is gone; it is cleared
            // rather than left naming nothing (on, OK refused it).
            target.setFanoutAttribute(FanoutAttributeGone() ? std::string()
                                                             : toNarrow(m_fanoutAttribute->currentText()));
        }
    }
    if ((mask & general::Geometry) && !m_dynamic->isChecked()) {
        std::string geometry = geometryValue();
        if (formatChanged)
            geometry = TranslateGeometry(geometry, *m_format, *targetFormat);
        // Another feature type of a format of several geometries keeps
        // its own; the edited one takes what the page holds, which is what
        // it had unless a move back and forth changed it.
        const bool edited = m_dialog->IsEditedRecord(target);
        if (!targetFormat->supportsMultiGeom() || (edited && geometry != target.getGeometry()))
            target.setGeometry(geometry);
    }
    if (mask & general::Dynamic)
        target.setDynamic(m_dynamic->isChecked());
    if (mask & general::SchemaSources)
        target.setSchemaSources(m_schemaSources);
    if (mask != 0)
        target.setAdditionalNames(m_additionalNames);
    if (mask & general::DynamicSettings)
        target.setDynamicSchemaInfo(m_dynamicSettings);
}

} // namespace vyr
