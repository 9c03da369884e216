#include "speech/http/HttpRequest.h"

#include "speech/http/MultipartBody.h"

namespace orlenta::speech {

HttpRequest::HttpRequest(const ServiceAccess &forAccess, const QString &path)
    : access(forAccess), url(forAccess.address(path)) {}

HttpRequest HttpRequest::get(const ServiceAccess &access, const QString &path) {
    return {access, path};
}

HttpRequest HttpRequest::postJson(const ServiceAccess &access, const QString &path, const QByteArray &json) {
    HttpRequest request(access, path);
    request.method = Method::Post;
    request.contentType = "application/json";
    request.body = json;
    return request;
}

HttpRequest HttpRequest::postForm(const ServiceAccess &access, const QString &path, const MultipartBody &form) {
    HttpRequest request(access, path);
    request.method = Method::Post;
    request.contentType = form.contentType();
    request.body = form.bytes();
    return request;
}

} // namespace orlenta::speech
