#include "OmbrixMarkdownKit/Import/TranscriptImportRunner.h"

#include <algorithm>
#include <exception>
#include <unordered_map>
#include <utility>

#include "OmbrixMarkdownKit/Import/ImportDestinations.h"
#include "OmbrixMarkdownKit/Import/TranscriptImport.h"
#include "OmbrixPlatform/Digest.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/NewFiles.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::TranscriptImportRunner {
namespace {

using Meetings = std::vector<TranscriptImport::Result>;

constexpr std::string_view notText = "not readable as text";
constexpr std::string_view noFreeName = "no free name in the destination folder";

Outcome unreadable(std::string_view why) { return Unreadable{std::string(why)}; }

Outcome outcomeOf(TranscriptImport::Failure::Kind kind) {
    using Kind = TranscriptImport::Failure::Kind;
    if (kind == Kind::noSpeech) return NoSpeech{};
    if (kind == Kind::alreadyOmbrix) return AlreadyOmbrix{};
    return Unrecognized{};
}

/// What `work` returns, or why it could not.
template <typename Work>
Outcome orFailure(const Work& work) {
    try {
        return work();
    } catch (const Files::Error& error) {
        return unreadable(error.what());
    }
}

/// The meetings of an export, or why there are none.
std::variant<Meetings, Outcome> converted(std::string_view text, const std::string& source,
                                          const std::optional<std::string>& fallbackDate) {
    try {
        return TranscriptImport::convertAll(text, Paths::lastComponent(source), fallbackDate);
    } catch (const TranscriptImport::Failure& failure) {
        return outcomeOf(failure.kind());
    } catch (const std::exception& error) {  // such as too little memory
        return unreadable(error.what());
    }
}

Outcome imported(const Meetings& meetings, std::vector<std::string> destinations) {
    std::int64_t turns = 0;
    for (const auto& meeting : meetings) turns += meeting.turnCount;
    const auto format = meetings.front().format;
    if (meetings.size() == 1) return Imported{std::move(destinations.front()), format, turns};
    return ImportedMany{std::move(destinations), format, turns};
}

MeetingNumber number(std::size_t index, std::size_t count) {
    return count == 1 ? MeetingNumber{} : MeetingNumber{index + 1, count};
}

/// Exists while the meetings of an export with several get their names. If a run ends in between,
/// the next one finds it and knows that the missing meetings were not removed by the person.
std::string interruptionMark(const std::string& source, const std::string& folder) {
    constexpr std::size_t digits = 16;
    const std::string path = Paths::standardised(source, Files::workingDirectory());
    return Paths::joined(folder, ".ombrix-import-" + Digest::sha256Hex(path).substr(0, digits));
}

bool isCandidate(std::string_view path) {
    const std::string extension = Text::lowercased(Paths::extension(path));
    return std::ranges::find(candidateExtensions, extension) != candidateExtensions.end();
}

/// One import of one or many files. The outcomes are complete after `finish`.
class Run {
  public:
    explicit Run(const Calendar& calendar) : calendar_(calendar) {}

    void import(const std::string& source, const std::string& folder) {
        outcomes_.push_back({source, orFailure([&] { return outcomeFor(source, folder); })});
    }

    std::vector<FileOutcome> finish() {
        commit();
        return std::move(outcomes_);
    }

  private:
    /// An outcome that holds if its files get their names.
    struct Pending {
        std::size_t outcome = 0;
        bool resumes = false;  ///< an earlier run gave names to some
        std::vector<std::string> destinations;
        std::string mark;                  ///< to be removed then; empty for one meeting
        std::vector<std::string> waiting;  ///< those of the destinations without their names yet
    };

