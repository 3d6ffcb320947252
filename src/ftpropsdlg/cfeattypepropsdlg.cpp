#include "ftpropsdlg/cfeattypepropsdlg.h"

#include "ftprops/guiparameterline.h"
#include "ftprops/listelements.h"
#include "ftpropsdlg/capplypreviewdlg.h"
#include "ftpropsdlg/cattrgrid.h"
#include "ftpropsdlg/cfeattypepropsattrs.h"
#include "ftpropsdlg/cfeattypepropsexposableattrs.h"
#include "ftpropsdlg/cfeattypepropsgeneraldest.h"
#include "ftpropsdlg/cfeattypepropsgeneralsource.h"
#include "ftpropsdlg/cfeattypepropsparms.h"
#include "ftpropsdlg/creviewchangesdlg.h"
#include "uikit/dialogutils.h"
#include "uikit/narrowtext.h"
#include "uikit/outsideservices.h"
#include "uikit/pageaccessible.h"
#include "uikit/resourcelibrary.h"
#include "uikit/unattendedrun.h"
#include "util/installdir.h"

#include "vyr/IGuiPrompter.h"
#include "vyr/IVYRSession.h"

#include <QAbstractButton>
#include <QApplication>
#include <QBitmap>
#include <QLayout>
#include <QPainter>
#include <QPixmap>
#include <QShortcut>
#include <QTabBar>

#include <algorithm>
#include <utility>

