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
        pieces_.assign(1, document.turns[i].text);
        if (matcher_.nextPlace(pieces_[0], 0) < pieces_[0].size()) addTurn(i);
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
    std::array<std::string, searchedSections.size()> storage;
    BodyFields bodies;
    for (std::size_t i = 0; i < bodies.size(); ++i)
        bodies[i] = sections.text(searchedSections[i], storage[i]);
    addBodies(bodies);
    addTurns(sections.raw(Section::transcript));
    auto evidence = finish(header);
    evidence.userSpoke =
        speaker_ && !evidence.terms.empty() && userSpoke(sections.raw(Section::transcript));
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

TermEvidence& EvidenceCollector::term(std::size_t keyword) {
    Slot& slot = slots_[keyword];
    if (slot.document != document_) {
        slot = {document_, terms_.size()};
        terms_.push_back({.keyword = keyword});
    }
    return terms_[slot.index];
}

const std::vector<KeywordMatcher::Counter::Found>& EvidenceCollector::count(std::string_view text) {
    if (matcher_.nextPlace(text, 0) < text.size()) counter_.add(text);
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

void EvidenceCollector::addTurn(std::size_t index) {
    for (const auto piece : pieces_) counter_.add(piece);
    for (const auto& [keyword, times] : counter_.finish()) {
        TermEvidence& found = term(keyword);
        found.tf += static_cast<double>(times);
        found.turnIndexes.push_back(index);
    }
}

// One scan runs through the whole section; turns are cut only when it finds a candidate, and words
// only in the turns that have one.
void EvidenceCollector::addTurns(std::string_view section) {
    std::size_t place = matcher_.nextPlace(section, 0);
    if (place == section.size()) return;
    const auto end = [&](std::string_view text) {
        return static_cast<std::size_t>(text.data() + text.size() - section.data());
    };
    bool holdsPlace = false;
    std::size_t turn = 0;  // counts from 1; 0 before the first
    const auto finishTurn = [&] {
        if (holdsPlace) addTurn(turn - 1);
        holdsPlace = false;
        pieces_.clear();
    };
    pieces_.clear();
    Paragraphs paragraphs(section);
    for (Paragraph paragraph; paragraphs.next(paragraph);) {
        if (paragraph.opensTurn) {
            finishTurn();
            ++turn;
        }
        if (place == section.size() && !holdsPlace) return;
        pieces_.push_back(paragraph.text);
        const std::size_t begin = end(paragraph.text) - paragraph.text.size();
        if (place < begin) place = matcher_.nextPlace(section, begin);
        if (place >= end(paragraph.text)) continue;
        holdsPlace = true;
        place = matcher_.nextPlace(section, end(paragraph.text));
    }
    finishTurn();
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
