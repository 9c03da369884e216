#pragma once

#include <QtCore/QPointer>
#include <QtCore/QStringList>
#include <QtWidgets/QToolButton>

namespace orlenta::shell {

/// A small button that explains the control beside it: a click, Space or Return opens a pop-over with paragraphs,
/// which goes away on Escape or a click elsewhere. The paragraphs are its accessible description as well.
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
