#include "uikit/dropdowncombobox.h"

namespace vyr {

DropDownComboBox::DropDownComboBox(QWidget *parent)
    : QComboBox(parent)
{
    // Its items come from the data (thousands of attribute names, say) and
    // change as it drops down: sized by them, it would measure every item
    // when first laid out and change its width with the data.
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(kShownCharacters);
}

void DropDownComboBox::showPopup()
{
    emit dropDown();
    QComboBox::showPopup();
}

} // namespace vyr
