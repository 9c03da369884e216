#pragma once

#include <qcoro/qcorotask.h>
#include <QtCore/QObject>
#include <QtNetwork/QNetworkAccessManager>

#include "base/Result.h"
#include "speech/http/HttpRequest.h"
#include "speech/http/SpeechError.h"
#include "speech/http/SpeechTiming.h"

namespace orlenta::speech {

/// Sends keyed requests over one network manager that keeps no cookies, no cache and no credentials. Replies are capped
/// and stalls end. A redirect is followed only to the same origin, so that no other host ever sees the key; any other
/// redirect is handed back as the reply it is. Main thread.
class HttpClient final : public QObject {
    Q_OBJECT
public:
    explicit HttpClient(SpeechTiming timing);
    ~HttpClient() override;

    /// Any complete reply is a success here, whatever its status.
    QCoro::Task<base::Result<HttpReply, SpeechError>> perform(HttpRequest request);
    /// Calls off what is under way and refuses what comes. Awaiting coroutines go on inside this call.
    void close();

private:
    SpeechTiming m_timing;
    QNetworkAccessManager m_network;
    bool m_closed = false;
};

} // namespace orlenta::speech
