#include "grid/cugfinddialog.h"

#include "grid/ugdefs.h"
#include "grid/ugtexts.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace vyr {

CUGFindDialog::CUGFindDialog(bool replace, QWidget *parent)
    : QDialog(parent)
    , m_replace(replace)
{
    setObjectName(QStringLiteral("CUGFindDialog"));
    m_findEdit = new QLineEdit(this);
    m_findEdit->setObjectName(QStringLiteral("findText"));
    m_replaceEdit = new QLineEdit(this);
    m_replaceEdit->setObjectName(QStringLiteral("replaceText"));
    auto *findLabel = new QLabel(ug::gridText("Fi&nd what:"), this);
    findLabel->setBuddy(m_findEdit);
    m_replaceLabel = new QLabel(ug::gridText("Re&place with:"), this);
    m_replaceLabel->setBuddy(m_replaceEdit);
    m_wholeWord = new QCheckBox(ug::gridText("Match &whole word only"), this);
    m_matchCase = new QCheckBox(ug::gridText("Match &case"), this);
    m_up = new QRadioButton(ug::gridText("&Up"), this);
    m_down = new QRadioButton(ug::gridText("&Down"), this);
    m_down->setChecked(true);
    auto *direction = new QGroupBox(ug::gridText("Direction"), this);
    auto *directionLayout = new QHBoxLayout(direction);
    directionLayout->addWidget(m_up);
    directionLayout->addWidget(m_down);

    m_findNext = new QPushButton(ug::gridText("&Find Next"), this);
    m_findNext->setDefault(true);
    m_replaceButton = new QPushButton(ug::gridText("&Replace"), this);
    m_replaceAll = new QPushButton(ug::gridText("Replace &All"), this);
    auto *cancel = new QPushButton(ug::gridText("Cancel"), this);

    auto *fields = new QGridLayout;
    fields->addWidget(findLabel, 0, 0);
    fields->addWidget(m_findEdit, 0, 1);
    fields->addWidget(m_replaceLabel, 1, 0);
    fields->addWidget(m_replaceEdit, 1, 1);
    auto *options = new QHBoxLayout;
    auto *checks = new QVBoxLayout;
    checks->addWidget(m_wholeWord);
    checks->addWidget(m_matchCase);
    options->addLayout(checks);
    options->addWidget(direction);
    auto *left = new QVBoxLayout;
    left->addLayout(fields);
    left->addLayout(options);
    left->addStretch();
    auto *buttons = new QVBoxLayout;
    buttons->addWidget(m_findNext);
    buttons->addWidget(m_replaceButton);
    buttons->addWidget(m_replaceAll);
    buttons->addWidget(cancel);
    buttons->addStretch();
    auto *layout = new QHBoxLayout(this);
    layout->addLayout(left, 1);
    layout->addLayout(buttons);

    connect(m_findNext, &QPushButton::clicked, this, &CUGFindDialog::findNextRequested);
    connect(m_replaceButton, &QPushButton::clicked, this, &CUGFindDialog::replaceRequested);
    connect(m_replaceAll, &QPushButton::clicked, this, &CUGFindDialog::replaceAllRequested);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_findEdit, &QLineEdit::textChanged, this, &CUGFindDialog::updateButtons);
    setReplaceDialog(replace);
}

void CUGFindDialog::setReplaceDialog(bool replace)
{
    m_replace = replace;
    setWindowTitle(replace ? ug::gridText("Replace") : ug::gridText("Find"));
    m_replaceLabel->setVisible(replace);
    m_replaceEdit->setVisible(replace);
    m_replaceButton->setVisible(replace);
    m_replaceAll->setVisible(replace);
    // Searching upward is a find-only choice, as replacing goes down.
    m_up->parentWidget()->setVisible(!replace);
    updateButtons();
}

void CUGFindDialog::updateButtons()
{
    const bool any = !m_findEdit->text().isEmpty();
    m_findNext->setEnabled(any);
    m_replaceButton->setEnabled(any);
    m_replaceAll->setEnabled(any);
}

QString CUGFindDialog::findText() const
{
    return m_findEdit->text();
}

QString CUGFindDialog::replaceText() const
{
    return m_replaceEdit->text();
}

void CUGFindDialog::setFindText(const QString &text)
{
    m_findEdit->setText(text);
}

void CUGFindDialog::setReplaceText(const QString &text)
{
    m_replaceEdit->setText(text);
}

int CUGFindDialog::storeFlags() const
{
    int flags = 0;
    if (!m_down->isChecked() && !m_replace)
        flags |= ug::FindUp;
    if (!m_wholeWord->isChecked())
        flags |= ug::FindPartial;
    if (!m_matchCase->isChecked())
        flags |= ug::FindIgnoreCase;
    if (m_replace)
        flags |= ug::FindReplace;
    return flags;
}

} // namespace vyr
