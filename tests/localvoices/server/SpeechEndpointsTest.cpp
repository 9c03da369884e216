#include <algorithm>
#include <ctime>

#include <gtest/gtest.h>
#include <QtCore/QEventLoop>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include "localvoices/engines/RecordingDecoder.h"
#include "localvoices/voices/VoiceCatalogue.h"
#include "localvoices/voices/VoiceShifter.h"
#include "localvoices/VoicesProgram.h"

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;
using test::Reply;
using test::VoicesProgram;

namespace {

const QString sentence = u"Hello there, this is a test of the voice."_s;

double secondsOfPcm(const Reply &reply) {
    return static_cast<double>(reply.body.size()) / 2.0 / 16000.0;
}

/// Uploads a lexicon with one lexeme and returns the JSON that makes a request use it.
QString uploadedLexeme(VoicesProgram &voices, const QByteArray &lexeme) {
    const QByteArray lexicon = "<lexicon xmlns=\"http://www.w3.org/2005/01/pronunciation-lexicon\" alphabet=\"ipa\">"
                               "<lexeme>" +
                               lexeme + "</lexeme></lexicon>";
    const Reply reply = voices.postForm(u"/v1/pronunciation-dictionaries/add-from-file"_s,
                                        {{"name", {}, "n"}, {"file", "pronunciation.pls", lexicon}});
    const QJsonObject added = QJsonDocument::fromJson(reply.body).object();
    return u",\"pronunciation_dictionary_locators\":[{\"pronunciation_dictionary_id\":\"%1\",\"version_id\":\"%2\"}]"_s
        .arg(added[u"id"_s].toString(), added[u"version_id"_s].toString());
}

} // namespace

TEST(SpeechEndpoints, EveryVoiceSpeaksAndRepeatsItselfToTheByte) {
    VoicesProgram voices;
    QList<QByteArray> heard;
    for (const VoiceProfile &voice : voiceCatalogue()) {
        const Reply reply = voices.speak(voice.id, sentence);
        ASSERT_EQ(reply.status, 200) << reply.body.constData();
        EXPECT_GT(secondsOfPcm(reply), 1.0) << voice.name.toStdString();
        EXPECT_LT(secondsOfPcm(reply), 6.0) << voice.name.toStdString();
        EXPECT_FALSE(heard.contains(reply.body)) << voice.name.toStdString() << " sounds like another voice";
        EXPECT_EQ(voices.speak(voice.id, sentence).body, reply.body) << voice.name.toStdString();
        heard << reply.body;
    }
}

TEST(SpeechEndpoints, TheNoiseOfAVoiceComesFromItsSeedAndNotFromTheClock) {
    VoicesProgram voices;
    for (const QString &voice : {u"local-hush"_s, u"local-dana"_s}) {
        const std::time_t begin = std::time(nullptr);
        const QByteArray first = voices.speak(voice, sentence).body;
        do
            ASSERT_EQ(voices.speak(voice, sentence).body, first) << voice.toStdString();
        while (std::time(nullptr) == begin);
        const QByteArray seeded = voices.speak(voice, sentence, u",\"seed\":7"_s).body;
        EXPECT_NE(seeded, first) << voice.toStdString();
        EXPECT_EQ(voices.speak(voice, sentence, u",\"seed\":7"_s).body, seeded) << voice.toStdString();
    }
}

