// Opening and saving a project of 10,000 lines and 30,000 takes, compared with RapidJSON alone on the same bytes: its
// parser with default flags builds a document tree, and its PrettyWriter writes it. Parsing events without using them
// shows the lower bound.

#include <rapidjson/document.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include "model/ProjectJson.h"
#include "support/ProjectGenerator.h"
#include "support/RatioReporter.h"

namespace orlenta::benchmarks {
namespace {

constexpr int lineCount = 10'000;
constexpr int takesPerLine = 3;

const model::Project &project() {
    static const model::Project value = generateProject(lineCount, takesPerLine);
    return value;
}

const QByteArray &projectBytes() {
    static const QByteArray bytes = model::encodeProject(project());
    return bytes;
}

void countBytes(benchmark::State &state) {
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * projectBytes().size());
}

// Neither side counts freeing its result, since a program keeps the project it opens.
void decodeProject(benchmark::State &state) {
    for (auto _ : state) {
        state.PauseTiming();
        {
            QByteArray bytes(projectBytes().constData(), projectBytes().size());
            state.ResumeTiming();
            const auto result = model::decodeProject(std::move(bytes), {});
            state.PauseTiming();
            if (!result)
                state.SkipWithError("the project was not read");
        }
        state.ResumeTiming();
    }
    countBytes(state);
}

void rapidJsonDocument(benchmark::State &state) {
    for (auto _ : state) {
        state.PauseTiming();
        {
            rapidjson::Document document;
            state.ResumeTiming();
            document.Parse(projectBytes().constData(), static_cast<size_t>(projectBytes().size()));
            state.PauseTiming();
            if (document.HasParseError())
                state.SkipWithError("the document was not read");
        }
        state.ResumeTiming();
    }
    countBytes(state);
}

void rapidJsonEvents(benchmark::State &state) {
    for (auto _ : state) {
        rapidjson::Reader reader;
        rapidjson::BaseReaderHandler<> handler;
        rapidjson::StringStream stream(projectBytes().constData());
        if (reader.Parse(stream, handler).IsError())
            state.SkipWithError("the text was not read");
    }
    countBytes(state);
}

// A project in memory as loaded from a file.
void encodeProject(benchmark::State &state) {
    const auto opened = model::decodeProject(projectBytes(), {});
    for (auto _ : state) {
        const QByteArray bytes = model::encodeProject(*opened);
        benchmark::DoNotOptimize(bytes.constData());
    }
    countBytes(state);
}

void rapidJsonPrettyWriter(benchmark::State &state) {
    rapidjson::Document document;
    document.Parse(projectBytes().constData(), static_cast<size_t>(projectBytes().size()));
    for (auto _ : state) {
        rapidjson::StringBuffer buffer;
        rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(buffer);
        writer.SetIndent(' ', 2);
        document.Accept(writer);
        benchmark::DoNotOptimize(buffer.GetString());
    }
    countBytes(state);
}

BENCHMARK(decodeProject)->Unit(benchmark::kMillisecond);
BENCHMARK(rapidJsonDocument)->Unit(benchmark::kMillisecond);
BENCHMARK(rapidJsonEvents)->Unit(benchmark::kMillisecond);
BENCHMARK(encodeProject)->Unit(benchmark::kMillisecond);
BENCHMARK(rapidJsonPrettyWriter)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace orlenta::benchmarks

int main(int argc, char **argv) {
    return orlenta::benchmarks::runWithTargets(
        argc, argv, {{"decodeProject", "rapidJsonDocument", 1.5}, {"encodeProject", "rapidJsonPrettyWriter", 1.5}});
}
