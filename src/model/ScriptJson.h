#pragma once

#include <optional>

#include <QtCore/QByteArray>

#include "model/ScriptTab.h"

namespace orlenta::model {

/// The two shapes of a document of the older single-file format: an array of tabs, and before there were tabs an array
/// of lines. Writing leaves out what only a running program has; reading gives nothing if the bytes are of another
/// shape. Any thread.
[[nodiscard]] QByteArray encodeScriptTabs(const QList<ScriptTab> &tabs);
[[nodiscard]] QByteArray encodeScriptLines(const QList<ScriptLine> &lines);
[[nodiscard]] std::optional<QList<ScriptTab>> decodeScriptTabs(const QByteArray &bytes);
[[nodiscard]] std::optional<QList<ScriptLine>> decodeScriptLines(const QByteArray &bytes);

} // namespace orlenta::model
