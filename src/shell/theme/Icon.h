#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtGui/QIcon>

namespace orlenta::shell {

/// The application's own line icons, drawn from vectors at the size and scale asked for and tinted by the palette of
/// the moment, so that they stay crisp at any scale and follow a change of appearance.
class Icon final {
public:
    /// What an icon stands on, which decides its colour.
    enum class Tint {
        /// Text of a button or a menu.
        Text,
        /// Beside muted text.
        Muted,
        Accent,
        /// On a filled button in the accent colour.
        OnAccent,
        Danger
    };

    /// The icon of that name, such as "play"; a null icon if there is none.
    [[nodiscard]] static QIcon named(const QString &name, Tint tint = Tint::Text);
    [[nodiscard]] static QStringList names();
};

} // namespace orlenta::shell