namespace vyr {
namespace {

constexpr char kHelpTopic[] = "Editing_Feature_Type_Properties.htm";
// The frame's buttons, from left to right.
constexpr unsigned kButtons[]
    = {kIdHelpCommand, CFeatTypePropsDlg::kIdReviewChanges, CFeatTypePropsDlg::kIdApplyToOthers, kIdOk, kIdCancel};
// Behind the transparent parts of a tab's bitmap.
const QColor kMaskColour(128, 0, 128);

} // namespace

CFeatTypePropsDlg::CFeatTypePropsDlg(IVYRSession *session, FTPropsSchemaInfo *schema, const SchemaRecordList &others,
                                     const FormatRecordList &formats, const FormatRecordList &additionalFormats,
                                     QWidget *parent)
    : CVyrDialog(337, 0, false, kHelpTopic, parent, DialogMode::ModeModal)
    , m_session(session)
    , m_schema(schema)
    , m_others(others)
{
    if (session)
        m_prompter = session->getGuiPrompter();
    for (const FTPropsFormatInfo *format : formats) {
        m_formats.insert(format->getId(), format);
        m_formatsByLongName.insert(format->getFormatLongName(), format);
    }
    for (const FTPropsFormatInfo *format : additionalFormats) {
        m_additionalFormats.insert(format->getId(), format);
        m_formatsByLongName.insert(format->getFormatLongName(), format);
    }
    m_currentFormat = m_formats.find(schema->getFormatId());
    updateFormatFlags();
}

CFeatTypePropsDlg::~CFeatTypePropsDlg() = default;

void CFeatTypePropsDlg::updateFormatFlags()
{
    m_hasParameters = m_currentFormat && !m_currentFormat->getDeflineParmNames().empty();
    m_hasUserAttributes = m_currentFormat && m_currentFormat->hasDeflineAttrs();
}

StringSet CFeatTypePropsDlg::namesTakenIn(const FTPropsFormatInfo &format, const FTPropsSchemaInfo *except) const
{
    StringSet taken;
    const std::string id = format.getId();
    const auto note = [&](const FTPropsSchemaInfo *record) {
        const FTPropsSchemaInfo *now = record;
        if (m_standIns) {
            for (const ApplyStandIn &standIn : *m_standIns) {
                if (standIn.record == record)
                    now = standIn.copy;
            }
        }
        if (record != except && now != except && now->getFormatId() == id)
            taken.insert(now->getName());
    };
    // At OK the edited feature type is written first: the others see the
    // name it takes.
    if (!except || !IsEditedRecord(*except))
        note(m_schema);
    for (const FTPropsSchemaInfo *other : m_others)
        note(other);
    return taken;
}

bool CFeatTypePropsDlg::OnInitDialog()
{
    CVyrDialog::OnInitDialog();
    if (!m_currentFormat)
        return false;
    // The frame places its controls itself, on the whole client area.
    if (layout())
        layout()->setContentsMargins(0, 0, 0, 0);
    m_tabControl = qobject_cast<QTabBar *>(GetDlgItem(kIdTabControl));
    if (m_tabControl) {
        m_tabControl->setIconSize(QSize(16, 16));
        m_tabControl->setDrawBase(false);
        m_tabControl->setExpanding(false);
        connect(m_tabControl, &QTabBar::currentChanged, this, [this](int index) { OnTabChanged(index); });
    }
    for (const unsigned id : kButtons) {
        if (QWidget *button = GetDlgItem(id))
            button->resize(button->size().expandedTo(button->sizeHint()));
    }
    if (auto *review = qobject_cast<QAbstractButton *>(GetDlgItem(kIdReviewChanges)))
        connect(review, &QAbstractButton::clicked, this, [this] { ReviewChanges(); });
    auto *reviewKeys = new QShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_R), this);
    connect(reviewKeys, &QShortcut::activated, this, [this] { ReviewChanges(); });
    if (auto *apply = qobject_cast<QAbstractButton *>(GetDlgItem(kIdApplyToOthers))) {
        connect(apply, &QAbstractButton::clicked, this, [this] { ApplyToOthers(); });
        // A button that can do nothing says why instead.
        if (m_others.empty()) {
            apply->setEnabled(false);
            apply->setToolTip(loadResourceString(res::ApplyNoOthers));
        }
    }
    // The keys that turn the pages of every tabbed window, wherever the
    // focus is in this one.
    const struct
    {
        QKeySequence keys;
        int step;
    } pageKeys[] = {{QKeySequence(Qt::CTRL | Qt::Key_Tab), 1},
                    {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Backtab), -1},
                    {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab), -1},
                    {QKeySequence(Qt::CTRL | Qt::Key_PageDown), 1},
                    {QKeySequence(Qt::CTRL | Qt::Key_PageUp), -1}};
    for (const auto &pageKey : pageKeys) {
        auto *shortcut = new QShortcut(pageKey.keys, this);
        connect(shortcut, &QShortcut::activated, this, [this, step = pageKey.step] { TurnPage(step); });
    }

    // The pages read the schema as they open (the attribute pages read
    // their rows later, when first wanted): the record may read its names
    // once for all of them.
    struct Reading
    {
        FTPropsSchemaInfo &schema;
        explicit Reading(FTPropsSchemaInfo &record)
            : schema(record)
        {
            schema.beginReading();
        }
        ~Reading() { schema.endReading(); }
        Reading(const Reading &) = delete;
        Reading &operator=(const Reading &) = delete;
    } reading(*m_schema);
    if (m_currentFormat->isSource())
        m_general = std::make_unique<CFeatTypePropsGeneralSource>(m_schema, m_currentFormat, this);
    else
        m_general = std::make_unique<CFeatTypePropsGeneralDest>(m_schema, m_currentFormat, this);

    m_attributes = std::make_unique<CFeatTypePropsAttrs>(m_schema, m_currentFormat, this);
    m_formatAttributes = std::make_unique<CFeatTypePropsExposableAttrs>(m_schema, m_currentFormat, this);
    m_parameters = std::make_unique<CFeatTypePropsParms>(m_schema, m_currentFormat, this);

    AddPage(m_general.get(), TabRule::Always, res::GeneralTabTitle, GeneralBitmap(), kMaskColour, 0);
    AddPage(m_attributes.get(), TabRule::WithUserAttributes, res::AttributesTabTitle, res::AttributesTab, kMaskColour, 1);
    AddPage(m_formatAttributes.get(), TabRule::Always, res::FormatAttributesTabTitle, res::AttributesTab, kMaskColour,
            1);
    // The help book's section on the reader's or the writer's parameters.
    AddPage(m_parameters.get(), TabRule::WithParameters, res::ParametersTabTitle, res::ParametersTab, kMaskColour,
            m_currentFormat->isSource() ? 3 : 5);
    for (const PageEntry &entry : std::vector<PageEntry>(m_pages))
        ShowPageTab(entry.page, tabWanted(entry.rule));
    ArrangeTabOrder();
    m_initialised = true;
    SelectPage(m_general.get());
    FocusFirstField();
    m_minimumSize = size();
    setMinimumSize(m_minimumSize);
    return true;
}

