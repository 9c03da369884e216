#include "shell/settings/MicrophoneSettings.h"

#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtCore/QStringList>

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

struct SettingsProgram {
    QString program;
    QStringList arguments;
};

QList<SettingsProgram> candidates() {
    const QString desktop = qEnvironmentVariable("XDG_CURRENT_DESKTOP");
    QList<SettingsProgram> programs;
    if (desktop.contains(QLatin1String("GNOME"), Qt::CaseInsensitive))
        programs.append({u"gnome-control-center"_s, {u"microphone"_s}});
    else if (desktop.contains(QLatin1String("KDE"), Qt::CaseInsensitive))
        programs.append({u"systemsettings"_s, {u"kcm_pulseaudio"_s}});
    else if (desktop.contains(QLatin1String("Cinnamon"), Qt::CaseInsensitive))
        programs.append({u"cinnamon-settings"_s, {u"sound"_s}});
    programs.append({u"pavucontrol"_s, {u"--tab=4"_s}});
    return programs;
}

} // namespace

bool MicrophoneSettings::open() {
    const QList<SettingsProgram> programs = candidates();
    for (const SettingsProgram &candidate : programs) {
        const QString path = QStandardPaths::findExecutable(candidate.program);
        if (!path.isEmpty() && QProcess::startDetached(path, candidate.arguments))
            return true;
    }
    return false;
}

} // namespace orlenta::shell
