#include "speech/account/AccountApi.h"

#include "speech/http/ServiceGateway.h"

namespace orlenta::speech {

QCoro::Task<base::Result<ElevenLabsUser, SpeechError>> AccountApi::fetchUser(ServiceAccess access,
                                                                             CancellationPtr cancellation) {
    const auto bytes = co_await m_gateway.get(access, QStringLiteral("/v1/user"), cancellation);
    if (!bytes)
        co_return base::fail(bytes.error());
    co_return ElevenLabsUser::fromJson(*bytes);
}

QCoro::Task<base::Result<QList<Voice>, SpeechError>> AccountApi::fetchVoices(ServiceAccess access) {
    const auto bytes = co_await m_gateway.get(access, QStringLiteral("/v1/voices"));
    if (!bytes)
        co_return base::fail(bytes.error());
    const auto response = VoicesResponse::fromJson(*bytes);
    if (!response)
        co_return base::fail(response.error());
    co_return response->voices;
}

} // namespace orlenta::speech
