#pragma once

#include <optional>

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>

namespace orlenta::controller {

/// A message that needs no answer.
struct Notice {
    enum class Kind {
        /// Audio couldn't be imported or exported. Stays until dismissed.
        SpotError,
        /// Playback is refused while the microphone is recording.
        PlayingRefused,
        /// Several files were dropped on a line, which takes only one.
        SeveralFilesDropped,
        /// A recording couldn't be completed or stored. Its file is kept.
        RecordingKept,
        /// Generated takes couldn't be stored in the project. Their files are kept.
        TakesUnstored,
        ExportFinished,
        /// The project's folder can't be written to.
        ReadOnlyProject,
    };

    Kind kind = Kind::SpotError;
    QString text;
    /// The folder of the files in question; empty if there are none.
    QString folder = {};

    friend bool operator==(const Notice &, const Notice &) = default;
};

/// The current notices of one project, at most one of each kind. Main thread.
class Notices final : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// The newest notice. When it is dismissed or withdrawn, the previous one returns.
    [[nodiscard]] std::optional<Notice> current() const;
    [[nodiscard]] std::optional<Notice> find(Notice::Kind kind) const;
    /// Shows the notice, replacing an earlier one of its kind.
    void post(const Notice &notice);
    /// Removes a notice that no longer applies.
    void withdraw(Notice::Kind kind);
    /// Says that a command had nothing to act on. Unlike a notice, it doesn't stand until it is dismissed.
    void refuse(const QString &reason) { Q_EMIT refused(reason); }

Q_SIGNALS:
    void changed();
    void refused(const QString &reason);

private:
    /// Newest last.
    QList<Notice> m_notices;
};

} // namespace orlenta::controller
