#include "speech/http/MultipartBody.h"

#include <QtCore/QUuid>

namespace orlenta::speech {

MultipartBody::MultipartBody() : m_boundary(QUuid::createUuid().toByteArray(QUuid::WithoutBraces).toUpper()) {}

void MultipartBody::addField(const char *name, const QByteArray &value) {
    m_parts += "--" + m_boundary + "\r\nContent-Disposition: form-data; name=\"" + name + "\"\r\n\r\n" + value + "\r\n";
}

void MultipartBody::addFile(const char *name, const char *fileName, const char *contentType, const QByteArray &bytes) {
    m_parts += "--" + m_boundary + "\r\nContent-Disposition: form-data; name=\"" + name + "\"; filename=\"" + fileName +
               "\"\r\nContent-Type: " + contentType + "\r\n\r\n" + bytes + "\r\n";
}

QByteArray MultipartBody::contentType() const {
    return "multipart/form-data; boundary=" + m_boundary;
}

QByteArray MultipartBody::bytes() const {
    return m_parts + "--" + m_boundary + "--\r\n";
}

} // namespace orlenta::speech
