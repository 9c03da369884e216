#pragma once

#include <qcoro/qcorotask.h>
#include <QtCore/QObject>
#include <QtNetwork/QNetworkAccessManager>

#include "base/Result.h"
#include "speech/http/HttpRequest.h"
#include "speech/http/SpeechError.h"
#include "speech/http/SpeechTiming.h"

namespace orlenta::speech {

/// Sends requests through one network manager without cookies, cache or stored credentials. Reply sizes and stalls are
/// limited. Redirects are followed within the same origin only, so that no other host sees the key; any other redirect
/// is returned as the reply. Main thread.
class HttpClient final : public QObject {
    Q_OBJECT
public:
    explicit HttpClient(SpeechTiming timing);
    ~HttpClient() override;

    /// Any complete reply counts as success, whatever its status.
    QCoro::Task<base::Result<HttpReply, SpeechError>> perform(HttpRequest request);
    /// Cancels running requests and refuses new ones. Awaiting coroutines resume inside this call.
    void close();

private:
    SpeechTiming m_timing;
    QNetworkAccessManager m_network;
    bool m_closed = false;
};

} // namespace orlenta::speech
