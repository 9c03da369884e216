#include "localvoices/lexicon/SpokenText.h"

#include <algorithm>

#include <QtCore/QRegularExpression>

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;
using std::chrono::milliseconds;

namespace {

constexpr milliseconds longestBreak{3000};
constexpr milliseconds longestSilence{600'000};

/// The pause that this markup stands for; zero if it isn't one.
milliseconds pauseOf(const QString &markup) {
    static const QRegularExpression time(uR"(time\s*=\s*["']?\s*([0-9]*\.?[0-9]+)\s*(ms|s))"_s,
                                         QRegularExpression::CaseInsensitiveOption);
    if (markup.startsWith(u"<break"_s, Qt::CaseInsensitive)) {
        const QRegularExpressionMatch match = time.match(markup);
        const double number = match.hasMatch() ? match.captured(1).toDouble() : 0.5;
        const double factor = match.captured(2).toLower() == u"ms"_s ? 1.0 : 1000.0;
        const double bounded = std::min(number * factor, static_cast<double>(longestBreak.count()));
        return milliseconds(static_cast<milliseconds::rep>(bounded + 0.5));
    }
    const QString tag = markup.mid(1, markup.size() - 2).simplified().toLower();
    if (tag == u"short pause"_s)
        return milliseconds(400);
    if (tag == u"pause"_s)
        return milliseconds(800);
    if (tag == u"long pause"_s)
        return milliseconds(1600);
    return milliseconds(0);
}

class SegmentBuilder final {
public:
    SegmentBuilder(const std::vector<PronunciationRule> &rules, PhonemeRules phonemeRules)
        : m_rules(rules), m_phonemeRules(phonemeRules) {}

    void addText(const QString &text) {
        for (SpokenRun &run : applyRules(text, m_rules, m_phonemeRules))
            m_segments.back().runs.push_back(std::move(run));
    }

    void addPause(milliseconds pause) {
        pause = std::min(pause, longestSilence - m_silence);
        m_silence += pause;
        m_segments.back().pauseAfter = pause;
        m_segments.emplace_back();
    }

    void addPhones(const QString &word, std::vector<Phone> phones) {
        m_segments.back().runs.push_back({word, std::move(phones)});
    }

    [[nodiscard]] std::vector<SpokenSegment> take() { return std::move(m_segments); }

private:
    const std::vector<PronunciationRule> &m_rules;
    PhonemeRules m_phonemeRules;
    std::vector<SpokenSegment> m_segments{1};
    milliseconds m_silence{0};
};

void addMarkup(SegmentBuilder &builder, const QRegularExpressionMatch &match, PhonemeRules phonemeRules) {
    if (match.hasCaptured(u"word"_s)) {
        const QString word = match.captured(u"word"_s);
        std::vector<Phone> phones = phonesIn(match.captured(u"alphabet"_s), match.captured(u"sounds"_s));
        if (phonemeRules == PhonemeRules::Followed && !phones.empty())
            builder.addPhones(word, std::move(phones));
        else
            builder.addText(word);
        return;
    }
    const milliseconds pause = pauseOf(match.captured());
    if (pause > milliseconds(0))
        builder.addPause(pause);
    else
        builder.addText(u" "_s);
}

} // namespace

std::vector<SpokenSegment> readSpokenText(const QString &text, const std::vector<PronunciationRule> &rules,
                                          PhonemeRules phonemeRules) {
    static const QRegularExpression markup(
        uR"re(<phoneme\s+alphabet="(?<alphabet>[^"]*)"\s+ph="(?<sounds>[^"]*)"\s*>(?<word>[^<]*)</phoneme>)re"
        uR"re(|</?[A-Za-z][^<>]*>|\[[^\[\]]*\])re"_s);
    SegmentBuilder builder(rules, phonemeRules);
    qsizetype from = 0;
    QRegularExpressionMatchIterator matches = markup.globalMatch(text);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        builder.addText(text.sliced(from, match.capturedStart() - from));
        addMarkup(builder, match, phonemeRules);
        from = match.capturedEnd();
    }
    builder.addText(text.sliced(from));
    return builder.take();
}

} // namespace orlenta::localvoices
