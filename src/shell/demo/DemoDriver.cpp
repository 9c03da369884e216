#include "shell/demo/DemoDriver.h"

#include <algorithm>

#include <QtCore/QDeadlineTimer>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QPointer>
#include <QtCore/QTextStream>
#include <QtCore/QTimer>
#include <QtGui/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolButton>

#include "controller/generation/GenerationPlan.h"
#include "controller/script/Selection.h"
#include "controller/takes/LineRuntime.h"
#include "shell/account/AccountDialog.h"
#include "shell/application/OrlentaApp.h"
#include "shell/application/SampleProject.h"
#include "shell/controls/ToggleSwitch.h"
#include "shell/editor/ScriptEditor.h"
#include "shell/editor/ScriptToolbar.h"
#include "shell/menus/ProjectActions.h"
#include "shell/theme/Theme.h"
#include "shell/windows/ExportFlow.h"
#include "shell/windows/ProjectToolbar.h"
#include "shell/windows/ProjectWindow.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace orlenta::shell {
namespace {

constexpr auto shortWait = 10s;
constexpr auto startWait = 60s;
constexpr auto generationWait = 180s;

QTextStream &demoOutput() {
    static QTextStream stream(stdout);
    return stream;
}

} // namespace

DemoDriver::DemoDriver(OrlentaApp &app, const QString &folder) : m_app(app), m_folder(QDir(folder).absolutePath()) {}

int DemoDriver::run() {
    const bool usedLocalVoices = m_app.defaults().useLocalVoices();
    struct Step {
        QString title;
        bool (DemoDriver::*perform)();
    };
    const QList<Step> steps{{u"open the sample project"_s, &DemoDriver::openSample},
                            {u"switch the local voices on"_s, &DemoDriver::switchLocalVoicesOn},
                            {u"generate all lines"_s, &DemoDriver::generateAllLines},
                            {u"audition a take"_s, &DemoDriver::audition},
                            {u"undo and redo"_s, &DemoDriver::undoAndRedo},
                            {u"save"_s, &DemoDriver::save},
                            {u"export the selection"_s, &DemoDriver::exportSelection},
                            {u"take pictures"_s, &DemoDriver::takePictures}};
    const auto failed = std::find_if(steps.begin(), steps.end(), [this](const Step &step) {
        if (!(this->*step.perform)())
            return true;
        demoOutput() << "Done: " << step.title << Qt::endl;
        return false;
    });
    if (failed != steps.end())
        QTextStream(stderr) << "Could not " << failed->title << ": " << m_failure << Qt::endl;
    // Restore the user's choice of voices.
    m_app.localVoices().shutDown();
    m_app.defaults().setUseLocalVoices(usedLocalVoices);
    return failed == steps.end() ? 0 : 1;
}

bool DemoDriver::openSample() {
    const QString project = m_folder + u"/project"_s;
    const auto shipped = SampleProject::shippedFolder();
    if (!shipped)
        return fail(u"the sample project isn't installed"_s);
    if (!QDir().mkpath(m_folder))
        return fail(QStringLiteral("couldn't create %1").arg(m_folder));
    if (const auto copied = SampleProject::copy(*shipped, project); !copied)
        return fail(copied.error().description());
    if (!m_app.windows().openProject(project))
        return fail(u"the copied project didn't open"_s);
    m_project = m_app.windows().open().back();
    made(project);
    ProjectWindow &window = m_project->window();
    // Start with light pictures, whatever the desktop prefers.
    Theme::apply(Appearance::Light);
    return waitFor([&window] { return window.isVisible(); }, shortWait, u"the window to appear"_s) &&
           picture(window, u"1-opened-light"_s);
}

bool DemoDriver::switchLocalVoicesOn() {
    ProjectWindow &window = m_project->window();
    if (!press(window.toolbar().accountButton(), u"account"_s))
        return false;
    auto *account = window.findChild<AccountDialog *>();
    if (account == nullptr)
        return fail(u"the account panel didn't open"_s);
    if (!account->localVoicesSwitch()->isChecked() && !press(account->localVoicesSwitch(), u"local voices"_s))
        return false;
    const speech::ElevenLabsService &service = m_project->elevenLabsService();
    const speech::LocalVoices &voices = m_app.localVoices();
    const auto isDecided = [&service, &voices] {
        return voices.state() == speech::LocalVoices::State::Failed || !service.voices().isEmpty();
    };
    if (!waitFor(isDecided, startWait, u"the local voices"_s))
        return false;
    if (voices.state() == speech::LocalVoices::State::Failed)
        return fail(voices.failureReason());
    return picture(*account, u"2-account-light"_s) && closeDialog(account, u"Close"_s);
}

