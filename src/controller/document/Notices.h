#pragma once

#include <optional>

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>

namespace orlenta::controller {

/// Something the user should read and need not answer.
struct Notice {
    /// What it is about.
    enum class Kind {
        /// Audio couldn't be taken in or handed on. Stays until the user dismisses it.
        SpotError,
        /// Nothing plays while the microphone is on.
        PlayingRefused,
        /// Several files were dropped on a line, which has room for one.
        SeveralFilesDropped,
    };

    Kind kind = Kind::SpotError;
    QString text;

    friend bool operator==(const Notice &, const Notice &) = default;
};

/// The notices of one project that stand now, one of a kind. Main thread.
class Notices final : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// The newest, or none. Once it is dismissed or withdrawn, the one before it comes back.
    [[nodiscard]] std::optional<Notice> current() const;
    [[nodiscard]] std::optional<Notice> find(Notice::Kind kind) const;
    /// Shows the notice in place of the one of its kind.
    void post(const Notice &notice);
    /// Takes back a notice that no longer holds.
    void withdraw(Notice::Kind kind);

Q_SIGNALS:
    void changed();

private:
    /// The newest last.
    QList<Notice> m_notices;
};

} // namespace orlenta::controller
