#pragma once

#include <optional>

#include <QtCore/QList>
#include <QtCore/QString>

#include "base/Result.h"

namespace orlenta::localvoices {

enum class FaultKind {
    /// Answers as usual. Lets one request pass.
    None,
    /// Answers with an HTTP status of 400 to 599. Argument: a legacy status such as "quota_exceeded", a number of
    /// seconds for Retry-After with 429, or any other text, which becomes a bare detail.
    Status,
    /// Answers as usual after a delay in milliseconds.
    Slow,
    /// Announces the full body length, sends half and closes.
    Cut,
    /// Closes without an answer.
    Reset,
    /// Never answers.
    Stall,
    /// Answers 200 with the given number of zero bytes.
    Huge,
    /// Answers 200 with no body.
    Empty,
    /// Answers 200 with a body that is neither JSON nor audio.
    Garbage,
    /// Answers 200 with an HTML page, like a captive portal.
    Portal,
    /// Refuses a stability other than 0, 0.5 or 1 if the model, such as eleven_v3, requires one of these. Answers all
    /// other requests as usual.
    Stability,
};

struct Fault {
    FaultKind kind = FaultKind::None;
    int status = 200;
    QString argument;
    /// Milliseconds of Slow, bytes of Huge.
    qint64 amount = 0;
};

/// The faults of upcoming requests, for testing clients.
///
/// A script is a list of comma-separated entries `[endpoint:]fault[=argument][*count]`; each request uses up the first
/// entry that fits it. Endpoints are user, voices, tts, sts and lexicon; faults are ok, slow, cut, reset, stall, huge,
/// empty, garbage, portal, stability or an HTTP status. "tts:429=2.5*3,tts:ok,401=quota_exceeded" refuses three lines
/// with Retry-After 2.5, lets one pass, and reports an exhausted quota to the next request of any kind.
/// "tts:portal,tts:stability*9" answers one line with an HTML page and checks the stability of the next nine.
class FaultScript final {
public:
    /// The error names the entry that can't be read.
    [[nodiscard]] static base::Result<FaultScript, QString> parse(const QString &text);

    /// Takes the next fault for an endpoint off the script; None if there is none.
    [[nodiscard]] Fault take(const QString &endpoint);

private:
    struct Entry {
        QString endpoint;
        Fault fault;
        int count = 1;
    };
    [[nodiscard]] static std::optional<Entry> parseEntry(const QString &text);

    QList<Entry> m_entries;
};

} // namespace orlenta::localvoices
