#pragma once

#include <optional>

#include <QtCore/QByteArray>

#include "model/ScriptTab.h"

namespace orlenta::model {

/// The two document shapes of the older single-file format: an array of tabs, or, before tabs existed, an array of
/// lines. Encoding omits runtime state; decoding returns none if the bytes have another shape. Any thread.
[[nodiscard]] QByteArray encodeScriptTabs(const QList<ScriptTab> &tabs);
[[nodiscard]] QByteArray encodeScriptLines(const QList<ScriptLine> &lines);
[[nodiscard]] std::optional<QList<ScriptTab>> decodeScriptTabs(const QByteArray &bytes);
[[nodiscard]] std::optional<QList<ScriptLine>> decodeScriptLines(const QByteArray &bytes);

} // namespace orlenta::model
