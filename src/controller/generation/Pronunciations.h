#pragma once

#include <optional>

#include <qcoro/qcorotask.h>
#include <QtCore/QObject>
#include <QtCore/QString>

#include "base/Result.h"
#include "model/PronunciationEntry.h"
#include "speech/http/ServiceAccess.h"
#include "speech/http/SpeechError.h"

namespace orlenta::speech {
class SpeechApi;
}

namespace orlenta::controller {

class ProjectController;

/// The project's pronunciation entries and their dictionary at the speech service. Main thread.
class Pronunciations final : public QObject {
    Q_OBJECT
public:
    explicit Pronunciations(ProjectController &controller) : m_controller(controller) {}

    [[nodiscard]] const QList<model::PronunciationEntry> &entries() const;
    /// The dictionary of the last upload. Kept in memory only, so a reopened project uploads again.
    [[nodiscard]] std::optional<QString> pronunciationDictionaryId() const { return m_dictionaryId; }
    [[nodiscard]] std::optional<QString> pronunciationDictionaryVersionId() const { return m_dictionaryVersionId; }
    /// The entries may differ from the uploaded dictionary.
    [[nodiscard]] bool pronunciationDirty() const;
    /// Incremented by every change of the entries.
    [[nodiscard]] int pronunciationRevision() const;
    /// Whether the current entries are uploaded to this endpoint and account.
    [[nodiscard]] bool isUploadedFor(const speech::ServiceAccess &access) const;

    void addPronunciationEntry(const model::PronunciationEntry &entry);
    void updatePronunciationEntry(const model::PronunciationEntry &entry);
    void deletePronunciationEntry(const model::PronunciationId &id);
    enum class Enabled { No, Yes };
    void setPronunciationEntryEnabled(const model::PronunciationId &id, Enabled enabled);

    /// The text with the words of simple entries replaced, except within tags.
    [[nodiscard]] QString applyingLocalPronunciation(const QString &text) const;
    /// Uploads the enabled entries. A failure changes nothing.
    QCoro::Task<base::Result<void, speech::SpeechError>> uploadPronunciationDictionary(speech::SpeechApi &speech,
                                                                                       speech::ServiceAccess access);
    /// Call when the service has lost the dictionary: the next use uploads it again.
    void forgetUploadedDictionary() { m_dictionaryHolder.reset(); }

private:
    void change(const QList<model::PronunciationEntry> &entries, const QString &actionName);
    [[nodiscard]] qsizetype indexOf(const model::PronunciationId &id) const;

    ProjectController &m_controller;
    std::optional<QString> m_dictionaryId;
    std::optional<QString> m_dictionaryVersionId;
    /// The endpoint and account of the last upload.
    std::optional<speech::ServiceAccess> m_dictionaryHolder;
};

} // namespace orlenta::controller
