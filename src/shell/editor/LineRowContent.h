#pragma once

#include <optional>

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtGui/QColor>

#include "controller/script/TextRange.h"
#include "model/Ids.h"

namespace orlenta::shell {

/// One entry of a line's take picker.
struct TakeChoice {
    model::TakeId id;
    /// "Take 2".
    QString title;
    /// When and by whom it was spoken.
    QString detail;

    friend bool operator==(const TakeChoice &, const TakeChoice &) = default;
};

enum class RowGeneration { NoVoice, Ready, Generating };

enum class RowPlayback {
    Idle,
    /// The playhead stands on this line, but nothing plays.
    Current,
    Playing
};

/// Which of a line's audio is meant.
enum class RowAudio { Generated, Direction };

/// A line's spoken direction, as its strip shows it.
struct DirectionContent {
    /// Place of the line in the tab, counted from 1.
    qsizetype number = 0;
    bool hasAudio = false;
    /// "0:04", or "--:--".
    QString duration;
    QList<float> waveform;
    RowPlayback playback = RowPlayback::Idle;
    /// 0 to 1.
    double progress = 0.0;
    bool isRecording = false;
    /// How long the take that runs is: "0:04".
    QString recordingTime;
    /// Why a take didn't come about; empty when there is nothing to tell.
    QString error;

    friend bool operator==(const DirectionContent &, const DirectionContent &) = default;
};

/// What decides a row's height, roughly.
struct LineOutline {
    qsizetype textLength = 0;
    bool hasAudio = false;
    bool hasDirection = false;
    bool hasNotes = false;
};

/// All that a row shows of its line.
struct LineRowContent {
    model::LineId id;
    /// Place in the tab, counted from 1.
    qsizetype number = 0;
    QString text;
    QString castName;
    QColor stripe;
    RowGeneration generation = RowGeneration::NoVoice;
    bool hasAudio = false;
    /// Generating it makes a further take.
    bool isSpoken = false;
    /// Also while none of them is in use, or the file of the one in use is missing; then there is no audio.
    QList<TakeChoice> takes;
    /// Index into `takes`, or -1.
    qsizetype activeTake = -1;
    /// "0:04", or "--:--".
    QString duration;
    QList<float> waveform;
    RowPlayback playback = RowPlayback::Idle;
    /// 0 to 1.
    double progress = 0.0;
    bool isVoiceDirected = false;
    /// Present while the strip is to be seen.
    std::optional<DirectionContent> direction;
    QString notes;
    bool isSelected = false;
    /// The line on which the keyboard acts.
    bool isCurrent = false;
    bool isEditing = false;
    int typingFlushVersion = 0;
    std::optional<controller::TextRange> textSelection;
};

} // namespace orlenta::shell
