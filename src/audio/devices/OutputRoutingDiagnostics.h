#pragma once

#include <optional>

#include <QtCore/QObject>
#include <QtCore/QString>

namespace orlenta::audio {

/// Remembers why sound last couldn't reach its output, for the settings to show. Not kept between runs. Main thread.
class OutputRoutingDiagnostics final : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    [[nodiscard]] const std::optional<QString> &lastRoutingErrorMessage() const { return m_message; }
    [[nodiscard]] const std::optional<QString> &lastRoutingErrorContext() const { return m_context; }

    /// `description` is the error's sentence for the user, `context` the place it came from.
    void recordRoutingFailure(const QString &description, const QString &context);
    void clearRoutingFailure(const QString &context);

Q_SIGNALS:
    void lastRoutingErrorChanged();

private:
    std::optional<QString> m_message;
    std::optional<QString> m_context;
};

} // namespace orlenta::audio
