#pragma once

#include <optional>

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtGui/QColor>

#include "controller/script/TextRange.h"
#include "model/Ids.h"

namespace orlenta::shell {

enum class RowGeneration { NoVoice, Ready, Generating };

enum class RowPlayback {
    Idle,
    /// The playhead stands in this sound, but nothing plays.
    Current,
    Playing
};

/// Who speaks the line and how its speech stands.
struct LineHeaderContent {
    QString castName;
    /// The cast voice's colour; invalid without a voice.
    QColor stripe;
    RowGeneration generation = RowGeneration::NoVoice;
    /// Generating it makes a further take.
    bool isSpoken = false;
    bool isVoiceDirected = false;
    bool hasNotes = false;

    friend bool operator==(const LineHeaderContent &, const LineHeaderContent &) = default;
};

struct LineTextContent {
    QString text;
    bool isEditing = false;
    /// Counts up whenever what was typed has become a step of the project's undo.
    int typingFlushVersion = 0;
    std::optional<controller::TextRange> selection;
};

/// A sound that can be heard in the row.
struct AudioContent {
    /// "0:04", or "--:--".
    QString duration;
    /// Peaks, 0 to 1; empty until they are known.
    QList<float> waveform;
    RowPlayback playback = RowPlayback::Idle;
    /// 0 to 1.
    double progress = 0.0;

    friend bool operator==(const AudioContent &, const AudioContent &) = default;
};

/// The line's takes and the one in use.
struct TakesContent {
    qsizetype count = 0;
    /// Place of the one in use, from 0, or -1. Its file may be missing; then there is no audio.
    qsizetype active = -1;
    std::optional<AudioContent> audio;

    friend bool operator==(const TakesContent &, const TakesContent &) = default;
};

/// A line's spoken direction.
struct DirectionContent {
    std::optional<AudioContent> audio;
    bool isRecording = false;
    /// How long the take that runs is: "0:04".
    QString recordingTime;
    /// Why a take didn't come about; empty when there is nothing to tell.
    QString error;

    friend bool operator==(const DirectionContent &, const DirectionContent &) = default;
};

/// All that a row shows of its line, by its parts.
struct LineRowContent {
    model::LineId id;
    /// Place in the tab, counted from 1.
    qsizetype number = 0;
    LineHeaderContent header;
    LineTextContent text;
    TakesContent takes;
    /// Present while the strip is to be seen.
    std::optional<DirectionContent> direction;
    QString notes;
    bool isSelected = false;
    /// The line on which the keyboard acts.
    bool isCurrent = false;
};

} // namespace orlenta::shell
