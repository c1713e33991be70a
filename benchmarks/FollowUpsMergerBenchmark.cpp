// Merging the follow-ups of a library: meetings of 12 commitments and 3 resolutions each, with 300
// people, a third of whom have two aliases, and 500 corrections. The cost is to grow as the number
// of meetings does.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "OmbrixMemoryKit/Identity/CommitmentID.h"
#include "OmbrixMemoryKit/Identity/ISODate.h"
#include "OmbrixMemoryKit/Ledger/FollowUpsMerger.h"

namespace ombrix {
namespace {

constexpr int people = 300, commitmentsEach = 12, resolutionsEach = 3;

struct Library {
    std::vector<LandSidecar> sidecars;
    std::vector<Correction> corrections;
    PersonAliases aliases;
    std::string today;
};

std::string nameOf(int person) { return "Person " + std::to_string(person) + " Somebody"; }

std::string keyOf(int person) { return "name:person " + std::to_string(person) + " somebody"; }

std::string idOf(const LandSidecar& sidecar, std::size_t commitment, const PersonAliases& aliases) {
    const auto& promised = sidecar.output.commitments[commitment];
    return CommitmentID::make(sidecar.meetingKey, promised.what,
                              aliases.canonical(promised.whoKey));
}

/// One meeting in five repeats what the one before it promised.
LandCommitment commitment(std::mt19937& random, int meeting, int number, const Calendar& calendar,
                          Instant day) {
    const int person = static_cast<int>(random() % people);
    const int said = meeting % 5 == 0 ? meeting - 1 : meeting;
    LandCommitment result{
        .direction =
            number % 3 == 0 ? CommitmentDirection::owedToUser : CommitmentDirection::userOwes,
        .who = nameOf(person),
        .whoKey = keyOf(person),
        .what = "Send the revised price list no. " + std::to_string(said * 100 + number),
        .quote = "So I'll send you the revised list by Friday, promised, as we said before.",
        .speaker = "Me",
        .dueRaw = "Friday",
        .certainty = number == 11 ? Certainty::read : Certainty::recorded};
    if (number % 2 == 0)
        result.due = ISODate::string(day + std::chrono::days(random() % 20), calendar);
    return result;
}

Library library(int meetings) {
    std::mt19937 random(7);
    const Calendar calendar = Calendar::gregorianUtc();
    const Instant start = *ISODate::date("2023-01-02");
    Library result;
    for (int person = 0; person < people; person += 3)
        result.aliases.add({.canonical = "email:p" + std::to_string(person) + "@example.com",
                            .aliases = {keyOf(person), "name:p" + std::to_string(person)},
                            .display = nameOf(person)});
    for (int meeting = 0; meeting < meetings; ++meeting) {
        const Instant day = start + std::chrono::hours(24LL * 1000 * meeting / meetings);
        LandSidecar sidecar{.meetingKey = "m-00000000" + std::to_string(10'000'000 + meeting),
                            .title = "Weekly of team " + std::to_string(meeting % 40),
                            .date = ISODate::string(day, calendar),
                            .landedAt = day};
        for (int i = 0; i < commitmentsEach; ++i)
            sidecar.output.commitments.push_back(commitment(random, meeting, i, calendar, day));
        for (int i = 0; i < resolutionsEach && meeting > 0; ++i) {
            const auto& earlier = result.sidecars[random() % result.sidecars.size()];
            sidecar.output.resolutions.push_back(
                {.id = idOf(earlier, random() % commitmentsEach, result.aliases),
                 .status =
                     i == 0 ? LandResolution::Status::renegotiated : LandResolution::Status::done,
                 .quote = "I have sent it on Monday."});
        }
        result.today = sidecar.date;
        result.sidecars.push_back(std::move(sidecar));
    }
    for (int i = 0; i < 500; ++i) {
        const auto& sidecar = result.sidecars[random() % result.sidecars.size()];
        const auto kind = static_cast<Correction::Kind>(
            std::vector{Correction::Kind::notACommitment, Correction::Kind::done,
                        Correction::Kind::reword, Correction::Kind::important}[random() % 4]);
        result.corrections.push_back(
            {.kind = kind,
             .id = idOf(sidecar, random() % commitmentsEach, result.aliases),
             .text = "Send it",
             .on = result.today});
    }
    return result;
}

void mergesFollowUps(benchmark::State& state) {
    const Library all = library(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        auto ledger = FollowUpsMerger::merge(all.sidecars, all.corrections, all.today, all.aliases);
        state.PauseTiming();  // giving the rows back is not merging
        ledger = {};
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0) * commitmentsEach);
    state.SetComplexityN(state.range(0));
}
BENCHMARK(mergesFollowUps)
    ->Unit(benchmark::kMillisecond)
    ->Arg(1'000)
    ->Arg(5'000)
    ->Arg(10'000)
    ->Arg(20'000)
    ->Complexity(benchmark::oN);
}  // namespace
}  // namespace ombrix
