#pragma once

#include <QtCore/QString>

namespace orlenta::speech {

/// A temporary file that is deleted with its owner, unless the owner lets it stay. It doesn't need to exist. Any
/// thread, one at a time.
class OwnedFile final {
public:
    explicit OwnedFile(QString path) : m_path(std::move(path)) {}
    ~OwnedFile();
    OwnedFile(const OwnedFile &) = delete;
    OwnedFile &operator=(const OwnedFile &) = delete;

    [[nodiscard]] const QString &path() const { return m_path; }
    /// The file stays when this object goes.
    void keep() { m_isKept = true; }

private:
    QString m_path;
    bool m_isKept = false;
};

} // namespace orlenta::speech