TEST(SpeechEndpoints, AnswersInTheFormatThatIsAskedFor) {
    VoicesProgram voices;
    const double seconds = secondsOfPcm(voices.speak(u"local-dana"_s, sentence));
    struct Case {
        QString format;
        QByteArray type;
        int rate;
        double bytesPerSecond;
    };
    for (const Case &each : {Case{u"mp3_44100_64"_s, "audio/mpeg", 44100, 8'000},
                             {u"mp3_44100_128"_s, "audio/mpeg", 44100, 16'000},
                             {u"mp3_44100_192"_s, "audio/mpeg", 44100, 24'000},
                             {u"mp3_22050_32"_s, "audio/mpeg", 22050, 4'000},
                             {u"pcm_44100"_s, "audio/pcm", 0, 88'200},
                             {u"pcm_48000"_s, "audio/pcm", 0, 96'000},
                             {u"wav_48000"_s, "audio/wav", 48000, 96'000},
                             {u"ulaw_8000"_s, "audio/ulaw", 0, 8'000}}) {
        const Reply reply = voices.post(u"/v1/text-to-speech/local-dana?output_format="_s + each.format,
                                        "application/json", "{\"text\":\"" + sentence.toUtf8() + "\"}");
        EXPECT_EQ(reply.contentType, each.type);
        const double length = static_cast<double>(reply.body.size()) / each.bytesPerSecond;
        EXPECT_NEAR(length, seconds, 0.15) << each.format.toStdString();
        if (each.rate == 0)
            continue;
        const auto sound = decodedFile(reply.body);
        ASSERT_TRUE(sound) << each.format.toStdString();
        EXPECT_EQ(sound->rate, each.rate);
        // The smallest frames have no room for the tag with the encoder's delay.
        const double tolerance = each.bytesPerSecond < 8'000 ? 0.1 : 0.002;
        EXPECT_NEAR(sound->seconds(), seconds, tolerance) << each.format.toStdString();
    }
}

TEST(SpeechEndpoints, SpeedSettlesTheLength) {
    VoicesProgram voices;
    for (const QString &voice : {u"local-clara"_s, u"local-dana"_s}) {
        const double plain = secondsOfPcm(voices.speak(voice, sentence));
        for (const double speed : {0.25, 0.7, 1.2, 4.0}) {
            const Reply reply = voices.speak(voice, sentence, u",\"voice_settings\":{\"speed\":%1}"_s.arg(speed));
            EXPECT_NEAR(secondsOfPcm(reply) * speed / plain, 1.0, 0.15) << voice.toStdString() << ' ' << speed;
        }
    }
}

TEST(SpeechEndpoints, ABreakIsSilenceOfItsLength) {
    VoicesProgram voices;
    for (const QString &voice : {u"local-clara"_s, u"local-dana"_s}) {
        const QString text = u"Hello. <break time=\"%1\" /> This is a test."_s;
        const double none = secondsOfPcm(voices.speak(voice, text.arg(u"0.001s"_s)));
        EXPECT_NEAR(secondsOfPcm(voices.speak(voice, text.arg(u"0.5s"_s))) - none, 0.5, 0.01);
        EXPECT_NEAR(secondsOfPcm(voices.speak(voice, text.arg(u"1.5s"_s))) - none, 1.5, 0.01);
        EXPECT_NEAR(secondsOfPcm(voices.speak(voice, text.arg(u"60s"_s))) - none, 3.0, 0.01);
    }
}

TEST(SpeechEndpoints, ADirectionIsNotSpoken) {
    VoicesProgram voices;
    for (const QString &voice : {u"local-clara"_s, u"local-dana"_s}) {
        EXPECT_EQ(voices.speak(voice, u"[whispers] "_s + sentence).body, voices.speak(voice, sentence).body);
        EXPECT_NEAR(secondsOfPcm(voices.speak(voice, u"[sighs]"_s)), 0.1, 0.01);
    }
}

TEST(SpeechEndpoints, AnAliasIsSpokenInItsWordsPlaceByEveryModel) {
    VoicesProgram voices;
    const QString locator = uploadedLexeme(voices, "<grapheme>gif</grapheme><alias>a tall giraffe</alias>");
    for (const QString &voice : {u"local-clara"_s, u"local-dana"_s})
        for (const QString &model : {u"eleven_v3"_s, u"eleven_flash_v2_5"_s}) {
            const QString more = u",\"model_id\":\"%1\""_s.arg(model) + locator;
            EXPECT_EQ(voices.speak(voice, u"My gif is here."_s, more).body,
                      voices.speak(voice, u"My a tall giraffe is here."_s).body);
            EXPECT_EQ(voices.speak(voice, u"My Gif, gifts."_s, more).body,
                      voices.speak(voice, u"My Gif, gifts."_s).body);
        }
}

TEST(SpeechEndpoints, PhonemesAreSpokenByTheModelsThatFollowThem) {
    VoicesProgram voices;
    const QString ipa =
        uploadedLexeme(voices, "<grapheme>Orlenta</grapheme><phoneme alphabet=\"ipa\">ˈmædɪsən</phoneme>");
    const QString cmu = uploadedLexeme(
        voices, "<grapheme>Orlenta</grapheme><phoneme alphabet=\"x-arpabet\">M AE1 D IH0 S AH0 N</phoneme>");
    const QString text = u"Say Orlenta now."_s;
    for (const QString &voice : {u"local-clara"_s, u"local-dana"_s}) {
        const QByteArray plain = voices.speak(voice, text).body;
        const QByteArray followed = voices.speak(voice, text, u",\"model_id\":\"eleven_v3\""_s + ipa).body;
        EXPECT_NE(followed, plain);
        EXPECT_EQ(voices.speak(voice, text, u",\"model_id\":\"eleven_v3\""_s + cmu).body, followed);
        EXPECT_EQ(voices.speak(voice, text, ipa).body, plain) << "multilingual v2 passes phonemes over";
        const auto length = [](const QByteArray &pcm) { return static_cast<double>(pcm.size()) / 32000.0; };
        EXPECT_NEAR(length(followed), length(voices.speak(voice, u"Say madison now."_s).body), 0.15);
    }
}

TEST(SpeechEndpoints, SpeechToSpeechTakesTheVoiceAndKeepsTheTiming) {
    VoicesProgram voices;
    const Reply spoken = voices.post(u"/v1/text-to-speech/local-rupert?output_format=wav_44100"_s, "application/json",
                                     "{\"text\":\"" + sentence.toUtf8() + "\"}");
    const Sound direction = decodedFile(spoken.body).value();
    for (const QString &voice : {u"local-clara"_s, u"local-bruno"_s}) {
        const Reply reply = voices.postForm(
            u"/v1/speech-to-speech/%1?output_format=mp3_44100_192"_s.arg(voice),
            {{"audio", "direction.wav", spoken.body},
             {"model_id", {}, "eleven_english_sts_v2"},
             {"voice_settings", {}, R"({"stability":0.5,"similarity_boost":0.75,"style":0.0,"speed":1.0})"}});
        ASSERT_EQ(reply.status, 200) << reply.body.constData();
        const Sound converted = decodedFile(reply.body).value();
        EXPECT_NEAR(converted.seconds(), direction.seconds(), 0.003);
        EXPECT_NEAR(middlePitch(converted) / findVoice(voice)->pitchHz, 1.0, 0.1) << voice.toStdString();
        EXPECT_GT(reply.header("character-cost").toInt(), 0);
    }
}

TEST(SpeechEndpoints, SpeechToSpeechRefusesWhatItCannotRead) {
    VoicesProgram voices;
    const QString path = u"/v1/speech-to-speech/local-clara"_s;
    EXPECT_EQ(voices.postForm(path, {{"audio", "direction.wav", "RIFFnonsense"}}).status, 400);
    EXPECT_EQ(voices.postForm(path, {{"audio", "direction.wav", {}}}).status, 400);
    EXPECT_EQ(voices.postForm(path, {{"model_id", {}, "eleven_english_sts_v2"}}).status, 422);
    EXPECT_EQ(voices.postForm(path, {{"audio", "a", "b"}, {"voice_settings", {}, "no JSON"}}).status, 422);
    EXPECT_EQ(voices.postForm(path, {{"audio", "a", "b"}, {"model_id", {}, "eleven_v3"}}).status, 400);
}

TEST(SpeechEndpoints, ManyRequestsAtOnceAreAllAnsweredAndHoldNobodyUp) {
    VoicesProgram voices;
    QNetworkRequest request = voices.request(u"/v1/text-to-speech/local-clara?output_format=pcm_16000"_s);
    request.setRawHeader("Content-Type", "application/json");
    const QByteArray body = "{\"text\":\"" + (sentence + u' ').repeated(5).toUtf8() + "\"}";
    QList<QNetworkReply *> lines;
    for (int i = 0; i < 6; ++i)
        lines << voices.begin("POST", request, body);
    EXPECT_EQ(voices.get(u"/v1/user"_s).status, 200);
    const bool allDone =
        std::all_of(lines.begin(), lines.end(), [](const QNetworkReply *r) { return r->isFinished(); });
    EXPECT_FALSE(allDone) << "the account waited for the lines";
    QByteArray first;
    for (QNetworkReply *line : lines) {
        const Reply reply = VoicesProgram::waitFor(line);
        EXPECT_EQ(reply.status, 200);
        if (first.isEmpty())
            first = reply.body;
        EXPECT_EQ(reply.body, first);
    }
}

TEST(SpeechEndpoints, TextThatOverrunsTheEnginesBuffersIsSpoken) {
    VoicesProgram voices;
    const QString phoneme = u"<phoneme alphabet=\"ipa\" ph=\"%1\">x</phoneme>"_s;
    for (const QString &voice : {u"local-clara"_s, u"local-dana"_s})
        for (const QString &text :
             {u"!"_s.repeated(307), u"."_s.repeated(308), u"a"_s + u"!"_s.repeated(9000), u"a.b.c."_s.repeated(29),
              u"a. b. c. "_s.repeated(40), phoneme.arg(u"ə"_s.repeated(352)), phoneme.arg(u"ə"_s.repeated(9000))}) {
            const Reply reply = voices.speak(voice, text, u",\"model_id\":\"eleven_flash_v2\""_s);
            EXPECT_EQ(reply.status, 200) << voice.toStdString() << ' ' << text.left(30).toStdString();
        }
}

TEST(SpeechEndpoints, CommandsOfTheEngineInTheTextAreNotObeyed) {
    VoicesProgram voices;
    EXPECT_EQ(voices.speak(u"local-dana"_s, u"hello \u0001400S there"_s).body,
              voices.speak(u"local-dana"_s, u"hello  400S there"_s).body);
}

TEST(SpeechEndpoints, ALongTextIsSpokenWhole) {
    VoicesProgram voices;
    const double ten = secondsOfPcm(voices.speak(u"local-dana"_s, (sentence + u' ').repeated(10)));
    EXPECT_NEAR(secondsOfPcm(voices.speak(u"local-dana"_s, (sentence + u' ').repeated(100))) / ten, 10, 0.3);
}

TEST(SpeechEndpoints, ALineThatItsAliasesBlowUpIsRefused) {
    VoicesProgram voices;
    const QString locator =
        uploadedLexeme(voices, "<grapheme>a</grapheme><alias>" + QByteArray("hello there, ").repeated(70) + "</alias>");
    const Reply reply =
        voices.speak(u"local-dana"_s, u"a "_s.repeated(2000), u",\"model_id\":\"eleven_flash_v2_5\""_s + locator);
    EXPECT_EQ(reply.status, 400);
    const QJsonObject detail = QJsonDocument::fromJson(reply.body)[u"detail"_s].toObject();
    EXPECT_EQ(detail[u"status"_s].toString(), u"max_character_limit_exceeded"_s);
    EXPECT_EQ(detail[u"message"_s].toString(), u"With its pronunciations the text is longer than 100000 characters."_s);
}

TEST(SpeechEndpoints, ALanguageThatIsNotOneIsIgnored) {
    VoicesProgram voices;
    const QByteArray own = voices.speak(u"local-dana"_s, sentence).body;
    for (const QString &code : {u"../lang/gmw/de"_s, u"../../../../../../../../etc/passwd"_s, u"de+whisperf"_s, u"xx"_s,
                                u"DE"_s, u"de\\u0000"_s})
        EXPECT_EQ(voices.speak(u"local-dana"_s, sentence, u",\"language_code\":\"%1\""_s.arg(code)).body, own)
            << code.toStdString();
    EXPECT_NE(voices.speak(u"local-dana"_s, sentence, u",\"language_code\":\"de\""_s).body, own);
}

TEST(SpeechEndpoints, TextInAnotherScriptIsSpokenByAVoiceThatOnlyReadsLatin) {
    VoicesProgram voices;
    EXPECT_GT(secondsOfPcm(voices.speak(u"local-clara"_s, u"Καλημέρα κόσμε"_s, u",\"language_code\":\"el\""_s)), 0.5);
    EXPECT_GT(secondsOfPcm(voices.speak(u"local-clara"_s, u"Привет мир"_s)), 0.5);
    EXPECT_EQ(voices.speak(u"local-clara"_s, u"It’s a café"_s).body,
              voices.speak(u"local-clara"_s, u"It's a cafe"_s).body);
}

} // namespace orlenta::localvoices
