#pragma once

#include <QtCore/QUrl>
#include <QtCore/QUuid>

#include "base/TypedId.h"

namespace orlenta::audio {

/// Identifies what is played: the id of any record. Playback doesn't need to know which kind.
class PlaybackLineId final {
public:
    PlaybackLineId() = default;
    template <typename Tag>
    PlaybackLineId(const base::TypedId<Tag> &id) : m_uuid(id.uuid()) {}

    [[nodiscard]] const QUuid &uuid() const { return m_uuid; }
    /// The same text as the record's own id.
    [[nodiscard]] QString text() const { return m_uuid.toString(QUuid::WithoutBraces).toUpper(); }

    friend bool operator==(const PlaybackLineId &, const PlaybackLineId &) = default;

private:
    QUuid m_uuid;
};

/// A line's audio to play.
struct PlaybackLine {
    PlaybackLineId id;
    QUrl url;

    friend bool operator==(const PlaybackLine &, const PlaybackLine &) = default;
};

} // namespace orlenta::audio
