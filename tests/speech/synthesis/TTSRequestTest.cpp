#include "speech/synthesis/TTSRequest.h"

#include <gtest/gtest.h>
#include <QtCore/QTemporaryDir>

#include "speech/synthesis/AudioOutputPreferences.h"
#include "speech/synthesis/SpeechModel.h"

namespace orlenta::speech {

TEST(TTSRequest, TheBodyKeepsItsOrderAndLeavesOutWhatIsAbsent) {
    TTSRequest request;
    request.text = QStringLiteral("Say \"h\u00e9llo\"\n\U0001F600");
    request.modelId = QStringLiteral("eleven_multilingual_v2");
    EXPECT_EQ(request.toJson().toStdString(),
              "{\"text\":\"Say \\\"h\u00e9llo\\\"\\n\U0001F600\",\"model_id\":\"eleven_multilingual_v2\"}");
    request.text = QStringLiteral("x");
    request.previousText = QString();
    request.voiceSettings = VoiceSettings{0.5, 0.75, 0.0, 1.1};
    EXPECT_EQ(request.toJson(),
              R"({"text":"x","model_id":"eleven_multilingual_v2","previous_text":"",)"
              R"("voice_settings":{"stability":0.5,"similarity_boost":0.75,"style":0.0,"speed":1.1}})");
    request.previousText.reset();
    request.v3VoiceSettings = V3VoiceSettings{0.3, 0.75, 0.0};
    request.pronunciationDictionaryLocators = dictionaryLocators(QStringLiteral("d"), QStringLiteral("v"));
    EXPECT_EQ(request.toJson(),
              R"({"text":"x","model_id":"eleven_multilingual_v2","pronunciation_dictionary_locators":[)"
              R"({"pronunciation_dictionary_id":"d","version_id":"v"}],)"
              R"("voice_settings":{"stability":0.3,"similarity_boost":0.75,"style":0.0}})");
}

TEST(TTSRequest, ALocatorNeedsBothIds) {
    const QString id = QStringLiteral("d");
    EXPECT_FALSE(dictionaryLocators(std::nullopt, id));
    EXPECT_FALSE(dictionaryLocators(id, std::nullopt));
    EXPECT_FALSE(dictionaryLocators(QString(), id));
    EXPECT_EQ(dictionaryLocators(id, QString())->size(), 1);
}

TEST(TTSRequest, TheModelWordDecidesTheIdAndOnlyV3TakesItsStabilityFromTheMode) {
    struct Case {
        const char *model;
        const char *mode;
        const char *id;
        double stability;
    };
    const std::vector<Case> cases{
        {"v3", "Creative", "eleven_v3", 0.3},          {"v3", "Robust", "eleven_v3", 0.8},
        {"v3", "Natural", "eleven_v3", 0.5},           {"v3", "", "eleven_v3", 0.5},
        {"Flash", "Robust", "eleven_flash_v2_5", 0.9}, {"v2", "Creative", "eleven_multilingual_v2", 0.9},
        {"V3", "Creative", "eleven_v3", 0.9},
    };
    for (const Case &c : cases) {
        model::ProjectLineSettings settings;
        settings.stability = 0.9;
        settings.model = QString::fromLatin1(c.model);
        settings.mode = QString::fromLatin1(c.mode);
        EXPECT_EQ(SpeechModel::forKey(settings.model).id, QString::fromLatin1(c.id));
        EXPECT_EQ(stabilityToSend(settings), c.stability) << c.model << ", " << c.mode;
    }
}

TEST(TTSRequest, TheEstimateCountsWhatAReaderSeesAndHalvesItForFlash) {
    const QString family = QStringLiteral("ae\u0301\U0001F468\u200D\U0001F469\u200D\U0001F467");
    EXPECT_EQ(estimatedCharacters(family, QStringLiteral("eleven_v3")), 3);
    EXPECT_EQ(estimatedCharacters(family, QStringLiteral("eleven_flash_v2_5")), 2);
    EXPECT_EQ(estimatedCharacters(family, QStringLiteral("eleven_flash_v2")), 3);
    EXPECT_EQ(estimatedCharacters(QString(), QStringLiteral("eleven_flash_v2_5")), 0);
}

TEST(AudioOutputPreferences, UnknownWordsCountAsTheDefaults) {
    const QTemporaryDir folder;
    base::UserDefaults defaults(folder.filePath(QStringLiteral("defaults.ini")));
    EXPECT_EQ(AudioOutputPreferences::read(defaults), AudioOutputPreferences{});
    defaults.setAudioFormat(QStringLiteral("wav"));
    defaults.setMp3Quality(QStringLiteral("64"));
    defaults.setWavBitDepth(QStringLiteral("16"));
    defaults.setWavSampleRate(QStringLiteral("44100"));
    EXPECT_EQ(
        AudioOutputPreferences::read(defaults),
        (AudioOutputPreferences{AudioFormat::Wav, MP3Quality::Kbps64, WAVBitDepth::Bits16, WAVSampleRate::Hz44100}));
    for (const auto set : {&base::UserDefaults::setAudioFormat, &base::UserDefaults::setMp3Quality,
                           &base::UserDefaults::setWavBitDepth, &base::UserDefaults::setWavSampleRate})
        (defaults.*set)(QStringLiteral("flac"));
    EXPECT_EQ(AudioOutputPreferences::read(defaults), AudioOutputPreferences{});
}

} // namespace orlenta::speech
