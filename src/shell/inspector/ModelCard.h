#pragma once

#include <QtWidgets/QRadioButton>

#include "controller/casting/ModelCatalogue.h"

namespace orlenta::shell {

class InfoButton;

/// A speech model to select: its title, subtitle and strengths, and an info button. The keyboard and assistive
/// technology treat it as a radio button.
class ModelCard final : public QRadioButton {
    Q_OBJECT
public:
    explicit ModelCard(const controller::ModelDescription &model, QWidget *parent = nullptr);

    [[nodiscard]] const QString &modelKey() const { return m_model.key; }
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    [[nodiscard]] bool hitButton(const QPoint &position) const override;

private:
    [[nodiscard]] QFont titleFont() const;
    [[nodiscard]] QFont smallFont() const;
    [[nodiscard]] int padding() const;

    controller::ModelDescription m_model;
    InfoButton *m_info;
};

} // namespace orlenta::shell
