// Reading by pass, beside the bare tokenizer over the same bytes in the same run.

#include <array>
#include <charconv>
#include <cstring>

#include <benchmark/benchmark.h>

#include "bench_files.h"
#include "graphikdatei/line_reader.h"
#include "graphikdatei/maxima_pass.h"
#include "graphikdatei/observation_pass.h"
#include "graphikdatei/point_pass.h"
#include "graphikdatei/value_pass.h"
#include "model/former_part.h"

namespace veldra {
namespace {

/// The limit: lines split, and five numbers a line read by the library, nothing kept.
void bare_tokenizer(benchmark::State& state) {
    const std::string bytes = read_whole_file(bench::large_file(state.range(0)));
    for (auto _ : state) {
        double sum = 0;
        const char* at = bytes.data();
        const char* const end = at + bytes.size();
        while (at < end) {
            const auto* stop =
                static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
            stop = stop == nullptr ? end : stop;
            int numbers = 0;
            while (at < stop && numbers < 5) {
                while (at < stop && *at == ' ') {
                    ++at;
                }
                const char* word = at;
                while (at < stop && *at != ' ' && *at != '\r') {
                    ++at;
                }
                double value = 0;
                if (word < at && *word <= '9' &&
                    std::from_chars(word, at, value).ec == std::errc{}) {
                    sum += value;
                    ++numbers;
                }
                at += at < stop && *at == '\r' ? 1 : 0;
            }
            at = stop + 1;
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes.size()) * state.iterations());
}

void line_split(benchmark::State& state) {
    for (auto _ : state) {
        LineReader reader(bench::large_file(state.range(0)));
        std::string_view line;
        std::size_t length = 0;
        while (reader.next(line)) {
            length += line.size();
        }
        benchmark::DoNotOptimize(length);
    }
}

template <void (*Pass)(Session&)>
void one_pass(benchmark::State& state) {
    Session session;
    bench::use_large_file(session, state.range(0));
    punkt_lesen(session);
    for (auto _ : state) {
        Pass(session);
    }
}

void all_passes(benchmark::State& state) {
    for (auto _ : state) {
        Session session;
        bench::use_large_file(session, state.range(0));
        maxima_lesen(session);
        punkt_lesen(session);
        beob_lesen(session);
        wert_lesen(session);
        benchmark::DoNotOptimize(session.lin.count());
    }
}

/// Ellipses are shown before and after.
void begin_selection(Session& session, std::int64_t points) {
    bench::use_large_file(session, points);
    session.obj.obj_puwe = 7;
    derive_value_modes(session.obj);
    punkt_lesen(session);
}

void two_passes(benchmark::State& state) {
    Session session;
    begin_selection(session, state.range(0));
    for (auto _ : state) {
        beob_lesen(session);
        wert_lesen(session);
    }
}

/// The same with the way back, for a change that is given up.
void revocable_change_of_selection(benchmark::State& state) {
    Session session;
    begin_selection(session, state.range(0));
    for (auto _ : state) {
        FormerPart former(session, FormerPart::Points::copied, session.obj);
        beob_lesen(session);
        wert_lesen(session);
        former.replaced();
    }
}

void sizes(benchmark::internal::Benchmark* bench) {
    bench->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(bare_tokenizer)->Apply(sizes);
BENCHMARK(line_split)->Apply(sizes);
BENCHMARK(one_pass<kopf_lesen>)->Name("header pass")->Apply(sizes);
BENCHMARK(one_pass<maxima_lesen>)->Name("maxima pass")->Apply(sizes);
BENCHMARK(one_pass<punkt_lesen>)->Name("point pass")->Apply(sizes);
BENCHMARK(one_pass<beob_lesen>)->Name("observation pass")->Apply(sizes);
BENCHMARK(one_pass<wert_lesen>)->Name("value pass")->Apply(sizes);
BENCHMARK(all_passes)->Apply(sizes);
BENCHMARK(two_passes)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(revocable_change_of_selection)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace veldra

BENCHMARK_MAIN();
