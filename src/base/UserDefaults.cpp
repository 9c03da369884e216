#include "base/UserDefaults.h"

#include <algorithm>

#include <QtCore/QSettings>
#include <QtCore/QStandardPaths>

namespace orlenta::base {
namespace {

QString text(const QSettings &settings, QLatin1String key, QLatin1String fallback) {
    return settings.value(key, QString(fallback)).toString();
}

void storeOrRemove(QSettings &settings, QLatin1String key, const QVariant &value, bool isToBeRemoved) {
    if (isToBeRemoved)
        settings.remove(key);
    else
        settings.setValue(key, value);
}

QLatin1String dialogFolderKey(DialogFolder dialog) {
    switch (dialog) {
    case DialogFolder::Open:
        return QLatin1String("lastOpenFolder");
    case DialogFolder::Import:
        return QLatin1String("lastImportFolder");
    case DialogFolder::Export:
        return QLatin1String("lastExportFolder");
    }
    Q_UNREACHABLE();
}

QString userFile() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/orlenta/orlenta.ini");
}

} // namespace

UserDefaults::UserDefaults() : UserDefaults(userFile()) {}
UserDefaults::UserDefaults(const QString &path) : m_settings(std::make_unique<QSettings>(path, QSettings::IniFormat)) {}
UserDefaults::~UserDefaults() = default;

QString UserDefaults::audioFormat() const {
    return text(*m_settings, QLatin1String("audioFormat"), QLatin1String("mp3"));
}
void UserDefaults::setAudioFormat(const QString &value) {
    m_settings->setValue(QStringLiteral("audioFormat"), value);
}
QString UserDefaults::mp3Quality() const {
    return text(*m_settings, QLatin1String("mp3Quality"), QLatin1String("192"));
}
void UserDefaults::setMp3Quality(const QString &value) {
    m_settings->setValue(QStringLiteral("mp3Quality"), value);
}
QString UserDefaults::wavBitDepth() const {
    return text(*m_settings, QLatin1String("wavBitDepth"), QLatin1String("24"));
}
void UserDefaults::setWavBitDepth(const QString &value) {
    m_settings->setValue(QStringLiteral("wavBitDepth"), value);
}
QString UserDefaults::wavSampleRate() const {
    return text(*m_settings, QLatin1String("wavSampleRate"), QLatin1String("48000"));
}
void UserDefaults::setWavSampleRate(const QString &value) {
    m_settings->setValue(QStringLiteral("wavSampleRate"), value);
}

QString UserDefaults::appearance() const {
    return text(*m_settings, QLatin1String("appearance"), QLatin1String("auto"));
}
void UserDefaults::setAppearance(const QString &value) {
    m_settings->setValue(QStringLiteral("appearance"), value);
}
double UserDefaults::uiScale() const {
    return std::clamp(m_settings->value(QStringLiteral("uiScale"), 1.0).toDouble(), 0.8, 1.5);
}
void UserDefaults::setUiScale(double value) {
    m_settings->setValue(QStringLiteral("uiScale"), value);
}

QString UserDefaults::multiLineSpotOutputMode() const {
    return text(*m_settings, QLatin1String("multiLineSpotOutputMode"), QLatin1String("continuous"));
}
void UserDefaults::setMultiLineSpotOutputMode(const QString &value) {
    m_settings->setValue(QStringLiteral("multiLineSpotOutputMode"), value);
}

QString UserDefaults::outputDeviceUID() const {
    return text(*m_settings, QLatin1String("outputDeviceUID"), QLatin1String());
}
void UserDefaults::setOutputDeviceUID(const QString &value) {
    m_settings->setValue(QStringLiteral("outputDeviceUID"), value);
}
QString UserDefaults::inputDeviceUID() const {
    return text(*m_settings, QLatin1String("inputDeviceUID"), QLatin1String());
}
void UserDefaults::setInputDeviceUID(const QString &value) {
    m_settings->setValue(QStringLiteral("inputDeviceUID"), value);
}

QString UserDefaults::pendingInputRouteRestoreDeviceUID() const {
    return text(*m_settings, QLatin1String("pendingInputRouteRestoreDeviceUID"), QLatin1String());
}
bool UserDefaults::setPendingInputRouteRestoreDeviceUID(const QString &value) {
    // A separate QSettings for the same file: a QSettings keeps reporting its first error forever.
    QSettings settings(m_settings->fileName(), QSettings::IniFormat);
    storeOrRemove(settings, QLatin1String("pendingInputRouteRestoreDeviceUID"), value, value.isEmpty());
    settings.sync();
    return settings.status() != QSettings::AccessError;
}

