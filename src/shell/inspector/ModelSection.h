#pragma once

#include <QtCore/QList>
#include <QtWidgets/QWidget>

class QButtonGroup;

namespace orlenta::shell {

class InspectedLines;
class ModelCard;

/// Chooses the speech model of the inspected lines.
class ModelSection final : public QWidget {
    Q_OBJECT
public:
    explicit ModelSection(InspectedLines &lines, QWidget *parent = nullptr);

    [[nodiscard]] const QList<ModelCard *> &cards() const { return m_cards; }

private:
    void showState();

    InspectedLines &m_lines;
    QButtonGroup *m_group;
    QList<ModelCard *> m_cards;
};

} // namespace orlenta::shell
