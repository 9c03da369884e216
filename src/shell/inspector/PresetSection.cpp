#include "shell/inspector/PresetSection.h"

#include <chrono>

#include <QtCore/QEvent>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QVBoxLayout>

#include "controller/casting/PresetEditing.h"
#include "controller/ProjectController.h"
#include "shell/controls/ShownText.h"
#include "shell/controls/TextLabel.h"
#include "shell/inspector/InspectedLines.h"
#include "shell/theme/Icon.h"
#include "shell/theme/Theme.h"
#include "speech/account/ElevenLabsService.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

constexpr std::chrono::milliseconds savedFeedbackTime{1500};

} // namespace

PresetSection::PresetSection(controller::ProjectController &controller, const speech::ElevenLabsService &service,
                             InspectedLines &lines, QWidget *parent)
    : QWidget(parent), m_controller(controller), m_service(service), m_lines(lines), m_picker(new QComboBox),
      m_menuButton(new QToolButton), m_menu(new QMenu(this)), m_notice(new TextLabel({}, TextLabel::Style::Caption)) {
    m_picker->setPlaceholderText(u"SELECT PRESET"_s);
    m_picker->setAccessibleName(u"Preset"_s);
    m_picker->setToolTip(u"Apply a preset's settings and voice to the selected lines"_s);
    m_picker->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_picker->setMinimumContentsLength(12);
    makeMenu();
    m_notice->hide();
    m_savedFeedback.setSingleShot(true);
    m_savedFeedback.setInterval(savedFeedbackTime);

    auto *row = new QHBoxLayout;
    row->addWidget(m_picker, 1);
    row->addWidget(m_menuButton);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new TextLabel(u"PRESET"_s, TextLabel::Style::Section));
    layout->addLayout(row);
    layout->addWidget(m_notice);

    connect(m_picker, &QComboBox::activated, this, &PresetSection::apply);
    connect(&m_savedFeedback, &QTimer::timeout, this, &PresetSection::showState);
    controller::onAnyChange<controller::PresetsChanged>(controller, this, [this] { reload(); });
    connect(&lines, &InspectedLines::changed, this, [this] {
        m_notice->hide();
        showState();
    });
    applyMeasures();
    reload();
}

void PresetSection::makeMenu() {
    m_menu->setToolTipsVisible(true);
    const auto add = [this](const QString &title, const QString &tip, void (PresetSection::*carryOut)()) {
        QAction *action = m_menu->addAction(title, this, carryOut);
        action->setToolTip(tip);
        return action;
    };
    m_save = add(u"Save"_s, u"Save this line's settings and voice to its preset"_s, &PresetSection::save);
    m_saveAs = add(u"Save As"_s, u"Save this line's settings and voice as a new preset"_s, &PresetSection::saveAs);
    m_delete = add(u"Delete"_s, u"Delete the selected preset"_s, &PresetSection::remove);
    // Opened by hand: a tool button with a menu of its own would draw an arrow beside the dots.
    connect(m_menuButton, &QToolButton::clicked, this,
            [this] { m_menu->popup(m_menuButton->mapToGlobal(QPoint(0, m_menuButton->height()))); });
    m_menuButton->setAutoRaise(true);
    m_menuButton->setFocusPolicy(Qt::StrongFocus);
    m_menuButton->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_menuButton->setAccessibleName(u"Save or delete the preset"_s);
    m_menuButton->setToolTip(u"Save or delete the preset"_s);
}

void PresetSection::applyMeasures() {
    const int icon = Theme::iconSize(this);
    m_menuButton->setIconSize({icon, icon});
}

void PresetSection::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        applyMeasures();
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
    m_menuButton->setText({});
    m_menuButton->setIcon(Icon::named(u"more"_s));
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
    m_menuButton->setText(u"Saved!"_s);
    m_menuButton->setIcon(Icon::named(u"checkmark"_s));
    showState();
}

} // namespace orlenta::shell
