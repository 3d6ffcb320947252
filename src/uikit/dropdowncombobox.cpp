#include "uikit/dropdowncombobox.h"

namespace vyr {

DropDownComboBox::DropDownComboBox(QWidget *parent)
    : QComboBox(parent)
{}

void DropDownComboBox::showPopup()
{
    emit dropDown();
    QComboBox::showPopup();
}

} // namespace vyr
