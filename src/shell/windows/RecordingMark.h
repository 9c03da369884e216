#pragma once

#include <QtWidgets/QWidget>

#include "model/Ids.h"

class QLabel;
class QPushButton;

namespace orlenta::controller {
class DirectionRecordings;
class ProjectController;
class ProjectSession;
} // namespace orlenta::controller

namespace orlenta::shell {

/// Says that the microphone is on, for which line and for how long, wherever the script has been scrolled to, and ends
/// the take. Takes no room while nothing is recorded, except for its height.
class RecordingMark final : public QWidget {
    Q_OBJECT
public:
    /// The session outlives the mark.
    explicit RecordingMark(controller::ProjectSession &session, QWidget *parent = nullptr);

Q_SIGNALS:
    /// The user wants to see the line.
    void lineWanted(const orlenta::model::LineId &id);

protected:
    void changeEvent(QEvent *event) override;

private:
    void tellOf(const model::LineId &id);
    void follow();
    void applyMeasures();
    [[nodiscard]] QString placeOf(const model::LineId &id) const;

    const controller::ProjectController &m_controller;
    controller::DirectionRecordings &m_recordings;
    QPushButton *m_line;
    QLabel *m_time;
    QPushButton *m_stop;
};

} // namespace orlenta::shell
