#include "controller/script/LineClipboard.h"

#include "controller/document/UndoHistory.h"
#include "controller/script/FreshLineCopy.h"
#include "controller/script/LineEditing.h"
#include "controller/script/ScriptStructure.h"
#include "controller/script/Selection.h"
#include "controller/takes/LineRuntime.h"

namespace orlenta::controller {

QString LineClipboard::clipboardType() {
    return QStringLiteral("com.kesmere.orlenta.lines");
}

std::optional<QByteArray> LineClipboard::copiedLines() const {
    const QList<model::LineId> selected = m_parts.selection.selectedLinesInScript();
    if (selected.isEmpty())
        return std::nullopt;
    model::LinePayload payload;
    payload.projectId = m_parts.document.project().projectId;
    for (const model::LineId &id : selected)
        payload.lines.append(*m_parts.document.findLine(id));
    return model::encodeLinePayload(payload);
}

bool LineClipboard::cutLines(const std::function<bool(const QByteArray &)> &write) {
    const std::optional<QByteArray> bytes = copiedLines();
    if (!bytes || !write(*bytes))
        return false;
    m_parts.lines.deleteLines(m_parts.selection.selectedLinesInScript(), LineEditing::Removal::Cut);
    return true;
}

bool LineClipboard::canPaste(const QByteArray &bytes) const {
    return ownPayload(bytes).has_value();
}

bool LineClipboard::pasteLines(const QByteArray &bytes) {
    const std::optional<model::LinePayload> payload = ownPayload(bytes);
    if (!payload)
        return false;
    const Document::Change change(m_parts.document);
    const StoreUndoSnapshot before = m_parts.history.takeSnapshot();
    QList<model::LineId> ids = m_parts.document.scriptLineIds();
    const QList<model::LineId> selected = m_parts.selection.selectedLinesInScript();
    qsizetype position = selected.isEmpty() ? ids.size() : ids.indexOf(selected.last()) + 1;
    std::vector<model::ProjectLine> copies;
    QList<model::LineId> copyIds;
    for (const model::ProjectLine &line : payload->lines) {
        copies.push_back(freshLineCopy(line));
        copyIds.append(copies.back().lineId);
        m_parts.runtime.copyState(line.lineId, copyIds.last(), EditKey());
        ids.insert(position++, copyIds.last());
    }
    m_parts.structure.replaceActiveTabLines(ids, copies, EditKey());
    m_parts.selection.placeRange(copyIds, EditKey());
    m_parts.history.registerUndo(before, QStringLiteral("Paste Lines"));
    return true;
}

std::optional<model::LinePayload> LineClipboard::ownPayload(const QByteArray &bytes) const {
    std::optional<model::LinePayload> payload = model::decodeLinePayload(bytes);
    const bool isOurs = payload && payload->projectId == m_parts.document.project().projectId;
    return isOurs && !payload->lines.isEmpty() ? payload : std::nullopt;
}

} // namespace orlenta::controller
