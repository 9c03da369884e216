#pragma once

#include <QtWidgets/QWidget>

namespace orlenta::base {
class UserDefaults;
}

namespace orlenta::controller {
class ProjectController;
}

namespace orlenta::speech {
class ElevenLabsService;
}

namespace orlenta::shell {

class InspectedLines;
class ModelSection;
class PresetSection;
class SettingsSection;
class TextLabel;
class VoiceSection;

/// The right side of a project window: the voice and the settings of the selected lines.
class Inspector final : public QWidget {
    Q_OBJECT
public:
    Inspector(controller::ProjectController &controller, speech::ElevenLabsService &service, QWidget *parent = nullptr);

    [[nodiscard]] VoiceSection &voices() const { return *m_voices; }
    [[nodiscard]] PresetSection &presets() const { return *m_presets; }
    [[nodiscard]] ModelSection &models() const { return *m_models; }
    [[nodiscard]] SettingsSection &settings() const { return *m_settings; }
    [[nodiscard]] InspectedLines &lines() const { return *m_lines; }

public Q_SLOTS:
    void showDeliveryTips();
    /// Puts the caret into the voice search field.
    void focusVoiceSearch();

Q_SIGNALS:
    /// The keyboard leaves the inspector for the script.
    void linesRequested();
    void accountRequested();
    void localVoicesRequested();

protected:
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void showSubject();
    void fitWidth();
    void fitVoices();

    InspectedLines *m_lines;
    VoiceSection *m_voices;
    PresetSection *m_presets;
    ModelSection *m_models;
    SettingsSection *m_settings;
    QWidget *m_content;
    QWidget *m_viewport = nullptr;
    TextLabel *m_subject;
};

} // namespace orlenta::shell
