#pragma once

#include <functional>
#include <optional>

#include <QtCore/QByteArray>

#include "model/LinePayload.h"

namespace orlenta::controller {

class ProjectController;

/// Copies, cuts and pastes whole lines within one project. The clipboard itself is the caller's: here are the bytes
/// that go there under clipboardType(). Main thread.
class LineClipboard final {
public:
    explicit LineClipboard(ProjectController &controller) : m_controller(controller) {}

    [[nodiscard]] static QString clipboardType();
    /// The selected lines; none when nothing is selected.
    [[nodiscard]] std::optional<QByteArray> copiedLines() const;
    /// Hands the selected lines to `write` and removes them once it has succeeded; one "Cut Lines" step.
    bool cutLines(const std::function<bool(const QByteArray &)> &write);
    /// Lines go back only into the project that they came from: their takes name audio of its folder.
    [[nodiscard]] bool canPaste(const QByteArray &bytes) const;
    /// Puts copies below the last selected line, or at the end of the tab, and selects them; one "Paste Lines" step.
    bool pasteLines(const QByteArray &bytes);

private:
    [[nodiscard]] std::optional<model::LinePayload> ownPayload(const QByteArray &bytes) const;

    ProjectController &m_controller;
};

} // namespace orlenta::controller
