#pragma once

#include <chrono>
#include <functional>

#include <QtCore/QString>
#include <QtCore/QStringList>

class QAbstractButton;
class QDialog;
class QWidget;

namespace orlenta::shell {

class OrlentaApp;
class ProjectWindowController;

/// Takes the real window through the main job, by its own buttons and menus, and leaves what comes of it in a folder:
/// a copy of the sample project with its takes, the exported audio, and pictures of the window. Main thread.
class DemoDriver final {
public:
    DemoDriver(OrlentaApp &app, const QString &folder);

    /// Runs the whole tour and returns the process's exit code. What was made goes to standard output, the reason of a
    /// failure to standard error.
    int run();

private:
    using Condition = std::function<bool()>;

    bool openSample();
    bool switchLocalVoicesOn();
    bool generateAllLines();
    bool generateShownTab();
    bool audition();
    bool undoAndRedo();
    bool save();
    bool exportSelection();
    bool takePictures();

    bool fail(const QString &reason);
    void made(const QString &path);
    bool picture(QWidget &widget, const QString &name);
    bool selectWholeTab();
    /// Runs the event loop until the condition holds; false, with the reason noted, when it doesn't in time.
    bool waitFor(const Condition &condition, std::chrono::milliseconds limit, const QString &what);
    /// The visible button of the script's toolbar that has one of these texts, or null.
    [[nodiscard]] QAbstractButton *editorButton(const QStringList &texts) const;
    bool press(QAbstractButton *button, const QString &name);
    /// Presses the dialog's own button of that text and waits until the dialog has gone.
    bool closeDialog(QDialog *dialog, const QString &button);
    /// Lines of the shown tab that have a voice and no take.
    [[nodiscard]] qsizetype linesToGenerate() const;

    OrlentaApp &m_app;
    QString m_folder;
    QString m_failure;
    ProjectWindowController *m_project = nullptr;
    bool m_hasBatchPicture = false;
};

} // namespace orlenta::shell
