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
    /// The caller cancelled the import.
    cancelled,
};

/// Lets the caller follow and cancel a long import.
struct ImportControl {
    std::stop_token stop = {};
    /// Called on the importing thread with the share done, 0 to 1. Never decreases.
    std::function<void(double share)> progress = {};
};

/// The message for the user.
[[nodiscard]] QString description(AudioImporterError error);

/// Imports a file that the user dropped or chose as direction. Mono WAV files of 48 kHz and 24 bit are copied;
/// everything else is converted to that format. Blocking; any thread.
class AudioImporter final {
public:
    AudioImporter() = delete;

    /// Extensions for the file dialog, without the dot.
    [[nodiscard]] static QStringList panelExtensions();

    /// Stores `source` as `destination`, creating the folder and replacing an existing file. A failure leaves nothing
    /// behind; the log has the reason. Files without any frames are refused.
    [[nodiscard]] static base::Result<ImportedDirectionAudio, AudioImporterError>
    importDirectionAudio(const QUrl &source, const QUrl &destination, const ImportControl &control = {});
    [[nodiscard]] static bool canCopyWithoutConversion(const QUrl &url);
    /// If cancelled, fails and leaves nothing behind.
    [[nodiscard]] static base::Result<void, AudioFileError>
    convertToStandardDirectionWAV(const QUrl &source, const QUrl &destination, const ImportControl &control = {});
    [[nodiscard]] static base::Result<double, AudioFileError> durationSeconds(const QUrl &url);
    /// Opens a dropped file, which may be deleted right after the drop; it stays readable through the descriptor.
    /// Refuses unsupported extensions and anything but regular files. Doesn't block.
    [[nodiscard]] static base::Result<std::shared_ptr<const base::RegularFile>, AudioImporterError>
    openDroppedFile(const QUrl &url);
    /// Copies the file to the temporary folder. The caller imports the copy, then removes it.
    [[nodiscard]] static base::Result<QUrl, AudioImporterError>
    stageDroppedFile(const std::shared_ptr<const base::RegularFile> &lent, const ImportControl &control = {});
};

} // namespace orlenta::audio