unsigned CFeatTypePropsDlg::GeneralBitmap() const
{
    const bool plain = !(m_schema->iconFlagA() && m_schema->iconFlagB());
    if (m_currentFormat->isSource()) {
        const bool merged = m_schema->isMerged();
        if (!plain)
            return merged ? res::GeneralSourceTabMerged : res::GeneralSourceTab;
        return merged ? res::GeneralSourceTabPlainMerged : res::GeneralSourceTabPlain;
    }
    const bool fanout = m_schema->isFanout();
    if (!plain)
        return fanout ? res::GeneralDestTabFanout : res::GeneralDestTab;
    return fanout ? res::GeneralDestTabPlainFanout : res::GeneralDestTabPlain;
}

bool CFeatTypePropsDlg::tabWanted(TabRule rule) const
{
    switch (rule) {
    case TabRule::WithUserAttributes: return m_hasUserAttributes;
    case TabRule::WithParameters: return m_hasParameters;
    case TabRule::Always: break;
    }
    return true;
}

CFeatTypePropsDlg::PageEntry *CFeatTypePropsDlg::entryOf(const QWidget *page)
{
    for (PageEntry &entry : m_pages) {
        if (entry.page == page)
            return &entry;
    }
    return nullptr;
}

void CFeatTypePropsDlg::AddPage(CVyrDialog *page, TabRule rule, unsigned titleId, unsigned bitmapId, QColor mask,
                                int helpKind)
{
    PageEntry entry;
    entry.page = page;
    entry.rule = rule;
    entry.title = loadResourceString(titleId);
    entry.bitmap = bitmapId;
    entry.mask = mask;
    entry.helpKind = helpKind;
    entry.creationIndex = static_cast<int>(m_pages.size());
    m_pages.push_back(entry);
    describeAsPage(page, entry.title);
    page->Create();
    page->hide();
}

void CFeatTypePropsDlg::ShowPageTab(CVyrDialog *page, bool show)
{
    PageEntry *entry = entryOf(page);
    if (!entry || !m_tabControl)
        return;
    if (show && !entry->tabShown) {
        QPixmap bitmap(resourceImagePath(ResourceKind::Bitmap, entry->bitmap));
        if (!bitmap.isNull())
            bitmap.setMask(bitmap.createMaskFromColor(entry->mask));
        const int index = std::min(entry->creationIndex, m_tabControl->count());
        {
            const QSignalBlocker quiet(m_tabControl);
            m_tabControl->insertTab(index, QIcon(bitmap), entry->title);
        }
        entry->tabShown = true;
        if (!m_currentPage)
            SelectPage(page);
    } else if (!show && entry->tabShown) {
        const QSignalBlocker quiet(m_tabControl);
        for (int i = m_tabControl->count() - 1; i >= 0; --i) {
            if (m_tabControl->tabText(i) == entry->title)
                m_tabControl->removeTab(i);
        }
        entry->tabShown = false;
    }
}

void CFeatTypePropsDlg::SelectPage(CVyrDialog *page)
{
    QWidget *previous = std::exchange(m_currentPage, page);
    page->raise();
    page->show();
    if (previous && previous != page) {
        // A hidden page hands its focus to the next control in the chain -
        // the Help button - which a screen reader would announce on the
        // way: the new page takes it first, so that it moves once.
        if (previous->isAncestorOf(QApplication::focusWidget()))
            FocusFirstField();
        previous->hide();
    }
    LayoutControls();
    LayoutControls();
    update();
    page->update();
    const PageEntry *entry = entryOf(page);
    if (!entry || !m_tabControl)
        return;
    const QSignalBlocker quiet(m_tabControl);
    for (int i = 0; i < m_tabControl->count(); ++i) {
        if (m_tabControl->tabText(i) == entry->title) {
            m_tabControl->setCurrentIndex(i);
            break;
        }
    }
}

void CFeatTypePropsDlg::OnTabChanged(int index)
{
    if (index < 0)
        return;
    const QString title = m_tabControl->tabText(index);
    for (const PageEntry &entry : m_pages) {
        if (entry.title == title) {
            SelectPage(entry.page);
            return;
        }
    }
}

