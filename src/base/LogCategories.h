#pragma once

#include <QtCore/QLoggingCategory>

/// Log categories, controlled by QT_LOGGING_RULES like any Qt category.
namespace orlenta::base::log {

Q_DECLARE_LOGGING_CATEGORY(rateLimit)     // elevenlabs.rate_limit
Q_DECLARE_LOGGING_CATEGORY(usage)         // elevenlabs.usage
Q_DECLARE_LOGGING_CATEGORY(credentials)   // elevenlabs.credentials
Q_DECLARE_LOGGING_CATEGORY(concatenation) // audio.concatenation
Q_DECLARE_LOGGING_CATEGORY(audioDebug)    // TCCTrace
Q_DECLARE_LOGGING_CATEGORY(project)       // project: windows, store and generation

} // namespace orlenta::base::log
