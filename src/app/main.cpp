#include <QtCore/QCommandLineParser>
#include <QtCore/QFileInfo>
#include <QtCore/QLoggingCategory>
#include <QtWidgets/QApplication>

#include "base/CrashReport.h"
#include "base/LogFile.h"
#include "shell/application/OrlentaApp.h"
#include "shell/demo/DemoDriver.h"

using namespace Qt::StringLiterals;

int main(int argc, char **argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"orlenta"_s);
    QApplication::setApplicationDisplayName(u"Orlenta"_s);
    QApplication::setApplicationVersion(QStringLiteral(ORLENTA_VERSION));
    QApplication::setDesktopFileName(u"com.orlenta.Orlenta"_s);

    QCommandLineParser parser;
    parser.setApplicationDescription(u"Casts, directs and generates speech for audio post-production."_s);
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(u"project"_s, u"Project folders or files to open."_s, u"[project...]"_s);
    const QCommandLineOption demo(
        u"demo"_s, u"Drives the window through the main job and leaves the results in FOLDER."_s, u"FOLDER"_s);
    parser.addOption(demo);
    parser.process(application);

    const orlenta::base::LogFile log;
    orlenta::base::CrashReport::install(QFileInfo(orlenta::base::LogFile::defaultPath()).path());
    const bool isDemo = parser.isSet(demo);
    // The demo tour answers file dialogs, which works only with Qt's own dialogs.
    if (isDemo) {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        QLoggingCategory::setFilterRules(u"*.debug=false\n*.info=false"_s);
    }
    orlenta::shell::OrlentaApp app;
    app.start(parser.positionalArguments());
    if (isDemo)
        return orlenta::shell::DemoDriver(app, parser.value(demo)).run();
    return QApplication::exec();
}
