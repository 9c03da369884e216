#pragma once

#include <QtCore/QTimer>
#include <QtWidgets/QWidget>

#include "model/Ids.h"

class QLabel;

namespace orlenta::controller {
class LineGenerator;
class ProjectController;
class ProjectSession;
} // namespace orlenta::controller

namespace orlenta::shell {

class ProgressMark;

/// The strip below the script: how many lines have audio, whether the microphone is on, whether audio is being imported
/// or exported, and the progress of generation. Imports and generation can be stopped here.
class StatusLine final : public QWidget {
    Q_OBJECT
public:
    explicit StatusLine(controller::ProjectSession &session, QWidget *parent = nullptr);

Q_SIGNALS:
    /// The user wants to go to the line being recorded.
    void lineRequested(const orlenta::model::LineId &id);

protected:
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void fit();
    void showAudio();
    void followImport();
    void showExport();
    void showGeneration();

    controller::ProjectController &m_controller;
    controller::LineGenerator &m_generator;
    QLabel *m_audio;
    ProgressMark *m_import;
    QTimer m_importDelay;
    QLabel *m_export;
    ProgressMark *m_generation;
};

} // namespace orlenta::shell
