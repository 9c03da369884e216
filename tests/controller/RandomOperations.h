#pragma once

#include <random>

#include "controller/ProjectController.h"

namespace orlenta::test {

/// Runs operations of a project's subjects at random, each with random subjects. Installs takes without a file, so the
/// project must have no folder.
class RandomOperations final {
public:
    RandomOperations(controller::ProjectController &project, unsigned seed) : m_random(seed), m_project(project) {}

    /// From 0 to `count` - 1.
    [[nodiscard]] qsizetype pick(qsizetype count);
    [[nodiscard]] model::LineId someLine();
    [[nodiscard]] QString word();

    /// One operation. At most one undo step.
    void edit();
    /// Some typing in a line, which the next commit makes a step of.
    void type(const model::LineId &id);

private:
    [[nodiscard]] model::TabId someTab();
    void editLines();
    void moveSelection();
    void editTabs();
    void editTakes();
    void editSettings();
    void editPronunciations();

    std::mt19937 m_random;
    controller::ProjectController &m_project;
};

} // namespace orlenta::test
