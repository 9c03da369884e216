#include "localvoices/engines/FliteEngine.h"

#include <algorithm>
#include <array>
#include <cstdlib>

extern "C" {
#include <flite/flite.h>

#include <flite/cst_lexicon.h>

cst_voice *register_cmu_us_slt(const char *directory);
cst_voice *register_cmu_us_rms(const char *directory);
cst_voice *register_cmu_us_awb(const char *directory);
cst_voice *register_cmu_us_kal16(const char *directory);
}

#include "localvoices/lexicon/EngineText.h"

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

namespace {

cst_voice *registerFliteVoice(const QByteArray &name) {
    if (name == "slt")
        return register_cmu_us_slt(nullptr);
    if (name == "rms")
        return register_cmu_us_rms(nullptr);
    if (name == "awb")
        return register_cmu_us_awb(nullptr);
    if (name == "kal16")
        return register_cmu_us_kal16(nullptr);
    return nullptr;
}

/// Flite reads only ASCII: drops accents and replaces typographic punctuation.
QByteArray plainLatin(const QString &text) {
    QByteArray plain;
    for (const QChar character : text.normalized(QString::NormalizationForm_KD)) {
        const char16_t code = character.unicode();
        if (code == u'\u2018' || code == u'\u2019' || code == u'\u02BC')
            plain += '\'';
        else if (code == u'\u201C' || code == u'\u201D')
            plain += '"';
        else if (code == u'\u2013' || code == u'\u2014')
            plain += ", ";
        else if (code == u'ß')
            plain += "ss";
        else if (code < 0x20 || code == 0x7F || character.isSpace())
            plain += ' ';
        else if (code < 0x7F)
            plain += static_cast<char>(code);
    }
    return plain;
}

/// A word that is in no dictionary but looks pronounceable to Flite: "orla" and the number written in syllables.
QByteArray inventedWord(int number) {
    static constexpr std::array syllables{"ba", "da", "fa", "ga", "la", "ma", "na", "ta"};
    QByteArray word("orla");
    do {
        word += syllables[static_cast<std::size_t>(number % 8)];
        number /= 8;
    } while (number > 0);
    return word;
}

} // namespace

FliteEngine::FliteEngine(const QByteArray &voice) {
    flite_init();
    m_voice = registerFliteVoice(voice);
    if (m_voice == nullptr)
        return;
    m_ownStretch = get_param_float(m_voice->features, "duration_stretch", 1.0F);
    m_ownMelody = get_param_float(m_voice->features, "int_f0_target_stddev", 0.0F);
    const cst_lexicon *lexicon = val_lexicon(feat_val(m_voice->features, "lexicon"));
    for (char ***entry = lexicon->addenda; entry != nullptr && *entry != nullptr; ++entry)
        m_addenda.push_back(*entry);
    m_addenda.push_back(nullptr);
}

bool FliteEngine::canRead(const QString &text) {
    const auto isWordPart = [](QChar c) { return c.isLetterOrNumber(); };
    if (!std::any_of(text.begin(), text.end(), isWordPart))
        return true;
    const QByteArray plain = plainLatin(text);
    return std::any_of(plain.begin(), plain.end(), [&](char c) { return isWordPart(QLatin1Char(c)); });
}

QByteArray FliteEngine::addWord(const std::vector<Phone> &phones) {
    const QByteArray word = inventedWord(m_words++);
    std::vector<char *> entry;
    // The first character of an entry is its part of speech, '0' for any.
    m_strings.push_back('0' + word);
    entry.push_back(m_strings.back().data());
    for (const QByteArray &name : fliteNames(phones)) {
        m_strings.push_back(name);
        entry.push_back(m_strings.back().data());
    }
    entry.push_back(nullptr);
    m_entries.push_back(std::move(entry));
    m_addenda.insert(m_addenda.end() - 1, m_entries.back().data());
    return word;
}

QByteArray FliteEngine::inputOf(const std::vector<SpokenRun> &runs) {
    QByteArray input;
    for (const SpokenRun &run : runs)
        input += run.phones.empty() ? engineText(QString::fromLatin1(plainLatin(run.text))).toLatin1()
                                    : ' ' + addWord(run.phones) + ' ';
    return input.trimmed();
}

Sound FliteEngine::speak(const std::vector<SpokenRun> &runs, const SpeechSettings &settings) {
    Sound sound{{}, 16000};
    const QByteArray input = inputOf(runs);
    if (input.isEmpty())
        return sound;
    // Flite has no other way to add an entry that isn't in a file.
    auto *lexicon = const_cast<cst_lexicon *>(val_lexicon(feat_val(m_voice->features, "lexicon")));
    lexicon->addenda = m_addenda.data();
    std::srand(settings.seed);
    feat_set_float(m_voice->features, "duration_stretch", m_ownStretch / static_cast<float>(settings.speed));
    if (m_ownMelody > 0)
        feat_set_float(m_voice->features, "int_f0_target_stddev", m_ownMelody * static_cast<float>(settings.melody()));
    cst_wave *wave = flite_text_to_wave(input.constData(), m_voice);
    if (wave == nullptr)
        return sound;
    sound.rate = wave->sample_rate;
    sound.frames.reserve(static_cast<std::size_t>(wave->num_samples));
    for (int i = 0; i < wave->num_samples; ++i)
        sound.frames.push_back(static_cast<float>(wave->samples[i]) / 32768.0F);
    delete_wave(wave);
    return sound;
}

} // namespace orlenta::localvoices