void CFeatTypePropsDlg::TurnPage(int step)
{
    if (!m_tabControl || m_tabControl->count() == 0)
        return;
    const int count = m_tabControl->count();
    m_tabControl->setCurrentIndex(((m_tabControl->currentIndex() + step) % count + count) % count);
    // The keyboard goes on where the page begins.
    FocusFirstField();
}

void CFeatTypePropsDlg::FocusFirstField()
{
    if (!m_currentPage)
        return;
    for (QWidget *next = m_currentPage->nextInFocusChain(); next && next != m_currentPage;
         next = next->nextInFocusChain()) {
        if (m_currentPage->isAncestorOf(next) && next->isVisibleTo(m_currentPage) && next->isEnabled()
            && (next->focusPolicy() & Qt::TabFocus)) {
            next->setFocus(Qt::TabFocusReason);
            return;
        }
    }
}

void CFeatTypePropsDlg::ArrangeTabOrder()
{
    // The pages were made after the frame's controls, so their fields come
    // last in the chain. The frame's buttons and then the tabs move behind
    // them: the keyboard goes through what the user came to edit first.
    // Qt orders only widgets that take the focus.
    QWidget *previous = previousInFocusChain();
    while (previous != this && previous->focusPolicy() == Qt::NoFocus)
        previous = previous->previousInFocusChain();
    if (previous == this)
        return;
    for (const unsigned id : kButtons) {
        if (QWidget *button = GetDlgItem(id); button && button != previous) {
            setTabOrder(previous, button);
            previous = button;
        }
    }
    if (m_tabControl && m_tabControl != previous)
        setTabOrder(previous, m_tabControl);
}

void CFeatTypePropsDlg::resizeEvent(QResizeEvent *event)
{
    CVyrDialog::resizeEvent(event);
    LayoutControls();
}

void CFeatTypePropsDlg::LayoutControls()
{
    if (!m_initialised)
        return;
    const QRect area = rect().adjusted(kMargin, kMargin, -kMargin, -kMargin);
    int buttonHeight = 0;
    for (const unsigned id : kButtons) {
        if (const QWidget *button = GetDlgItem(id))
            buttonHeight = std::max(buttonHeight, button->height());
    }
    const int buttonTop = area.bottom() + 1 - buttonHeight;
    if (QWidget *help = GetDlgItem(kIdHelpCommand))
        help->move(area.left(), buttonTop);
    int right = area.right() + 1;
    for (const unsigned id : {kIdCancel, kIdOk, kIdApplyToOthers, kIdReviewChanges}) {
        if (QWidget *button = GetDlgItem(id)) {
            button->move(right - button->width(), buttonTop);
            right -= button->width() + kButtonGap;
        }
    }
    const QRect tabArea(area.left(), area.top(), area.width(), buttonTop - kButtonGap - area.top());
    int tabHeight = 0;
    if (m_tabControl) {
        tabHeight = m_tabControl->sizeHint().height();
        m_tabControl->setGeometry(tabArea.left(), tabArea.top(), tabArea.width(), tabHeight);
    }
    m_pageFrame = tabArea.adjusted(0, tabHeight - 1, 0, 0);
    // The display area inside the pane's border, widened again so that the
    // page meets the border at the right and bottom.
    const QRect display = m_pageFrame.adjusted(4, 4, -4, -4).adjusted(0, -2, 4, 4);
    if (m_currentPage)
        m_currentPage->setGeometry(display.intersected(m_pageFrame.adjusted(1, 1, -1, -1)));
    update();
}

void CFeatTypePropsDlg::paintEvent(QPaintEvent *event)
{
    CVyrDialog::paintEvent(event);
    if (m_pageFrame.isEmpty())
        return;
    // The pane the tabs open onto: a line in the palette's frame colour.
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(m_pageFrame.adjusted(0, 0, -1, -1));
}

