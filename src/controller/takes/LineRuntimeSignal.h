#pragma once

#include <QtCore/QObject>

namespace orlenta::controller {

/// Tells one line's row that the line's runtime state has changed, so that the row redraws alone. Main thread.
class LineRuntimeSignal final : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    [[nodiscard]] int version() const { return m_version; }
    void bump();

Q_SIGNALS:
    void versionChanged();

private:
    int m_version = 0;
};

} // namespace orlenta::controller
