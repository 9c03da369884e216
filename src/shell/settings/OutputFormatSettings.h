#pragma once

#include <QtWidgets/QWidget>

class QComboBox;
class QFormLayout;

namespace orlenta::base {
class UserDefaults;
}

namespace orlenta::shell {

/// Chooses the format of generated audio: MP3 by quality, or WAV by bit depth and sample rate.
class OutputFormatSettings final : public QWidget {
    Q_OBJECT
public:
    explicit OutputFormatSettings(base::UserDefaults &defaults, QWidget *parent = nullptr);

private:
    void showFormat();

    base::UserDefaults &m_defaults;
    QFormLayout *m_form;
    QComboBox *m_format;
    QComboBox *m_quality;
    QComboBox *m_depth;
    QComboBox *m_rate;
    QWidget *m_wavNotes;
};

} // namespace orlenta::shell
