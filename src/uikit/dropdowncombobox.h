// A combo box that says when its list is about to drop down, so that the
// list can be filled with what is current at that moment. Templates name it
// "VyrDropDownComboBox".
#ifndef VYR_UIKIT_DROPDOWNCOMBOBOX_H
#define VYR_UIKIT_DROPDOWNCOMBOBOX_H

#include <QComboBox>

namespace vyr {

class DropDownComboBox : public QComboBox
{
    Q_OBJECT

public:
    // The characters its width is made for, whatever its items.
    static constexpr int kShownCharacters = 20;

    explicit DropDownComboBox(QWidget *parent = nullptr);

    void showPopup() override;

signals:
    // Before the list shows; the items may be replaced in the handler.
    void dropDown();
};

} // namespace vyr

#endif // VYR_UIKIT_DROPDOWNCOMBOBOX_H
