#include "OmbrixMarkdownKit/Search/TermEvidence.h"

#include <algorithm>
#include <deque>

namespace ombrix {
namespace {

using TranscriptSections::Paragraph;
using TranscriptSections::Paragraphs;
using TranscriptSections::Section;
using TranscriptSections::Sections;

constexpr std::array<Section, 4> searchedSections = {Section::notes, Section::summary,
                                                     Section::actionItems, Section::keyMoments};

double weighted(std::size_t times, double weight) { return static_cast<double>(times) * weight; }
}  // namespace

BodyFields bodyFields(const TranscriptDocument& document) {
    return {document.notes, document.summary, document.actionItems, document.keyMoments};
}

void forgetPlaces(DocumentEvidence& evidence) {
    for (TermEvidence& term : evidence.terms) {
        term.turnIndexes = std::vector<std::size_t>();
        term.bodyIndexes = std::vector<std::size_t>();
    }
    evidence.terms.shrink_to_fit();
}

EvidenceCollector::EvidenceCollector(const KeywordMatcher& matcher,
                                     std::optional<SpeakerQuestion> speaker)
    : matcher_(matcher),
      speaker_(std::move(speaker)),
      counter_(matcher),
      slots_(matcher.keywords().size()) {}

DocumentEvidence EvidenceCollector::collect(const TranscriptDocument& document) {
    begin();
    addHeader(document);
    addBodies(bodyFields(document));
    for (std::size_t i = 0; i < document.turns.size(); ++i) {
        counter_.addWhole(document.turns[i].text);
        finishTurn(i);
    }
    auto evidence = finish(document);
    evidence.userSpoke = speaker_ && !evidence.terms.empty() &&
                         Participation::spoke(document, speaker_->identity, speaker_->minTurns);
    return evidence;
}

DocumentEvidence EvidenceCollector::collect(const TranscriptDocument& header,
                                            const Sections& sections) {
    begin();
    addHeader(header);
    addBodies(sections);
    addTurns(sections.raw(Section::transcript));
    return finish(header, sections);
}

DocumentEvidence EvidenceCollector::count(const TranscriptDocument& header,
                                          const Sections& sections) {
    begin();
    addHeader(header);
    addBodies(sections);
    const auto section = sections.raw(Section::transcript);
    if (countInTurns(section)) {
        for (const auto& [keyword, times] : counter_.finish())
            term(keyword).tf += static_cast<double>(times);
    } else {
        counter_.forget();
        addTurns(section);
    }
    auto evidence = finish(header, sections);
    forgetPlaces(evidence);
    return evidence;
}

void EvidenceCollector::begin() {
    ++document_;
    terms_.clear();
}

DocumentEvidence EvidenceCollector::finish(const TranscriptDocument& header) {
    std::ranges::sort(terms_, {}, &TermEvidence::keyword);
    return {.date = header.date, .terms = std::move(terms_)};
}

DocumentEvidence EvidenceCollector::finish(const TranscriptDocument& header,
                                           const Sections& sections) {
    auto evidence = finish(header);
    evidence.userSpoke =
        speaker_ && !evidence.terms.empty() && userSpoke(sections.raw(Section::transcript));
    return evidence;
}

TermEvidence& EvidenceCollector::term(std::size_t keyword) {
    Slot& slot = slots_[keyword];
    if (slot.document != document_) {
        slot = {document_, terms_.size()};
        terms_.push_back({.keyword = keyword});
    }
    return terms_[slot.index];
}

const std::vector<KeywordMatcher::Counter::Found>& EvidenceCollector::count(std::string_view text) {
    counter_.addWhole(text);
    return counter_.finish();
}

void EvidenceCollector::addHeader(const TranscriptDocument& header) {
    for (const auto& [keyword, times] : count(header.title)) {
        TermEvidence& found = term(keyword);
        found.tf += weighted(times, titleTermWeight);
        found.titleHit = true;
    }
    for (const std::string& participant : header.participants) {
        for (const auto& [keyword, times] : count(participant)) {
            TermEvidence& found = term(keyword);
            found.tf += weighted(times, participantTermWeight);
            found.participantHit = true;
        }
    }
}

void EvidenceCollector::addBodies(const BodyFields& bodies) {
    for (std::size_t i = 0; i < bodies.size(); ++i) {
        for (const auto& [keyword, times] : count(bodies[i])) {
            TermEvidence& found = term(keyword);
            found.tf += static_cast<double>(times);
            found.bodyIndexes.push_back(i);
        }
    }
}

void EvidenceCollector::addBodies(const Sections& sections) {
    std::array<std::string, searchedSections.size()> storage;
    BodyFields bodies;
    for (std::size_t i = 0; i < bodies.size(); ++i)
        bodies[i] = sections.text(searchedSections[i], storage[i]);
    addBodies(bodies);
}

void EvidenceCollector::finishTurn(std::size_t index) {
    for (const auto& [keyword, times] : counter_.finish()) {
        TermEvidence& found = term(keyword);
        found.tf += static_cast<double>(times);
        found.turnIndexes.push_back(index);
    }
}

// One scan runs through the whole section; turns are cut only when it finds a candidate, and words
// only at the candidates, unless the turn has one that needs all of its words.
void EvidenceCollector::addTurns(std::string_view section) {
    KeywordMatcher::Places places(matcher_, section);
    std::size_t place = places.next(0);
    if (place == section.size()) return;
    std::size_t turn = 0;  // counts from 1; 0 before the first
    bool needsAllWords = false;
    const auto finish = [&] {
        if (needsAllWords) {
            counter_.forget();
            for (const auto piece : pieces_) counter_.add(piece);
        }
        if (turn > 0) finishTurn(turn - 1);
        needsAllWords = false;
        pieces_.clear();
    };
    pieces_.clear();
    Paragraphs paragraphs(section);
    for (Paragraph paragraph; paragraphs.next(paragraph);) {
        if (paragraph.opensTurn) {
            finish();
            ++turn;
        }
        if (place == section.size() && !needsAllWords) break;
        const auto text = paragraph.text;
        pieces_.push_back(text);
        const auto begin = static_cast<std::size_t>(text.data() - section.data());
        const std::size_t end = begin + text.size();
        if (place < begin) place = places.next(begin);
        for (std::size_t from = begin; place < end; place = places.next(from)) {
            const auto read =
                needsAllWords ? std::nullopt : counter_.addAt(text, place - begin, from - begin);
            needsAllWords = !read;
            from = read ? begin + *read : end;
        }
    }
    finish();
}

/// Counts at the places in the paragraphs of turns; false when some turn needs all of its words.
bool EvidenceCollector::countInTurns(std::string_view section) {
    KeywordMatcher::Places places(matcher_, section);
    TranscriptSections::ParagraphFinder paragraphs(section);
    std::size_t place = places.next(0);
    while (place < section.size()) {
        const auto [text, blockEnd] = paragraphs.around(place);
        const std::size_t begin =
            text.empty() ? blockEnd : static_cast<std::size_t>(text.data() - section.data());
        const std::size_t end = begin + text.size();
        if (place < begin) place = places.next(begin);
        for (std::size_t from = begin; place < end; place = places.next(from)) {
            const auto read = counter_.addAt(text, place - begin, from - begin);
            if (!read) return false;
            from = begin + *read;
        }
        if (place < blockEnd) place = places.next(blockEnd);
    }
    return true;
}

bool EvidenceCollector::userSpoke(std::string_view section) const {
    Participation::TurnCounter counter(speaker_->identity);
    std::deque<std::string> joined;  // turns of several paragraphs; the counter keeps views
    Paragraph turn;
    const auto finishTurn = [&] {
        if (turn.opensTurn) counter.add(turn.speaker, turn.text);
    };
    Paragraphs paragraphs(section);
    for (Paragraph paragraph; paragraphs.next(paragraph);) {
        if (paragraph.opensTurn) {
            finishTurn();
            if (counter.hasSpoken(speaker_->minTurns)) return true;
            turn = paragraph;
            continue;
        }
        const bool isJoined = !joined.empty() && turn.text.data() == joined.back().data();
        if (!isJoined) joined.emplace_back(turn.text);
        joined.back().append("\n\n").append(paragraph.text);
        turn.text = joined.back();
    }
    finishTurn();
    return counter.hasSpoken(speaker_->minTurns);
}
}  // namespace ombrix
