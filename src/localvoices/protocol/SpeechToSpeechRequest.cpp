#include "localvoices/protocol/SpeechToSpeechRequest.h"

#include "localvoices/protocol/JsonReader.h"
#include "localvoices/protocol/MultipartForm.h"
#include "localvoices/protocol/Refusal.h"

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

std::variant<SpeechToSpeechRequest, HttpAnswer> SpeechToSpeechRequest::read(const IncomingRequest &request) {
    const auto form = MultipartForm::parse(request.header("content-type"), request.body);
    if (!form && form.error() == FormFault::TooManyParts)
        return tooManyParts(MultipartForm::mostParts);
    const FormPart *audio = form ? form->findPart(u"audio"_s) : nullptr;
    if (audio == nullptr)
        return missingField(u"audio"_s);
    const auto fault = [](const QString &field, const QString &message, const QString &type) {
        return validationFault({u"body"_s, field}, message, type);
    };
    QJsonArray faults;
    SpeechToSpeechRequest speech;
    speech.audio = audio->content;
    speech.modelId = form->text(u"model_id"_s).value_or(u"eleven_english_sts_v2"_s);
    if (const std::optional<QString> settings = form->text(u"voice_settings"_s)) {
        if (const std::optional<QJsonObject> object = JsonReader::parseObject(settings->toUtf8()))
            speech.settings.readVoiceSettings(*object, faults);
        else
            faults.append(fault(u"voice_settings"_s, u"Invalid JSON"_s, u"json_invalid"_s));
    }
    const QString fileFormat = form->text(u"file_format"_s).value_or(u"other"_s);
    speech.isPcm16 = fileFormat == u"pcm_s16le_16"_s;
    if (!speech.isPcm16 && fileFormat != u"other"_s)
        faults.append(fault(u"file_format"_s, u"Input should be one of 'pcm_s16le_16', 'other'"_s, u"literal_error"_s));
    if (!faults.isEmpty())
        return validationAnswer(faults);
    return speech;
}

} // namespace orlenta::localvoices
