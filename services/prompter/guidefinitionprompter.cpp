#include "guidefinitionprompter.h"

#include "guiprompterform.h"

#include <QApplication>
#include <QFile>
#include <QSaveFile>

namespace vyr::services {

void GuiDefinitionPrompter::setParentWindow(void *window)
{
    m_parent = static_cast<QWidget *>(window);
}

int GuiDefinitionPrompter::run(const char *definitionPath)
{
    if (!definitionPath || !*definitionPath || !qobject_cast<QApplication *>(QCoreApplication::instance()))
        return 0;
    const QString path = QString::fromLocal8Bit(definitionPath);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray text = file.readAll();
    file.close();

    GuiPrompterForm form(parseGuiDefinition(std::string_view(text.constData(), static_cast<std::size_t>(text.size()))),
                         m_parent);
    if (form.exec() != QDialog::Accepted)
        return 0;
    // The answers replace the definition all at once, or not at all.
    const std::string answers = writeGuiAnswers(form.definition(), form.answers());
    QSaveFile out(path);
    if (!out.open(QIODevice::WriteOnly))
        return 0;
    out.write(answers.data(), static_cast<qint64>(answers.size()));
    return out.commit() ? 1 : 0;
}

} // namespace vyr::services
