#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "model/json/RecordSchema.h"

namespace orlenta::model::json {

/// Turns parser events into records, in one pass and without a tree. After the first failure, it only continues to find
/// the document's version. Of a repeated key, only the first counts. Not thread-safe.
class RecordReader final {
public:
    struct Outcome {
        /// The top-level "schema_version", if it is a 64-bit integer and the whole text is JSON.
        std::optional<std::int64_t> version;
        /// Where and why decoding failed.
        std::optional<QString> problem;
    };

    /// Reads a whole document as the value of `root` into `target`. The bytes serve as the parser's buffer. Nesting is
    /// limited, to protect the stack.
    [[nodiscard]] static Outcome read(QByteArray bytes, const Field &root, void *target, base::Timestamp now);

    /// Parser events. Returning false stops the parser.
    bool Null();
    bool Bool(bool value);
    bool RawNumber(const char *text, unsigned length, bool copy);
    bool String(const char *text, unsigned length, bool copy);
    bool Key(const char *text, unsigned length, bool copy);
    bool StartObject();
    bool EndObject(unsigned count);
    bool StartArray();
    bool EndArray(unsigned count);
    /// Required by the parser's interface, but numbers arrive as text.
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(std::int64_t) { return false; }
    bool Uint64(std::uint64_t) { return false; }
    bool Double(double) { return false; }

private:
    enum class Structure { Object, Array };

    // An open record or array. It is active while the parser is at its depth.
    struct Frame {
        const Schema *schema = nullptr;
        void *record = nullptr;
        const Field *field = nullptr;
        std::uint32_t seen = 0;
        size_t nextField = 0;
        qsizetype depth = 0;
        qsizetype elements = 0;
        bool isArray = false;
    };

    RecordReader(const Field &root, void *target, base::Timestamp now);

    [[nodiscard]] bool isLive() const { return !m_problem && m_depth == m_frames.back().depth; }
    /// The field of the structure that begins, or null to skip it.
    [[nodiscard]] const Field *fieldFor(Structure structure);
    /// Returns whether the record has that key.
    bool selectField(std::string_view key);
    void takeScalar(const Scalar &value);
    void markSeen();
    void closeRecord();
    void fail(const QString &reason);
    [[nodiscard]] QString path() const;

    std::vector<Frame> m_frames;
    qsizetype m_depth = 0;
    ReadingContext m_context;
    std::optional<std::int64_t> m_version;
    bool m_isVersionNext = false;
    bool m_hasInvalidText = false;
    bool m_isTooDeep = false;
    std::optional<QString> m_problem;
};

} // namespace orlenta::model::json
