#pragma once

#include <functional>

#include <QtCore/QObject>

namespace orlenta::audio {

/// Who records: one take at a time in the whole application, and nothing plays while it runs, since the microphone
/// would hear it. Whoever is about to record takes the microphone; that ends the take that runs and all playback. One
/// for the application. Main thread.
class SharedMicrophone final : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Somebody records or is about to.
    [[nodiscard]] bool isInUse() const { return m_holder != nullptr; }
    /// Takes it for `holder`. `giveUp` is called when somebody else takes it: the take has to end at once, its last
    /// samples may still come. Nothing happens to who has it already.
    void take(QObject *holder, std::function<void()> giveUp);
    /// The take has ended. Nothing happens to who doesn't have it any more; a holder that is destroyed gives it back.
    void giveBack(const QObject *holder);

Q_SIGNALS:
    void isInUseChanged();
    /// A take begins: whatever plays has to stop.
    void taken();

private:
    QObject *m_holder = nullptr;
    std::function<void()> m_giveUp;
    QMetaObject::Connection m_watching;
};

} // namespace orlenta::audio
