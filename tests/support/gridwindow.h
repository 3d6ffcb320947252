// A grid in a dialog between two fields, in that tab order, with a default
// OK button that counts its presses: somewhere for the focus to go and a
// button for Enter to press. show() makes it active with the grid focused.
#ifndef VYR_TESTS_GRIDWINDOW_H
#define VYR_TESTS_GRIDWINDOW_H

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <QtTest>

#include <utility>

namespace vyr::test {

// Shows a window and waits until it is the active one.
inline bool showActive(QWidget &widget)
{
    widget.show();
    widget.activateWindow();
    return QTest::qWaitForWindowActive(&widget);
}

template <class Grid>
struct GridWindow
{
    QDialog window;
    QLineEdit *before = new QLineEdit(&window);
    Grid *grid = nullptr;
    QLineEdit *after = nullptr;
    int accepted = 0;

    // The grid's constructor arguments but the parent.
    template <class... Arguments>
    explicit GridWindow(Arguments &&...arguments)
        : grid(new Grid(std::forward<Arguments>(arguments)..., &window))
        , after(new QLineEdit(&window))
    {
        auto *layout = new QVBoxLayout(&window);
        auto *ok = new QPushButton(QStringLiteral("OK"), &window);
        ok->setDefault(true);
        QObject::connect(ok, &QPushButton::clicked, &window, [this] { ++accepted; });
        for (QWidget *widget : {static_cast<QWidget *>(before), static_cast<QWidget *>(grid),
                                static_cast<QWidget *>(after), static_cast<QWidget *>(ok)})
            layout->addWidget(widget);
        window.resize(600, 360);
        grid->InitializeGrid();
    }

    bool show()
    {
        if (!showActive(window))
            return false;
        grid->setFocus();
        return QTest::qWaitFor([this] { return grid->hasFocus(); });
    }
};

} // namespace vyr::test

#endif // VYR_TESTS_GRIDWINDOW_H
