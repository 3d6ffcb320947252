#include "qvyrext.h"

#include <QWidget>

QVYRDialog::QVYRDialog(QWidget *parent)
    : QDialog(parent)
{
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setModal(true);
}

QVYRDialog::~QVYRDialog() = default;

QVYRNativeWidget::QVYRNativeWidget(void *nativeWindow)
    : m_widget(static_cast<QWidget *>(nativeWindow))
{}

QVYRNativeWidget::~QVYRNativeWidget() = default;
