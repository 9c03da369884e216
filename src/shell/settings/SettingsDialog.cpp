#include "shell/settings/SettingsDialog.h"

#include <QtCore/QEvent>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QVBoxLayout>

#include "shell/application/AppContext.h"
#include "shell/controls/TextLabel.h"
#include "shell/settings/AppearanceSettings.h"
#include "shell/settings/AudioDeviceSettings.h"
#include "shell/settings/OutputFormatSettings.h"
#include "shell/settings/PermissionSettings.h"
#include "shell/theme/Theme.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {

SettingsDialog::SettingsDialog(const AppContext &context, QWidget *parent) : QDialog(parent) {
    setWindowTitle(u"Settings"_s);
    setAccessibleName(u"Settings"_s);
    const int unit = Theme::unit(this);
    auto *content = new QWidget;
    auto *sections = new QVBoxLayout(content);
    sections->setContentsMargins(unit * 4, unit * 4, unit * 4, unit * 4);
    sections->setSpacing(unit * 2);
    const auto addSection = [sections, unit](const QString &title, QWidget *section) {
        sections->addWidget(new TextLabel(title, TextLabel::Style::Heading));
        sections->addWidget(section);
        sections->addSpacing(unit * 3);
    };
    addSection(u"Appearance"_s, new AppearanceSettings(context.services.defaults));
    addSection(u"Audio Devices"_s,
               new AudioDeviceSettings(context.services.defaults, context.services.devices, context.services.routing));
    addSection(u"Output Format"_s, new OutputFormatSettings(context.services.defaults));
    addSection(u"Permissions"_s, new PermissionSettings(context.services.microphone, context.commands));
    sections->addStretch();

    auto *scroll = new QScrollArea;
    scroll->setWidget(content);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setAccessibleName(u"Settings"_s);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    buttons->button(QDialogButtonBox::Close)->setToolTip(u"Close the settings"_s);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(scroll, 1);
    layout->addWidget(buttons);
    setMinimumWidth(content->minimumSizeHint().width() + unit * 10);
    resize(std::max(unit * 115, minimumWidth()), unit * 165);
    alignLabels();
}

void SettingsDialog::changeEvent(QEvent *event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        alignLabels();
}

void SettingsDialog::alignLabels() {
    QList<QWidget *> labels;
    for (const QFormLayout *form : findChildren<QFormLayout *>()) {
        for (int row = 0; row < form->rowCount(); ++row) {
            if (QLayoutItem *label = form->itemAt(row, QFormLayout::LabelRole); label != nullptr)
                labels.append(label->widget());
        }
    }
    int width = 0;
    for (const QWidget *label : std::as_const(labels))
        width = std::max(width, label->sizeHint().width());
    for (QWidget *label : std::as_const(labels))
        label->setMinimumWidth(width);
}

} // namespace orlenta::shell
