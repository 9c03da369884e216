#pragma once

#include <QtCore/QVariantAnimation>
#include <QtWidgets/QWidget>

namespace orlenta::shell {

/// A spinning arc. Turns while it is visible.
class BusyIndicator final : public QWidget {
    Q_OBJECT
public:
    explicit BusyIndicator(QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QVariantAnimation m_turn;
};

} // namespace orlenta::shell