void CFeatTypePropsDlg::SetFormat(const FTPropsFormatInfo *format)
{
    if (!format || (m_currentFormat && format->getId() == m_currentFormat->getId()))
        return;
    // Names the move makes legal reach the other pages once every page is
    // in the new format: a page keeps what it showed in the old format as
    // it was there.
    m_movingRenames.emplace();
    if (m_general)
        m_general->ChangeFormat(format);
    if (m_attributes)
        m_attributes->ChangeFormat(format);
    if (m_formatAttributes)
        m_formatAttributes->ChangeFormat(format);
    if (m_parameters)
        m_parameters->ChangeFormat(format);
    m_currentFormat = format;
    updateFormatFlags();
    for (const PageEntry &entry : std::vector<PageEntry>(m_pages)) {
        if (entry.rule != TabRule::Always)
            ShowPageTab(entry.page, tabWanted(entry.rule));
    }
    const std::vector<std::pair<std::string, std::string>> renames = std::move(*m_movingRenames);
    m_movingRenames.reset();
    for (const auto &[before, after] : renames)
        AttributeRenamed(before, after);
}

bool CFeatTypePropsDlg::ValidatePages()
{
    if (m_general && !m_general->ValidatePage())
        return false;
    if (m_hasUserAttributes && m_attributes && !m_attributes->ValidatePage())
        return false;
    if (m_formatAttributes && !m_formatAttributes->ValidatePage())
        return false;
    return !m_hasParameters || !m_parameters || m_parameters->ValidatePage();
}

void CFeatTypePropsDlg::WritePages(FTPropsSchemaInfo &target, const ApplySelection *selection)
{
    if (m_general)
        m_general->WriteToSchema(target, selection ? selection->generalMask : general::All);
    if (m_hasUserAttributes && m_attributes)
        m_attributes->WriteToSchema(target, selection ? &selection->attributes : nullptr,
                                    selection ? &selection->deleteAttributes : nullptr);
    if (m_formatAttributes)
        m_formatAttributes->WriteToSchema(target, selection ? &selection->formatAttributes : nullptr,
                                          selection ? &selection->deleteFormatAttributes : nullptr);
    if (m_hasParameters && m_parameters)
        m_parameters->WriteToSchema(target, selection ? &selection->parameters : nullptr);
}

void CFeatTypePropsDlg::ShowPage(QWidget *page)
{
    const PageEntry *entry = entryOf(page);
    if (entry && entry->tabShown && m_currentPage != page)
        SelectPage(entry->page);
}

void CFeatTypePropsDlg::AttributeRenamed(const std::string &before, const std::string &after)
{
    m_attributesSeen.insert(after);
    if (m_movingRenames && !before.empty()) {
        m_movingRenames->emplace_back(before, after);
        return;
    }
    m_attributeOrigins.renamed(before, after, [this](const std::string &name) { return WasLoadedAttribute(name); });
    if (before.empty())
        return;
    if (m_general)
        m_general->RenameAttribute(before, after);
    if (m_parameters)
        m_parameters->RenameAttribute(before, after);
}

void CFeatTypePropsDlg::AttributeDeleted(const std::string &name, bool loaded)
{
    m_attributeOrigins.deleted(name, loaded, [this](const std::string &other) { return WasLoadedAttribute(other); });
}

void CFeatTypePropsDlg::AttributeRestored(const std::string &name)
{
    m_attributeOrigins.restored(name);
}

bool CFeatTypePropsDlg::WasLoadedAttribute(const std::string &name) const
{
    return m_attributes && m_attributes->WasLoaded(name);
}

bool CFeatTypePropsDlg::WasAttribute(const std::string &name) const
{
    return m_attributesSeen.contains(name) || (m_attributes && m_attributes->WasLoaded(name));
}

StringList CFeatTypePropsDlg::PageAttributeNames() const
{
    StringList names;
    if (m_attributes)
        names = m_attributes->GetAttributeNames();
    if (m_formatAttributes) {
        for (std::string &name : m_formatAttributes->GetExposedNames())
            names.push_back(std::move(name));
    }
    return names;
}

void CFeatTypePropsDlg::OnCancel()
{
    if (m_general)
        m_general->TakeBackHandedOver();
    CVyrDialog::OnCancel();
}

void CFeatTypePropsDlg::OnOK()
{
    if (!ValidatePages())
        return;
    m_schema->beginUpdate();
    WritePages(*m_schema, nullptr);
    if (!m_apply.targets.empty()) {
        if (const std::optional<ApplySelection> chosen = ConfirmApply()) {
            for (FTPropsSchemaInfo *other : m_others) {
                const std::string longName = other->getLongName();
                if (std::find(chosen->targets.begin(), chosen->targets.end(), longName) != chosen->targets.end())
                    WritePages(*other, &*chosen);
                other->notifyApplied();
            }
        }
    }
    m_schema->endUpdate();
    CVyrDialog::OnOK();
}

