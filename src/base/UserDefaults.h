#pragma once

#include <chrono>
#include <memory>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariantMap>

class QSettings;

namespace orlenta::base {

/// The user's preferences: one typed accessor for each key, backed by an INI file. Main thread; a worker is handed the
/// values it needs. Reads go to the store each time, so several windows agree without telling each other.
class UserDefaults final {
public:
    /// The user's own file, below the XDG configuration folder.
    UserDefaults();
    /// A file of the caller's choice.
    explicit UserDefaults(const QString &path);
    ~UserDefaults();
    UserDefaults(const UserDefaults &) = delete;
    UserDefaults &operator=(const UserDefaults &) = delete;

    /// "mp3" or "wav" as stored; whatever else stands in the file is passed on for the reader to judge.
    [[nodiscard]] QString audioFormat() const;
    void setAudioFormat(const QString &value);
    [[nodiscard]] QString mp3Quality() const;
    void setMp3Quality(const QString &value);
    [[nodiscard]] QString wavBitDepth() const;
    void setWavBitDepth(const QString &value);
    [[nodiscard]] QString wavSampleRate() const;
    void setWavSampleRate(const QString &value);

    /// "auto", "light" or "dark".
    [[nodiscard]] QString appearance() const;
    void setAppearance(const QString &value);
    /// Interface scale, 0.8 to 1.5.
    [[nodiscard]] double uiScale() const;
    void setUiScale(double value);

    /// "continuous" or "individual": how several selected lines are handed on.
    [[nodiscard]] QString multiLineSpotOutputMode() const;
    void setMultiLineSpotOutputMode(const QString &value);

    /// The chosen devices' UIDs; the empty text is the system default.
    [[nodiscard]] QString outputDeviceUID() const;
    void setOutputDeviceUID(const QString &value);
    [[nodiscard]] QString inputDeviceUID() const;
    void setInputDeviceUID(const QString &value);

    /// The default input to go back to, set exactly while a recording has changed it; empty otherwise. Setting it is in
    /// the file when the call returns, so that a crash can't leave the user on another microphone; false when it
    /// couldn't be written.
    [[nodiscard]] QString pendingInputRouteRestoreDeviceUID() const;
    bool setPendingInputRouteRestoreDeviceUID(const QString &value);

    [[nodiscard]] bool hasCompletedFirstRunSetup() const;
    void setHasCompletedFirstRunSetup(bool value);
    /// Whether the welcome window comes up when no other remains; true unless stored otherwise.
    [[nodiscard]] bool showWelcomeOnEmptyState() const;
    void setShowWelcomeOnEmptyState(bool value);
    [[nodiscard]] std::chrono::milliseconds initialToolTipDelay() const;
    void setInitialToolTipDelay(std::chrono::milliseconds value);

    [[nodiscard]] bool useAppleIntelligenceForTags() const;
    void setUseAppleIntelligenceForTags(bool value);
    /// Tag key to category word, as stored; the reader judges the values.
    [[nodiscard]] QVariantMap tagClassificationCache() const;
    void setTagClassificationCache(const QVariantMap &value);

    /// "default", "prompt" or "custom:" and a path.
    [[nodiscard]] QString newProjectLocationSelection() const;
    void setNewProjectLocationSelection(const QString &value);
    [[nodiscard]] QStringList newProjectRecentLocationPaths() const;
    void setNewProjectRecentLocationPaths(const QStringList &value);
    /// The encoded list; storing an empty value removes the key.
    [[nodiscard]] QByteArray recentProjects() const;
    void setRecentProjects(const QByteArray &value);

    /// Voice ids of the service.
    [[nodiscard]] QStringList voiceFavorites() const;
    void setVoiceFavorites(const QStringList &value);
    /// Newest first.
    [[nodiscard]] QStringList voiceRecents() const;
    void setVoiceRecents(const QStringList &value);

    /// Whether speech comes from the voices of this machine instead of the account's.
    [[nodiscard]] bool useLocalVoices() const;
    void setUseLocalVoices(bool value);

    [[nodiscard]] QByteArray windowGeometry() const;
    void setWindowGeometry(const QByteArray &value);

private:
    std::unique_ptr<QSettings> m_settings;
};

} // namespace orlenta::base
