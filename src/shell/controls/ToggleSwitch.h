#pragma once

#include <QtWidgets/QCheckBox>

namespace orlenta::shell {

/// An on-off switch with a label. The keyboard and assistive technology treat it as a check box.
class ToggleSwitch final : public QCheckBox {
    Q_OBJECT
public:
    explicit ToggleSwitch(const QString &text, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    [[nodiscard]] bool hitButton(const QPoint &position) const override;

private:
    [[nodiscard]] QSize trackSize() const;
};

} // namespace orlenta::shell
