#include "guiprompterform.h"

#include "checklist.h"
#include "servicetext.h"
#include "vyr_robohelp.h"

#include "util/stringconverter.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace vyr::services {

namespace {

QString fromNarrow(const std::string &text)
{
    return QString::fromStdString(ansiToUtf8(text));
}

std::string toNarrow(const QString &text)
{
    return utf8ToAnsi(text.toStdString());
}

QStringList fromNarrow(const StringList &texts)
{
    QStringList list;
    for (const std::string &text : texts)
        list.append(fromNarrow(text));
    return list;
}

StringList toNarrow(const QStringList &texts)
{
    StringList list;
    for (const QString &text : texts)
        list.push_back(toNarrow(text));
    return list;
}

QString promptName(const GuiPrompt &prompt)
{
    return QStringLiteral("prompt_") + QString::fromStdString(prompt.key);
}

} // namespace

GuiPrompterForm::GuiPrompterForm(GuiDefinition definition, QWidget *parent)
    : QDialog(parent)
    , m_definition(std::move(definition))
{
    setObjectName(QStringLiteral("guiPrompterForm"));
    setWindowTitle(m_definition.title.empty() ? localized("Settings") : fromNarrow(m_definition.title));
    auto *form = new QFormLayout;
    for (const GuiPrompt &prompt : m_definition.prompts) {
        if (prompt.kind == GuiPromptKind::Divider) {
            auto *line = new QFrame(this);
            line->setFrameShape(QFrame::HLine);
            line->setFrameShadow(QFrame::Sunken);
            form->addRow(line);
            continue;
        }
        QWidget *editor = makeEditor(prompt);
        editor->setObjectName(promptName(prompt));
        const QString label = fromNarrow(prompt.prompt);
        if (prompt.kind == GuiPromptKind::SelectionBox) {
            form->addRow(new QLabel(label, this));
            form->addRow(editor);
        } else {
            form->addRow(label, editor);
        }
    }

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setText(localized("OK"));
    buttons->button(QDialogButtonBox::Cancel)->setText(localized("Cancel"));
    if (!m_definition.help.empty()) {
        QPushButton *help = buttons->addButton(QDialogButtonBox::Help);
        help->setText(localized("Help"));
        connect(buttons, &QDialogButtonBox::helpRequested, this, &GuiPrompterForm::showHelp);
    }
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(buttons);
}

QWidget *GuiPrompterForm::makeEditor(const GuiPrompt &prompt)
{
    const QStringList defaults = fromNarrow(defaultValues(m_definition, prompt));
    switch (prompt.kind) {
    case GuiPromptKind::ListBox:
    case GuiPromptKind::SelectionBox: {
        auto *list = new CheckList(this);
        list->setItems(fromNarrow(prompt.choices), defaults);
        m_readers[prompt.key] = [list] { return toNarrow(list->checkedItems()); };
        return list;
    }
    case GuiPromptKind::Choice: {
        auto *combo = new QComboBox(this);
        combo->addItems(fromNarrow(prompt.choices));
        if (!defaults.isEmpty())
            combo->setCurrentText(defaults.front());
        m_readers[prompt.key]
            = [combo] { return combo->currentIndex() < 0 ? StringList() : StringList{toNarrow(combo->currentText())}; };
        return combo;
    }
    case GuiPromptKind::IconPick: {
        auto *box = new QWidget(this);
        auto *edit = new QLineEdit(box);
        edit->setObjectName(QStringLiteral("iconFile"));
        edit->setText(defaults.value(0));
        auto *browse = new QPushButton(localized("Browse..."), box);
        auto *row = new QHBoxLayout(box);
        row->setContentsMargins(0, 0, 0, 0);
        row->addWidget(edit);
        row->addWidget(browse);
        connect(browse, &QPushButton::clicked, this, [this, edit] {
            const QString file = QFileDialog::getOpenFileName(this, localized("Choose an icon"), edit->text(),
                                                              localized("Icon files (*.png *.svg *.xpm *.ico *.bmp)"));
            if (!file.isEmpty())
                edit->setText(file);
        });
        m_readers[prompt.key] = [edit] { return StringList{toNarrow(edit->text())}; };
        return box;
    }
    case GuiPromptKind::Divider: break;
    }
    return new QWidget(this);
}

std::map<std::string, StringList> GuiPrompterForm::answers() const
{
    std::map<std::string, StringList> values;
    for (const auto &[key, read] : m_readers)
        values[key] = read();
    return values;
}

void GuiPrompterForm::showHelp()
{
    VYR_CHM_ShowHelpByString(nullptr, m_definition.help.c_str(), "", "");
}

} // namespace vyr::services
