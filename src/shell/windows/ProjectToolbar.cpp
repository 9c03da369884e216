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
#include "shell/menus/ProjectActions.h"
#include "shell/theme/Icon.h"
#include "shell/theme/Theme.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
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
    m_export->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    auto *layout = new QHBoxLayout(this);
    const int unit = Theme::unit(this);
    layout->setContentsMargins(unit * 2, unit * 2, unit * 2, unit * 2);
    layout->setSpacing(unit);
    layout->addWidget(m_save);
    layout->addWidget(new Separator(Qt::Vertical));
    layout->addWidget(m_undo);
    layout->addWidget(m_redo);
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
    fitIcons();
}

controller::MultiLineOutput ProjectToolbar::outputMode() const {
    return m_outputMode->currentData().toString() == u"individual"_s ? controller::MultiLineOutput::Individual
                                                                     : controller::MultiLineOutput::Continuous;
}

void ProjectToolbar::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        fitIcons();
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

void ProjectToolbar::fitIcons() {
    const int side = Theme::iconSize(this);
    for (QToolButton *button : {m_save, m_undo, m_redo, m_export, m_inspector})
        button->setIconSize(QSize(side, side));
    m_account->setIconSize(QSize(side, side));
}

} // namespace orlenta::shell
