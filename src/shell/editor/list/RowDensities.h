#pragma once

#include <QtCore/QObject>

#include "shell/editor/row/LineRowContent.h"

namespace orlenta::base {
class UserDefaults;
}
namespace orlenta::controller {
class ProjectController;
}

namespace orlenta::shell {

/// Which tabs show compact rows. Remembered with the user's preferences, so looking at a script differently doesn't
/// change the project. Main thread; project and preferences outlive it.
class RowDensities final : public QObject {
    Q_OBJECT
public:
    RowDensities(controller::ProjectController &controller, base::UserDefaults &defaults, QObject *parent = nullptr);

    /// The density of the active tab's rows.
    [[nodiscard]] RowDensity current() const { return m_current; }
    /// Changes the active tab to the other density.
    void toggle();

Q_SIGNALS:
    void currentChanged();

private:
    void readCurrent();

    controller::ProjectController &m_controller;
    base::UserDefaults &m_defaults;
    RowDensity m_current = RowDensity::Comfortable;
};

} // namespace orlenta::shell
