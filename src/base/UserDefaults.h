#pragma once

#include <chrono>
#include <memory>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariantMap>

class QSettings;

namespace orlenta::base {

/// What a file dialog is for. Each kind starts in the folder it was last used in.
enum class DialogFolder { Open, Import, Export };

/// The user's preferences: one typed accessor per key, backed by an INI file. Reads always go to the store, so windows
/// stay in sync without notifying each other. Main thread; pass workers the values they need.
class UserDefaults final {
public:
    /// The user's own file in the XDG configuration folder.
    UserDefaults();
    /// The file at `path`.
    explicit UserDefaults(const QString &path);
    ~UserDefaults();
    UserDefaults(const UserDefaults &) = delete;
    UserDefaults &operator=(const UserDefaults &) = delete;

    /// "mp3" or "wav". Returned as stored, so callers must handle any other text.
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

    /// "continuous" or "individual": how several selected lines are handed over.
    [[nodiscard]] QString multiLineSpotOutputMode() const;
    void setMultiLineSpotOutputMode(const QString &value);

    /// UIDs of the chosen devices; empty means the system default.
    [[nodiscard]] QString outputDeviceUID() const;
    void setOutputDeviceUID(const QString &value);
    [[nodiscard]] QString inputDeviceUID() const;
    void setInputDeviceUID(const QString &value);

    /// The default input to restore. Set only while a recording has changed it, empty otherwise. The setter returns
    /// after the value is in the file, so a crash can't leave the user on another microphone; it returns false if
    /// writing failed.
    [[nodiscard]] QString pendingInputRouteRestoreDeviceUID() const;
    bool setPendingInputRouteRestoreDeviceUID(const QString &value);

    [[nodiscard]] bool hasCompletedFirstRunSetup() const;
    void setHasCompletedFirstRunSetup(bool value);
    /// Whether the welcome window opens when no other window remains. Defaults to true.
    [[nodiscard]] bool showWelcomeOnEmptyState() const;
    void setShowWelcomeOnEmptyState(bool value);
    [[nodiscard]] std::chrono::milliseconds initialToolTipDelay() const;
    void setInitialToolTipDelay(std::chrono::milliseconds value);

    [[nodiscard]] bool useAppleIntelligenceForTags() const;
    void setUseAppleIntelligenceForTags(bool value);
    /// Maps tag keys to category words. Returned as stored, so callers must validate the values.
    [[nodiscard]] QVariantMap tagClassificationCache() const;
    void setTagClassificationCache(const QVariantMap &value);

    /// "default", "prompt", or "custom:" followed by a path.
    [[nodiscard]] QString newProjectLocationSelection() const;
    void setNewProjectLocationSelection(const QString &value);
    [[nodiscard]] QStringList newProjectRecentLocationPaths() const;
    void setNewProjectRecentLocationPaths(const QStringList &value);
    /// The encoded list. Storing an empty value removes the key.
    [[nodiscard]] QByteArray recentProjects() const;
    void setRecentProjects(const QByteArray &value);

    /// The service's voice ids.
    [[nodiscard]] QStringList voiceFavorites() const;
    void setVoiceFavorites(const QStringList &value);
    /// Newest first.
    [[nodiscard]] QStringList voiceRecents() const;
    void setVoiceRecents(const QStringList &value);

    /// Whether to use this machine's voices instead of the account's.
    [[nodiscard]] bool useLocalVoices() const;
    void setUseLocalVoices(bool value);

    /// Ids of the tabs that show compact rows, latest first.
    [[nodiscard]] QStringList compactTabs() const;
    void setCompactTabs(const QStringList &value);
    /// Whether the waveforms of a tab share one time scale. Defaults to true.
    [[nodiscard]] bool sameTimeScale() const;
    void setSameTimeScale(bool value);
    /// Empty if there is none yet.
    [[nodiscard]] QString dialogFolder(DialogFolder dialog) const;
    void setDialogFolder(DialogFolder dialog, const QString &path);

    [[nodiscard]] QByteArray windowGeometry() const;
    void setWindowGeometry(const QByteArray &value);

private:
    std::unique_ptr<QSettings> m_settings;
};

} // namespace orlenta::base
