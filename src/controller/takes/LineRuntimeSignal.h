#pragma once

#include <QtCore/QObject>

namespace orlenta::controller {

/// Notifies one line's row of a change in the line's runtime state, so that only this row redraws. Main thread.
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
