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

/// Drives the real window through a whole job with its own buttons and menus. Leaves the results in a folder: a copy of
/// the sample project with takes, the exported audio, and pictures of the window. Main thread.
class DemoDriver final {
public:
    DemoDriver(OrlentaApp &app, const QString &folder);

    /// Runs all steps and returns the exit code of the process. Prints the created files to standard output and the
    /// reason of a failure to standard error.
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
    /// Runs the event loop until the condition holds. On a timeout, notes the reason and returns false.
    bool waitFor(const Condition &condition, std::chrono::milliseconds limit, const QString &what);
    /// The visible button of the script toolbar with one of these texts, or null.
    [[nodiscard]] QAbstractButton *editorButton(const QStringList &texts) const;
    bool press(QAbstractButton *button, const QString &name);
    /// Presses the dialog's button with that text and waits until the dialog has closed.
    bool closeDialog(QDialog *dialog, const QString &button);
    /// The number of lines in the current tab with a voice but no take.
    [[nodiscard]] qsizetype linesToGenerate() const;

    OrlentaApp &m_app;
    QString m_folder;
    QString m_failure;
    ProjectWindowController *m_project = nullptr;
    bool m_hasBatchPicture = false;
};

} // namespace orlenta::shell
