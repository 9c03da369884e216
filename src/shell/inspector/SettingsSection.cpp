#include "shell/inspector/SettingsSection.h"

#include <algorithm>

#include <QtWidgets/QButtonGroup>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include "shell/controls/InfoButton.h"
#include "shell/controls/SettingSlider.h"
#include "shell/controls/TextLabel.h"
#include "shell/inspector/InspectedLines.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

using controller::ModelCatalogue;
using controller::SettingsControl;
using controller::SettingsControlKind;
using model::ProjectLineSettings;

double ProjectLineSettings::*sliderMember(SettingsControlKind kind) {
    switch (kind) {
    case SettingsControlKind::Stability:
        return &ProjectLineSettings::stability;
    case SettingsControlKind::Similarity:
        return &ProjectLineSettings::similarityBoost;
    case SettingsControlKind::Style:
        return &ProjectLineSettings::style;
    case SettingsControlKind::Speed:
        return &ProjectLineSettings::speed;
    case SettingsControlKind::Mode:
        break;
    }
    Q_UNREACHABLE();
}

} // namespace

SettingsSection::SettingsSection(InspectedLines &lines, QWidget *parent)
    : QWidget(parent), m_lines(lines), m_modeGroup(new QButtonGroup(this)) {
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new TextLabel(u"SETTINGS"_s, TextLabel::Style::Section));
    for (const SettingsControl &control : ModelCatalogue::controls()) {
        SettingSlider *slider = control.kind == SettingsControlKind::Mode ? nullptr : makeSlider(control);
        QWidget *widget = slider != nullptr ? slider : makeModePicker(control);
        layout->addWidget(widget);
        m_rows.append({control, widget, slider});
    }
    connect(&lines, &InspectedLines::changed, this, &SettingsSection::showState);
    showState();
}

SettingSlider *SettingsSection::slider(SettingsControlKind kind) const {
    const auto found =
        std::find_if(m_rows.begin(), m_rows.end(), [kind](const Row &row) { return row.control.kind == kind; });
    return found == m_rows.end() ? nullptr : found->slider;
}

QWidget *SettingsSection::makeModePicker(const SettingsControl &control) {
    const QString title = control.title.isEmpty() ? u"Mode"_s : control.title;
    auto *picker = new QWidget;
    auto *column = new QVBoxLayout(picker);
    column->setContentsMargins(0, 0, 0, 0);
    auto *header = new QHBoxLayout;
    auto *name = new TextLabel(title, TextLabel::Style::Body);
    name->setWordWrap(false);
    header->addWidget(name);
    header->addWidget(new InfoButton(title, control.help));
    header->addStretch();
    column->addLayout(header);
    auto *row = new QHBoxLayout;
    row->setSpacing(4);
    column->addLayout(row);
    for (const QString &mode : ModelCatalogue::modes()) {
        auto *button = new QPushButton(mode);
        button->setCheckable(true);
        // The group keeps them exclusive; this tells assistive technology that they are radio buttons.
        button->setAutoExclusive(true);
        button->setAccessibleName(QStringLiteral("%1: %2").arg(title, mode));
        const auto help = std::find_if(control.help.begin(), control.help.end(),
                                       [&mode](const QString &text) { return text.startsWith(mode); });
        button->setToolTip(help == control.help.end() ? mode : *help);
        m_modeGroup->addButton(button);
        m_modes.append(button);
        row->addWidget(button, 1);
        connect(button, &QPushButton::clicked, this,
                [this, mode] { m_lines.change([&mode](ProjectLineSettings &settings) { settings.mode = mode; }); });
    }
    return picker;
}

SettingSlider *SettingsSection::makeSlider(const SettingsControl &control) {
    auto *slider =
        new SettingSlider(control.title, {control.minimum, control.maximum, control.defaultValue}, control.help);
    connect(slider, &SettingSlider::valueCommitted, this,
            [this, kind = control.kind](double value, SettingSlider::Gesture gesture) {
                m_lines.change([kind, value](ProjectLineSettings &settings) { settings.*sliderMember(kind) = value; },
                               gesture == SettingSlider::Gesture::Step ? std::optional(kind) : std::nullopt);
            });
    return slider;
}

void SettingsSection::showState() {
    const auto mode = m_lines.shared(&ProjectLineSettings::mode);
    m_modeGroup->setExclusive(false);
    for (QPushButton *button : std::as_const(m_modes))
        button->setChecked(mode == button->text());
    m_modeGroup->setExclusive(true);

    const auto model = m_lines.shared(&ProjectLineSettings::model);
    for (const Row &row : std::as_const(m_rows)) {
        // If the lines use several models, show all controls; each model ignores those that it doesn't have.
        row.widget->setVisible(!model || row.control.models.contains(ModelCatalogue::model(*model).key));
        row.widget->setEnabled(!m_lines.isEmpty());
        if (row.slider == nullptr || m_lines.isEmpty())
            continue;
        const auto value = m_lines.shared(sliderMember(row.control.kind));
        row.slider->showValue(value.value_or(m_lines.settings().first().*sliderMember(row.control.kind)),
                              value.has_value());
    }
}

} // namespace orlenta::shell
