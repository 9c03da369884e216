#pragma once

#include <optional>

#include <QtCore/QList>
#include <QtCore/QString>

#include "base/Result.h"

namespace orlenta::localvoices {

enum class FaultKind {
    /// Answers as usual; passes one request over.
    None,
    /// Answers with an HTTP status of 400 to 599. Argument: a legacy status such as "quota_exceeded", a number of
    /// seconds for Retry-After with 429, or any other text, which becomes a bare detail.
    Status,
    /// Answers as usual after so many milliseconds.
    Slow,
    /// Announces the whole body, sends half of it and closes.
    Cut,
    /// Closes without an answer.
    Reset,
    /// Never answers.
    Stall,
    /// Answers 200 with so many zero bytes.
    Huge,
    /// Answers 200 with no body.
    Empty,
    /// Answers 200 with a body that is neither JSON nor audio.
    Garbage,
    /// Answers 200 with an HTML page, as the captive portal of a hotel's network does.
    Portal,
    /// Refuses a stability other than 0, 0.5 and 1 where the request's model is one that takes no other, such as
    /// eleven_v3. Answers every other request as usual.
    Stability,
};

struct Fault {
    FaultKind kind = FaultKind::None;
    int status = 200;
    QString argument;
    /// Milliseconds of Slow, bytes of Huge.
    qint64 amount = 0;
};

/// What goes wrong with the coming requests, for tests of a client.
///
/// Written as entries parted by commas, used up in order by the requests that they fit:
/// `[endpoint:]fault[=argument][*count]`. Endpoints are user, voices, tts, sts and lexicon; faults are ok, slow, cut,
/// reset, stall, huge, empty, garbage, portal, stability or an HTTP status. "tts:429=2.5*3,tts:ok,401=quota_exceeded"
/// refuses three lines with Retry-After 2.5, lets one pass, and tells whoever asks next that the quota is used up.
/// "tts:portal,tts:stability*9" answers one line with a page and checks the stability of the nine after it.
class FaultScript final {
public:
    /// The script, or a sentence about the entry that can't be read.
    [[nodiscard]] static base::Result<FaultScript, QString> parse(const QString &text);

    /// The next fault for an endpoint, which is used up; None when the script holds none for it.
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
