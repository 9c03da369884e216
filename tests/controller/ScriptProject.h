#pragma once

#include <memory>

#include <QtCore/QTemporaryDir>

#include "controller/ProjectController.h"

namespace orlenta::test {

/// A project with one tab per list of line texts, with the lines in that order.
[[nodiscard]] model::Project scriptProject(const QList<QStringList> &tabs);

/// A controller for such a project, with or without a project folder.
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
    /// The texts of the active tab's lines.
    [[nodiscard]] QStringList texts() const;
    [[nodiscard]] QStringList tabNames() const;
    [[nodiscard]] QString folder() const;
    void clearSelection();
    /// Opens the project folder again, as after a restart.
    void reopen();
    /// Installs a short tone as a take of the line. Returns the take's id.
    model::TakeId addTake(qsizetype index);

private:
    QTemporaryDir m_directory;
    std::unique_ptr<controller::ProjectController> m_controller;
};

/// Fails the running test if the project breaks an invariant of open projects.
void expectSound(const controller::ProjectController &controller);

} // namespace orlenta::test
