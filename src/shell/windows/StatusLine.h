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

class NoticeLabel;
class ProgressMark;
class ScriptEditor;

/// The strip below the script: how many lines have audio, what plays, whether the microphone is on, why the last
/// command did nothing, whether audio is being imported or exported, and the progress of generation. Imports and
/// generation can be stopped here.
class StatusLine final : public QWidget {
    Q_OBJECT
public:
    /// Session and editor outlive the strip.
    StatusLine(controller::ProjectSession &session, ScriptEditor &editor, QWidget *parent = nullptr);

Q_SIGNALS:
    /// The user wants to go to the line being recorded.
    void lineRequested(const orlenta::model::LineId &id);

protected:
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void fit();
    void showAudio();
    void showRefusal(const QString &reason);
    void followImport();
    void showExport();
    void showGeneration();

    controller::ProjectController &m_controller;
    controller::LineGenerator &m_generator;
    QLabel *m_audio;
    NoticeLabel *m_refusal;
    QTimer m_refusalTime;
    ProgressMark *m_import;
    QTimer m_importDelay;
    QLabel *m_export;
    ProgressMark *m_generation;
};

} // namespace orlenta::shell
