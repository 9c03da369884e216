#pragma once

#include <memory>

#include <QtCore/QString>

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

    /// Whether speech comes from the voices of this machine instead of the account's.
    [[nodiscard]] bool useLocalVoices() const;
    void setUseLocalVoices(bool value);

    [[nodiscard]] QByteArray windowGeometry() const;
    void setWindowGeometry(const QByteArray &value);

private:
    std::unique_ptr<QSettings> m_settings;
};

} // namespace orlenta::base
