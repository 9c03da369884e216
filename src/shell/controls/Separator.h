#pragma once

#include <QtWidgets/QFrame>

namespace orlenta::shell {

/// A hairline between groups, in the border colour.
class Separator final : public QFrame {
    Q_OBJECT
public:
    explicit Separator(Qt::Orientation orientation, QWidget *parent = nullptr);
};

} // namespace orlenta::shell
