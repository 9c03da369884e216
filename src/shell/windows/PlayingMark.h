#pragma once

#include <QtWidgets/QWidget>

class QPushButton;

namespace orlenta::audio {
class PlaybackController;
}

namespace orlenta::shell {

class ScriptEditor;

/// Shows where in a script several lines are being played, such as "Playing 3 of 300 · 0:12 of 14:05", and leads back
/// to the playing line once the user has scrolled away. Hidden otherwise.
class PlayingMark final : public QWidget {
    Q_OBJECT
public:
    /// Both outlive the mark.
    PlayingMark(const audio::PlaybackController &playback, ScriptEditor &editor, QWidget *parent = nullptr);

protected:
    void changeEvent(QEvent *event) override;

private:
    void readLengths();
    void showPlace();
    void showFollowing();
    void applyMeasures();

    const audio::PlaybackController &m_playback;
    ScriptEditor &m_editor;
    QPushButton *m_place;
    QPushButton *m_follow;
    /// In seconds: before the playing line, of that line, and of all lines; the last is 0 until all are known.
    double m_before = 0.0;
    double m_current = 0.0;
    double m_total = 0.0;
};

} // namespace orlenta::shell
