#include "ftpropsdlg/capplypreviewdlg.h"

#include "ftpropsdlg/creviewchangesdlg.h"
#include "uikit/narrowtext.h"
#include "uikit/resourcelibrary.h"

#include <QSignalBlocker>
#include <QStyle>

#include <algorithm>

namespace vyr {
namespace {

// The words the prompt asked about a group of General settings with.
unsigned generalLabel(unsigned mask)
{
    switch (mask) {
    case general::Dataset:
        return res::ApplyDataset;
    case general::Geometry:
        return res::ApplyGeometry;
    case general::DatabaseUser:
        return res::ApplyDatabaseUser;
    case general::Fanout:
        return res::ApplyFanout;
    case general::Merge:
        return res::ApplyMerge;
    default:
        return res::ApplyDynamicSettings;
    }
}

// A top-level entry's target, by the long name it keeps.
constexpr int kLongNameRole = Qt::UserRole;

} // namespace

ApplyConflictTexts ApplyConflictTextsFromResources()
{
    ApplyConflictTexts texts;
    texts.nameTaken = loadNarrowResourceString(res::ApplyConflictNameTaken);
    texts.nameLegalised = loadNarrowResourceString(res::ApplyConflictNameLegalised);
    texts.typeChanged = loadNarrowResourceString(res::ApplyConflictTypeChanged);
    texts.attributeSkipped = loadNarrowResourceString(res::ApplyConflictAttributeSkipped);
    texts.parameterUndefined = loadNarrowResourceString(res::ApplyConflictParameterUndefined);
    texts.parameterKept = loadNarrowResourceString(res::ApplyConflictParameterKept);
    texts.geometryChanged = loadNarrowResourceString(res::ApplyConflictGeometryChanged);
    texts.geometryKept = loadNarrowResourceString(res::ApplyConflictGeometryKept);
    texts.empty = loadNarrowResourceString(res::ReviewEmpty);
    return texts;
}

CApplyPreviewDlg::CApplyPreviewDlg(const ApplySelection &selection, Previewer previewer,
                                   std::function<std::string(const std::string &)> parameterPrompt, QWidget *parent)
    : CVyrDialog(res::ApplyPreviewDialog, 0, false, kHelpTopic, parent, DialogMode::ModeModal)
    , m_selection(selection)
    , m_items(ApplyItemsOf(selection))
    , m_previewer(std::move(previewer))
    , m_parameterPrompt(std::move(parameterPrompt))
    , m_reviewTexts(ReviewTextsFromResources())
    , m_conflictTexts(ApplyConflictTextsFromResources())
{
    setObjectName(QStringLiteral("applyPreviewDialog"));
    RegisterControl(&m_targets, kIdTargets);
    RegisterControl(&m_properties, kIdProperties);
}

bool CApplyPreviewDlg::OnInitDialog()
{
    const bool result = CVyrDialog::OnInitDialog();
    if (!m_targets || !m_properties)
        return result;
    m_targets->setHeaderHidden(true);
    for (const std::string &target : m_selection.targets) {
        auto *entry = new QTreeWidgetItem(m_targets.get());
        entry->setData(0, kLongNameRole, fromNarrow(target));
        entry->setFlags(entry->flags() | Qt::ItemIsUserCheckable);
        entry->setCheckState(0, Qt::Checked);
    }
    for (const ApplyItem &item : m_items) {
        auto *entry = new QListWidgetItem(ItemLabel(item), m_properties.get());
        entry->setFlags(entry->flags() | Qt::ItemIsUserCheckable);
        entry->setCheckState(Qt::Checked);
    }
    Refresh();
    connect(m_targets.get(), &QTreeWidget::itemChanged, this, [this] { Refresh(); });
    connect(m_properties.get(), &QListWidget::itemChanged, this, [this] { Refresh(); });
    if (m_targets->topLevelItemCount() > 0)
        m_targets->setCurrentItem(m_targets->topLevelItem(0));
    if (m_properties->count() > 0)
        m_properties->setCurrentRow(0);
    m_targets->setFocus(Qt::OtherFocusReason);
    return result;
}

QString CApplyPreviewDlg::ItemLabel(const ApplyItem &item) const
{
    const QString name = fromNarrow(item.name);
    switch (item.kind) {
    case ApplyItem::General:
        return loadResourceString(generalLabel(item.mask));
    case ApplyItem::Attribute:
        return formatResourceString(res::ApplyItemAttribute, {name});
    case ApplyItem::DeleteAttribute:
        return formatResourceString(res::ApplyItemDeleteAttribute, {name});
    case ApplyItem::FormatAttribute:
        return formatResourceString(res::ApplyItemFormatAttribute, {name});
    case ApplyItem::DeleteFormatAttribute:
        return formatResourceString(res::ApplyItemDeleteFormatAttribute, {name});
    case ApplyItem::Parameter:
        return formatResourceString(res::ApplyItemParameter,
                                    {m_parameterPrompt ? fromNarrow(m_parameterPrompt(item.name)) : name});
    }
    return name;
}

ApplySelection CApplyPreviewDlg::chosen() const
{
    StringList targets;
    std::vector<ApplyItem> items;
    if (m_targets) {
        for (int i = 0; i < m_targets->topLevelItemCount(); ++i) {
            const QTreeWidgetItem *entry = m_targets->topLevelItem(i);
            if (entry->checkState(0) == Qt::Checked)
                targets.push_back(toNarrow(entry->data(0, kLongNameRole).toString()));
        }
    }
    if (m_properties) {
        for (int i = 0; i < m_properties->count() && std::size_t(i) < m_items.size(); ++i) {
            if (m_properties->item(i)->checkState() == Qt::Checked)
                items.push_back(m_items[std::size_t(i)]);
        }
    }
    return NarrowSelection(m_selection, targets, items);
}

void CApplyPreviewDlg::Refresh()
{
    ApplySelection now = chosen();
    if (m_shown && *m_shown == now)
        return;
    m_previews = m_previewer ? m_previewer(now) : std::vector<ApplyTargetPreview>();
    m_shown = std::move(now);
    const QIcon warning = style()->standardIcon(QStyle::SP_MessageBoxWarning);
    const QSignalBlocker quiet(m_targets.get());
    for (int i = 0; i < m_targets->topLevelItemCount(); ++i) {
        QTreeWidgetItem *entry = m_targets->topLevelItem(i);
        const QString longName = entry->data(0, kLongNameRole).toString();
        qDeleteAll(entry->takeChildren());
        const auto preview = std::find_if(m_previews.begin(), m_previews.end(), [&](const ApplyTargetPreview &shown) {
            return fromNarrow(shown.longName) == longName;
        });
        QStringList lines;
        const bool conflicts = preview != m_previews.end() && !preview->conflicts.empty();
        if (preview == m_previews.end()) {
            lines.append(loadResourceString(res::ApplyTargetLeftOut));
        } else if (!preview->available) {
            lines.append(loadResourceString(res::ApplyPreviewUnavailable));
        } else {
            for (const ApplyConflict &conflict : preview->conflicts)
                lines.append(fromNarrow(ApplyConflictAsText(conflict, m_conflictTexts)));
            lines.append(fromNarrow(ReviewAsText(preview->changes, m_reviewTexts)).split(QLatin1Char('\n'),
                                                                                         Qt::SkipEmptyParts));
        }
        for (const QString &line : lines) {
            auto *child = new QTreeWidgetItem(entry, QStringList{line});
            child->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
            if (conflicts && std::size_t(entry->childCount()) <= preview->conflicts.size())
                child->setIcon(0, warning);
        }
        // The mark is a word too, for whoever does not see the icon.
        entry->setText(0, conflicts ? formatResourceString(res::ApplyTargetConflicts, {longName}) : longName);
        entry->setIcon(0, conflicts ? warning : QIcon());
        entry->setExpanded(true);
    }
}

qintptr CApplyPreviewDlg::OnHelpRequest(qintptr, qintptr)
{
    return ShowTopicHelp();
}

} // namespace vyr
