#pragma once

#include <optional>

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtGui/QColor>

#include "controller/script/TextRange.h"
#include "model/Ids.h"

namespace orlenta::shell {

enum class RowGeneration {
    NoVoice,
    Ready,
    /// Queued, but not yet its turn.
    Waiting,
    Generating
};

/// How much room a row takes: a card with all of its parts, or one line of text with columns.
enum class RowDensity { Comfortable, Compact };

/// What a line has or lacks for its audio. A row shows it as a mark with a word, and shows nothing while all is well.
enum class RowStatus { Done, NoVoice, NotGenerated, Waiting, Generating, Stale, FileMissing };

enum class RowPlayback {
    Idle,
    /// The playhead is in this audio, but nothing plays.
    Current,
    Playing
};

/// The line's voice, mode and generation state.
struct LineHeaderContent {
    QString castName;
    /// The cast voice's colour; invalid without a voice.
    QColor stripe;
    RowGeneration generation = RowGeneration::NoVoice;
    /// "5,312 of 5,000 characters" if the text is longer than its model takes; empty otherwise.
    QString overrun;
    /// The line has been spoken: generating adds another take.
    bool isSpoken = false;
    bool isVoiceDirected = false;
    bool hasNotes = false;
    bool isPlaying = false;
    bool isRecording = false;

    friend bool operator==(const LineHeaderContent &, const LineHeaderContent &) = default;
};

struct LineTextContent {
    QString text;
    bool isEditing = false;
    /// Incremented whenever typing has become a step of the project's undo.
    int typingFlushVersion = 0;
    std::optional<controller::TextRange> selection;
};

/// Audio that the row can play.
struct AudioContent {
    /// "0:04", or "--:--".
    QString duration;
    /// "0.9 seconds", or empty while the duration is unknown.
    QString exactDuration;
    /// The same as a number; 0 until it is known.
    double seconds = 0.0;
    /// What the room for the waveform stands for, in seconds, so that takes can be compared; 0 if each fills its room.
    double laneSeconds = 0.0;
    /// Peaks, 0 to 1; empty until they are known.
    QList<float> waveform;
    RowPlayback playback = RowPlayback::Idle;
    /// 0 to 1.
    double progress = 0.0;

    friend bool operator==(const AudioContent &, const AudioContent &) = default;
};

/// The line's takes and the active one.
struct TakesContent {
    qsizetype count = 0;
    /// Index of the active take, or -1. There is no audio if its file is missing.
    qsizetype active = -1;
    std::optional<AudioContent> audio;

    friend bool operator==(const TakesContent &, const TakesContent &) = default;
};

/// A line's spoken direction.
struct DirectionContent {
    std::optional<AudioContent> audio;
    bool isRecording = false;
    /// Length of the running take, such as "0:04".
    QString recordingTime;
    /// Why the last recording failed; empty otherwise.
    QString error;

    friend bool operator==(const DirectionContent &, const DirectionContent &) = default;
};

/// Everything that a row shows of its line.
struct LineRowContent {
    model::LineId id;
    /// Position in the tab, counted from 1.
    qsizetype number = 0;
    LineHeaderContent header;
    LineTextContent text;
    TakesContent takes;
    RowStatus status = RowStatus::Done;
    /// The status in words, such as "Voice changed"; empty when done.
    QString statusWords;
    /// Present while the strip is visible.
    std::optional<DirectionContent> direction;
    QString notes;
    RowDensity density = RowDensity::Comfortable;
    bool isSelected = false;
    /// The row above or below is selected as well, so that both share one outline.
    bool joinsAbove = false;
    bool joinsBelow = false;
    /// The current line, on which the keyboard acts.
    bool isCurrent = false;
};

} // namespace orlenta::shell