bool DemoDriver::generateAllLines() {
    if (!generateShownTab())
        return false;
    const qsizetype tabs = m_project->controller().project().tabs.size();
    for (qsizetype i = 1; i < tabs; ++i) {
        m_project->window().actions()[CommandId::NextTab]->trigger();
        if (!generateShownTab())
            return false;
    }
    for (qsizetype i = 1; i < tabs; ++i)
        m_project->window().actions()[CommandId::PreviousTab]->trigger();
    return true;
}

bool DemoDriver::generateShownTab() {
    controller::LineGenerator &generator = m_project->session().generator();
    if (!selectWholeTab() || !press(editorButton({u"Generate"_s, u"Regenerate"_s}), u"Generate"_s))
        return false;
    const auto isOver = [&] {
        if (!m_hasBatchPicture && linesToGenerate() <= 3)
            m_hasBatchPicture = picture(m_project->window(), u"3-generating-light"_s);
        return !generator.queue().isActive() || generator.generateError().has_value();
    };
    if (!waitFor(isOver, generationWait, u"the takes"_s))
        return false;
    if (generator.generateError())
        return fail(*generator.generateError());
    if (const qsizetype missing = linesToGenerate(); missing > 0)
        return fail(QStringLiteral("%1 lines have no take").arg(missing));
    return true;
}

bool DemoDriver::audition() {
    controller::ProjectController &controller = m_project->controller();
    audio::PlaybackController &playback = m_project->playbackController();
    controller.selection().selectAlone(controller.scriptLineIds().first());
    QString reason;
    const auto listening = QObject::connect(&playback, &audio::PlaybackController::playbackFailed, &playback,
                                            [&reason](const QString &text) { reason = text; });
    const bool heard =
        press(editorButton({u"Play"_s}), u"Play"_s) &&
        waitFor([&] { return playback.playbackProgress() > 0.3 || !reason.isEmpty(); }, shortWait, u"the sound"_s);
    QObject::disconnect(listening);
    if (!heard)
        return false;
    if (!reason.isEmpty())
        return fail(reason);
    return picture(m_project->window(), u"4-playing-light"_s) &&
           waitFor([&playback] { return !playback.isPlaying(); }, startWait, u"the end of the take"_s);
}

bool DemoDriver::undoAndRedo() {
    controller::ProjectController &controller = m_project->controller();
    const qsizetype before = controller.project().lines.size();
    m_project->window().actions()[CommandId::AddLine]->trigger();
    if (controller.project().lines.size() != before + 1)
        return fail(u"no line was added"_s);
    // A new line takes the focus, and Undo would act on its text instead of the project.
    controller.selection().setEditingLineId({});
    const ProjectToolbar &toolbar = m_project->window().toolbar();
    if (!press(toolbar.undoButton(), u"Undo"_s))
        return false;
    if (controller.project().lines.size() != before)
        return fail(u"undo didn't remove the added line"_s);
    if (!press(toolbar.redoButton(), u"Redo"_s))
        return false;
    if (controller.project().lines.size() != before + 1)
        return fail(u"redo didn't bring the line back"_s);
    return press(toolbar.undoButton(), u"Undo"_s);
}

bool DemoDriver::save() {
    m_project->window().actions()[CommandId::SaveProject]->trigger();
    if (m_project->controller().hasUnsavedChanges())
        return fail(u"the project is still unsaved"_s);
    made(
        model::ProjectStore::projectFileForWriting(m_project->folder(), m_project->controller().project().projectName));
    return true;
}

bool DemoDriver::exportSelection() {
    ProjectWindow &window = m_project->window();
    controller::ProjectController &controller = m_project->controller();
    if (!selectWholeTab())
        return false;
    // One line without audio would stop the export of the whole selection.
    const model::LineIdList lines = controller.scriptLineIds();
    for (const model::LineId &id : lines) {
        if (!controller.runtime().hasGeneratedAudio(id))
            controller.selection().toggle(id);
    }
    QComboBox *mode = window.toolbar().outputModePicker();
    mode->setCurrentIndex(mode->findText(u"Continuous"_s));
    if (!press(window.toolbar().exportButton(), u"Export"_s))
        return false;
    QPointer<QFileDialog> dialog;
    const auto isAsking = [&] {
        dialog = window.findChild<QFileDialog *>();
        return (dialog != nullptr && dialog->isVisible()) || !controller.spotError().isEmpty();
    };
    if (!waitFor(isAsking, startWait, u"the save dialog"_s))
        return false;
    if (!controller.spotError().isEmpty())
        return fail(controller.spotError());
    auto *field = dialog->findChild<QLineEdit *>();
    const QString destination = m_folder + u'/' + QFileInfo(field->text()).fileName();
    field->setText(destination);
    if (!closeDialog(dialog, u"Save"_s) ||
        !waitFor([&window] { return !window.exportFlow().isBusy(); }, startWait, u"the export"_s))
        return false;
    if (!controller.spotError().isEmpty())
        return fail(controller.spotError());
    constexpr qint64 emptyWavBytes = 44;
    if (QFileInfo(destination).size() <= emptyWavBytes)
        return fail(QStringLiteral("%1 contains no audio").arg(destination));
    made(destination);
    return true;
}

