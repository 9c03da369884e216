#include "shell/inspector/VoiceListModel.h"

#include <algorithm>

#include <QtCore/QLocale>
#include <QtGui/QColor>

#include "controller/ProjectController.h"
#include "shell/controls/ShownText.h"
#include "speech/account/ElevenLabsService.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

bool matchesVoiceSearch(const speech::Voice &voice, const QString &search) {
    return search.isEmpty() || voice.name.contains(search, Qt::CaseInsensitive) ||
           voice.description.value_or(QString()).contains(search, Qt::CaseInsensitive) ||
           voiceTraits(voice).contains(search, Qt::CaseInsensitive);
}

QHash<QString, QString> castColors(const model::Project &project) {
    QHash<QString, QString> colors;
    for (const model::ProjectVoice &voice : project.voices)
        colors.insert(voice.elevenLabsVoiceId, voice.colorStripeHex);
    return colors;
}

QList<speech::Voice> castVoices(const model::Project &project) {
    QList<speech::Voice> voices;
    for (const model::ProjectVoice &cast : project.voices) {
        speech::Voice voice;
        voice.voiceId = cast.elevenLabsVoiceId;
        voice.name = shownName(cast.displayName);
        if (!voice.voiceId.isEmpty())
            voices.append(voice);
    }
    return voices;
}

} // namespace

QString voiceTraits(const speech::Voice &voice) {
    QStringList traits;
    const QHash<QString, QString> labels = voice.labels.value_or(QHash<QString, QString>());
    for (const QLatin1String key :
         {QLatin1String("accent"), QLatin1String("gender"), QLatin1String("age"), QLatin1String("use_case")}) {
        QString trait = labels.value(key).trimmed();
        if (trait.isEmpty())
            continue;
        trait.replace(u'_', u' ');
        trait[0] = trait.at(0).toUpper();
        traits.append(trait);
    }
    if (const QString code = labels.value(u"language"_s); !code.isEmpty()) {
        const QLocale::Language language = QLocale(code).language();
        traits.append(language == QLocale::C ? code : QLocale::languageToString(language));
    }
    return traits.isEmpty() ? voice.description.value_or(QString()) : traits.join(u" · "_s);
}

VoiceListModel::VoiceListModel(controller::ProjectController &controller, speech::ElevenLabsService &service,
                               QObject *parent)
    : QAbstractListModel(parent), m_controller(controller), m_service(service) {
    connect(&service, &speech::ElevenLabsService::voicesChanged, this, &VoiceListModel::reload);
    controller::onAnyChange<controller::VoicesChanged>(controller, this, [this] { followCast(); });
    reload();
}

void VoiceListModel::followCast() {
    if (m_service.voices().isEmpty())
        return reload();
    QHash<QString, QString> colors = castColors(m_controller.project());
    if (colors == m_castColors)
        return;
    m_castColors = std::move(colors);
    if (!m_voices.isEmpty())
        Q_EMIT dataChanged(index(0), index(rowCount() - 1), {CastColorRole});
}

int VoiceListModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_voices.size());
}

QVariant VoiceListModel::data(const QModelIndex &index, int role) const {
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const speech::Voice &voice = m_voices.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return voice.name;
    case Qt::ToolTipRole:
        return shownTip(voice.description.value_or(QString()).isEmpty() ? voice.name : *voice.description);
    case Qt::AccessibleDescriptionRole:
    case TraitsRole:
        return voiceTraits(voice);
    case VoiceIdRole:
        return voice.voiceId;
    case CastColorRole:
        return QColor(m_castColors.value(voice.voiceId));
    default:
        return {};
    }
}

int VoiceListModel::rowOf(const QString &voiceId) const {
    const auto found =
        std::find_if(m_voices.begin(), m_voices.end(), [&](const auto &voice) { return voice.voiceId == voiceId; });
    return found == m_voices.end() ? -1 : static_cast<int>(found - m_voices.begin());
}

void VoiceListModel::setSearch(const QString &search) {
    const QString trimmed = search.trimmed();
    if (trimmed == m_search)
        return;
    m_search = trimmed;
    reload();
}

void VoiceListModel::reload() {
    beginResetModel();
    m_voices = m_service.voices().isEmpty() ? castVoices(m_controller.project()) : m_service.voices();
    m_hasVoices = !m_voices.isEmpty();
    m_voices.removeIf([this](const speech::Voice &voice) { return !matchesVoiceSearch(voice, m_search); });
    m_castColors = castColors(m_controller.project());
    endResetModel();
}

} // namespace orlenta::shell
