#include "shell/settings/OutputFormatSettings.h"

#include <QtWidgets/QComboBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

#include "base/UserDefaults.h"
#include "shell/controls/TextLabel.h"
#include "speech/synthesis/AudioOutputPreferences.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

struct FormatChoice {
    QString title;
    QString stored;
};

QComboBox *formatPicker(const QString &name, const QString &tip, const QList<FormatChoice> &choices) {
    auto *picker = new QComboBox;
    picker->setAccessibleName(name);
    picker->setToolTip(tip);
    for (const FormatChoice &choice : choices)
        picker->addItem(choice.title, choice.stored);
    return picker;
}

template <typename Value>
QString storedNumber(Value value) {
    return QString::number(static_cast<int>(value));
}

} // namespace

OutputFormatSettings::OutputFormatSettings(base::UserDefaults &defaults, QWidget *parent)
    : QWidget(parent), m_defaults(defaults), m_form(new QFormLayout(this)),
      m_format(
          formatPicker(u"Format"_s, u"The format of generated audio"_s, {{u"MP3"_s, u"mp3"_s}, {u"WAV"_s, u"wav"_s}})),
      m_quality(formatPicker(u"Quality"_s, u"The MP3 bit rate"_s,
                             {{u"64 kbps"_s, u"64"_s}, {u"128 kbps"_s, u"128"_s}, {u"192 kbps"_s, u"192"_s}})),
      m_depth(formatPicker(u"Bit Depth"_s, u"The WAV bit depth"_s, {{u"16-bit"_s, u"16"_s}, {u"24-bit"_s, u"24"_s}})),
      m_rate(formatPicker(u"Sample Rate"_s, u"The WAV sample rate"_s,
                          {{u"44.1 kHz"_s, u"44100"_s}, {u"48 kHz"_s, u"48000"_s}})),
      m_wavNotes(new QWidget) {
    // Read the preferences as requests do, so that the pickers show the format that will be requested.
    const auto stored = speech::AudioOutputPreferences::read(defaults);
    m_format->setCurrentIndex(stored.audioFormat == speech::AudioFormat::Wav ? 1 : 0);
    m_quality->setCurrentIndex(m_quality->findData(storedNumber(stored.mp3Quality)));
    m_depth->setCurrentIndex(m_depth->findData(storedNumber(stored.wavBitDepth)));
    m_rate->setCurrentIndex(m_rate->findData(storedNumber(stored.wavSampleRate)));

    auto *notes = new QVBoxLayout(m_wavNotes);
    notes->setContentsMargins(0, 0, 0, 0);
    notes->addWidget(new TextLabel(
        u"WAV output requires an ElevenLabs Pro plan or higher. Lower-tier plans only support MP3 output. If your plan doesn't support WAV, generation will fall back to the highest available MP3 quality."_s,
        TextLabel::Style::Caption));
    notes->addWidget(new TextLabel(u"Tip: For best results, match your DAW session's sample rate and bit depth."_s,
                                   TextLabel::Style::Caption));
    m_form->setContentsMargins(0, 0, 0, 0);
    m_form->addRow(u"Format"_s, m_format);
    m_form->addRow(u"Quality"_s, m_quality);
    m_form->addRow(u"Bit Depth"_s, m_depth);
    m_form->addRow(u"Sample Rate"_s, m_rate);
    m_form->addRow(m_wavNotes);

    connect(m_format, &QComboBox::activated, this, [this] {
        m_defaults.setAudioFormat(m_format->currentData().toString());
        showFormat();
    });
    connect(m_quality, &QComboBox::activated, this,
            [this] { m_defaults.setMp3Quality(m_quality->currentData().toString()); });
    connect(m_depth, &QComboBox::activated, this,
            [this] { m_defaults.setWavBitDepth(m_depth->currentData().toString()); });
    connect(m_rate, &QComboBox::activated, this,
            [this] { m_defaults.setWavSampleRate(m_rate->currentData().toString()); });
    showFormat();
}

void OutputFormatSettings::showFormat() {
    const bool isWav = m_format->currentIndex() == 1;
    // QFormLayout doesn't hide the label of a hidden field.
    for (QWidget *field : {m_quality, m_depth, m_rate}) {
        const bool isShown = (field == m_quality) != isWav;
        field->setVisible(isShown);
        m_form->labelForField(field)->setVisible(isShown);
    }
    m_wavNotes->setVisible(isWav);
}

} // namespace orlenta::shell
