#pragma once

#include <functional>

#include <QtCore/QObject>

namespace orlenta::audio {

/// Arbitrates recording. The application records one take at a time, and plays nothing meanwhile, since the microphone
/// would pick it up. A recorder takes the microphone before it starts; that ends any running take and all playback. One
/// instance per sound server connection. Main thread.
class SharedMicrophone final : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// A take is running or about to start.
    [[nodiscard]] bool isInUse() const { return m_holder != nullptr; }
    /// Gives `holder` the microphone. `giveUp` is called when another holder takes the microphone; the take must
    /// end then, though its final samples may still arrive. Does nothing if `holder` already has the microphone.
    void take(QObject *holder, std::function<void()> giveUp);
    /// Call when the take has ended. Does nothing if `holder` no longer has the microphone. A destroyed holder releases
    /// it automatically.
    void giveBack(const QObject *holder);

Q_SIGNALS:
    void isInUseChanged();
    /// A take is starting: all playback must stop.
    void taken();

private:
    QObject *m_holder = nullptr;
    std::function<void()> m_giveUp;
    QMetaObject::Connection m_watching;
};

} // namespace orlenta::audio
