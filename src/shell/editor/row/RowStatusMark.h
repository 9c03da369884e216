#pragma once

#include <QtWidgets/QWidget>

#include "shell/editor/row/LineRowContent.h"

namespace orlenta::shell {

class BusyIndicator;

/// Shows a line's status as an icon, with its words in the tool tip and for screen readers. Empty while all is well.
class RowStatusMark final : public QWidget {
    Q_OBJECT
public:
    explicit RowStatusMark(QWidget *parent);

    /// `number` is the line's position in its tab.
    void setContent(qsizetype number, RowStatus status, const QString &words);
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    [[nodiscard]] QRect iconPlace() const;

    RowStatus m_status = RowStatus::Done;
    BusyIndicator *m_busy;
};

} // namespace orlenta::shell