bool DemoDriver::takePictures() {
    ProjectWindow &window = m_project->window();
    m_project->controller().selection().selectAlone(m_project->controller().scriptLineIds().at(1));
    Theme::apply(Appearance::Light);
    if (!picture(window, u"5-finished-light"_s))
        return false;
    Theme::apply(Appearance::Dark);
    const bool isTaken = picture(window, u"6-finished-dark"_s);
    Theme::apply(Theme::appearanceFromText(m_app.defaults().appearance()));
    return isTaken;
}

bool DemoDriver::fail(const QString &reason) {
    m_failure = reason;
    return false;
}

void DemoDriver::made(const QString &path) {
    demoOutput() << "Made: " << QDir::toNativeSeparators(path) << Qt::endl;
}

bool DemoDriver::picture(QWidget &widget, const QString &name) {
    const QString path = QStringLiteral("%1/%2.png").arg(m_folder, name);
    // Widgets apply changes, such as the appearance, with the next events, and layouts with those after them.
    for (int round = 0; round < 3; ++round)
        QCoreApplication::processEvents();
    if (!widget.grab().save(path))
        return fail(QStringLiteral("couldn't write %1").arg(path));
    made(path);
    return true;
}

bool DemoDriver::selectWholeTab() {
    // If a text has the focus, "Select All" acts on it.
    if (QWidget *focus = QApplication::focusWidget(); focus != nullptr)
        focus->clearFocus();
    m_project->window().actions()[CommandId::SelectAll]->trigger();
    const qsizetype selected = m_project->controller().selection().selectedLineIds().size();
    if (selected != m_project->controller().scriptLineIds().size())
        return fail(u"the lines of the tab weren't selected"_s);
    return true;
}

bool DemoDriver::waitFor(const Condition &condition, std::chrono::milliseconds limit, const QString &what) {
    const QDeadlineTimer deadline(limit);
    // Wakes the event loop, which could otherwise wait past the deadline.
    QTimer wake;
    wake.start(100ms);
    while (!condition()) {
        if (deadline.hasExpired())
            return fail(QStringLiteral("timed out waiting for %1").arg(what));
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

QAbstractButton *DemoDriver::editorButton(const QStringList &texts) const {
    // The lines have buttons with the same texts. Where room is short, a button has only a name.
    const auto buttons = m_project->window().toolbar().script().findChildren<QPushButton *>();
    const auto found = std::find_if(buttons.begin(), buttons.end(), [&texts](const QPushButton *button) {
        return button->isVisible() && (texts.contains(button->text()) || texts.contains(button->accessibleName()));
    });
    return found == buttons.end() ? nullptr : *found;
}

bool DemoDriver::press(QAbstractButton *button, const QString &name) {
    if (button == nullptr)
        return fail(QStringLiteral("there is no button \"%1\"").arg(name));
    if (!button->isVisible() || !button->isEnabled())
        return fail(QStringLiteral("the button \"%1\" can't be pressed").arg(name));
    button->click();
    return true;
}

bool DemoDriver::closeDialog(QDialog *dialog, const QString &button) {
    const QPointer<QDialog> open(dialog);
    const auto buttons = dialog->findChildren<QPushButton *>();
    const auto found = std::find_if(buttons.begin(), buttons.end(), [&button](const QPushButton *candidate) {
        return candidate->isVisible() && candidate->text().remove(u'&') == button;
    });
    return press(found == buttons.end() ? nullptr : *found, button) &&
           waitFor([&open] { return open.isNull() || !open->isVisible(); }, shortWait, u"the dialog to close"_s);
}

qsizetype DemoDriver::linesToGenerate() const {
    const controller::ProjectController &controller = m_project->controller();
    const model::LineIdList &ids = controller.scriptLineIds();
    return std::count_if(ids.begin(), ids.end(), [this, &controller](const model::LineId &id) {
        return controller::canGenerate(controller, id) && !controller.runtime().hasGeneratedAudio(id);
    });
}

} // namespace orlenta::shell
