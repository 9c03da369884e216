#pragma once

#include <QtCore/QUrl>
#include <QtCore/QUuid>

#include "base/TypedId.h"

namespace orlenta::audio {

/// Names what is played by the id of whatever record it belongs to; playback needs to know no more of it.
class PlaybackLineId final {
public:
    PlaybackLineId() = default;
    template <typename Tag>
    PlaybackLineId(const base::TypedId<Tag> &id) : m_uuid(id.uuid()) {}

    [[nodiscard]] const QUuid &uuid() const { return m_uuid; }
    /// As the record's own id has it.
    [[nodiscard]] QString text() const { return m_uuid.toString(QUuid::WithoutBraces).toUpper(); }

    friend bool operator==(const PlaybackLineId &, const PlaybackLineId &) = default;

private:
    QUuid m_uuid;
};

/// One line's audio to play.
struct PlaybackLine {
    PlaybackLineId id;
    QUrl url;

    friend bool operator==(const PlaybackLine &, const PlaybackLine &) = default;
};

} // namespace orlenta::audio
