#pragma once

#include <map>
#include <optional>
#include <vector>

#include <QtCore/QJsonObject>
#include <QtCore/QStringList>

#include "localvoices/lexicon/Lexicon.h"

namespace orlenta::localvoices {

/// The pronunciation dictionaries uploaded since startup; keeps the latest 256.
class DictionaryShelf final {
public:
    /// Stores the rules under a new id and returns the service's answer to the upload.
    [[nodiscard]] QJsonObject add(const QString &name, const std::optional<QString> &description,
                                  std::vector<PronunciationRule> rules);

    /// The rules of a dictionary; null if there is no such dictionary or version.
    [[nodiscard]] const std::vector<PronunciationRule> *find(const QString &id,
                                                             const std::optional<QString> &versionId) const;

private:
    struct Dictionary {
        QString versionId;
        std::vector<PronunciationRule> rules;
    };
    std::map<QString, Dictionary> m_dictionaries;
    QStringList m_order;
};

} // namespace orlenta::localvoices
