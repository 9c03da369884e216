#pragma once

#include <QtCore/QList>
#include <QtWidgets/QWidget>

#include "controller/casting/ModelCatalogue.h"
#include "model/ProjectLineSettings.h"

class QButtonGroup;
class QPushButton;

namespace orlenta::shell {

class InspectedLines;
class SettingSlider;

/// The delivery settings of the inspected lines, limited to those that their model has.
class SettingsSection final : public QWidget {
    Q_OBJECT
public:
    explicit SettingsSection(InspectedLines &lines, QWidget *parent = nullptr);

    /// The slider of this kind, or null for the mode picker.
    [[nodiscard]] SettingSlider *slider(controller::SettingsControlKind kind) const;
    [[nodiscard]] const QList<QPushButton *> &modeButtons() const { return m_modes; }

private:
    struct Row {
        controller::SettingsControl control;
        QWidget *widget;
        SettingSlider *slider;
    };

    [[nodiscard]] QWidget *makeModePicker(const controller::SettingsControl &control);
    [[nodiscard]] SettingSlider *makeSlider(const controller::SettingsControl &control);
    void showState();

    InspectedLines &m_lines;
    QButtonGroup *m_modeGroup;
    QList<QPushButton *> m_modes;
    QList<Row> m_rows;
};

} // namespace orlenta::shell
