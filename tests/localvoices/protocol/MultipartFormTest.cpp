#include "localvoices/protocol/MultipartForm.h"

#include <gtest/gtest.h>

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

TEST(MultipartForm, PartsKeepTheirBytes) {
    const QByteArray bytes("\r\n--not the boundary\x00\xFF\r\n", 24);
    const QByteArray body =
        "preamble\r\n--b\r\nContent-Disposition: form-data; name=\"audio\"; filename=\"a \\\"b\\\".wav\"\r\n"
        "Content-Type: audio/wav\r\n\r\n" +
        bytes +
        "\r\n--b  \r\ncontent-disposition: form-data; "
        "name=model_id\r\n\r\nm\r\n--b--\r\nepilogue";
    const auto form = MultipartForm::parse("multipart/form-data; charset=utf-8; boundary=b", body);
    ASSERT_TRUE(form);
    const FormPart *audio = form->findPart(u"audio"_s);
    ASSERT_NE(audio, nullptr);
    EXPECT_EQ(audio->content, bytes);
    EXPECT_EQ(audio->fileName, u"a \"b\".wav"_s);
    EXPECT_EQ(form->text(u"model_id"_s), u"m"_s);
    EXPECT_FALSE(form->findPart(u"model_id"_s)->fileName);
    EXPECT_EQ(form->findPart(u"name"_s), nullptr);
}

TEST(MultipartForm, BrokenFormsAreRefused) {
    const QByteArray type = "multipart/form-data; boundary=b";
    const QByteArray part = "--b\r\nContent-Disposition: form-data; name=\"a\"\r\n\r\nx\r\n";
    ASSERT_TRUE(MultipartForm::parse(type, part + "--b--"));
    for (const QByteArray &body : {QByteArray(), QByteArray("--b"), part, part.left(20), part + "--c--",
                                   QByteArray("--b\r\n\r\nno name\r\n--b--"), QByteArray("--b\r\n--b--")})
        EXPECT_FALSE(MultipartForm::parse(type, body)) << body.constData();
    EXPECT_FALSE(MultipartForm::parse("application/json", part + "--b--"));
    EXPECT_FALSE(MultipartForm::parse("multipart/form-data", part + "--b--"));
    const QByteArray longHead = "--b\r\nContent-Disposition: form-data; name=\"" + QByteArray(5000, 'x') + "\"\r\n\r\n";
    EXPECT_FALSE(MultipartForm::parse(type, longHead + "x\r\n--b--"));
}

TEST(MultipartForm, HoldsNoMorePartsThanItMay) {
    const QByteArray type = "multipart/form-data; boundary=b";
    const QByteArray part = "--b\r\nContent-Disposition: form-data; name=\"a\"\r\n\r\nx\r\n";
    EXPECT_TRUE(MultipartForm::parse(type, part.repeated(64) + "--b--"));
    for (const qsizetype parts : {65, 200'000}) {
        const auto form = MultipartForm::parse(type, part.repeated(parts) + "--b--");
        ASSERT_FALSE(form) << parts;
        EXPECT_EQ(form.error(), FormFault::TooManyParts);
    }
}

} // namespace orlenta::localvoices
