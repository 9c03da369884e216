#include "localvoices/voices/VoiceCatalogue.h"

#include <algorithm>

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

namespace {

struct Character {
    QString name;
    QString gender;
    QString age;
    QString accent;
    QString useCase;
    QString descriptive;
    QString description;
};

VoiceProfile profileOf(const Character &character) {
    VoiceProfile profile;
    profile.id = u"local-"_s + character.name.toLower();
    profile.name = character.name;
    profile.gender = character.gender;
    profile.age = character.age;
    profile.accent = character.accent;
    profile.useCase = character.useCase;
    profile.descriptive = character.descriptive;
    profile.description = character.description;
    profile.language = u"en"_s;
    return profile;
}

struct Throat {
    double pitchHz;
    double formantScale;
    double brightnessDb;
};

VoiceProfile fliteVoice(const Character &character, const QByteArray &voice, VoiceShift shift, Throat throat) {
    VoiceProfile profile = profileOf(character);
    profile.engine = Engine::Flite;
    profile.fliteVoice = voice;
    profile.espeakLanguage = "en-us";
    profile.espeakVariant = character.gender == u"female"_s ? "f3" : "m3";
    profile.shift = shift;
    profile.pitchHz = throat.pitchHz;
    profile.formantScale = throat.formantScale;
    profile.brightnessDb = throat.brightnessDb;
    return profile;
}

VoiceProfile espeakVoice(const Character &character, const QByteArray &language, const QByteArray &variant,
                         Throat throat) {
    VoiceProfile profile = profileOf(character);
    profile.engine = Engine::Espeak;
    profile.espeakLanguage = language;
    profile.espeakVariant = variant;
    profile.language = QString::fromLatin1(language.left(2));
    profile.pitchHz = throat.pitchHz;
    profile.formantScale = throat.formantScale;
    profile.brightnessDb = throat.brightnessDb;
    return profile;
}

std::vector<VoiceProfile> naturalVoices() {
    return {
        fliteVoice({u"Clara"_s, u"female"_s, u"middle-aged"_s, u"american"_s, u"narration"_s, u"clear"_s,
                    u"A clear, even reader for narration."_s},
                   "slt", {}, {170, 1.16, 0}),
        fliteVoice({u"Rupert"_s, u"male"_s, u"middle-aged"_s, u"american"_s, u"narration"_s, u"calm"_s,
                    u"A calm, low reader for documentaries."_s},
                   "rms", {}, {104, 1.0, 0}),
        fliteVoice({u"Angus"_s, u"male"_s, u"middle-aged"_s, u"scottish"_s, u"conversational"_s, u"warm"_s,
                    u"A Scottish speaker, warm and plain."_s},
                   "awb", {}, {123, 1.02, 1}),
        fliteVoice({u"Ivy"_s, u"female"_s, u"young"_s, u"american"_s, u"conversational"_s, u"bright"_s,
                    u"A bright, young speaker for dialogue."_s},
                   "slt", {1.18, 1.08}, {200, 1.25, 2}),
        fliteVoice({u"Martha"_s, u"female"_s, u"old"_s, u"american"_s, u"narration"_s, u"settled"_s,
                    u"An older storyteller."_s},
                   "slt", {0.86, 0.95}, {146, 1.1, -2}),
        fliteVoice({u"Felix"_s, u"male"_s, u"young"_s, u"american"_s, u"conversational"_s, u"quick"_s,
                    u"A young man's voice for dialogue."_s},
                   "rms", {1.2, 1.07}, {125, 1.07, 2}),
        fliteVoice({u"Bruno"_s, u"male"_s, u"old"_s, u"american"_s, u"characters"_s, u"deep"_s,
                    u"A deep voice for trailers and giants."_s},
                   "rms", {0.8, 0.87}, {84, 0.87, -3}),
        fliteVoice({u"Kal"_s, u"male"_s, u"middle-aged"_s, u"american"_s, u"characters"_s, u"mechanical"_s,
                    u"A patient machine of the old school."_s},
                   "kal16", {}, {98, 1.0, 3}),
    };
}

std::vector<VoiceProfile> formantVoices() {
    return {
        espeakVoice({u"Edith"_s, u"female"_s, u"middle-aged"_s, u"british"_s, u"news"_s, u"crisp"_s,
                     u"A crisp British newsreader."_s},
                    "en-gb-x-rp", "f2", {186, 1.15, 1}),
        espeakVoice({u"Oliver"_s, u"male"_s, u"middle-aged"_s, u"british"_s, u"narration"_s, u"formal"_s,
                     u"A formal British narrator."_s},
                    "en-gb-x-rp", "m3", {101, 0.98, 0}),
        espeakVoice({u"Fiona"_s, u"female"_s, u"young"_s, u"scottish"_s, u"conversational"_s, u"lively"_s,
                     u"A lively Scottish speaker."_s},
                    "en-gb-scotland", "f4", {174, 1.18, 2}),
        espeakVoice({u"Winston"_s, u"male"_s, u"old"_s, u"caribbean"_s, u"conversational"_s, u"easy"_s,
                     u"An easy-going Caribbean speaker."_s},
                    "en-029", "m1", {91, 0.96, -1}),
        espeakVoice({u"Dana"_s, u"female"_s, u"young"_s, u"american"_s, u"conversational"_s, u"direct"_s,
                     u"A direct, young American speaker."_s},
                    "en-us", "f3", {200, 1.2, 1}),
        espeakVoice({u"Gus"_s, u"male"_s, u"old"_s, u"american"_s, u"characters"_s, u"creaky"_s,
                     u"A grandfather for animation."_s},
                    "en-us", "grandpa", {105, 0.94, -2}),
        espeakVoice({u"Nan"_s, u"female"_s, u"old"_s, u"american"_s, u"characters"_s, u"shaky"_s,
                     u"A grandmother for animation."_s},
                    "en-us", "grandma", {190, 1.08, -1}),
        espeakVoice({u"Hush"_s, u"female"_s, u"young"_s, u"american"_s, u"characters"_s, u"whispering"_s,
                     u"A whisper for secrets and ghosts."_s},
                    "en-us", "whisperf", {211, 1.2, 4}),
        espeakVoice({u"Rivet"_s, u"male"_s, u"middle-aged"_s, u"american"_s, u"characters"_s, u"robotic"_s,
                     u"A robot for games."_s},
                    "en-us", "robosoft", {72, 0.9, 3}),
        espeakVoice({u"Marisol"_s, u"female"_s, u"young"_s, u"spanish"_s, u"conversational"_s, u"warm"_s,
                     u"A Spanish speaker."_s},
                    "es", "f4", {178, 1.17, 1}),
        espeakVoice({u"Bento"_s, u"male"_s, u"middle-aged"_s, u"brazilian"_s, u"conversational"_s, u"relaxed"_s,
                     u"A speaker of Brazilian Portuguese."_s},
                    "pt-br", "m2", {100, 1.0, 0}),
        espeakVoice(
            {u"Klaus"_s, u"male"_s, u"middle-aged"_s, u"german"_s, u"narration"_s, u"firm"_s, u"A German narrator."_s},
            "de", "m3", {100, 0.98, 0}),
        espeakVoice({u"Celeste"_s, u"female"_s, u"young"_s, u"french"_s, u"conversational"_s, u"soft"_s,
                     u"A French speaker."_s},
                    "fr", "f2", {190, 1.17, 0}),
    };
}

} // namespace

