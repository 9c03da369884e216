#pragma once

#include <QtWidgets/QRadioButton>

#include "controller/casting/ModelCatalogue.h"

namespace orlenta::shell {

/// One of the speech models, as a part of a row of which one is chosen. The keyboard and assistive technology treat it
/// as a radio button.
class ModelSegment final : public QRadioButton {
    Q_OBJECT
public:
    explicit ModelSegment(const controller::ModelDescription &model, QWidget *parent = nullptr);

    [[nodiscard]] const controller::ModelDescription &model() const { return m_model; }
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;
    [[nodiscard]] bool hitButton(const QPoint &position) const override;

private:
    controller::ModelDescription m_model;
};

} // namespace orlenta::shell
