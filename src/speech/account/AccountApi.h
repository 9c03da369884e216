#pragma once

#include <qcoro/qcorotask.h>
#include <QtCore/QList>

#include "base/Result.h"
#include "speech/account/ServiceRecords.h"
#include "speech/http/Cancellation.h"
#include "speech/http/ServiceAccess.h"
#include "speech/http/SpeechError.h"

namespace orlenta::speech {

class ServiceGateway;

/// The account requests: user and voices. Main thread; the gateway outlives it.
class AccountApi final {
public:
    explicit AccountApi(ServiceGateway &gateway) : m_gateway(gateway) {}

    QCoro::Task<base::Result<ElevenLabsUser, SpeechError>> fetchUser(ServiceAccess access,
                                                                     CancellationPtr cancellation = nullptr);
    QCoro::Task<base::Result<QList<Voice>, SpeechError>> fetchVoices(ServiceAccess access);

private:
    ServiceGateway &m_gateway;
};

} // namespace orlenta::speech