    Outcome outcomeFor(const std::string& source, const std::string& folder) {
        const auto text = Files::text(source, largestExport);
        if (!text) return unreadable(notText);
        const auto place = destinations_.place(source, folder);
        if (place.exists && !place.isTaken) {
            destinations_.claim(place.path);
            return AlreadyImported{place.path};
        }
        const auto earlier = destinations_.earlierMeetings(source, folder);
        const bool wasInterrupted =
            !earlier.empty() && Files::exists(interruptionMark(source, folder));
        if (!earlier.empty() && !wasInterrupted) {
            for (const auto& meeting : earlier) destinations_.claim(meeting.path);
            return AlreadyImported{earlier.front().path};
        }
        auto meetings = converted(*text, source, modifiedDay(source, calendar_));
        if (const auto* failure = std::get_if<Outcome>(&meetings)) return *failure;
        return write(std::get<Meetings>(meetings), source, folder, wasInterrupted);
    }

    Outcome write(const Meetings& meetings, const std::string& source, const std::string& folder,
                  bool wasInterrupted) {
        Files::createDirectories(folder);
        Pending pending{.outcome = outcomes_.size(), .resumes = wasInterrupted};
        if (meetings.size() > 1) {
            pending.mark = interruptionMark(source, folder);
            Files::writeAtomically(pending.mark, "");
        }
        try {
            const bool allHaveNames = addAll(meetings, source, folder, pending);
            if (!allHaveNames) {
                takeBack(pending);
                return unreadable(noFreeName);
            }
        } catch (...) {
            takeBack(pending);
            throw;
        }
        auto destinations = pending.destinations;
        pending_.push_back(std::move(pending));
        return imported(meetings, std::move(destinations));
    }

    /// False when there is no name left for one of them.
    bool addAll(const Meetings& meetings, const std::string& source, const std::string& folder,
                Pending& pending) {
        for (std::size_t i = 0; i < meetings.size(); ++i) {
            const auto place = destinations_.place(source, folder, number(i, meetings.size()));
            if (place.isTaken) return false;
            if (!place.exists) {  // else it is from the run that was interrupted
                if (files_.waiting() == NewFiles::mostWaiting()) {
                    commit();
                    pending.waiting.clear();
                }
                files_.add(place.path, meetings[i].markdown);
                pending.waiting.push_back(place.path);
            }
            destinations_.claim(place.path);
            pending.destinations.push_back(place.path);
        }
        return true;
    }

    /// Drops the files that wait for their names. Those that have theirs stay, and with them the
    /// mark, so that a later run completes them.
    void takeBack(const Pending& pending) {
        files_.discardLast(pending.waiting.size());
        for (const auto& path : pending.waiting) destinations_.release(path);
        if (isWithoutNames(pending, pending.waiting.size())) removeMark(pending);
    }

    /// True when none of its files has its name: `waiting` do not yet, the others failed.
    bool isWithoutNames(const Pending& pending, std::size_t waiting) const {
        if (pending.resumes) return false;
        const auto failed = std::ranges::count_if(
            pending.destinations, [this](const auto& path) { return failed_.contains(path); });
        return static_cast<std::size_t>(failed) + waiting == pending.destinations.size();
    }

    static void removeMark(const Pending& pending) {
        if (!pending.mark.empty()) Files::remove(pending.mark);
    }

    void commit() {
        for (auto& [path, error] : files_.commit()) failed_.emplace(path, error.what());
        for (const Pending& pending : pending_) {
            const auto failure = std::ranges::find_if(
                pending.destinations, [this](const auto& path) { return failed_.contains(path); });
            const bool isWhole = failure == pending.destinations.end();
            if (!isWhole) outcomes_[pending.outcome].outcome = Unreadable{failed_.at(*failure)};
            if (isWhole || isWithoutNames(pending, 0)) removeMark(pending);
        }
        pending_.clear();
    }

