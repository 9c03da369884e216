#pragma once

#include <map>
#include <optional>
#include <vector>

#include <QtCore/QJsonObject>
#include <QtCore/QStringList>

#include "localvoices/lexicon/Lexicon.h"

namespace orlenta::localvoices {

/// The pronunciation dictionaries that were uploaded since the start. Past 256 the oldest goes.
class DictionaryShelf final {
public:
    /// Keeps the rules under a new id and gives the service's answer to the upload.
    [[nodiscard]] QJsonObject add(const QString &name, const std::optional<QString> &description,
                                  std::vector<PronunciationRule> rules);

    /// The rules of a dictionary; none when there is no such dictionary, or not in this version.
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
