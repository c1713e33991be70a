// The search through a folder of files. The first byte chooses a scope, the rest of the first line
// is the question; files of any bytes follow, each up to a line "%%". The quick ways of reading and
// searching give what reading every file whole gives.
//
// libFuzzer: -max_len=32768
#include <array>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "Law.h"
#include "OmbrixMarkdownKit/Library/LibrarySearch.h"
#include "OmbrixMarkdownKit/Library/TranscriptReader.h"
#include "OmbrixMarkdownKit/Words/QueryTokenizer.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/TestFolder.h"
#include "OmbrixPlatform/Text.h"
#include "OmbrixPlatform/Utf8.h"

using namespace ombrix;
using Fuzz::law;

namespace {

constexpr std::size_t mostFiles = 100;  // more than one worker takes

RankedTranscriptSearch::AnswerRankOptions options() {
    return {.useIDF = true,
            .tfSaturationK = 1.5,
            .recencyHalfLifeDays = 30,
            .participation =
                RankedTranscriptSearch::ParticipationBoost{
                    .userAliases = {"Nadia Brandt", "You"}, .boost = 0.6, .minTurns = 1},
            .unmatchedMassLimit = 0.5,
            .now = Instant(std::chrono::hours(24 * 20'665))};
}

const AnswerScope& scope(std::uint8_t choice) {
    static const std::array<AnswerScope, 8> scopes{
        AnswerScope::all,
        AnswerScope{.dateFrom = "2026-06-20", .dateTo = "2026-07-10"},
        AnswerScope{.dateTo = "2026-07-01"},
        AnswerScope{.lastN = 3},
        AnswerScope{.dateFrom = "2026-01-01", .lastN = 1},
        AnswerScope{.folder = "sub"},
        AnswerScope{.participant = "ana"},
        AnswerScope{.speaker = SpeakerFilter{.userName = "Nadia Brandt", .minTurns = 1}}};
    return scopes[choice % scopes.size()];
}

/// Writes the files, and removes those of the last input that this one has not.
std::vector<std::string> written(const test::TestFolder& folder, std::string_view files) {
    static std::set<std::string> existing;
    std::set<std::string> now;
    std::vector<std::string> paths;
    for (const auto file : Text::split(files, "\n%%\n")) {
        if (paths.size() == mostFiles) break;
        const std::string name =
            (paths.size() % 3 == 2 ? "sub/" : "") + std::to_string(paths.size()) + ".md";
        paths.push_back(folder.write(name, file));
        now.insert(name);
    }
    for (const auto& name : existing)
        if (!now.contains(name)) std::filesystem::remove(folder.at(name));
    existing = std::move(now);
    return paths;
}

bool sameFields(const std::optional<TranscriptDocument>& header, TranscriptDocument document) {
    document.notes.clear();
    document.summary.clear();
    document.actionItems.clear();
    document.keyMoments.clear();
    document.meetingNotes.clear();
    document.turns.clear();
    return header == document;
}

/// The three ways to look at a file.
void checkReaders(TranscriptReader& reader, const std::string& path) {
    const auto document = reader.document(path);
    const auto view = reader.view(path);
    law(view.has_value() == document.has_value(), "there is a view of what there is a document of");
    law(!view || sameFields(view->header, *document), "a view has the document's fields");
    const auto header = reader.header(path);
    law(!document || sameFields(header, *document), "the header has the document's fields");
    law(document || !header || !Utf8::isValid(Files::bytes(path)),
        "only invalid text after a header makes no document");
    const auto peek = reader.peek(path);
    law(!document || !peek || sameFields(peek, *document), "the first look sees the same fields");
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::TestFolder folder;
    if (size == 0) return 0;
    const auto [question, files] = Fuzz::firstLineAndRest(Fuzz::text(data + 1, size - 1));
    TranscriptReader reader;
    for (const auto& path : written(folder, files)) checkReaders(reader, path);

    const TranscriptLibrary library{.folder = folder.path()};
    const AnswerScope& narrowed = scope(data[0]);
    const auto documents = library.scan();
    const auto whole = RankedTranscriptSearch::answerRank(documents, question, narrowed, options());
    const auto quick = searchLibrary(library, QueryTokenizer::keywords(question), narrowed,
                                     options(), mostFiles, WithoutHits::showNothing);
    law(quick.hits == whole.hits, "file by file, the same hits");
    law(quick.scannedCount == whole.scannedCount, "and as many files");
    law(quick.totalMatched == whole.totalMatched(), "and as many hits");

    std::size_t listed = 0;
    listTranscripts(library.paths(), [&](const ListedTranscript&) { ++listed; });
    law(listed >= documents.size(), "every document is listed");
    law(searchLibrary(library, {}, narrowed, options(), 5, WithoutHits::showNewest).hits.size() <=
            5,
        "without hits, a few of the newest");
    return 0;
}
