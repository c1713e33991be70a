// Reading records: files of 4 KB with nested lists, as the engine keeps them by the thousand.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "OmbrixPlatform/JsonDecoding.h"

namespace ombrix {
namespace {

struct Promise {
    std::string what, who, quote;
    std::optional<std::string> due;
    std::vector<std::int64_t> turns;
};

struct Meeting {
    std::string key, title;
    std::vector<std::string> people;
    std::vector<Promise> promises;
};

Promise decode(Json::As<Promise>, const Json::Object& in) {
    return {.what = in.required<std::string>("what"),
            .who = in.required<std::string>("who"),
            .quote = in.required<std::string>("quote"),
            .due = in.optional<std::string>("due"),
            .turns = in.required<std::vector<std::int64_t>>("turns")};
}

Meeting decode(Json::As<Meeting>, const Json::Object& in) {
    return {.key = in.required<std::string>("key"),
            .title = in.required<std::string>("title"),
            .people = in.required<std::vector<std::string>>("people"),
            .promises = in.required<std::vector<Promise>>("promises")};
}

std::string meetingText(int number) {
    Json::Array promises;
    for (int i = 0; i < 12; ++i) {
        promises.push_back(Json::object(
            {{"what", "Send the revised price list to the customer " + std::to_string(i)},
             {"who", "user"},
             {"quote",
              "So I'll send you the revised list by Friday, promised. Is there anything "
              R"(else that you need, "as before"?)"},
             {"due", i % 2 == 0 ? Json::Value("2026-07-31") : Json::Value()},
             {"turns", Json::Array{i, i + 1, number}}}));
    }
    return Json::write(Json::object({{"key", "meeting-" + std::to_string(number)},
                                     {"title", "Weekly " + std::to_string(number)},
                                     {"people", Json::Array{"Ann Lee", "Bo Ek", "Cy Dahl"}},
                                     {"promises", std::move(promises)}}),
                       Json::Style::file);
}

void decodesRecords(benchmark::State& state) {
    std::vector<std::string> texts;
    std::int64_t bytes = 0;
    for (int i = 0; i < 10'000; ++i) {
        texts.push_back(meetingText(i));
        bytes += static_cast<std::int64_t>(texts.back().size());
    }
    for (auto _ : state)
        for (const auto& text : texts) benchmark::DoNotOptimize(Json::decode<Meeting>(text));
    state.SetBytesProcessed(state.iterations() * bytes);
}
BENCHMARK(decodesRecords)->Unit(benchmark::kMillisecond);
}  // namespace
}  // namespace ombrix
