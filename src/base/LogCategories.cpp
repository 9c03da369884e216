#include "base/LogCategories.h"

namespace orlenta::base::log {

Q_LOGGING_CATEGORY(rateLimit, "elevenlabs.rate_limit", QtInfoMsg)
Q_LOGGING_CATEGORY(usage, "elevenlabs.usage", QtInfoMsg)
Q_LOGGING_CATEGORY(credentials, "elevenlabs.credentials", QtInfoMsg)
Q_LOGGING_CATEGORY(concatenation, "audio.concatenation", QtInfoMsg)
Q_LOGGING_CATEGORY(audioDebug, "TCCTrace", QtInfoMsg)
Q_LOGGING_CATEGORY(project, "project", QtInfoMsg)

} // namespace orlenta::base::log
