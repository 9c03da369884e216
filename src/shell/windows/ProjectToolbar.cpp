#include "shell/windows/ProjectToolbar.h"

#include <algorithm>

#include <QtCore/QEvent>
#include <QtGui/QAction>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolButton>

#include "base/UserDefaults.h"
#include "controller/export/Exporting.h"
#include "shell/account/CreditDisplay.h"
#include "shell/controls/Separator.h"
#include "shell/editor/ScriptToolbar.h"
#include "shell/menus/ProjectActions.h"
#include "shell/theme/Icon.h"
#include "shell/theme/Theme.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

// The narrowest toolbars that have room for the words of the script's buttons, and of export, in units.
constexpr int widthForScript = 205;
constexpr int widthForExport = 220;

} // namespace

ProjectToolbar::ProjectToolbar(const Parts &parts, QWidget *parent)
    : QWidget(parent), m_parts(parts), m_save(actionButton(parts.actions[CommandId::SaveProject])),
      m_undo(actionButton(parts.actions[CommandId::Undo])), m_redo(actionButton(parts.actions[CommandId::Redo])),
      m_export(actionButton(parts.actions[CommandId::ExportAudio])),
      m_inspector(actionButton(parts.actions[CommandId::ToggleInspector])), m_outputMode(new QComboBox),
      m_account(new CreditDisplay(parts.service, parts.localVoices)) {
    m_outputMode->addItem(u"Continuous"_s, u"continuous"_s);
    m_outputMode->addItem(u"Individual"_s, u"individual"_s);
    // A missing or unknown value means continuous.
    m_outputMode->setCurrentIndex(std::max(0, m_outputMode->findData(parts.defaults.multiLineSpotOutputMode())));
    m_outputMode->setAccessibleName(u"Output mode"_s);
    m_outputMode->setToolTip(u"Choose whether selected lines spot as one continuous clip or individual clips"_s);
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(m_save);
    layout->addWidget(new Separator(Qt::Vertical));
    layout->addWidget(m_undo);
    layout->addWidget(m_redo);
    layout->addWidget(new Separator(Qt::Vertical));
    layout->addWidget(parts.script);
    layout->addStretch();
    layout->addWidget(m_account);
    layout->addWidget(new Separator(Qt::Vertical));
    layout->addWidget(m_outputMode);
    layout->addWidget(m_export);
    layout->addWidget(new Separator(Qt::Vertical));
    layout->addWidget(m_inspector);

    connect(m_outputMode, &QComboBox::activated, this,
            [this] { m_parts.defaults.setMultiLineSpotOutputMode(m_outputMode->currentData().toString()); });
    connect(m_account, &QPushButton::clicked, parts.actions[CommandId::Account], &QAction::trigger);
    applyMeasures();
}

controller::MultiLineOutput ProjectToolbar::outputMode() const {
    return m_outputMode->currentData().toString() == u"individual"_s ? controller::MultiLineOutput::Individual
                                                                     : controller::MultiLineOutput::Continuous;
}

void ProjectToolbar::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        applyMeasures();
}

QToolButton *ProjectToolbar::actionButton(QAction *action) {
    auto *button = new QToolButton;
    button->setDefaultAction(action);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    const auto name = [button, action] { button->setAccessibleName(action->text()); };
    connect(action, &QAction::changed, button, name);
    name();
    return button;
}

void ProjectToolbar::applyMeasures() {
    const int unit = Theme::unit(this);
    layout()->setContentsMargins(unit * 2, unit * 3 / 2, unit * 2, unit * 3 / 2);
    layout()->setSpacing(unit);
    const QSize side(Theme::iconSize(this), Theme::iconSize(this));
    for (QToolButton *button : {m_save, m_undo, m_redo, m_export, m_inspector})
        button->setIconSize(side);
    m_account->setIconSize(side);
    fitWords();
}

void ProjectToolbar::fitWords() {
    const int units = width() / Theme::unit(this);
    m_parts.script->setShowsWords(units >= widthForScript);
    m_export->setToolButtonStyle(units >= widthForExport ? Qt::ToolButtonTextBesideIcon : Qt::ToolButtonIconOnly);
}

QSize ProjectToolbar::minimumSizeHint() const {
    const int unit = Theme::unit(this);
    const int icons = unit * 6 * 5;
    const int words = m_parts.script->minimumSizeHint().width() + m_account->sizeHint().width() +
                      m_outputMode->minimumSizeHint().width();
    const int gaps = layout()->spacing() * layout()->count() + unit * 4 + 4;
    return {icons + words + gaps, unit * 10};
}

void ProjectToolbar::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    fitWords();
}

} // namespace orlenta::shell
