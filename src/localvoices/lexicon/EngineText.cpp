#include "localvoices/lexicon/EngineText.h"

#include <algorithm>

#include <QtCore/QRegularExpression>

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

namespace {

/// What one sound counts for in a piece, in bytes.
constexpr qsizetype phoneSize = 4;

/// Keeps track of one word, that is of the characters between spaces.
class WordLimits final {
public:
    /// False if the character would make a run of punctuation too long.
    [[nodiscard]] bool hasRoomForSign(QChar character) const {
        return kindOf(character) != Kind::Sign || m_last != Kind::Sign || m_runLength < longestSignRun;
    }

    /// Adds the character. False if the word is full.
    [[nodiscard]] bool add(QChar character) {
        const Kind kind = kindOf(character);
        const bool isNewRun = kind != m_last;
        const bool isFull = m_length >= longestWord || (kind == Kind::Digit && m_digits >= mostDigits) ||
                            (isNewRun && m_runs >= mostRuns);
        if (isFull && !character.isLowSurrogate())
            return false;
        ++m_length;
        m_digits += kind == Kind::Digit ? 1 : 0;
        m_runs += isNewRun ? 1 : 0;
        m_runLength = isNewRun ? 1 : m_runLength + 1;
        m_last = kind;
        return true;
    }

private:
    enum class Kind { None, Letter, Digit, Sign };

    static constexpr int longestWord = 40;
    static constexpr int longestSignRun = 4;
    static constexpr int mostDigits = 15;
    /// Runs of letters, digits or punctuation. A URL has about twelve.
    static constexpr int mostRuns = 16;

    /// Combining marks count as punctuation.
    [[nodiscard]] static Kind kindOf(QChar character) {
        if (character.isNumber())
            return Kind::Digit;
        return character.isLetter() || character.isSurrogate() ? Kind::Letter : Kind::Sign;
    }

    int m_length = 0;
    int m_digits = 0;
    int m_runs = 0;
    int m_runLength = 0;
    Kind m_last = Kind::None;
};

bool isCommand(QChar character) {
    // espeak-ng takes commands after control characters and phonemes in brackets.
    return character.category() == QChar::Other_Control || character == u'[' || character == u']';
}

/// Removes the dots of "a.b.c." from the eleventh letter on.
QString withShortAbbreviations(QString text) {
    static const QRegularExpression dotted(uR"((?:\b\p{L}\s?\.\s*){10}\K(?:\p{L}\s?\.\s*)+)"_s,
                                           QRegularExpression::UseUnicodePropertiesOption);
    QRegularExpressionMatchIterator matches = dotted.globalMatch(text);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        const QString letters = match.captured().replace(u'.', u' ');
        text.replace(match.capturedStart(), match.capturedLength(), letters);
    }
    return text;
}

qsizetype sizeOf(QChar character) {
    const char16_t code = character.unicode();
    if (code < 0x80)
        return 1;
    return code < 0x800 || character.isSurrogate() ? 2 : 3;
}

/// How many characters fit into `room` bytes of UTF-8.
qsizetype fittingLength(QStringView text, qsizetype room) {
    qsizetype at = 0;
    for (; at < text.size(); ++at) {
        room -= sizeOf(text.at(at));
        if (room < 0)
            break;
    }
    const bool isInsidePair = at > 0 && at < text.size() && text.at(at).isLowSurrogate();
    return isInsidePair ? at - 1 : at;
}

qsizetype sizeOf(QStringView text) {
    qsizetype size = 0;
    for (const QChar character : text)
        size += sizeOf(character);
    return size;
}

/// The position after the last of these characters that is followed by a space; 0 if there is none.
qsizetype placeBehindLast(QStringView text, QStringView characters) {
    for (qsizetype at = text.size() - 1; at > 0; --at)
        if (text.at(at).isSpace() && characters.contains(text.at(at - 1)))
            return at;
    return 0;
}

qsizetype placeOfLastBlank(QStringView text) {
    const auto last = std::find_if(text.rbegin(), text.rend(), [](QChar c) { return c.isSpace(); });
    return text.rend() - last;
}

class PieceBuilder final {
public:
    void addText(QStringView text) {
        while (sizeOf(text) > m_room) {
            const qsizetype fitting = fittingLength(text, m_room);
            const QStringView head = text.first(fitting);
            qsizetype cut = placeBehindLast(head, u".!?…。！？");
            // Start a new piece rather than split a sentence.
            if (cut == 0 && !m_pieces.back().empty()) {
                startPiece();
                continue;
            }
            if (cut == 0)
                cut = placeBehindLast(head, u",;:，；：、");
            if (cut == 0)
                cut = placeOfLastBlank(head);
            if (cut == 0)
                cut = fitting;
            add({text.first(cut).toString(), {}}, 0);
            startPiece();
            text = text.sliced(cut);
        }
        if (!text.isEmpty())
            add({text.toString(), {}}, sizeOf(text));
    }

    void addPhones(const SpokenRun &run) {
        for (std::size_t from = 0; from < run.phones.size(); from += mostPhonesOfWord) {
            const auto begin = run.phones.begin() + static_cast<std::ptrdiff_t>(from);
            const auto count = std::min(mostPhonesOfWord, run.phones.size() - from);
            const qsizetype size = static_cast<qsizetype>(count) * phoneSize;
            if (size > m_room)
                startPiece();
            add({run.text, {begin, begin + static_cast<std::ptrdiff_t>(count)}}, size);
        }
    }

    [[nodiscard]] std::vector<std::vector<SpokenRun>> take() {
        if (m_pieces.back().empty())
            m_pieces.pop_back();
        return std::move(m_pieces);
    }

private:
    void startPiece() {
        m_room = longestPiece;
        if (!m_pieces.back().empty())
            m_pieces.emplace_back();
    }

    void add(SpokenRun run, qsizetype size) {
        m_pieces.back().push_back(std::move(run));
        m_room -= size;
    }

    std::vector<std::vector<SpokenRun>> m_pieces{1};
    qsizetype m_room = longestPiece;
};

} // namespace

QString engineText(const QString &text) {
    QString clean;
    clean.reserve(text.size());
    WordLimits word;
    for (const QChar character : withShortAbbreviations(text)) {
        if (character.isSpace() || isCommand(character)) {
            clean += u' ';
            word = {};
            continue;
        }
        if (!word.hasRoomForSign(character))
            continue;
        if (!word.add(character)) {
            clean += u' ';
            word = {};
            static_cast<void>(word.add(character));
        }
        clean += character;
    }
    return clean;
}

std::vector<std::vector<SpokenRun>> enginePieces(const std::vector<SpokenRun> &runs) {
    PieceBuilder builder;
    for (const SpokenRun &run : runs) {
        if (run.phones.empty())
            builder.addText(run.text);
        else
            builder.addPhones(run);
    }
    return builder.take();
}

} // namespace orlenta::localvoices
