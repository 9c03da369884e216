#pragma once

#include <QtCore/QString>

namespace orlenta::speech {

/// A temporary file, deleted with this object unless keep() was called. It doesn't have to exist. Any thread, one at a
/// time.
class OwnedFile final {
public:
    explicit OwnedFile(QString path) : m_path(std::move(path)) {}
    ~OwnedFile();
    OwnedFile(const OwnedFile &) = delete;
    OwnedFile &operator=(const OwnedFile &) = delete;

    [[nodiscard]] const QString &path() const { return m_path; }
    /// Leaves the file in place when this object is destroyed.
    void keep() { m_isKept = true; }

private:
    QString m_path;
    bool m_isKept = false;
};

} // namespace orlenta::speech
