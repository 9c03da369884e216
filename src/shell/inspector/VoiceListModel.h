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

/// The account's voices in the service's order, as far as they match the search. Main thread.
class VoiceListModel final : public QAbstractListModel {
    Q_OBJECT
public:
    enum Role {
        VoiceIdRole = Qt::UserRole + 1,
        /// Who the voice is: accent, gender, age, use; may be empty.
        TraitsRole,
        /// The colour of the project's voice; invalid for a voice that isn't cast.
        CastColorRole
    };

    VoiceListModel(controller::ProjectController &controller, speech::ElevenLabsService &service,
                   QObject *parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    /// The row of a voice, or -1 when the search hides it or the account lacks it.
    [[nodiscard]] int rowOf(const QString &voiceId) const;
    void setSearch(const QString &search);

private:
    void reload();

    controller::ProjectController &m_controller;
    speech::ElevenLabsService &m_service;
    QString m_search;
    QList<speech::Voice> m_voices;
    QHash<QString, QString> m_castColors;
};

/// "American · Female · Young · Narration · English", as far as the service tells.
[[nodiscard]] QString voiceTraits(const speech::Voice &voice);

} // namespace orlenta::shell
