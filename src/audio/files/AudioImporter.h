#pragma once

#include <functional>
#include <memory>
#include <stop_token>

#include <QtCore/QStringList>
#include <QtCore/QUrl>

#include "audio/files/AudioFileError.h"
#include "base/files/RegularFile.h"
#include "base/Result.h"

namespace orlenta::audio {

struct ImportedDirectionAudio {
    /// The stored file.
    QUrl url;
    double durationSeconds = 0.0;
};

enum class AudioImporterError {
    unsupportedFormat,
    importFailed,
    /// The caller called it off.
    cancelled,
};

/// How the caller follows a long import, and calls it off.
struct ImportControl {
    std::stop_token stop = {};
    /// Called on the importing thread with how much is done, 0 to 1, never less than before.
    std::function<void(double share)> progress = {};
};

/// What the user reads.
[[nodiscard]] QString description(AudioImporterError error);

/// Takes a file that the user dropped or chose as a direction take into a project: as it is where it is a mono WAV file
/// of 48 kHz and 24 bit, otherwise converted to one. Blocking; any thread.
class AudioImporter final {
public:
    AudioImporter() = delete;

    /// The extensions that a file panel offers, without a dot.
    [[nodiscard]] static QStringList panelExtensions();

    /// Stores `source` as `destination`, whose folder is made when missing and which is replaced when there. It appears
    /// whole or not at all, and a failure leaves nothing; the log says why. A file without a single frame fails.
    [[nodiscard]] static base::Result<ImportedDirectionAudio, AudioImporterError>
    importDirectionAudio(const QUrl &source, const QUrl &destination, const ImportControl &control = {});
    [[nodiscard]] static bool canCopyWithoutConversion(const QUrl &url);
    /// Called off, it fails and leaves nothing.
    [[nodiscard]] static base::Result<void, AudioFileError>
    convertToStandardDirectionWAV(const QUrl &source, const QUrl &destination, const ImportControl &control = {});
    [[nodiscard]] static base::Result<double, AudioFileError> durationSeconds(const QUrl &url);
    /// Takes hold of a dropped file, which is only lent for a moment: what it holds stays readable when its name is
    /// taken away. Refuses what could not be imported by its extension or is no regular file. Doesn't wait.
    [[nodiscard]] static base::Result<std::shared_ptr<const base::RegularFile>, AudioImporterError>
    openDroppedFile(const QUrl &url);
    /// Copies it to the temporary folder, from where it can be imported however long that takes. The caller imports the
    /// copy and removes it.
    [[nodiscard]] static base::Result<QUrl, AudioImporterError>
    stageDroppedFile(const std::shared_ptr<const base::RegularFile> &lent, const ImportControl &control = {});
};

} // namespace orlenta::audio
