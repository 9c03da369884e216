#pragma once

#include <mutex>

#include <QtCore/QLoggingCategory>
#include <QtCore/QStringList>

namespace orlenta::testing {

/// Collects the log during its lifetime, from any thread. Only one at a time: the message handler is global.
class KeptLog final {
public:
    KeptLog() {
        const std::scoped_lock lock(s_guard);
        s_lines.clear();
        m_before = qInstallMessageHandler(&KeptLog::keep);
    }
    ~KeptLog() { qInstallMessageHandler(m_before); }
    KeptLog(const KeptLog &) = delete;
    KeptLog &operator=(const KeptLog &) = delete;

    /// The lines that contain `text`.
    [[nodiscard]] QStringList lines(const QString &text = {}) const {
        const std::scoped_lock lock(s_guard);
        return s_lines.filter(text);
    }

private:
    static void keep(QtMsgType, const QMessageLogContext &, const QString &message) {
        const std::scoped_lock lock(s_guard);
        s_lines.append(message);
    }

    static inline std::mutex s_guard;
    static inline QStringList s_lines;
    QtMessageHandler m_before = nullptr;
};

} // namespace orlenta::testing
