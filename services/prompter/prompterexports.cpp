#include "vyrprompter.h"

#include "guidefinitionprompter.h"
#include "selectiondialog.h"

#include "util/stringconverter.h"

#include <QApplication>

namespace {

QStringList toQt(const IVYRStringArray &array)
{
    QStringList list;
    for (std::size_t i = 0; i < array.entries(); ++i)
        list.append(QString::fromStdString(vyr::ansiToUtf8(array.elementAt(i))));
    return list;
}

} // namespace

extern "C" bool selectionDialog(IVYRStringArray &all, IVYRStringArray &preselected, IVYRStringArray &icons,
                                IVYRString &title, int, int, IVYRStringArray &chosen, void *parent)
{
    if (!qobject_cast<QApplication *>(QCoreApplication::instance()))
        return false;
    const QString caption = QString::fromStdString(vyr::ansiToUtf8(std::string_view(title.data(), title.length())));
    vyr::services::SelectionDialog dialog(caption, toQt(all), toQt(preselected), toQt(icons),
                                          static_cast<QWidget *>(parent));
    if (dialog.exec() != QDialog::Accepted)
        return false;
    const QStringList picked = dialog.chosen();
    for (const QString &item : picked)
        chosen.append(vyr::utf8ToAnsi(item.toStdString()).c_str());
    return true;
}

extern "C" IGuiPrompter *vyrprompter_createGuiPrompter(void)
{
    return new vyr::services::GuiDefinitionPrompter;
}

extern "C" void vyrprompter_destroyGuiPrompter(IGuiPrompter *prompter)
{
    delete prompter;
}
