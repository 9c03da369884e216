#pragma once

#include <memory>

#include <QtCore/QString>
#include <QtCore/QUrl>

#include "speech/http/OwnedFile.h"

namespace orlenta::speech {

/// A WAV file of generated speech in the private caches folder. It is deleted with the last copy of this value, unless
/// keep() was called.
class GeneratedAudio final {
public:
    explicit GeneratedAudio(const QString &path) : m_file(std::make_shared<OwnedFile>(path)) {}

    [[nodiscard]] const QString &path() const { return m_file->path(); }
    /// Leaves the file in place; from now on it belongs to whoever has its path.
    void keep() const { m_file->keep(); }

private:
    std::shared_ptr<OwnedFile> m_file;
};

/// The audio of a voice preview and its sample rate in hertz. The file belongs to the caller.
struct GeneratedPreviewAudio {
    QUrl fileURL;
    int sampleRateHz = 0;
};

} // namespace orlenta::speech
