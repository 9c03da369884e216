#include "speech/synthesis/SpeechApi.h"

#include <cmath>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QtCore/QFile>

#include "audio/files/AudioFileReader.h"
#include "speech/synthesis/SpeechReplies.h"

namespace orlenta::speech {

namespace {

using test::LoopbackRequest;
using test::LoopbackServer;

struct WavFacts {
    int rate = 0;
    int depth = 0;
    double seconds = 0.0;
    bool endsInSilence = false;

    friend bool operator==(const WavFacts &, const WavFacts &) = default;
};

WavFacts factsOf(const QString &path) {
    QFile file(path);
    auto opened = audio::AudioFileReader::open(path);
    if (!opened || !file.open(QIODevice::ReadOnly))
        return {};
    audio::AudioFileReader &reader = opened.value();
    const QByteArray bytes = file.readAll();
    WavFacts facts;
    facts.rate = static_cast<int>(reader.sampleRate());
    facts.depth = qFromLittleEndian<quint16>(bytes.constData() + 34);
    facts.seconds = std::round(static_cast<double>(reader.frames()) / reader.sampleRate() * 10.0) / 10.0;
    const qsizetype tail = facts.rate / 5 * facts.depth / 8;
    facts.endsInSilence = bytes.right(tail) == QByteArray(tail, '\0');
    return facts;
}

} // namespace

TEST(SpeechApi, AnMP3ChoiceEndsAsACompactWavWhateverTheWavChoicesSay) {
    ServiceUnderTest under;
    under.server.answer("/v1/text-to-speech", audioReply(toneMp3(under.folder)));
    under.defaults.setMp3Quality(QStringLiteral("128"));
    const auto file = requestSpeech(under, "mp3");
    ASSERT_TRUE(file) << file.error().description().toStdString();
    EXPECT_EQ(factsOf(file->path()), (WavFacts{44100, 16, 1.2, true}));
    const LoopbackRequest request = under.server.requests().last();
    EXPECT_EQ(request.target, "/v1/text-to-speech/v%201%2F2?output_format=mp3_44100_128");
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.headers.value("content-type"), "application/json");
    EXPECT_EQ(request.body, R"({"text":"Hello","model_id":"eleven_v3"})");
}

TEST(SpeechApi, AWavChoiceComesFromRawSamples) {
    ServiceUnderTest under;
    under.server.answer("/v1/text-to-speech", audioReply(tonePcm()));
    const auto file = requestSpeech(under, "wav");
    ASSERT_TRUE(file) << file.error().description().toStdString();
    EXPECT_EQ(factsOf(file->path()), (WavFacts{48000, 24, 1.2, true}));
    EXPECT_TRUE(file->path().startsWith(base::PrivateFolders::caches() + QStringLiteral("/tts_")));
    EXPECT_EQ(cachedFiles(), QStringList{QFileInfo(file->path()).fileName()}) << "nothing but the result is left";
    EXPECT_THAT(formatsAsked(under), ::testing::ElementsAre("pcm_44100"));
}

TEST(SpeechApi, APlanWithoutRawSamplesGetsTheSameWavFromTheBestMP3) {
    for (const int status : {400, 402, 403}) {
        ServiceUnderTest under;
        under.server.answerInTurn("/v1/text-to-speech", {refusal(status), audioReply(toneMp3(under.folder))});
        const auto file = requestSpeech(under, "wav");
        ASSERT_TRUE(file) << file.error().description().toStdString();
        EXPECT_EQ(factsOf(file->path()), (WavFacts{48000, 24, 1.2, true}));
        EXPECT_THAT(formatsAsked(under), ::testing::ElementsAre("pcm_44100", "mp3_44100_192"));
    }
}

TEST(SpeechApi, OtherRefusalsNeverChangeTheFormat) {
    for (const int status : {401, 404, 429, 500}) {
        ServiceUnderTest under;
        under.server.answer("/v1/text-to-speech", refusal(status));
        EXPECT_FALSE(requestSpeech(under, "wav"));
        for (const QByteArray &format : formatsAsked(under))
            EXPECT_EQ(format, "pcm_44100") << status;
        EXPECT_EQ(formatsAsked(under).size(), status == 429 ? 4 : 1);
    }
}

TEST(SpeechApi, BytesThatAreNoAudioAreAnErrorAndLeaveNoFile) {
    ServiceUnderTest under;
    const QStringList before = cachedFiles();
    under.server.answer("/v1/text-to-speech", audioReply("\xFF\xFBno MP3 from here on"));
    const auto file = requestSpeech(under, "mp3");
    ASSERT_FALSE(file);
    EXPECT_EQ(file.error(), SpeechError::notAudio());
    EXPECT_EQ(cachedFiles(), before);
}

