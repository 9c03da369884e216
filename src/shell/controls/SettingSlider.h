#pragma once

#include <QtCore/QStringList>
#include <QtWidgets/QWidget>

class QLabel;
class QSlider;

namespace orlenta::shell {

/// A titled slider over a range of reals, with its value and an explanation. Reports the value at the end of a drag,
/// and at each step by key, wheel or click.
class SettingSlider final : public QWidget {
    Q_OBJECT
public:
    struct Range {
        double minimum = 0.0;
        double maximum = 1.0;
        double standard = 0.5;
    };

    enum class Gesture { Drag, Step };

    SettingSlider(const QString &title, Range range, const QStringList &help, QWidget *parent = nullptr);

    [[nodiscard]] double value() const;
    /// Shows a value without reporting it. `isShared` is true if all edited lines have it.
    void showValue(double value, bool isShared);
    [[nodiscard]] QSlider *slider() const { return m_slider; }

Q_SIGNALS:
    void valueCommitted(double value, Gesture gesture);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void showReading();
    void commit(Gesture gesture);

    Range m_range;
    QSlider *m_slider;
    QLabel *m_reading;
    bool m_isShared = true;
    int m_committed = 0;
};

} // namespace orlenta::shell
