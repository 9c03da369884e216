#pragma once

#include <QtCore/QAbstractListModel>
#include <QtCore/QList>

#include "speech/account/ServiceRecords.h"

namespace orlenta::controller {
class ProjectController;
}

namespace orlenta::speech {
class ElevenLabsService;
}

namespace orlenta::shell {

/// The account's voices that match the search, in the service's order. While no account has brought any, the voices
/// that the project has cast. Main thread.
class VoiceListModel final : public QAbstractListModel {
    Q_OBJECT
public:
    enum Role {
        VoiceIdRole = Qt::UserRole + 1,
        /// Accent, gender, age and use; may be empty.
        TraitsRole,
        /// The voice's colour in the project; invalid if it isn't cast.
        CastColorRole
    };

    VoiceListModel(controller::ProjectController &controller, speech::ElevenLabsService &service,
                   QObject *parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    /// The row of a voice, or -1 if the search hides it or the account doesn't have it.
    [[nodiscard]] int rowOf(const QString &voiceId) const;
    void setSearch(const QString &search);
    /// True if there are voices without a search.
    [[nodiscard]] bool hasVoices() const { return m_hasVoices; }

private:
    void reload();
    void followCast();

    controller::ProjectController &m_controller;
    speech::ElevenLabsService &m_service;
    QString m_search;
    bool m_hasVoices = false;
    QList<speech::Voice> m_voices;
    QHash<QString, QString> m_castColors;
};

/// "American · Female · Young · Narration · English"; leaves out unknown traits.
[[nodiscard]] QString voiceTraits(const speech::Voice &voice);

} // namespace orlenta::shell
