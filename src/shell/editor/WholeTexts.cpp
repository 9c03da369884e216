#include "shell/editor/WholeTexts.h"

#include "controller/document/TypingSession.h"
#include "controller/ProjectController.h"
#include "controller/script/LineEditing.h"
#include "shell/controls/WholeTextDialog.h"

namespace orlenta::shell {

WholeTexts::WholeTexts(controller::ProjectController &controller, QWidget &parent)
    : QObject(&parent), m_controller(controller), m_parent(parent) {}

QString WholeTexts::titleFor(const model::LineId &id, const QString &part) const {
    return QStringLiteral("%1 of line %2").arg(part).arg(m_controller.lines().indexInScript(id) + 1);
}

void WholeTexts::editText(const model::LineId &id) {
    const model::ProjectLine *line = m_controller.lines().find(id);
    if (line == nullptr)
        return;
    m_controller.typing().commit();
    m_controller.typing().beginEditing(id);
    auto *dialog =
        new WholeTextDialog(titleFor(id, QStringLiteral("Text")), line->text, WholeTextDialog::Use::Edit, &m_parent);
    connect(dialog, &WholeTextDialog::textEdited, this,
            [this, id](const QString &text) { m_controller.typing().type(id, text); });
    connect(dialog, &QDialog::finished, this, [this] { m_controller.typing().commit(); });
    dialog->open();
}

void WholeTexts::editNotes(const model::LineId &id) {
    const model::ProjectLine *line = m_controller.lines().find(id);
    if (line == nullptr)
        return;
    auto *dialog =
        new WholeTextDialog(titleFor(id, QStringLiteral("Notes")), line->notes, WholeTextDialog::Use::Edit, &m_parent);
    connect(dialog, &WholeTextDialog::textEdited, this,
            [this, id](const QString &notes) { m_controller.lines().setNotes(id, notes); });
    dialog->open();
}

} // namespace orlenta::shell
