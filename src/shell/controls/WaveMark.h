#pragma once

#include <QtWidgets/QWidget>

namespace orlenta::shell {

/// The application's mark: a short wave in bars of the accent colour.
class WaveMark final : public QWidget {
    Q_OBJECT
public:
    explicit WaveMark(QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace orlenta::shell
