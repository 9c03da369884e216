#pragma once

#include <QtWidgets/QDialog>

namespace orlenta::shell {

/// Explains how writing shapes the speech: the tips for all models, then those for each model.
class DeliveryTipsDialog final : public QDialog {
    Q_OBJECT
public:
    explicit DeliveryTipsDialog(QWidget *parent = nullptr);
};

} // namespace orlenta::shell
