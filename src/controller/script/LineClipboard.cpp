#include "controller/script/LineClipboard.h"

#include "controller/document/Edit.h"
#include "controller/ProjectController.h"
#include "controller/script/FreshLineCopy.h"
#include "controller/script/LineEditing.h"
#include "controller/script/ScriptStructure.h"
#include "controller/script/Selection.h"

namespace orlenta::controller {

QString LineClipboard::clipboardType() {
    return QStringLiteral("com.kesmere.orlenta.lines");
}

std::optional<QByteArray> LineClipboard::copiedLines() const {
    const QList<model::LineId> selected = m_controller.selection().selectedLinesInScript();
    if (selected.isEmpty())
        return std::nullopt;
    model::LinePayload payload;
    payload.projectId = m_controller.project().projectId;
    for (const model::LineId &id : selected)
        payload.lines.append(*m_controller.state().findLine(id));
    return model::encodeLinePayload(payload);
}

bool LineClipboard::cutLines(const std::function<bool(const QByteArray &)> &write) {
    const std::optional<QByteArray> bytes = copiedLines();
    if (!bytes || !write(*bytes))
        return false;
    m_controller.lines().deleteLines(m_controller.selection().selectedLinesInScript(), LineEditing::Removal::Cut);
    return true;
}

bool LineClipboard::canPaste(const QByteArray &bytes) const {
    return ownPayload(bytes).has_value();
}

bool LineClipboard::pasteLines(const QByteArray &bytes) {
    const std::optional<model::LinePayload> payload = ownPayload(bytes);
    if (!payload)
        return false;
    if (m_controller.activeTab() == nullptr)
        return false;
    const Edit edit(m_controller, QStringLiteral("Paste Lines"));
    const QList<model::LineId> selected = edit->selectedLinesInScript();
    const model::LineIdList &script = edit->scriptLineIds();
    const qsizetype position = selected.isEmpty() ? script.size() : script.indexOf(selected.last()) + 1;
    std::vector<model::ProjectLine> copies;
    QList<model::LineId> copyIds;
    for (const model::ProjectLine &line : payload->lines) {
        copies.push_back(freshLineCopy(line));
        copyIds.append(copies.back().lineId);
        edit.copyRuntime(line.lineId, copyIds.last());
    }
    ScriptStructure::insertLines(edit, edit->activeTab()->id, position, copies);
    m_controller.selection().placeRange(edit, copyIds);
    return true;
}

std::optional<model::LinePayload> LineClipboard::ownPayload(const QByteArray &bytes) const {
    std::optional<model::LinePayload> payload = model::decodeLinePayload(bytes);
    const bool isOurs = payload && payload->projectId == m_controller.project().projectId;
    return isOurs && !payload->lines.isEmpty() ? payload : std::nullopt;
}

} // namespace orlenta::controller
