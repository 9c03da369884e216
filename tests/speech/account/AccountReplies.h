#pragma once

#include <QtCore/QByteArray>

#include "support/LoopbackServer.h"

namespace orlenta::speech {

/// A user record with `characterCount` of 10,000 characters used.
[[nodiscard]] inline QByteArray userJson(int characterCount, const QByteArray &tier = "free") {
    return R"({"user_id":"u1","first_name":null,"is_new_user":false,"subscription":{"tier":")" + tier +
           R"(","character_count":)" + QByteArray::number(characterCount) +
           R"(,"character_limit":10000,"status":"active"}})";
}

[[nodiscard]] inline QByteArray voicesJson() {
    return R"({"voices":[{"voice_id":"v1","name":"Rachel","labels":{"gender":"female","age":null}},)"
           R"({"voice_id":"v2","name":"Adam","category":"premade"}],"has_more":true})";
}

/// Makes `server` answer like a working account.
inline void answerAccount(test::LoopbackServer &server) {
    server.answer("/v1/user", test::LoopbackServer::json(userJson(100)));
    server.answer("/v1/voices", test::LoopbackServer::json(voicesJson()));
}

} // namespace orlenta::speech