bool UserDefaults::hasCompletedFirstRunSetup() const {
    return m_settings->value(QStringLiteral("hasCompletedFirstRunSetup"), false).toBool();
}
void UserDefaults::setHasCompletedFirstRunSetup(bool value) {
    m_settings->setValue(QStringLiteral("hasCompletedFirstRunSetup"), value);
}
bool UserDefaults::showWelcomeOnEmptyState() const {
    return m_settings->value(QStringLiteral("showWelcomeOnEmptyState"), true).toBool();
}
void UserDefaults::setShowWelcomeOnEmptyState(bool value) {
    m_settings->setValue(QStringLiteral("showWelcomeOnEmptyState"), value);
}
std::chrono::milliseconds UserDefaults::initialToolTipDelay() const {
    return std::chrono::milliseconds(m_settings->value(QStringLiteral("NSInitialToolTipDelay"), 300).toInt());
}
void UserDefaults::setInitialToolTipDelay(std::chrono::milliseconds value) {
    m_settings->setValue(QStringLiteral("NSInitialToolTipDelay"), static_cast<qlonglong>(value.count()));
}

bool UserDefaults::useAppleIntelligenceForTags() const {
    return m_settings->value(QStringLiteral("useAppleIntelligenceForTags"), false).toBool();
}
void UserDefaults::setUseAppleIntelligenceForTags(bool value) {
    m_settings->setValue(QStringLiteral("useAppleIntelligenceForTags"), value);
}
QVariantMap UserDefaults::tagClassificationCache() const {
    return m_settings->value(QStringLiteral("tagClassificationCache")).toMap();
}
void UserDefaults::setTagClassificationCache(const QVariantMap &value) {
    m_settings->setValue(QStringLiteral("tagClassificationCache"), value);
}

QString UserDefaults::newProjectLocationSelection() const {
    return text(*m_settings, QLatin1String("newProjectLocationSelection"), QLatin1String("default"));
}
void UserDefaults::setNewProjectLocationSelection(const QString &value) {
    m_settings->setValue(QStringLiteral("newProjectLocationSelection"), value);
}
QStringList UserDefaults::newProjectRecentLocationPaths() const {
    return m_settings->value(QStringLiteral("newProjectRecentLocationPaths")).toStringList();
}
void UserDefaults::setNewProjectRecentLocationPaths(const QStringList &value) {
    m_settings->setValue(QStringLiteral("newProjectRecentLocationPaths"), value);
}
QByteArray UserDefaults::recentProjects() const {
    return m_settings->value(QStringLiteral("recentProjects")).toByteArray();
}
void UserDefaults::setRecentProjects(const QByteArray &value) {
    storeOrRemove(*m_settings, QLatin1String("recentProjects"), value, value.isEmpty());
}

QStringList UserDefaults::voiceFavorites() const {
    return m_settings->value(QStringLiteral("voiceFavorites")).toStringList();
}
void UserDefaults::setVoiceFavorites(const QStringList &value) {
    m_settings->setValue(QStringLiteral("voiceFavorites"), value);
}
QStringList UserDefaults::voiceRecents() const {
    return m_settings->value(QStringLiteral("voiceRecents")).toStringList();
}
void UserDefaults::setVoiceRecents(const QStringList &value) {
    m_settings->setValue(QStringLiteral("voiceRecents"), value);
}

bool UserDefaults::useLocalVoices() const {
    return m_settings->value(QStringLiteral("useLocalVoices"), false).toBool();
}
void UserDefaults::setUseLocalVoices(bool value) {
    m_settings->setValue(QStringLiteral("useLocalVoices"), value);
}

QStringList UserDefaults::compactTabs() const {
    return m_settings->value(QStringLiteral("compactTabs")).toStringList();
}
void UserDefaults::setCompactTabs(const QStringList &value) {
    storeOrRemove(*m_settings, QLatin1String("compactTabs"), value, value.isEmpty());
}

bool UserDefaults::sameTimeScale() const {
    return m_settings->value(QStringLiteral("sameTimeScale"), true).toBool();
}
void UserDefaults::setSameTimeScale(bool value) {
    m_settings->setValue(QStringLiteral("sameTimeScale"), value);
}

QString UserDefaults::dialogFolder(DialogFolder dialog) const {
    return text(*m_settings, dialogFolderKey(dialog), QLatin1String());
}
void UserDefaults::setDialogFolder(DialogFolder dialog, const QString &path) {
    m_settings->setValue(dialogFolderKey(dialog), path);
}

QByteArray UserDefaults::windowGeometry() const {
    return m_settings->value(QStringLiteral("windowGeometry")).toByteArray();
}
void UserDefaults::setWindowGeometry(const QByteArray &value) {
    m_settings->setValue(QStringLiteral("windowGeometry"), value);
}

} // namespace orlenta::base
