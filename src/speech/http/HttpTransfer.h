#pragma once

#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <QtNetwork/QNetworkReply>

#include "base/Result.h"
#include "speech/http/Completion.h"
#include "speech/http/HttpRequest.h"
#include "speech/http/SpeechError.h"
#include "speech/http/SpeechTiming.h"

class QNetworkAccessManager;

namespace orlenta::speech {

/// One running request. Resolves its completion exactly once, then deletes itself.
class HttpTransfer final : public QObject {
    Q_OBJECT
public:
    using Outcome = base::Result<HttpReply, SpeechError>;

    HttpTransfer(QNetworkAccessManager &network, const HttpRequest &request, const SpeechTiming &timing,
                 QObject *parent);
    ~HttpTransfer() override;

    [[nodiscard]] const Completion<Outcome> &completion() const { return m_completion; }
    void cancel();

private:
    [[nodiscard]] int status() const;
    void collect();
    base::Result<void, SpeechError> keep(const QByteArray &bytes);
    base::Result<void, SpeechError> keepInFile(const QByteArray &bytes);
    void checkPace();
    void replyFinished();
    void finish(const Outcome &outcome);

    QNetworkReply *m_reply;
    ReplyFilePtr m_file;
    bool m_fileHasBegun = false;
    qint64 m_sizeAtLastPaceCheck = 0;
    QTimer m_stallTimer;
    QTimer m_exchangeTimer;
    QByteArray m_body;
    bool m_finished = false;
    Completion<Outcome> m_completion;
};

} // namespace orlenta::speech
