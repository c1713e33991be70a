#include "OmbrixMarkdownKit/Library/LibrarySearch.h"

#include <algorithm>
#include <utility>

#include "OmbrixMarkdownKit/Library/TranscriptReader.h"
#include "OmbrixMarkdownKit/Search/TermEvidence.h"
#include "OmbrixMarkdownKit/Words/KeywordMatcher.h"
#include "OmbrixPlatform/ForkJoin.h"

namespace ombrix {
namespace {

/// One file and what the search knows of it.
struct Entry {
    std::string id;
    std::string start;  ///< for `LibraryOrder`; empty until known
    DocumentEvidence evidence;
};

void sortNewestFirst(std::vector<Entry>& entries) {
    ombrix::sortNewestFirst(entries, [](const Entry& entry) {
        return LibraryOrder{entry.start, entry.id};
    });
}

/// The scope without `lastN`, which can only be applied once the others are in order.
AnswerScope withoutCount(AnswerScope scope) {
    scope.lastN.reset();
    return scope;
}

/// What all workers of a search read.
struct Question {
    Question(const std::vector<std::string>& keywords, const AnswerScope& given,
             const RankedTranscriptSearch::AnswerRankOptions& rankOptions)
        : matcher(keywords), scope(given), filter(withoutCount(given)), options(rankOptions) {}

    bool admitsFacts(const std::string& id, const TranscriptDocument& header) const {
        return filter.admitsFacts(id, header.date, header.participants) && filter.admitsFolder(id);
    }

    KeywordMatcher matcher;
    const AnswerScope& scope;
    AnswerScope filter;
    const RankedTranscriptSearch::AnswerRankOptions& options;
};

/// Reads files one after the other; several work side by side.
class Worker {
  public:
    explicit Worker(const Question& question)
        : question_(question),
          collector_(question.matcher, RankedTranscriptSearch::speakerQuestion(question.options)),
          reader_(Files::From::walk) {}

    bool mayPass(Entry& entry);
    bool read(Entry& entry);
    void show(const Entry& entry, const RankedTranscriptSearch::ScoredHit& hit,
              LibrarySearchResult& result);

  private:
    const Question& question_;
    EvidenceCollector collector_;
    TranscriptReader reader_;
};

/// False for a file outside the scope. Most are judged by their frontmatter without being read
/// whole; a file that `peek` cannot judge stays in.
bool Worker::mayPass(Entry& entry) {
    if (const auto header = reader_.peek(entry.id)) {
        if (!question_.admitsFacts(entry.id, *header)) return false;
        entry.start = startOf(*header);
        return true;
    }
    // Only its start tells its place among the newest.
    return !question_.scope.lastN || read(entry);
}

/// Collects the evidence of a file; false when it is no transcript in scope.
bool Worker::read(Entry& entry) {
    const auto view = reader_.view(entry.id);
    if (!view || !question_.admitsFacts(entry.id, view->header)) return false;
    if (question_.filter.speaker) {
        const auto document = reader_.document(entry.id);
        if (!document || !question_.filter.admits(entry.id, *document)) return false;
        entry.evidence = collector_.collect(*document);
        forgetPlaces(entry.evidence);
    } else {
        // The places of each keyword are collected for the few files that are shown.
        entry.evidence = collector_.count(view->header, view->sections);
    }
    entry.start = startOf(view->header);
    return true;
}

/// Adds the entry to the hits, unless its file is no longer a transcript.
void Worker::show(const Entry& entry, const RankedTranscriptSearch::ScoredHit& hit,
                  LibrarySearchResult& result) {
    auto document = reader_.document(entry.id);
    if (!document) return;
    RankedTranscriptSearch::DocumentMatch match;
    if (hit.matchedKeywords > 0)
        match = RankedTranscriptSearch::matchFromEvidence(*document, collector_.collect(*document),
                                                          question_.matcher);
    result.hits.push_back({.id = entry.id,
                           .document = std::move(*document),
                           .matchedKeywords = hit.matchedKeywords,
                           .match = std::move(match),
                           .relevance = hit.relevance});
}

/// Keeps the entries for which a worker's `test` is true, in their order.
void keep(std::vector<Entry>& entries, const Question& question, bool (Worker::*test)(Entry&)) {
    std::vector<char> isKept(entries.size());
    ForkJoin::run(entries.size(), ForkJoin::workersFor(entries.size(), filesPerReader),
                  [&](ForkJoin::Places& places) {
                      Worker worker(question);
                      places.take([&](std::size_t i) { isKept[i] = (worker.*test)(entries[i]); });
                  });
    std::size_t place = 0;
    std::erase_if(entries, [&](const Entry&) { return isKept[place++] == 0; });
}

/// The files that may pass the scope.
std::vector<Entry> candidates(std::vector<std::string> paths, const Question& question) {
    std::vector<Entry> entries;
    entries.reserve(paths.size());
    for (auto& path : paths) entries.push_back({.id = std::move(path)});
    if (!question.scope.isAll()) keep(entries, question, &Worker::mayPass);
    return entries;
}

void readAll(std::vector<Entry>& entries, const Question& question) {
    keep(entries, question, &Worker::read);
    sortNewestFirst(entries);
}

void readNewest(std::vector<Entry>& entries, std::size_t count, Worker& worker) {
    sortNewestFirst(entries);
    std::vector<Entry> newest;
    for (auto& entry : entries) {
        if (newest.size() == count) break;
        if (worker.read(entry)) newest.push_back(std::move(entry));
    }
    entries = std::move(newest);
}
}  // namespace

LibrarySearchResult searchLibrary(const TranscriptLibrary& library,
                                  const std::vector<std::string>& keywords,
                                  const AnswerScope& scope,
                                  const RankedTranscriptSearch::AnswerRankOptions& options,
                                  std::size_t limit, WithoutHits withoutHits) {
    const Question question(keywords, scope, options);
    Worker worker(question);
    auto entries = candidates(library.paths(), question);
    if (scope.lastN)
        readNewest(entries, static_cast<std::size_t>(std::max<std::int64_t>(*scope.lastN, 0)),
                   worker);
    else
        readAll(entries, question);

    std::vector<DocumentEvidence> evidence;
    evidence.reserve(entries.size());
    for (auto& entry : entries) evidence.push_back(std::move(entry.evidence));
    auto hits = RankedTranscriptSearch::score(evidence, entries.size(),
                                              question.matcher.keywords().size(), options);
    LibrarySearchResult result{.scannedCount = static_cast<std::int64_t>(entries.size()),
                               .totalMatched = static_cast<std::int64_t>(hits.size())};
    if (hits.empty() && withoutHits == WithoutHits::showNewest)
        for (std::size_t i = 0; i < entries.size(); ++i) hits.push_back({.index = i});
    for (const auto& hit : hits) {
        if (result.hits.size() == limit) break;
        worker.show(entries[hit.index], hit, result);
    }
    return result;
}
}  // namespace ombrix
