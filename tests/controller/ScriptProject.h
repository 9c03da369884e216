#pragma once

#include <memory>

#include <QtCore/QTemporaryDir>

#include "controller/ProjectController.h"

namespace orlenta::test {

/// A project with one tab for each list of line texts; the lines are in that order.
[[nodiscard]] model::Project scriptProject(const QList<QStringList> &tabs);

/// A controller on such a project, without a folder or with one of its own.
class ScriptProject final {
public:
    enum class Folder { None, OnDisk };

    explicit ScriptProject(const QList<QStringList> &tabs, Folder folder = Folder::None);
    explicit ScriptProject(model::Project project, Folder folder = Folder::None);

    [[nodiscard]] controller::ProjectController &operator*() const { return *m_controller; }
    [[nodiscard]] controller::ProjectController *operator->() const { return m_controller.get(); }
    /// The id of a line of the active tab.
    [[nodiscard]] model::LineId id(qsizetype index) const;
    [[nodiscard]] const model::ProjectLine &line(qsizetype index) const;
    /// The texts of the active tab.
    [[nodiscard]] QStringList texts() const;
    [[nodiscard]] QStringList tabNames() const;
    [[nodiscard]] QString folder() const;
    void clearSelection();
    /// Opens the project of the folder anew, as after a restart.
    void reopen();
    /// Writes a short tone and installs it as a take of the line; gives the take's id.
    model::TakeId addTake(qsizetype index);

private:
    QTemporaryDir m_directory;
    std::unique_ptr<controller::ProjectController> m_controller;
};

/// Fails the running test where what holds of every open project doesn't hold.
void expectSound(const controller::ProjectController &controller);

} // namespace orlenta::test
