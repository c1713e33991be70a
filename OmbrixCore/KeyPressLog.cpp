#include "OmbrixCore/KeyPressLog.h"

#include <algorithm>
#include <numeric>

#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/Paths.h"

namespace ombrix {

Json::Value encode(const KeyPressSummary& summary) {
    return Json::object({{"bundleID", summary.bundleID},
                         {"kind", summary.kind},
                         {"outcome", summary.outcome},
                         {"path", summary.path},
                         {"partialRead", summary.partialRead},
                         {"toMark", summary.toMark},
                         {"toMeetingNamed", summary.toMeetingNamed},
                         {"toFirstDraft", summary.toFirstDraft},
                         {"toInserted", summary.toInserted},
                         {"at", summary.at},
                         {"source", summary.source},
                         {"offered", summary.offered}});
}

KeyPressSummary decode(Json::As<KeyPressSummary>, const Json::Object& in) {
    return {.bundleID = in.required<std::string>("bundleID"),
            .kind = in.optional<std::string>("kind"),
            .outcome = in.required<std::string>("outcome"),
            .path = in.optional<std::string>("path"),
            .partialRead = in.required<bool>("partialRead"),
            .toMark = in.optional<double>("toMark"),
            .toMeetingNamed = in.optional<double>("toMeetingNamed"),
            .toFirstDraft = in.optional<double>("toFirstDraft"),
            .toInserted = in.optional<double>("toInserted"),
            .at = in.required<Instant>("at"),
            .source = in.optional<std::string>("source"),
            .offered = in.optional<bool>("offered")};
}

namespace KeyPressLog {
namespace {

constexpr std::string_view inserted = "inserted";
constexpr std::string_view pull = "pull";
}  // namespace

std::string url(std::string_view support) { return Paths::joined(support, fileName); }

Json::Value encode(const AppStats& stats) {
    return Json::object({{"bundleID", stats.bundleID},
                         {"presses", stats.presses},
                         {"inserted", stats.inserted},
                         {"medianToMeetingNamed", stats.medianToMeetingNamed},
                         {"medianToFirstDraft", stats.medianToFirstDraft},
                         {"outcomes", stats.outcomes},
                         {"sources", stats.sources},
                         {"offered", stats.offered},
                         {"pulled", stats.pulled}});
}

void forEach(const std::string& path, const std::function<void(const KeyPressSummary&)>& visit) {
    Json::Parser parser;
    Files::forEachLine(path, [&](std::string_view line) {
        if (line.empty()) return;
        std::optional<KeyPressSummary> summary;
        try {
            summary = Json::decode<KeyPressSummary>(parser.parse(line));
        } catch (const Json::SyntaxError&) {
        } catch (const Json::DecodingError&) {
        }
        if (summary) visit(*summary);
    });
}

std::vector<KeyPressSummary> read(const std::string& path) {
    std::vector<KeyPressSummary> summaries;
    forEach(path, [&](const KeyPressSummary& summary) { summaries.push_back(summary); });
    return summaries;
}

void Tally::add(const KeyPressSummary& summary) {
    ++count_;
    auto entry = apps_.find(summary.bundleID);
    if (entry == apps_.end())
        entry = apps_.emplace(summary.bundleID, App{{.bundleID = summary.bundleID}}).first;
    App& app = entry->second;
    const bool landed = summary.outcome == inserted;
    if (summary.kind == pull) {
        if (landed) ++app.stats.pulled;
        return;
    }
    ++app.stats.presses;
    ++app.stats.outcomes[summary.outcome];
    if (summary.source) ++app.stats.sources[*summary.source];
    if (summary.offered == true) ++app.stats.offered;
    if (!landed) return;
    ++app.stats.inserted;
    if (summary.toMeetingNamed) app.toMeetingNamed.push_back(*summary.toMeetingNamed);
    if (summary.toFirstDraft) app.toFirstDraft.push_back(*summary.toFirstDraft);
}

std::vector<AppStats> Tally::stats() const {
    std::vector<AppStats> rows;
    for (const auto& [bundleID, app] : apps_) {
        AppStats row = app.stats;
        row.medianToMeetingNamed = median(app.toMeetingNamed);
        row.medianToFirstDraft = median(app.toFirstDraft);
        rows.push_back(std::move(row));
    }
    std::ranges::stable_sort(rows, std::greater<>(), &AppStats::presses);  // ids stay ascending
    return rows;
}

std::vector<AppStats> stats(std::span<const KeyPressSummary> summaries) {
    Tally tally;
    for (const KeyPressSummary& summary : summaries) tally.add(summary);
    return tally.stats();
}

std::optional<double> median(std::vector<double> values) {
    if (values.empty()) return std::nullopt;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    if (values.size() % 2 == 1) return *middle;
    return std::midpoint(*std::max_element(values.begin(), middle), *middle);
}
}  // namespace KeyPressLog
}  // namespace ombrix
