#pragma once

#include <QtCore/QObject>

namespace orlenta::shell {

/// Tells widgets with a font of their own that the application's font has changed. Qt tells only windows and those
/// widgets that inherit its size. One for the application; main thread.
class FontChanges final : public QObject {
    Q_OBJECT
public:
    [[nodiscard]] static FontChanges &notifier();

Q_SIGNALS:
    void fontChanged();

private:
    FontChanges() = default;
};

} // namespace orlenta::shell
