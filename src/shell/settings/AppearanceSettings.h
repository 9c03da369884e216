#pragma once

#include <QtWidgets/QWidget>

namespace orlenta::base {
class UserDefaults;
}

namespace orlenta::shell {

/// Chooses the theme and the interface scale.
class AppearanceSettings final : public QWidget {
    Q_OBJECT
public:
    explicit AppearanceSettings(base::UserDefaults &defaults, QWidget *parent = nullptr);
};

} // namespace orlenta::shell