    const Calendar& calendar_;
    ImportDestinations destinations_;
    NewFiles files_;
    std::vector<FileOutcome> outcomes_;
    std::vector<Pending> pending_;
    std::unordered_map<std::string, std::string> failed_;  ///< paths with the reason
};

std::vector<std::string> candidates(const std::string& folder,
                                    const std::function<bool(const std::string&)>& isWanted) {
    std::vector<std::string> paths;
    Files::walk(folder, [&](std::string path) {
        if (isCandidate(path) && isWanted(path)) paths.push_back(std::move(path));
    });
    std::ranges::sort(paths);
    return paths;
}

/// The destination as a path that starts with `folder`, when it is below it.
std::optional<std::string> partOf(const std::string& folder, const std::string& destination) {
    const std::string outer = Paths::joined(Files::realPath(folder).value_or(folder), "");
    const std::string inner = Files::realPath(destination).value_or(destination);
    if (inner.size() <= outer.size() || !inner.starts_with(outer)) return std::nullopt;
    return Paths::joined(folder, inner.substr(outer.size()));
}

std::string folderFor(const std::string& source, const std::optional<std::string>& destination) {
    return destination ? *destination : std::string(Paths::parent(source));
}

Outcome planned(const std::string& source, const std::string& folder, ImportDestinations& names) {
    const auto text = Files::text(source, largestExport);
    if (!text) return unreadable(notText);
    auto meetings = converted(*text, source, std::nullopt);
    if (const auto* failure = std::get_if<Outcome>(&meetings)) {
        if (std::holds_alternative<Unreadable>(*failure)) return Unrecognized{};
        return *failure;
    }
    const auto& results = std::get<Meetings>(meetings);
    std::vector<std::string> destinations;
    for (std::size_t i = 0; i < results.size(); ++i)
        destinations.push_back(names.place(source, folder, number(i, results.size())).path);
    return imported(results, std::move(destinations));
}
}  // namespace

FileOutcome importFile(const std::string& source, const std::string& folder,
                       const Calendar& calendar) {
    Run run(calendar);
    run.import(source, folder);
    return run.finish().front();
}

std::vector<FileOutcome> importFolder(const std::string& folder,
                                      const std::optional<std::string>& destination,
                                      std::string_view memoryName, const Calendar& calendar,
                                      const Progress& progress) {
    std::vector<std::string> skipped{Paths::joined(Paths::joined(folder, memoryName), "")};
    if (destination)
        if (const auto part = partOf(folder, *destination))
            skipped.push_back(Paths::joined(*part, ""));
    const auto sources = candidates(folder, [&](const std::string& path) {
        return std::ranges::none_of(
            skipped, [&](const auto& beginning) { return path.starts_with(beginning); });
    });
    Run run(calendar);
    for (std::size_t i = 0; i < sources.size(); ++i) {
        run.import(sources[i], folderFor(sources[i], destination));
        if (progress) progress(i + 1, sources.size());
    }
    return run.finish();
}

std::vector<FileOutcome> plan(const std::string& source, bool isDirectory,
                              const std::optional<std::string>& destination,
                              const Progress& progress) {
    std::vector<std::string> sources{source};
    if (isDirectory) {
        sources = candidates(source, [](const std::string& path) {
            return !Text::contains(path, "/Memory/") && !Text::contains(path, "/.ombrix/") &&
                   Files::isRegular(path);
        });
    }
    ImportDestinations names;
    std::vector<FileOutcome> outcomes;
    for (const auto& file : sources) {
        outcomes.push_back(
            {file, orFailure([&] { return planned(file, folderFor(file, destination), names); })});
        if (progress) progress(outcomes.size(), sources.size());
    }
    return outcomes;
}

std::string destinationURL(const std::string& source, const std::string& folder) {
    return ImportDestinations().place(source, folder).path;
}

std::string destinationURL(const std::string& source, const std::string& folder, std::size_t index,
                           std::size_t count) {
    return ImportDestinations().place(source, folder, {index, count}).path;
}

std::optional<std::string> modifiedDay(const std::string& path, const Calendar& calendar) {
    const auto instant = Files::modified(path);
    if (!instant) return std::nullopt;
    return calendar.dayString(*instant);
}
}  // namespace ombrix::TranscriptImportRunner
