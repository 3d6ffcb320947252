// Combo boxes of the library's dialogs. DropDownComboBox says when its list is
// about to drop down, so that the list can be filled with what is current at
// that moment; templates name it "VyrDropDownComboBox".
#ifndef VYR_UIKIT_DROPDOWNCOMBOBOX_H
#define VYR_UIKIT_DROPDOWNCOMBOBOX_H

#include <QComboBox>

namespace vyr {

// The library's combo box: assistive technology hears it named by its label,
// with the label's mnemonic as the key that reaches it, and its value as the
// value (a bare QComboBox on Linux is named by its value and tells no key).
// Templates' QComboBox is made one.
class ComboBox : public QComboBox
{
    Q_OBJECT

public:
    explicit ComboBox(QWidget *parent = nullptr);
};

class DropDownComboBox : public ComboBox
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
