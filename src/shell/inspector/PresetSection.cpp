#include "shell/inspector/PresetSection.h"

#include <chrono>

#include <QtWidgets/QComboBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include "controller/casting/PresetEditing.h"
#include "controller/ProjectController.h"
#include "shell/controls/ShownText.h"
#include "shell/controls/TextLabel.h"
#include "shell/inspector/InspectedLines.h"
#include "shell/theme/Icon.h"
#include "speech/account/ElevenLabsService.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

constexpr std::chrono::milliseconds savedFeedbackTime{1500};

} // namespace

PresetSection::PresetSection(controller::ProjectController &controller, const speech::ElevenLabsService &service,
                             InspectedLines &lines, QWidget *parent)
    : QWidget(parent), m_controller(controller), m_service(service), m_lines(lines), m_picker(new QComboBox),
      m_save(new QPushButton(u"Save"_s)), m_saveAs(new QPushButton(u"Save As"_s)),
      m_delete(new QPushButton(u"Delete"_s)), m_notice(new TextLabel({}, TextLabel::Style::Caption)) {
    m_picker->setPlaceholderText(u"SELECT PRESET"_s);
    m_picker->setAccessibleName(u"Preset"_s);
    m_picker->setToolTip(u"Apply a preset's settings and voice to the selected lines"_s);
    m_picker->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_picker->setMinimumContentsLength(12);
    m_save->setToolTip(u"Save this line's settings and voice to its preset"_s);
    m_save->setAccessibleName(u"Save preset"_s);
    m_saveAs->setToolTip(u"Save this line's settings and voice as a new preset"_s);
    m_saveAs->setAccessibleName(u"Save as new preset"_s);
    m_delete->setToolTip(u"Delete the selected preset"_s);
    m_delete->setAccessibleName(u"Delete preset"_s);
    m_notice->hide();
    m_savedFeedback.setSingleShot(true);
    m_savedFeedback.setInterval(savedFeedbackTime);

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_save, 1);
    buttons->addWidget(m_saveAs, 1);
    buttons->addWidget(m_delete, 1);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new TextLabel(u"PRESET"_s, TextLabel::Style::Section));
    layout->addWidget(m_picker);
    layout->addLayout(buttons);
    layout->addWidget(m_notice);

    connect(m_picker, &QComboBox::activated, this, &PresetSection::apply);
    connect(m_save, &QPushButton::clicked, this, &PresetSection::save);
    connect(m_saveAs, &QPushButton::clicked, this, &PresetSection::saveAs);
    connect(m_delete, &QPushButton::clicked, this, &PresetSection::remove);
    connect(&m_savedFeedback, &QTimer::timeout, this, &PresetSection::showState);
    controller::onAnyChange<controller::PresetsChanged>(controller, this, [this] { reload(); });
    connect(&lines, &InspectedLines::changed, this, [this] {
        m_notice->hide();
        showState();
    });
    reload();
}

void PresetSection::reload() {
    const QList<model::ProjectPreset> &presets = m_controller.project().presets;
    bool isCurrent = m_picker->count() == presets.size();
    for (int i = 0; isCurrent && i < m_picker->count(); ++i)
        isCurrent = m_picker->itemText(i) == shownName(presets.at(i).name) &&
                    m_picker->itemData(i).toUuid() == presets.at(i).id.uuid();
    if (isCurrent)
        return;
    m_picker->clear();
    for (const model::ProjectPreset &preset : presets)
        m_picker->addItem(shownName(preset.name), preset.id.uuid());
    showState();
}

void PresetSection::showState() {
    const auto preset = m_lines.sharedPreset();
    m_picker->setCurrentIndex(preset ? m_picker->findData(preset->uuid()) : -1);
    m_picker->setEnabled(!m_lines.isEmpty());
    m_save->setEnabled(m_lines.single().has_value() && m_picker->currentIndex() >= 0);
    m_saveAs->setEnabled(m_lines.single().has_value());
    m_delete->setEnabled(m_picker->currentIndex() >= 0 && m_controller.presets().canDeletePreset());
    if (m_savedFeedback.isActive())
        return;
    m_save->setText(u"Save"_s);
    m_save->setIcon({});
}

void PresetSection::apply(int row) {
    const model::PresetId id(m_picker->itemData(row).toUuid());
    const auto missing = m_controller.presets().applyPreset(id, m_lines.ids(), m_service.availableVoiceIds());
    m_notice->setVisible(missing.has_value());
    if (missing) {
        m_notice->setText(shownStart(controller::PresetEditing::presetNotice(*missing), shownMessage));
        m_notice->setAccessibleName(u"Preset notice: %1"_s.arg(m_notice->text()));
    }
    showState();
}

void PresetSection::save() {
    const auto line = m_lines.single();
    if (!line)
        return;
    m_controller.presets().savePreset(*line);
    showSaved();
}

void PresetSection::saveAs() {
    auto *dialog = new QInputDialog(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(u"Save Preset"_s);
    dialog->setLabelText(u"Name of the new preset:"_s);
    dialog->setOkButtonText(u"Save"_s);
    connect(dialog, &QInputDialog::textValueSelected, this, [this](const QString &name) {
        const auto line = m_lines.single();
        if (!line || name.trimmed().isEmpty())
            return;
        m_controller.presets().savePresetAs(name.trimmed(), *line);
        showSaved();
    });
    dialog->open();
    if (auto *field = dialog->findChild<QLineEdit *>(); field != nullptr) {
        field->setAccessibleName(u"Preset name"_s);
        field->setToolTip(u"Name of the new preset"_s);
    }
}

void PresetSection::remove() {
    if (m_picker->currentIndex() >= 0)
        m_controller.presets().deletePreset(model::PresetId(m_picker->currentData().toUuid()));
}

void PresetSection::showSaved() {
    m_savedFeedback.start();
    m_save->setText(u"Saved!"_s);
    m_save->setIcon(Icon::named(u"checkmark"_s));
    showState();
}

} // namespace orlenta::shell
