#include "localvoices/server/LocalVoicesServer.h"

#include <gtest/gtest.h>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include "localvoices/engines/RecordingDecoder.h"
#include "localvoices/JsonSchema.h"
#include "localvoices/VoicesProgram.h"

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;
using test::Reply;
using test::schemaFaults;
using test::VoicesProgram;

namespace {

QJsonObject objectOf(const Reply &reply) {
    return QJsonDocument::fromJson(reply.body).object();
}

constexpr char plainLexicon[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<lexicon version="1.0" xmlns="http://www.w3.org/2005/01/pronunciation-lexicon" alphabet="ipa" xml:lang="en-US">
  <lexeme>
    <grapheme>gif</grapheme>
    <alias>giraffe</alias>
  </lexeme>
</lexicon>)";

} // namespace

TEST(LocalVoicesServer, DescribesTheAccountAndTheVoicesByThePublishedSchemas) {
    VoicesProgram voices;
    const Reply user = voices.get(u"/v1/user"_s);
    EXPECT_EQ(user.status, 200);
    EXPECT_EQ(schemaFaults(u"UserResponseModel"_s, user.body), QStringList());
    const Reply list = voices.get(u"/v1/voices"_s);
    EXPECT_EQ(list.status, 200);
    EXPECT_EQ(schemaFaults(u"GetVoicesResponseModel"_s, list.body), QStringList());
    const QJsonArray all = objectOf(list).value(u"voices"_s).toArray();
    ASSERT_GE(all.size(), 16);
    for (const QJsonValue &voice : all)
        for (const QString &label : {u"gender"_s, u"age"_s, u"accent"_s, u"use_case"_s})
            EXPECT_FALSE(voice[u"labels"_s][label].toString().isEmpty()) << label.toStdString();
}

TEST(LocalVoicesServer, PlaysAPreviewToWhoeverHasItsAddress) {
    VoicesProgram voices;
    const QJsonArray all = objectOf(voices.get(u"/v1/voices"_s)).value(u"voices"_s).toArray();
    const QUrl address(all.first()[u"preview_url"_s].toString());
    const Reply preview = voices.send("GET", QNetworkRequest(address));
    EXPECT_EQ(preview.contentType, "audio/mpeg");
    const auto sound = decodedFile(preview.body);
    ASSERT_TRUE(sound);
    EXPECT_GT(sound->seconds(), 1.0);
    EXPECT_EQ(voices.send("GET", QNetworkRequest(address)).body, preview.body);
    EXPECT_EQ(voices.get(u"/previews/guess/local-clara.mp3"_s).status, 404);
}

TEST(LocalVoicesServer, LetsOnlyItsKeyIn) {
    VoicesProgram voices;
    struct Case {
        QByteArray key;
        QString status;
    };
    for (const Case &each : {Case{{}, u"needs_authorization"_s}, Case{"another key", u"invalid_api_key"_s},
                             Case{QByteArray(VoicesProgram::key) + '!', u"invalid_api_key"_s}}) {
        for (const QString &path : {u"/v1/user"_s, u"/v1/voices"_s, u"/local/faults"_s}) {
            QNetworkRequest request = voices.request(path);
            request.setRawHeader("xi-api-key", each.key);
            const Reply reply = voices.send("GET", request);
            EXPECT_EQ(reply.status, 401);
            EXPECT_EQ(objectOf(reply)[u"detail"_s][u"status"_s].toString(), each.status);
            EXPECT_EQ(schemaFaults(u"ApiError"_s, reply.body), QStringList());
        }
    }
}

TEST(LocalVoicesServer, WontStartWithoutAKey) {
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(u"ORLENTA_LOCAL_VOICES_KEY"_s);
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral(ORLENTA_LOCAL_VOICES_PROGRAM), QStringList());
    ASSERT_TRUE(program.waitForFinished());
    EXPECT_NE(program.exitCode(), 0);
    EXPECT_TRUE(program.readAllStandardOutput().isEmpty());
}

TEST(LocalVoicesServer, StartsWithoutFfmpeg) {
    VoicesProgram voices;
    QFile maps(u"/proc/%1/maps"_s.arg(voices.process().processId()));
    ASSERT_TRUE(maps.open(QIODevice::ReadOnly));
    const QByteArray loaded = maps.readAll();
    EXPECT_TRUE(loaded.contains("libsndfile"));
    EXPECT_FALSE(loaded.contains("libav")) << "each utterance waits for what is loaded";
}

