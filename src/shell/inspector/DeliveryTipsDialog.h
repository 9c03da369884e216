#pragma once

#include <QtWidgets/QDialog>

namespace orlenta::shell {

/// How writing shapes what is spoken: the tips for all models, then those of one.
class DeliveryTipsDialog final : public QDialog {
    Q_OBJECT
public:
    explicit DeliveryTipsDialog(QWidget *parent = nullptr);
};

} // namespace orlenta::shell