TEST(SpeechApi, ADirectionIsPostedAsAFormAndCostsNoEstimate) {
    ServiceUnderTest under(ServiceUnderTest::Waits::EndWhenTold);
    under.connectAccount();
    under.server.answer("/v1/speech-to-speech", audioReply(toneMp3(under.folder)));
    QFile direction(under.folder.filePath(QStringLiteral("take.m4a")));
    ASSERT_TRUE(direction.open(QIODevice::WriteOnly));
    direction.write("not\r\nreally audio");
    direction.close();
    const VoiceSettings settings{0.4, 0.75, 0.0, 1.0};
    const ServiceAccess access = under.service().access();
    const auto file =
        resultOf(under.service().speech().speechToSpeech(access, direction.fileName(), QStringLiteral("v1"), settings));
    ASSERT_TRUE(file) << file.error().description().toStdString();
    const LoopbackRequest request = under.server.requests("/v1/speech-to-speech").first();
    EXPECT_EQ(request.target, "/v1/speech-to-speech/v1?output_format=mp3_44100_192");
    const QByteArray type = request.headers.value("content-type");
    const QByteArray opening = "multipart/form-data; boundary=";
    ASSERT_TRUE(type.startsWith(opening));
    const QByteArray line = "--" + type.mid(opening.size());
    EXPECT_EQ(request.body, line +
                                "\r\nContent-Disposition: form-data; name=\"audio\"; filename=\"direction.wav\"\r\n"
                                "Content-Type: audio/wav\r\n\r\nnot\r\nreally audio\r\n" +
                                line +
                                "\r\nContent-Disposition: form-data; name=\"model_id\"\r\n\r\n"
                                "eleven_english_sts_v2\r\n" +
                                line +
                                "\r\nContent-Disposition: form-data; name=\"voice_settings\"\r\n\r\n"
                                R"({"stability":0.4,"similarity_boost":0.75,"style":0.0,"speed":1.0})"
                                "\r\n" +
                                line + "--\r\n");
    EXPECT_EQ(under.creditsText(), QStringLiteral("100 credits"));
    EXPECT_TRUE(ServiceUnderTest::becomes([&under] { return under.server.requests("/v1/user").size() == 2; }));

    const auto missing = resultOf(under.service().speech().speechToSpeech(access, QStringLiteral("/nowhere/take.wav"),
                                                                          QStringLiteral("v1"), settings));
    EXPECT_EQ(missing.error().kind(), SpeechError::Kind::File);
}

TEST(SpeechApi, APreviewClimbsDownTheLadderAndStopsAtARateLimit) {
    ServiceUnderTest under;
    under.server.answer("/v1/user", LoopbackServer::json(userJson(100, "pro")));
    under.connectAccount();
    const auto preview = [&under] {
        ElevenLabsService &service = under.service();
        return resultOf(service.speech().generateHQVoicePreview(
            service.access(), QStringLiteral("v1"), QStringLiteral("Hello"), QStringLiteral("eleven_multilingual_v2")));
    };
    under.server.answerInTurn("/v1/text-to-speech", {refusal(403), audioReply(tonePcm())});
    const auto second = preview();
    ASSERT_TRUE(second);
    EXPECT_EQ(second->sampleRateHz, 44100);
    EXPECT_TRUE(second->fileURL.fileName().startsWith(QStringLiteral("voice_preview_")));
    EXPECT_EQ(under.creditsText(), QStringLiteral("105 credits"));

    under.server.answerInTurn("/v1/text-to-speech", {refusal(403), refusal(500), audioReply(toneMp3(under.folder))});
    const auto third = preview();
    ASSERT_TRUE(third);
    EXPECT_TRUE(third->fileURL.fileName().endsWith(QStringLiteral(".mp3")));
    EXPECT_THAT(formatsAsked(under),
                ::testing::ElementsAre("pcm_48000", "pcm_44100", "pcm_48000", "pcm_44100", "mp3_44100_192"));

    const qsizetype before = formatsAsked(under).size();
    under.server.answer("/v1/text-to-speech", LoopbackServer::reply(429, ""));
    EXPECT_TRUE(preview().error().isRateLimited());
    EXPECT_EQ(formatsAsked(under).size() - before, 4);
}

TEST(SpeechApi, AnUploadedDictionaryGivesBothItsIds) {
    ServiceUnderTest under;
    const auto upload = [&under](const QByteArray &body) {
        under.server.answer("/v1/pronunciation-dictionaries/add-from-file", LoopbackServer::json(body));
        return resultOf(under.service().speech().addPronunciationDictionary(
            under.service().access(), QStringLiteral("Orlenta Pronunciation"),
            QStringLiteral("Auto-generated by Orlenta"), "<lexicon/>"));
    };
    const auto uploaded = upload(R"({"id":"d1","version_id":"w1","name":"n"})");
    ASSERT_TRUE(uploaded);
    EXPECT_EQ(uploaded->id, QStringLiteral("d1"));
    EXPECT_EQ(uploaded->versionId, QStringLiteral("w1"));
    EXPECT_THAT(under.server.requests().last().body.toStdString(),
                ::testing::HasSubstr("name=\"file\"; filename=\"pronunciation.pls\"\r\nContent-Type: "
                                     "application/xml\r\n\r\n<lexicon/>\r\n"));
    EXPECT_EQ(upload(R"({"id":"d1"})").error(), SpeechError(ElevenLabsError::invalidResponse()));
    EXPECT_EQ(upload("no").error().kind(), SpeechError::Kind::Decoding);
}

} // namespace orlenta::speech
