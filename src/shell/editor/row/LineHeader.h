#pragma once

#include <QtWidgets/QWidget>

#include "controller/commands/Command.h"
#include "shell/editor/row/LineRowContent.h"

class QLabel;
class QPainter;
class QPushButton;
class QToolButton;

namespace orlenta::shell {

/// The start of a line's row: its number, the cast name, and the buttons for direction, notes and generation. Buttons
/// that report nothing appear only in an active row. A compact row has none.
class LineHeader final : public QWidget {
    Q_OBJECT
public:
    explicit LineHeader(QWidget *parent);

    /// What a row without a voice asks for.
    [[nodiscard]] static QString voiceHint();

    /// `number` is the line's position in its tab.
    void setContent(qsizetype number, const LineHeaderContent &content);
    void setDensity(RowDensity density);
    /// Whether the user is at this row, by pointer or keyboard.
    void setActive(bool isActive);
    /// Sets the background colour.
    void setBackground(const QColor &background);
    /// The focusable controls in tab order; some may be hidden.
    [[nodiscard]] QList<QWidget *> controls() const;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override { return placesFor(width).height; }

Q_SIGNALS:
    void commandRequested(orlenta::controller::CommandId command);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    struct Places {
        QRect number;
        QRect name;
        QRect mode;
        QRect notes;
        QRect generate;
        QRect hint;
        int height = 0;
    };

    void showGeneration();
    void showHint();
    void showDirection();
    void showButtons();
    void paintNumber(QPainter &painter) const;
    void showNames();
    void applyMeasures();
    void layOut();
    [[nodiscard]] QFont nameFont() const;
    [[nodiscard]] Places placesFor(int width) const;

    qsizetype m_number = 0;
    LineHeaderContent m_content;
    RowDensity m_density = RowDensity::Comfortable;
    bool m_isActive = false;
    QColor m_background;
    Places m_places;
    QToolButton *m_mode;
    QToolButton *m_notes;
    QPushButton *m_generate;
    /// What keeps the line from being generated.
    QLabel *m_hint;
};

} // namespace orlenta::shell
