#include "ftpropsdlg/cfeattypepropsgeneral.h"

#include "ftprops/geometrytranslation.h"
#include "ftprops/namerules.h"
#include "ftpropsdlg/applyselection.h"
#include "ftpropsdlg/cfeattypepropsdlg.h"
#include "uikit/dialogutils.h"
#include "uikit/narrowtext.h"
#include "uikit/outsideservices.h"
#include "util/installdir.h"
#include "uikit/resourcelibrary.h"

#include <QEvent>
#include <QRegularExpression>
#include <QRegularExpressionValidator>
#include <QPalette>

#include <algorithm>

namespace vyr {

CFeatTypePropsGeneral::CFeatTypePropsGeneral(unsigned templateId, FTPropsSchemaInfo *schema,
                                             const FTPropsFormatInfo *format, CFeatTypePropsDlg *dialog)
    : CVyrDialog(templateId, 0, false, std::string(), dialog, DialogMode::ModeModal)
    , m_schema(schema)
    , m_format(format)
    , m_dialog(dialog)
{
    // A page lives inside the frame, not in a window of its own.
    setWindowFlags(Qt::Widget);
    RegisterControl(&m_name, kIdName);
    RegisterControl(&m_geometry, kIdGeometry);
    RegisterControl(&m_dataset, kIdDataset);
    RegisterControl(&m_databaseUser, kIdDatabaseUser);
    RegisterControl(&m_formatHelp, kIdFormatHelp);
}

CFeatTypePropsGeneral::~CFeatTypePropsGeneral() = default;

bool CFeatTypePropsGeneral::OnInitDialog()
{
    CVyrDialog::OnInitDialog();
    m_name->setText(fromNarrow(m_schema->getName()));
    if (IsSourceFeatureTypeEditingAllowed())
        m_name->setReadOnly(false);
    if (m_name->isReadOnly()) {
        // Many styles draw a read-only field like an editable one; the
        // window's colour behind the text says that it cannot be typed in.
        QPalette palette = m_name->palette();
        palette.setColor(QPalette::Base, palette.color(QPalette::Window));
        m_name->setPalette(palette);
    }
    m_name->installEventFilter(this);
    m_databaseUser->installEventFilter(this);
    // Control characters are no part of any name, however they are typed
    // or pasted.
    for (QLineEdit *field : {m_name.orStandIn(), m_databaseUser.orStandIn()})
        field->setValidator(new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[^\\x00-\\x1f\\x7f]*")), field));
    SetupDatabaseUser(m_format);
    // The name shows from the start what OK will write.
    ResolveNameField();
    FillGeometry(m_format, m_schema->getGeometry());
    for (const std::string &name : m_schema->getExtraFanoutNames()) {
        if (std::find(m_extraFanoutNames.begin(), m_extraFanoutNames.end(), name) == m_extraFanoutNames.end())
            m_extraFanoutNames.push_back(name);
    }
    connect(m_dataset.orStandIn(), &QComboBox::activated, this, [this] { OnDatasetSelected(); });
    connect(m_formatHelp.orStandIn(), &QPushButton::clicked, this, [this] { OnFormatHelp(); });
    return true;
}

bool CFeatTypePropsGeneral::eventFilter(QObject *watched, QEvent *event)
{
    if ((watched == m_name.get() || watched == m_databaseUser.get()) && event->type() == QEvent::FocusOut)
        ResolveNameField();
    return CVyrDialog::eventFilter(watched, event);
}

void CFeatTypePropsGeneral::RenameAttribute(const std::string &, const std::string &) {}

std::string CFeatTypePropsGeneral::geometryValue() const
{
    const QString shown = m_geometry->currentText();
    return shown == loadResourceString(res::MultipleGeometries) ? m_geometryValue : toNarrow(shown);
}

std::string CFeatTypePropsGeneral::qualifiedName() const
{
    const std::string user = toNarrow(m_databaseUser->text());
    return user.empty() ? nameText() : user + "." + nameText();
}


std::string CFeatTypePropsGeneral::nameText() const
{
    return toNarrow(m_name->text());
}

std::string CFeatTypePropsGeneral::ResolveName(const std::string &text, const FTPropsFormatInfo &format,
                                               const FTPropsSchemaInfo &named) const
{
    return ResolveFeatureTypeName(format, text, m_dialog->namesTakenIn(format, &named), m_dialog->session());
}

void CFeatTypePropsGeneral::ResolveNameField()
{
    const std::string text = qualifiedName();
    std::string name = ResolveName(text, *m_format, *m_schema);
    if (name == text)
        return;
    std::string user;
    if (m_format->isDatabase())
        SplitOwnerPrefix(name, user);
    m_name->setText(fromNarrow(name));
    m_databaseUser->setText(fromNarrow(user));
}

void CFeatTypePropsGeneral::OnDatasetSelected()
{
    if (const FTPropsFormatInfo *format = m_datasets.find(toNarrow(m_dataset->currentText())))
        m_dialog->SetFormat(format);
}

void CFeatTypePropsGeneral::OnFormatHelp()
{
    showFormatHelp(getInstallDirectory() + "help/VYRReadersWriters.chm", m_format->getFormatName(), 0);
}

void CFeatTypePropsGeneral::SplitOwnerPrefix(std::string &name, std::string &prefix)
{
    const std::size_t dot = name.find('.');
    if (dot == std::string::npos)
        return;
    prefix = name.substr(0, dot);
    name = name.substr(dot + 1);
}

void CFeatTypePropsGeneral::SetupDatabaseUser(const FTPropsFormatInfo *format)
{
    std::string name = nameText();
    std::string user = toNarrow(m_databaseUser->text());
    if (!format->isDatabase()) {
        if (!user.empty()) {
            name = user + "." + name;
            user.clear();
        }
        m_databaseUser->setEnabled(false);
    } else {
        SplitOwnerPrefix(name, user);
        m_databaseUser->setEnabled(true);
    }
    m_name->setText(fromNarrow(name));
    m_databaseUser->setText(fromNarrow(user));
}

void CFeatTypePropsGeneral::FillGeometry(const FTPropsFormatInfo *, const std::string &geometry)
{
    m_geometryValue = geometry;
    m_geometry->setEditText(fromNarrow(geometry));
}

void CFeatTypePropsGeneral::ChangeFormat(const FTPropsFormatInfo *format)
{
    const FTPropsFormatInfo *old = m_format;
    m_format = format;
    if (old->getFormatName() == format->getFormatName())
        return;
    // Moving back shows the name and geometry as they were in that format,
    // unless they were changed since.
    const QStringList name = m_nameForms.move(
        old->getId(), format->getId(), {m_name->text(), m_databaseUser->text()}, [&](const QStringList &shown) {
            m_name->setText(shown.value(0));
            m_databaseUser->setText(shown.value(1));
            SetupDatabaseUser(format);
            std::string resolved = ResolveName(qualifiedName(), *format, *m_schema);
            std::string user;
            if (format->isDatabase())
                SplitOwnerPrefix(resolved, user);
            return QStringList{fromNarrow(resolved), fromNarrow(user)};
        });
    m_name->setText(name.value(0));
    m_databaseUser->setText(name.value(1));
    m_databaseUser->setEnabled(format->isDatabase());
    if (HasGeometryMappings(*old) && HasGeometryMappings(*format)) {
        // Remembered as the list shows it: a translation the new format
        // cannot name shows the list's first geometry.
        const QStringList geometry = m_geometryForms.move(
            old->getId(), format->getId(), {fromNarrow(geometryValue())}, [&](const QStringList &shown) {
                FillGeometry(format, TranslateGeometry(toNarrow(shown.value(0)), *old, *format));
                return QStringList{fromNarrow(geometryValue())};
            });
        FillGeometry(format, toNarrow(geometry.value(0)));
    } else {
        // No generic name leads from one format's geometry to the other's:
        // the new format's list shows none chosen, for OK to ask for one,
        // rather than keep a geometry in the words of the format left.
        FillGeometry(format, std::string());
    }
}

bool CFeatTypePropsGeneral::Refuse(const QString &message, QWidget *field)
{
    m_dialog->ShowPage(this);
    if (field)
        field->setFocus(Qt::OtherFocusReason);
    ShowExclamationBox(message, QString(), m_dialog, MbOk);
    return false;
}

bool CFeatTypePropsGeneral::Refuse(unsigned messageId, QWidget *field)
{
    return Refuse(loadResourceString(messageId), field);
}

bool CFeatTypePropsGeneral::ValidatePage()
{
    // Enter presses OK while the name field still has the keyboard: it is
    // resolved here as leaving the field would have, and what OK writes is
    // what is checked.
    ResolveNameField();
    if (m_name->text().isEmpty())
        return Refuse(res::NameRequired, m_name.orStandIn());
    return true;
}

const FTPropsFormatInfo *CFeatTypePropsGeneral::FormatOf(const FTPropsSchemaInfo &target) const
{
    const FTPropsFormatInfo *format = m_dialog->formats().find(target.getFormatId());
    return format ? format : m_format;
}

void CFeatTypePropsGeneral::WriteToSchema(FTPropsSchemaInfo &target, unsigned mask)
{
    const std::string formatBefore = target.getFormatId();
    if ((mask & general::Dataset) && !isSource()) {
        if (const FTPropsFormatInfo *dataset = m_datasets.find(toNarrow(m_dataset->currentText())))
            target.setFormatId(dataset->getId());
    }
    const bool moved = target.getFormatId() != formatBefore;
    std::string text = nameText();
    const std::string current = target.getName();
    std::string base = current;
    std::string prefix;
    SplitOwnerPrefix(base, prefix);
    const bool databaseUser = (mask & general::DatabaseUser) && m_format->isDatabase();
    if (databaseUser) {
        const std::string user = toNarrow(m_databaseUser->text());
        if (mask & general::Name) {
            if (!user.empty())
                text = user + "." + text;
        } else {
            text = user.empty() ? base : user + "." + base;
        }
    }
    if ((mask & general::Name) || (databaseUser && text != current)) {
        target.setName(ResolveName(text, *FormatOf(target), target));
    } else if (moved) {
        // Another feature type moved to this dataset keeps its own name,
        // as far as its new format allows it.
        const std::string resolved = ResolveName(current, *FormatOf(target), target);
        if (resolved != current)
            target.setName(resolved);
    }
}

} // namespace vyr