const std::vector<VoiceProfile> &voiceCatalogue() {
    static const std::vector<VoiceProfile> voices = [] {
        std::vector<VoiceProfile> all = naturalVoices();
        const std::vector<VoiceProfile> formant = formantVoices();
        all.insert(all.end(), formant.begin(), formant.end());
        return all;
    }();
    return voices;
}

std::optional<VoiceProfile> findVoice(const QString &id) {
    const std::vector<VoiceProfile> &voices = voiceCatalogue();
    const auto found = std::find_if(voices.begin(), voices.end(), [&id](const VoiceProfile &v) { return v.id == id; });
    return found == voices.end() ? std::nullopt : std::optional(*found);
}

QString introductionOf(const VoiceProfile &voice) {
    if (voice.language == u"es"_s)
        return u"Hola, me llamo %1. Hablo desde este ordenador."_s.arg(voice.name);
    if (voice.language == u"pt"_s)
        return u"Olá, eu sou %1. Falo a partir deste computador."_s.arg(voice.name);
    if (voice.language == u"de"_s)
        return u"Hallo, ich heiße %1. Ich spreche aus diesem Rechner."_s.arg(voice.name);
    if (voice.language == u"fr"_s)
        return u"Bonjour, je m'appelle %1. Je parle depuis cet ordinateur."_s.arg(voice.name);
    return u"Hello, my name is %1. I speak from this very machine."_s.arg(voice.name);
}

} // namespace orlenta::localvoices
