// Makes a database for the example library, filled as the desktop application would fill it:
//
//   make-example-database <transcripts folder> <database>
//
// Every transcript becomes a meeting, or a dictation if it is tagged "dictation". A meeting's
// folder is the top-level folder of its file. An existing database is an error and is not changed.
#include <algorithm>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "OmbrixCore/DictationStore.h"
#include "OmbrixMarkdownKit/Transcript/MarkdownTranscript.h"
#include "OmbrixMarkdownKit/Transcript/OmbrixTranscriptMarker.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/Paths.h"

namespace ombrix {
namespace {

struct Example {
    std::string folder;  ///< empty for a file at the top of the library
    TranscriptDocument document;
    Instant startedAt;
};

std::vector<Example> examplesIn(const std::string& library) {
    std::vector<Example> examples;
    Files::walk(library, [&](const std::string& path) {
        if (Paths::extension(path) != "md") return;
        const auto text = Files::text(path);
        if (!text || !OmbrixTranscriptMarker::declares(*text)) return;
        auto document = MarkdownTranscriptParser::parse(*text);
        if (!document) return;
        const auto startedAt = parseIsoInstant(document->startedAt);
        if (!startedAt) throw std::runtime_error(path + " does not say when it started");
        const std::string_view inside = std::string_view(path).substr(library.size());
        const auto components = Paths::components(inside);
        examples.push_back({.folder = std::string(components.size() > 1 ? components.front() : ""),
                            .document = std::move(*document),
                            .startedAt = *startedAt});
    });
    std::ranges::sort(examples, {}, [](const Example& example) {
        return std::pair(example.startedAt, example.document.title);
    });
    return examples;
}

std::string transcriptOf(const TranscriptDocument& document, bool withSpeakers) {
    std::string text;
    for (const auto& turn : document.turns) {
        if (!text.empty()) text += withSpeakers ? "\n" : " ";
        if (withSpeakers) text += turn.speaker + ": ";
        text += turn.text;
    }
    return text;
}

/// The notes as the application stores them: the person's own, then the sections that it wrote.
std::string notesOf(const TranscriptDocument& document) {
    std::string notes;
    const auto add = [&notes](std::string_view heading, std::string_view body) {
        if (body.empty()) return;
        if (!notes.empty()) notes += "\n\n";
        notes += std::string("## ") + std::string(heading) + "\n\n" + std::string(body);
    };
    if (document.hasUserNotes()) add("Notes", document.notes);
    add("Summary", document.summary);
    add("Action Items", document.actionItems);
    return notes;
}

void insertDictation(const DictationStore& store, const Example& example) {
    NewDictation dictation;
    dictation.text = transcriptOf(example.document, false);
    dictation.appContext = example.document.sourceApp;
    dictation.durationSeconds = static_cast<double>(example.document.durationMin) * 60;
    dictation.startedAt = example.startedAt;
    dictation.endedAt = example.startedAt + std::chrono::minutes(example.document.durationMin);
    store.insert(dictation);
}

void insertMeeting(const DictationStore& store, const Example& example) {
    NewMeeting meeting;
    meeting.title = example.document.title;
    if (!example.document.calendarEventID.empty()) {
        meeting.calendarEventID = example.document.calendarEventID;
    }
    meeting.startTime = example.startedAt;
    meeting.endTime = example.startedAt + std::chrono::minutes(example.document.durationMin);
    meeting.rawTranscript = transcriptOf(example.document, true);
    meeting.formattedNotes = notesOf(example.document);
    store.insertMeeting(meeting);
}

void make(const std::string& library, const std::string& database) {
    const DictationStore store(database);
    if (store.databaseExists()) throw std::runtime_error(database + " is there already");
    const auto examples = examplesIn(library);
    if (examples.empty()) throw std::runtime_error("no transcripts in " + library);
    store.migrateIfNeeded();
    std::map<std::string, std::int64_t> folders;
    for (const Example& example : examples) {
        const auto& tags = example.document.tags;
        if (std::ranges::find(tags, "dictation") != tags.end()) {
            insertDictation(store, example);
            continue;
        }
        insertMeeting(store, example);
        if (example.folder.empty()) continue;
        if (!folders.contains(example.folder)) {
            folders[example.folder] = store.createFolder(example.folder);
        }
        MeetingQuery newest;
        newest.limit = 1;
        store.moveMeeting(store.recentMeetingSummaries(newest).front().id, folders[example.folder]);
    }
    std::cout << "Wrote " << examples.size() << " records to " << database << "\n";
}
}  // namespace
}  // namespace ombrix

int main(int argc, char* argv[]) {
    if (argc != 3) {
        std::cerr << "usage: make-example-database <transcripts folder> <database>\n";
        return 64;
    }
    try {
        ombrix::make(argv[1], argv[2]);
    } catch (const std::exception& error) {
        std::cerr << "Error: " << error.what() << "\n";
        return 1;
    }
}
