#include "shell/settings/AudioDeviceSettings.h"

#include <QtWidgets/QComboBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>

#include "audio/devices/AudioDebugLogger.h"
#include "audio/devices/AudioDeviceMonitor.h"
#include "audio/devices/OutputRoutingDiagnostics.h"
#include "base/UserDefaults.h"
#include "shell/controls/TextLabel.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

void fillDevices(QComboBox &picker, const QList<audio::AudioDeviceInfo> &devices, const QString &uid,
                 const QString &direction) {
    // An open list would be out of date, and a choice would select the wrong device.
    picker.hidePopup();
    picker.clear();
    picker.addItem(u"System Default"_s, QString());
    for (const audio::AudioDeviceInfo &device : devices)
        picker.addItem(device.name, device.uid);
    const int row = picker.findData(uid);
    if (row < 0)
        audio::AudioDebugLogger::log(
            QStringLiteral("%1 picker showing System Default; persisted UID %2").arg(direction, uid));
    picker.setCurrentIndex(std::max(0, row));
}

QComboBox *devicePicker(const QString &name, const QString &tip) {
    auto *picker = new QComboBox;
    picker->setAccessibleName(name);
    picker->setToolTip(tip);
    picker->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    picker->setMinimumContentsLength(24);
    return picker;
}

} // namespace

AudioDeviceSettings::AudioDeviceSettings(base::UserDefaults &defaults, const audio::AudioDeviceMonitor &devices,
                                         const audio::OutputRoutingDiagnostics &routing, QWidget *parent)
    : QWidget(parent), m_defaults(defaults), m_devices(devices), m_routing(routing),
      m_input(devicePicker(u"Input"_s, u"The device that records direction"_s)),
      m_output(devicePicker(u"Output"_s, u"The device that plays audio"_s)),
      m_failure(new TextLabel(u"Last playback failed to route"_s, TextLabel::Style::Danger)),
      m_failureReason(new TextLabel({}, TextLabel::Style::Caption)) {
    auto *form = new QFormLayout(this);
    form->setContentsMargins(0, 0, 0, 0);
    form->addRow(u"Input"_s, m_input);
    form->addRow(u"Output"_s, m_output);
    form->addRow(m_failure);
    form->addRow(m_failureReason);
    connect(m_input, &QComboBox::activated, this,
            [this] { m_defaults.setInputDeviceUID(m_input->currentData().toString()); });
    connect(m_output, &QComboBox::activated, this,
            [this] { m_defaults.setOutputDeviceUID(m_output->currentData().toString()); });
    connect(&devices, &audio::AudioDeviceMonitor::inputDevicesChanged, this, &AudioDeviceSettings::reloadInputs);
    connect(&devices, &audio::AudioDeviceMonitor::outputDevicesChanged, this, &AudioDeviceSettings::reloadOutputs);
    connect(&routing, &audio::OutputRoutingDiagnostics::lastRoutingErrorChanged, this,
            &AudioDeviceSettings::showRouting);
    reloadInputs();
    reloadOutputs();
    showRouting();
}

void AudioDeviceSettings::reloadInputs() {
    fillDevices(*m_input, m_devices.inputDevices(), m_defaults.inputDeviceUID(), u"Input"_s);
}

void AudioDeviceSettings::reloadOutputs() {
    fillDevices(*m_output, m_devices.outputDevices(), m_defaults.outputDeviceUID(), u"Output"_s);
}

void AudioDeviceSettings::showRouting() {
    const auto &message = m_routing.lastRoutingErrorMessage();
    m_failureReason->setText(message.value_or(QString()));
    m_failure->setVisible(message.has_value());
    m_failureReason->setVisible(message.has_value());
}

} // namespace orlenta::shell