TEST(LocalVoicesServer, RefusesInTheServicesOwnWords) {
    VoicesProgram voices;
    struct Case {
        QString path;
        QByteArray body;
        int http;
        QString status;
    };
    const QString clara = u"/v1/text-to-speech/local-clara"_s;
    const QByteArray tooLong = "{\"text\":\"" + QByteArray(10'001, 'a') + "\"}";
    const QList<Case> cases{
        {u"/v1/text-to-speech/nobody"_s, R"({"text":"a"})", 404, u"voice_not_found"_s},
        {clara + u"?output_format=mp3_1"_s, R"({"text":"a"})", 403, u"invalid_output_format"_s},
        {clara + u"?output_format=opus_48000_64"_s, R"({"text":"a"})", 403, u"output_format_not_allowed"_s},
        {clara, R"({"text":"a","model_id":"eleven_v0"})", 400, u"model_not_found"_s},
        {clara, tooLong, 400, u"max_character_limit_exceeded"_s},
        {clara, R"({"text":"a","model_id":"eleven_v3","previous_text":"b"})", 400, u"unsupported_model"_s},
        {clara, R"({"text":"a","pronunciation_dictionary_locators":[{"pronunciation_dictionary_id":"b"}]})", 404,
         u"pronunciation_dictionary_not_found"_s},
    };
    for (const Case &each : cases) {
        const Reply reply = voices.post(each.path, "application/json", each.body);
        EXPECT_EQ(reply.status, each.http) << each.body.left(80).constData();
        EXPECT_EQ(objectOf(reply)[u"detail"_s][u"status"_s].toString(), each.status);
        EXPECT_EQ(schemaFaults(u"ApiError"_s, reply.body), QStringList());
    }
    EXPECT_EQ(voices.get(u"/v1/nothing"_s).status, 404);
}

TEST(LocalVoicesServer, NamesEachFieldThatBreaksTheSchema) {
    VoicesProgram voices;
    struct Case {
        QByteArray body;
        QList<QByteArray> faultsInOrder;
    };
    const QList<Case> cases{
        {"{}", {"missing"}},
        {"nonsense", {"json_invalid"}},
        {R"({"text":1})", {"string_type"}},
        {R"({"text":"a","voice_settings":{"stability":2,"speed":0.1,"style":"x"}})",
         {"less_than_equal", "float_type", "greater_than_equal"}},
        {R"({"text":"a","seed":0.5})", {"int_from_float"}},
        {R"({"text":"a","previous_request_ids":["1","2","3","4"]})", {"too_long"}},
        {R"({"text":"a","pronunciation_dictionary_locators":[{}]})", {"missing"}},
    };
    for (const Case &each : cases) {
        const Reply reply = voices.post(u"/v1/text-to-speech/local-clara"_s, "application/json", each.body);
        EXPECT_EQ(reply.status, 422);
        EXPECT_EQ(schemaFaults(u"HTTPValidationError"_s, reply.body), QStringList());
        QList<QByteArray> types;
        for (const QJsonValue &fault : objectOf(reply).value(u"detail"_s).toArray())
            types << fault[u"type"_s].toString().toLatin1();
        EXPECT_EQ(types, each.faultsInOrder) << each.body.constData();
    }
}

TEST(LocalVoicesServer, TakesALexiconAndRefusesWhatIsNone) {
    VoicesProgram voices;
    const QString path = u"/v1/pronunciation-dictionaries/add-from-file"_s;
    const Reply added = voices.postForm(
        path, {{"name", {}, "Orlenta Pronunciation"}, {"description", {}, "d"}, {"file", "a.pls", plainLexicon}});
    EXPECT_EQ(added.status, 200);
    EXPECT_EQ(schemaFaults(u"AddPronunciationDictionaryResponseModel"_s, added.body), QStringList());
    EXPECT_EQ(objectOf(added)[u"version_rules_num"_s].toInt(), 1);

    const Reply broken = voices.postForm(path, {{"name", {}, "n"}, {"file", "a.pls", "<lexicon><lexeme>"}});
    EXPECT_EQ(broken.status, 400);
    EXPECT_EQ(objectOf(broken)[u"detail"_s][u"status"_s].toString(), u"Unable to parse lexicon file"_s);
    EXPECT_EQ(voices.postForm(path, {{"name", {}, "n"}}).status, 422);
    EXPECT_EQ(voices.postForm(path, {{"file", "a.pls", plainLexicon}}).status, 422);
    EXPECT_EQ(voices.post(path, "application/json", "{}").status, 422);
    const Reply parts = voices.postForm(path, QList<test::Field>(65, {"name", {}, "n"}));
    EXPECT_EQ(parts.status, 400);
    EXPECT_EQ(objectOf(parts)[u"detail"_s].toString(), u"Too many fields. Maximum number of fields is 64."_s);
}

TEST(LocalVoicesServer, CountsWhatItSpeaksUntilTheQuotaIsUsed) {
    VoicesProgram voices({u"--character-limit"_s, u"12"_s});
    const Reply first = voices.speak(u"local-dana"_s, u"éeee eeee"_s, u",\"model_id\":\"eleven_flash_v2_5\""_s);
    EXPECT_EQ(first.header("character-cost"), "5");
    const QJsonValue subscription = objectOf(voices.get(u"/v1/user"_s))[u"subscription"_s];
    EXPECT_EQ(subscription[u"character_count"_s].toInt(), 5);
    EXPECT_EQ(subscription[u"character_limit"_s].toInt(), 12);
    const Reply refused = voices.speak(u"local-dana"_s, u"eight e."_s);
    EXPECT_EQ(refused.status, 401);
    EXPECT_EQ(
        objectOf(refused)[u"detail"_s][u"message"_s].toString(),
        u"This request exceeds your quota of 12. You have 7 credits remaining, while 8 credits are required for this "
        u"request."_s);
}

} // namespace orlenta::localvoices
