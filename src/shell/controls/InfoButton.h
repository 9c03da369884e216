#pragma once

#include <QtCore/QPointer>
#include <QtCore/QStringList>
#include <QtWidgets/QToolButton>

namespace orlenta::shell {

/// A small button that explains the control beside it. A click, Space or Return opens a pop-over with the paragraphs,
/// and Escape or a click elsewhere closes it. The paragraphs are also the button's accessible description.
class InfoButton final : public QToolButton {
    Q_OBJECT
public:
    InfoButton(const QString &subject, const QStringList &paragraphs, QWidget *parent = nullptr);

    /// The open pop-over, or null.
    [[nodiscard]] QWidget *popover() const { return m_popover; }

private:
    void openPopover();

    QString m_subject;
    QStringList m_paragraphs;
    QPointer<QWidget> m_popover;
};

} // namespace orlenta::shell
