#pragma once

#include <memory>

#include <QtCore/QObject>

namespace orlenta::speech {

/// Cancels the requests it was passed to, running and future ones alike: they end with SpeechError::cancelled(). Main
/// thread.
class Cancellation final : public QObject {
    Q_OBJECT
public:
    void cancel();
    [[nodiscard]] bool isCancelled() const { return m_cancelled; }

Q_SIGNALS:
    void cancelled();

private:
    bool m_cancelled = false;
};

using CancellationPtr = std::shared_ptr<Cancellation>;

} // namespace orlenta::speech
