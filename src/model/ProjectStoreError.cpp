#include "model/ProjectStoreError.h"

namespace orlenta::model {
namespace {

struct DescribeStoreError {
    QString operator()(const ProjectStoreError::NewerSchemaVersion &) const {
        return QStringLiteral("This project was created with a newer version of Orlenta.");
    }
    QString operator()(const ProjectStoreError::CorruptedFile &) const {
        return QStringLiteral("Couldn't open this project. The file may be corrupted.");
    }
    QString operator()(const ProjectStoreError::ProjectFileNotFound &) const {
        return QStringLiteral("This doesn't appear to be a Orlenta project.");
    }
    QString operator()(const base::FileError &error) const { return error.description(); }
};

struct ReasonOfStoreError {
    std::optional<QString> operator()(const ProjectStoreError::NewerSchemaVersion &newer) const {
        return QStringLiteral("Project schema version %1 is newer than this app supports.").arg(newer.version);
    }
    std::optional<QString> operator()(const ProjectStoreError::CorruptedFile &corrupted) const {
        return corrupted.detail;
    }
    std::optional<QString> operator()(const ProjectStoreError::ProjectFileNotFound &) const { return std::nullopt; }
    std::optional<QString> operator()(const base::FileError &) const { return std::nullopt; }
};

} // namespace

QString ProjectStoreError::description() const {
    return std::visit(DescribeStoreError{}, m_kind);
}

std::optional<QString> ProjectStoreError::failureReason() const {
    return std::visit(ReasonOfStoreError{}, m_kind);
}

} // namespace orlenta::model
