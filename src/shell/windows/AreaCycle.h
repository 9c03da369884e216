#pragma once

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QPointer>

class QWidget;

namespace orlenta::shell {

/// Moves the keyboard around the areas of a window, such as toolbar, list and inspector. An area gets the focus back
/// where it had it last, or else on its first control. Main thread.
class AreaCycle final : public QObject {
    Q_OBJECT
public:
    /// The areas in order. None is part of another one.
    explicit AreaCycle(const QList<QWidget *> &areas, QObject *parent);

    /// Moves the focus to the next or previous area that is visible and has a control for it.
    void step(bool forward);

private:
    void remember(QWidget *focus);
    [[nodiscard]] QWidget *targetIn(QWidget *area) const;
    [[nodiscard]] qsizetype areaOf(const QWidget *focus) const;

    QList<QWidget *> m_areas;
    QHash<QWidget *, QPointer<QWidget>> m_last;
};

} // namespace orlenta::shell
