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

/// Shows that the microphone is on, for which line and for how long, wherever the script is scrolled to, and lets the
/// user stop. While nothing is recorded, it only reserves its height.
class RecordingMark final : public QWidget {
    Q_OBJECT
public:
    /// The session outlives the mark.
    explicit RecordingMark(controller::ProjectSession &session, QWidget *parent = nullptr);

Q_SIGNALS:
    /// The user wants to go to the line.
    void lineRequested(const orlenta::model::LineId &id);

protected:
    void changeEvent(QEvent *event) override;

private:
    void showRecording(const model::LineId &id);
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
