#include "ftpropsdlg/creviewchangesdlg.h"

#include "ftpropsdlg/cfeattypepropsgeneralsource.h"
#include "uikit/narrowtext.h"
#include "uikit/resourcelibrary.h"

#include <QApplication>
#include <QClipboard>

namespace vyr {
ReviewTexts ReviewTextsFromResources()
{
    ReviewTexts texts;
    texts.noChanges = loadNarrowResourceString(res::ReviewNoChanges);
    texts.groupGeneral = loadNarrowResourceString(res::ReviewGroupGeneral);
    texts.groupUserAttributes = loadNarrowResourceString(res::ReviewGroupUserAttributes);
    texts.groupFormatAttributes = loadNarrowResourceString(res::ReviewGroupFormatAttributes);
    texts.groupParameters = loadNarrowResourceString(res::ReviewGroupParameters);
    // One text a line; a library that lacks some keeps the built-in ones.
    const auto readLines = [](unsigned id, std::vector<std::string> &lines) {
        const QStringList read = loadResourceString(id).split(QLatin1Char('\n'));
        if (read.size() != static_cast<qsizetype>(lines.size()))
            return;
        for (qsizetype i = 0; i < read.size(); ++i)
            lines[std::size_t(i)] = toNarrow(read[i]);
    };
    readLines(res::ReviewGeneralLabels, texts.generalLabels);
    // The merge kinds and the default dynamic settings in the words of the
    // General page.
    texts.mergeKinds.clear();
    for (const unsigned kind : CFeatTypePropsGeneralSource::kMergeKinds)
        texts.mergeKinds.push_back(loadNarrowResourceString(kind));
    texts.dynamicDefault = loadNarrowResourceString(res::DynamicSettingsDefault);
    readLines(res::ReviewDynamicNames, texts.dynamicNames);
    readLines(res::ReviewDynamicGeometry, texts.dynamicGeometry);
    readLines(res::ReviewDynamicAttributes, texts.dynamicAttributes);
    texts.dynamicOther = loadNarrowResourceString(res::ReviewDynamicOther);
    texts.yes = loadNarrowResourceString(res::ReviewYes);
    texts.no = loadNarrowResourceString(res::ReviewNo);
    texts.empty = loadNarrowResourceString(res::ReviewEmpty);
    texts.typed = loadNarrowResourceString(res::ReviewTyped);
    texts.changed = loadNarrowResourceString(res::ReviewChanged);
    texts.added = loadNarrowResourceString(res::ReviewAdded);
    texts.removed = loadNarrowResourceString(res::ReviewRemoved);
    texts.renamed = loadNarrowResourceString(res::ReviewRenamed);
    texts.retyped = loadNarrowResourceString(res::ReviewRetyped);
    texts.moved = loadNarrowResourceString(res::ReviewMoved);
    texts.legalised = loadNarrowResourceString(res::ReviewLegalised);
    texts.exposed = loadNarrowResourceString(res::ReviewExposed);
    texts.unexposed = loadNarrowResourceString(res::ReviewUnexposed);
    texts.listCount = loadNarrowResourceString(res::ReviewListCount);
    return texts;
}

CReviewChangesDlg::CReviewChangesDlg(const std::string &text, QWidget *parent)
    : CVyrDialog(res::ReviewChangesDialog, 0, false, kHelpTopic, parent, DialogMode::ModeModal)
    , m_text(fromNarrow(text))
{
    setObjectName(QStringLiteral("reviewChangesDialog"));
    RegisterControl(&m_changes, kIdChanges);
    RegisterControl(&m_copy, kIdCopy);
}

bool CReviewChangesDlg::OnInitDialog()
{
    const bool result = CVyrDialog::OnInitDialog();
    if (m_changes) {
        m_changes->setPlainText(m_text);
        // The list is read with the keyboard from its start.
        m_changes->setFocus(Qt::OtherFocusReason);
    }
    if (m_copy)
        connect(m_copy.get(), &QPushButton::clicked, this, [this] { CopyToClipboard(); });
    return result;
}

void CReviewChangesDlg::CopyToClipboard()
{
    QApplication::clipboard()->setText(m_text);
}

qintptr CReviewChangesDlg::OnHelpRequest(qintptr, qintptr)
{
    return ShowTopicHelp();
}

} // namespace vyr
