#include "shell/windows/WelcomeWindow.h"

#include <QtGui/QCloseEvent>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include "shell/application/AppCommands.h"
#include "shell/controls/TextLabel.h"
#include "shell/controls/WaveMark.h"
#include "shell/menus/AppActions.h"
#include "shell/menus/MenuBar.h"
#include "shell/theme/Icon.h"
#include "shell/theme/Theme.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

QPushButton *pillButton(const QString &text, const QString &tip, const QIcon &icon) {
    auto *button = new QPushButton(icon, text);
    button->setToolTip(tip);
    button->setAccessibleName(text);
    button->setCursor(Qt::PointingHandCursor);
    // Outside dialogs, Return only presses auto-default buttons.
    button->setAutoDefault(true);
    return button;
}

} // namespace

WelcomeWindow::WelcomeWindow(AppCommands &commands)
    : m_newProject(
          pillButton(u"New project"_s, u"Create a new project"_s, Icon::named(u"plus"_s, Icon::Tint::OnAccent))),
      m_open(pillButton(u"Open project"_s, u"Open a project folder or .orl file"_s, Icon::named(u"folder"_s))),
      m_sample(pillButton(u"Open sample project"_s, u"Open a copy of a short scene that local voices can speak"_s,
                          Icon::named(u"waveform"_s))) {
    setWindowTitle(u"Welcome to Orlenta"_s);
    setAccessibleName(u"Welcome to Orlenta"_s);
    fillMenuBar(*menuBar(), *new AppActions(commands, this));
    Theme::setRole(m_newProject, ButtonRole::Primary);
    m_newProject->setDefault(true);

    auto *content = new QWidget;
    auto *column = new QVBoxLayout(content);
    auto *title = new TextLabel(u"Orlenta"_s, TextLabel::Style::Title);
    title->setAlignment(Qt::AlignHCenter);
    auto *lead = new TextLabel(u"Cast, direct and generate speech for picture and sound."_s, TextLabel::Style::Caption);
    lead->setAlignment(Qt::AlignHCenter);
    column->addStretch(2);
    column->addWidget(new WaveMark, 0, Qt::AlignHCenter);
    column->addWidget(title);
    column->addWidget(lead);
    column->addStretch(1);
    column->addWidget(m_newProject);
    column->addWidget(m_open);
    column->addWidget(m_sample);
    column->addStretch(2);
    setCentralWidget(content);

    connect(m_newProject, &QPushButton::clicked, &commands, &AppCommands::newProject);
    connect(m_open, &QPushButton::clicked, &commands, &AppCommands::openProject);
    connect(m_sample, &QPushButton::clicked, &commands, &AppCommands::openSampleProject);
    fit();
}

void WelcomeWindow::closeEvent(QCloseEvent *event) {
    event->accept();
    Q_EMIT dismissed();
}

void WelcomeWindow::changeEvent(QEvent *event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::FontChange && centralWidget() != nullptr)
        QMetaObject::invokeMethod(this, &WelcomeWindow::fit, Qt::QueuedConnection);
}

void WelcomeWindow::fit() {
    const int unit = Theme::unit(this);
    auto *column = qobject_cast<QVBoxLayout *>(centralWidget()->layout());
    column->setContentsMargins(unit * 18, unit * 6, unit * 18, unit * 8);
    column->setSpacing(unit * 2);
    for (QPushButton *button : {m_newProject, m_open, m_sample}) {
        button->setMinimumHeight(unit * 9);
        button->setIconSize(QSize(unit * 4, unit * 4));
    }
    setFixedSize(QSize(unit * 110, unit * 95).expandedTo(minimumSizeHint()));
}

} // namespace orlenta::shell
