#pragma once

#include <functional>
#include <optional>

#include <QtCore/QByteArray>

#include "model/LinePayload.h"

namespace orlenta::controller {

class ProjectController;

/// Copies, cuts and pastes whole lines within one project. The caller accesses the system clipboard; the bytes go there
/// as clipboardType(). Main thread.
class LineClipboard final {
public:
    explicit LineClipboard(ProjectController &controller) : m_controller(controller) {}

    [[nodiscard]] static QString clipboardType();
    /// The selected lines; none if nothing is selected.
    [[nodiscard]] std::optional<QByteArray> copiedLines() const;
    /// Passes the selected lines to `write` and removes them if it succeeds, as one "Cut Lines" step.
    bool cutLines(const std::function<bool(const QByteArray &)> &write);
    /// False for lines of another project: their takes refer to audio in its folder.
    [[nodiscard]] bool canPaste(const QByteArray &bytes) const;
    /// Pastes below the last selected line, or at the end of the tab, and selects the new lines, as one "Paste Lines"
    /// step.
    bool pasteLines(const QByteArray &bytes);

private:
    [[nodiscard]] std::optional<model::LinePayload> ownPayload(const QByteArray &bytes) const;

    ProjectController &m_controller;
};

} // namespace orlenta::controller
