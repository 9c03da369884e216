#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtGui/QIcon>

namespace orlenta::shell {

/// The application's line icons. Drawn from vectors at the requested size and scale and tinted from the current
/// palette, so they stay crisp and follow the appearance.
class Icon final {
public:
    /// The use of an icon, which determines its colour.
    enum class Tint {
        /// Beside the text of a button or menu.
        Text,
        /// Beside muted text.
        Muted,
        Accent,
        /// On a filled button in the accent colour.
        OnAccent,
        Warning,
        Danger
    };

    /// The icon with this name, such as "play". Null if there is none.
    [[nodiscard]] static QIcon named(const QString &name, Tint tint = Tint::Text);
    [[nodiscard]] static QStringList names();
};

} // namespace orlenta::shell