std::optional<AttributeRowIdentities> CFeatTypePropsDlg::AttributeIdentities() const
{
    if (!m_hasUserAttributes || !m_attributes || !m_attributes->editable())
        return std::nullopt;
    CAttrGrid *grid = m_attributes->grid();
    if (!grid)
        return std::nullopt;
    std::vector<AttributeOrigins::Row> rows;
    for (long row = 0; row < grid->attributeRowCount(); ++row) {
        if (const UserAttributeTypes *loaded = grid->LoadedAttributeOf(row))
            rows.push_back({loaded->name, true});
        else
            rows.push_back({toNarrow(grid->GetCellString(row, CAttrGrid::kNameColumn)), false});
    }
    StringList loadedNames;
    for (const UserAttributeTypes &attribute : grid->loadedAttributes())
        loadedNames.push_back(attribute.name);
    return m_attributeOrigins.identities(rows, loadedNames);
}

std::vector<NameLegalisation> CFeatTypePropsDlg::AttributeLegalisations() const
{
    if (!m_hasUserAttributes || !m_attributes || !m_attributes->editable())
        return {};
    CAttrGrid *grid = m_attributes->grid();
    return grid ? grid->NameLegalisations() : std::vector<NameLegalisation>();
}

std::optional<std::vector<ReviewChange>> CFeatTypePropsDlg::ReviewedChanges()
{
    if (!m_currentFormat || !ValidatePages())
        return std::nullopt;
    // What the record held at open: itself, unless the General page handed
    // it something already.
    const bool handedOver = m_general && m_general->HandedOver();
    const ScratchSchema opened = handedOver ? m_schema->makeScratchCopy() : NoScratchSchema();
    // Written as OK writes the record; the other feature types OK would
    // apply properties to are left out.
    const ScratchSchema written = WrittenScratch();
    if (!written || (handedOver && !opened)) {
        ShowMessageBox(this, loadResourceString(res::ReviewUnavailable), QString(), MbOk | MbIconExclamation);
        return std::nullopt;
    }
    if (opened)
        m_general->WriteAsOpened(*opened);

    const FTPropsSchemaInfo &before = opened ? *opened : *m_schema;
    SchemaReviewInput input(before, *written, *m_currentFormat);
    if (before.getFormatId() != m_currentFormat->getId())
        input.formatBefore = m_formats.find(before.getFormatId());
    input.rows = AttributeIdentities();
    input.legalised = AttributeLegalisations();
    input.localisePrompt = [](const std::string &prompt) { return LocalizeText(prompt); };
    const ReviewTexts texts = ReviewTextsFromResources();
    input.texts = &texts;
    return ReviewSchemaChanges(input);
}

void CFeatTypePropsDlg::ReviewChanges()
{
    const std::optional<std::vector<ReviewChange>> changes = ReviewedChanges();
    if (!changes)
        return;
    // Shown in the words the changes were worked out in.
    CReviewChangesDlg review(ReviewAsText(*changes, ReviewTextsFromResources()), this);
    if (review.DoModal() == kEndOk)
        OnOK();
}

ScratchSchema CFeatTypePropsDlg::WrittenScratch()
{
    ScratchSchema written = m_schema->makeScratchCopy();
    if (!written)
        return written;
    m_scratch = written.get();
    written->beginUpdate();
    WritePages(*written, nullptr);
    written->endUpdate();
    m_scratch = nullptr;
    return written;
}

std::vector<ApplyTargetPreview> CFeatTypePropsDlg::ApplyPreviews(const ApplySelection &selection)
{
    ApplyPreviewSession session;
    return ApplyPreviews(selection, session);
}

