#include "OmbrixMarkdownKit/Library/LibrarySearch.h"

#include <algorithm>
#include <utility>

#include "OmbrixMarkdownKit/Library/TranscriptReader.h"
#include "OmbrixMarkdownKit/Search/TermEvidence.h"
#include "OmbrixMarkdownKit/Words/KeywordMatcher.h"

namespace ombrix {
namespace {

/// One file and what the search knows of it.
struct Entry {
    std::string id;
    std::string start;  ///< for `LibraryOrder`; empty until known
    DocumentEvidence evidence;
};

void sortNewestFirst(std::vector<Entry>& entries) {
    const auto place = [](const Entry& entry) { return LibraryOrder{entry.start, entry.id}; };
    std::ranges::sort(entries, std::less<>(), place);
}

/// Keeps what scores need. The places of each keyword are collected again for the few files that
/// are shown: for a long question over a large library they would fill the memory.
void forgetPlaces(DocumentEvidence& evidence) {
    for (TermEvidence& term : evidence.terms) {
        term.turnIndexes = std::vector<std::size_t>();
        term.bodyIndexes = std::vector<std::size_t>();
    }
    evidence.terms.shrink_to_fit();
}

/// The scope without `lastN`, which can only be applied once the others are in order.
AnswerScope withoutCount(AnswerScope scope) {
    scope.lastN.reset();
    return scope;
}

class Search {
  public:
    Search(const std::vector<std::string>& keywords, const AnswerScope& scope,
           const RankedTranscriptSearch::AnswerRankOptions& options)
        : matcher_(keywords),
          collector_(matcher_, RankedTranscriptSearch::speakerQuestion(options)),
          scope_(scope),
          filter_(withoutCount(scope)),
          options_(options) {}

    LibrarySearchResult run(std::vector<std::string> paths, std::size_t limit,
                            WithoutHits withoutHits);

  private:
    std::vector<Entry> candidates(std::vector<std::string> paths);
    void readAll(std::vector<Entry>& entries);
    void readNewest(std::vector<Entry>& entries, std::size_t count);
    bool read(Entry& entry);
    bool admitsFacts(const std::string& id, const TranscriptDocument& header) const;
    void show(const Entry& entry, const RankedTranscriptSearch::ScoredHit& hit,
              LibrarySearchResult& result);

    KeywordMatcher matcher_;
    EvidenceCollector collector_;
    const AnswerScope& scope_;
    AnswerScope filter_;
    const RankedTranscriptSearch::AnswerRankOptions& options_;
    TranscriptReader reader_;
};

bool Search::admitsFacts(const std::string& id, const TranscriptDocument& header) const {
    return filter_.admitsFacts(id, header.date, header.participants) && filter_.admitsFolder(id);
}

/// The files that may pass the scope. Most are judged by their frontmatter without being read
/// whole; a file that `peek` cannot judge stays in.
std::vector<Entry> Search::candidates(std::vector<std::string> paths) {
    std::vector<Entry> entries;
    entries.reserve(paths.size());
    for (auto& path : paths) {
        Entry entry{.id = std::move(path)};
        if (!scope_.isAll()) {
            if (const auto header = reader_.peek(entry.id)) {
                if (!admitsFacts(entry.id, *header)) continue;
                entry.start = startOf(*header);
            } else if (scope_.lastN && !read(entry)) {
                continue;  // only its start tells its place among the newest
            }
        }
        entries.push_back(std::move(entry));
    }
    return entries;
}

/// Collects the evidence of a file; false when it is no transcript in scope.
bool Search::read(Entry& entry) {
    const auto view = reader_.view(entry.id);
    if (!view || !admitsFacts(entry.id, view->header)) return false;
    if (filter_.speaker) {
        const auto document = reader_.document(entry.id);
        if (!document || !filter_.admits(entry.id, *document)) return false;
        entry.evidence = collector_.collect(*document);
    } else {
        entry.evidence = collector_.collect(view->header, view->sections);
    }
    forgetPlaces(entry.evidence);
    entry.start = startOf(view->header);
    return true;
}

void Search::readAll(std::vector<Entry>& entries) {
    std::erase_if(entries, [this](Entry& entry) { return !read(entry); });
    sortNewestFirst(entries);
}

void Search::readNewest(std::vector<Entry>& entries, std::size_t count) {
    sortNewestFirst(entries);
    std::vector<Entry> newest;
    for (auto& entry : entries) {
        if (newest.size() == count) break;
        if (read(entry)) newest.push_back(std::move(entry));
    }
    entries = std::move(newest);
}

/// Adds the entry to the hits, unless its file is no longer a transcript.
void Search::show(const Entry& entry, const RankedTranscriptSearch::ScoredHit& hit,
                  LibrarySearchResult& result) {
    auto document = reader_.document(entry.id);
    if (!document) return;
    RankedTranscriptSearch::DocumentMatch match;
    if (hit.matchedKeywords > 0)
        match = RankedTranscriptSearch::matchFromEvidence(*document, collector_.collect(*document),
                                                          matcher_);
    result.hits.push_back({.id = entry.id,
                           .document = std::move(*document),
                           .matchedKeywords = hit.matchedKeywords,
                           .match = std::move(match),
                           .relevance = hit.relevance});
}

LibrarySearchResult Search::run(std::vector<std::string> paths, std::size_t limit,
                                WithoutHits withoutHits) {
    auto entries = candidates(std::move(paths));
    if (scope_.lastN)
        readNewest(entries, static_cast<std::size_t>(std::max<std::int64_t>(*scope_.lastN, 0)));
    else
        readAll(entries);

    std::vector<DocumentEvidence> evidence;
    evidence.reserve(entries.size());
    for (auto& entry : entries) evidence.push_back(std::move(entry.evidence));
    auto hits = RankedTranscriptSearch::score(evidence, entries.size(), matcher_.keywords().size(),
                                              options_);
    LibrarySearchResult result{.scannedCount = static_cast<std::int64_t>(entries.size()),
                               .totalMatched = static_cast<std::int64_t>(hits.size())};
    if (hits.empty() && withoutHits == WithoutHits::showNewest)
        for (std::size_t i = 0; i < entries.size(); ++i) hits.push_back({.index = i});
    for (const auto& hit : hits) {
        if (result.hits.size() == limit) break;
        show(entries[hit.index], hit, result);
    }
    return result;
}
}  // namespace

LibrarySearchResult searchLibrary(const TranscriptLibrary& library,
                                  const std::vector<std::string>& keywords,
                                  const AnswerScope& scope,
                                  const RankedTranscriptSearch::AnswerRankOptions& options,
                                  std::size_t limit, WithoutHits withoutHits) {
    Search search(keywords, scope, options);
    return search.run(library.paths(), limit, withoutHits);
}
}  // namespace ombrix
