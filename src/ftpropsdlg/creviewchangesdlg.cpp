#include "ftpropsdlg/creviewchangesdlg.h"

#include "uikit/narrowtext.h"
#include "uikit/resourcelibrary.h"

#include <QApplication>
#include <QClipboard>

namespace vyr {
namespace {

std::string narrowResource(unsigned id)
{
    return toNarrow(loadResourceString(id));
}

} // namespace

ReviewTexts ReviewTextsFromResources()
{
    ReviewTexts texts;
    texts.noChanges = narrowResource(res::ReviewNoChanges);
    texts.groupGeneral = narrowResource(res::ReviewGroupGeneral);
    texts.groupUserAttributes = narrowResource(res::ReviewGroupUserAttributes);
    texts.groupFormatAttributes = narrowResource(res::ReviewGroupFormatAttributes);
    texts.groupParameters = narrowResource(res::ReviewGroupParameters);
    // One label a line; a library that lacks some keeps the built-in ones.
    const QStringList labels = loadResourceString(res::ReviewGeneralLabels).split(QLatin1Char('\n'));
    if (labels.size() == static_cast<qsizetype>(texts.generalLabels.size())) {
        for (qsizetype i = 0; i < labels.size(); ++i)
            texts.generalLabels[std::size_t(i)] = toNarrow(labels[i]);
    }
    texts.yes = narrowResource(res::ReviewYes);
    texts.no = narrowResource(res::ReviewNo);
    texts.empty = narrowResource(res::ReviewEmpty);
    texts.typed = narrowResource(res::ReviewTyped);
    texts.changed = narrowResource(res::ReviewChanged);
    texts.added = narrowResource(res::ReviewAdded);
    texts.removed = narrowResource(res::ReviewRemoved);
    texts.renamed = narrowResource(res::ReviewRenamed);
    texts.retyped = narrowResource(res::ReviewRetyped);
    texts.moved = narrowResource(res::ReviewMoved);
    texts.legalised = narrowResource(res::ReviewLegalised);
    texts.exposed = narrowResource(res::ReviewExposed);
    texts.unexposed = narrowResource(res::ReviewUnexposed);
    texts.listCount = narrowResource(res::ReviewListCount);
    return texts;
}

CReviewChangesDlg::CReviewChangesDlg(const std::string &text, QWidget *parent)
    : CVyrDialog(res::ReviewChangesDialog, 0, false, std::string(), parent, DialogMode::ModeModal)
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

} // namespace vyr
