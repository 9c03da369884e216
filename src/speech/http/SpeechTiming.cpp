#include "speech/http/SpeechTiming.h"

#include <QtCore/QTimer>

namespace orlenta::speech {

SpeechTiming::SpeechTiming()
    : callLater([](std::chrono::milliseconds delay, std::function<void()> callback) {
          QTimer::singleShot(delay, Qt::PreciseTimer, std::move(callback));
      }) {}

} // namespace orlenta::speech
