#pragma once

#include <QtCore/QObject>

#include "model/Ids.h"

class QWidget;

namespace orlenta::controller {
class ProjectController;
}

namespace orlenta::shell {

/// Opens texts and notes that are too long for their row in a window of their own, to read and edit.
class WholeTexts final : public QObject {
    Q_OBJECT
public:
    WholeTexts(controller::ProjectController &controller, QWidget &parent);

    void editText(const model::LineId &id);
    void editNotes(const model::LineId &id);

private:
    [[nodiscard]] QString titleFor(const model::LineId &id, const QString &part) const;

    controller::ProjectController &m_controller;
    QWidget &m_parent;
};

} // namespace orlenta::shell
