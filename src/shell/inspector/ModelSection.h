#pragma once

#include <QtCore/QList>
#include <QtWidgets/QWidget>

class QButtonGroup;
class QLabel;

namespace orlenta::shell {

class InfoButton;
class InspectedLines;
class ModelSegment;

/// Chooses the speech model of the inspected lines, and says what the chosen one is good at.
class ModelSection final : public QWidget {
    Q_OBJECT
public:
    explicit ModelSection(InspectedLines &lines, QWidget *parent = nullptr);

    [[nodiscard]] const QList<ModelSegment *> &segments() const { return m_segments; }

private:
    void showState();

    InspectedLines &m_lines;
    QButtonGroup *m_group;
    QList<ModelSegment *> m_segments;
    /// In the same order; only the chosen model's is visible.
    QList<InfoButton *> m_infos;
    QLabel *m_words;
};

} // namespace orlenta::shell