std::vector<ApplyTargetPreview> CFeatTypePropsDlg::ApplyPreviews(const ApplySelection &selection,
                                                                 ApplyPreviewSession &session)
{
    // The edited feature type as its pages write it: the types the user
    // attributes were asked with, and the name the others see it take.
    // The pages do not change while a preview window is open.
    if (!session.written)
        session.written = WrittenScratch();
    ApplyPreviewInput input;
    input.selection = selection;
    input.asked.format = m_currentFormat;
    input.asked.record = m_schema;
    input.asked.written = session.written.get();
    if (m_hasParameters && m_parameters)
        input.asked.parameters = m_parameters->ParameterValues();
    if (m_general)
        input.asked.geometry = m_general->geometryValue();
    input.targets = m_others;
    input.formatOf = [this](const std::string &id) { return m_formats.find(id); };
    input.write = [this](FTPropsSchemaInfo &copy, const ApplySelection &chosen, const ApplyStandIns &standIns) {
        m_standIns = &standIns;
        WritePages(copy, &chosen);
        m_standIns = nullptr;
    };
    input.localisePrompt = [](const std::string &prompt) { return LocalizeText(prompt); };
    const ReviewTexts texts = ReviewTextsFromResources();
    input.texts = &texts;
    input.cache = &session.cache;
    return PreviewApply(input);
}

std::optional<ApplySelection> CFeatTypePropsDlg::ConfirmApply()
{
    // Nobody is there to look: the choice stands, as a Yes would.
    if (UnattendedRun::isActive()) {
        UnattendedRun::noteMessage(formatResourceString(
            res::ApplyConfirm, {QString::number(static_cast<qulonglong>(m_apply.targets.size()))}));
        return m_apply;
    }
    const FTPropsFormatInfo *format = m_currentFormat;
    ApplyPreviewSession session;
    CApplyPreviewDlg preview(
        m_apply, [this, &session](const ApplySelection &selection) { return ApplyPreviews(selection, session); },
        [format](const std::string &name) {
            const std::string prompt = format ? ParseParameterLine(format->getDeflineParm(name)).prompt : name;
            return prompt.empty() ? name : LocalizeText(prompt);
        },
        this);
    if (preview.DoModal() != kEndOk)
        return std::nullopt;
    return preview.chosen();
}

void CFeatTypePropsDlg::ApplyToOthers()
{
    m_apply = ApplySelection();
    if (!m_currentFormat || !ValidatePages())
        return;
    ApplyPromptInput input;
    for (const FTPropsSchemaInfo *other : m_others)
        input.otherFeatureTypes.push_back(other->getLongName());
    input.destination = !m_currentFormat->isSource();
    input.database = m_currentFormat->isDatabase();
    input.hasUserAttributes = m_hasUserAttributes && m_attributes;
    if (input.hasUserAttributes) {
        input.pageAttributes = m_attributes->GetAttributeNames();
        input.recordAttributes = m_schema->getAttributeNames(true, false);
    }
    if (m_formatAttributes) {
        input.pageFormatAttributes = m_formatAttributes->GetExposedNames();
        // The elements of a list the page exposes go with the list: they are
        // not offered for deletion.
        for (std::string &name : m_schema->getAttributeNames(false, true)) {
            if (!IsFormatAttribute(input.pageFormatAttributes, name) || ListElements::isList(name))
                input.recordFormatAttributes.push_back(std::move(name));
        }
    }
    input.hasParameters = m_hasParameters && m_parameters;
    input.localisePrompt = [](const std::string &prompt) { return LocalizeText(prompt); };
    if (input.hasParameters) {
        for (const std::string &name : m_currentFormat->getDeflineParmNames())
            input.parameterLines.emplace_back(name, m_currentFormat->getDeflineParm(name));
    }
    const ApplyPrompt prompt(input, loadNarrowResourceString);
    std::map<std::string, std::string> answers;
    if (m_prompter)
        m_prompter->setParentWindow(this);
    if (!PromptKeyValues(m_prompter, loadNarrowResourceString(res::ApplyTitle), prompt.defaultLines(), prompt.definitionLines(),
                         answers, std::string()))
        return;
    m_apply = prompt.read(answers);
}

qintptr CFeatTypePropsDlg::OnHelpRequest(qintptr, qintptr)
{
    if (m_currentPage && m_currentPage == m_general.get()) {
        showLoomhouseHelp(kHelpTopic);
        return 1;
    }
    const PageEntry *entry = entryOf(m_currentPage);
    if (!m_currentFormat)
        return 0;
    showFormatHelp(getInstallDirectory() + "help/VYRReadersWriters.chm", m_currentFormat->getFormatName(),
                   entry ? entry->helpKind : 0);
    return 1;
}

} // namespace vyr
