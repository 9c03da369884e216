#pragma once

#include <optional>

#include <QtCore/QObject>
#include <QtCore/QString>

namespace orlenta::audio {

/// Remembers the last output routing failure for the settings window. Not persistent. Main thread.
class OutputRoutingDiagnostics final : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    [[nodiscard]] const std::optional<QString> &lastRoutingErrorMessage() const { return m_message; }
    [[nodiscard]] const std::optional<QString> &lastRoutingErrorContext() const { return m_context; }

    /// `description` is the error message for the user; `context` names the operation that failed.
    void recordRoutingFailure(const QString &description, const QString &context);
    void clearRoutingFailure(const QString &context);

Q_SIGNALS:
    void lastRoutingErrorChanged();

private:
    std::optional<QString> m_message;
    std::optional<QString> m_context;
};

} // namespace orlenta::audio
