// Converts other tools' exports. A line for each file goes ahead of the envelope.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "OmbrixCLI/CLIError.h"
#include "OmbrixCLI/CommandTree.h"
#include "OmbrixCLI/Envelope.h"
#include "OmbrixCLI/PathArguments.h"
#include "OmbrixCLI/ProgressLine.h"
#include "OmbrixCLI/StandardStreams.h"
#include "OmbrixMarkdownKit/Import/TranscriptImportRunner.h"
#include "OmbrixMemoryKit/EnginePaths.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/Paths.h"

namespace ombrix {
namespace {

namespace Runner = TranscriptImportRunner;

constexpr std::string_view arrow = "  →  ";

struct ImportOptions {
    std::string path;
    std::optional<std::string> folder;
    bool dryRun = false;
    GlobalOptions global;
};

std::string nameOf(std::string_view path) { return printable(Paths::lastComponent(path)); }

/// Writes the lines of outcomes and counts them.
class Report {
  public:
    explicit Report(bool isDryRun) : verb_(isDryRun ? "would import" : "imported") {}

    void add(const Runner::FileOutcome& file) {
        source_ = nameOf(file.source);
        std::visit([this](const auto& outcome) { line(outcome); }, file.outcome);
        lines_ += '\n';
    }
    const std::string& lines() const { return lines_; }
    Json::Value payload(const std::string& path, bool isDryRun) const {
        return Json::object({{"path", path},
                             {"imported", std::to_string(imported_)},
                             {"skipped", std::to_string(skipped_)},
                             {"refused", std::to_string(refused_)},
                             {"dry_run", isDryRun ? "true" : "false"}});
    }

  private:
    void line(const Runner::Imported& one) {
        begin(verb_, imported_).append(arrow).append(nameOf(one.destination));
        appendCounts(one.format, one.turns);
    }
    void line(const Runner::ImportedMany& many) {
        begin(verb_, imported_).append(arrow);
        imported_ += many.destinations.size() - 1;
        lines_ += std::to_string(many.destinations.size()) + " meetings";
        appendCounts(many.format, many.turns);
        for (const auto& destination : many.destinations) lines_ += "\n    " + nameOf(destination);
    }
    void line(const Runner::AlreadyImported& earlier) {
        begin("already imported", skipped_).append(arrow).append(nameOf(earlier.destination));
    }
    void line(const Runner::Unreadable& failure) {
        begin("could not read", refused_) += "  (" + printable(failure.message) + ")";
    }
    void line(const Runner::AlreadyOmbrix&) { begin("already a Ombrix transcript", skipped_); }
    void line(const Runner::Unrecognized&) { begin("not a transcript", refused_); }
    void line(const Runner::NoSpeech&) { begin("no speech in it", refused_); }

    std::string& begin(std::string_view word, std::size_t& counter) {
        ++counter;
        return lines_.append(word).append("  ").append(source_);
    }
    void appendCounts(TranscriptImport::Format format, std::int64_t turns) {
        lines_.append("  (").append(label(format)) += ", " + std::to_string(turns) + " turns)";
    }

    std::string_view verb_;
    std::string source_;
    std::string lines_;
    std::size_t imported_ = 0, skipped_ = 0, refused_ = 0;
};

std::string existingSource(const std::string& given) {
    if (!given.starts_with('/') && !given.starts_with('~')) {
        throw CLIError::invalidInput("Pass an absolute path, got '" + given + "'.",
                                     "For example: ombrix-cli import ~/Downloads/exports");
    }
    const auto path = expandedPath(given);
    if (!path || !Files::exists(*path)) {
        throw CLIError::invalidInput("Not found: '" + given + "'.",
                                     "Check the path to the export.");
    }
    return *path;
}

std::vector<Runner::FileOutcome> outcomes(const std::string& source,
                                          const std::optional<std::string>& folder, bool isDryRun) {
    ProgressLine line(isDryRun ? "reading" : "importing");
    const auto progress = [&line](std::size_t done, std::size_t all) { line.show(done, all); };
    const bool isDirectory = Files::isDirectory(source);
    if (isDryRun) return Runner::plan(source, isDirectory, folder, progress);
    const Calendar calendar = Calendar::current();
    if (isDirectory) {
        return Runner::importFolder(source, folder, EnginePaths::defaultMemoryFolderName, calendar,
                                    progress);
    }
    return {
        Runner::importFile(source, folder.value_or(std::string(Paths::parent(source))), calendar)};
}

void import(const CLIContext& context, const ImportOptions& options) {
    const std::string source = existingSource(options.path);
    std::optional<std::string> folder;
    if (options.folder) {
        folder = expandedPath(*options.folder);
        if (!folder || !Files::isDirectory(*folder)) throw folderNotFound(*options.folder);
    }
    Report report(options.dryRun);
    for (const auto& file : outcomes(source, folder, options.dryRun)) report.add(file);
    StandardOutput::write(report.lines());
    emitSuccess(context, report.payload(source, options.dryRun));
}
}  // namespace

void declareImport(Command root) {
    Command command = root.subcommand("import",
                                      "Convert another tool's export into a Ombrix transcript. A "
                                      "directory imports everything inside it.");
    const auto options = command.options<ImportOptions>();
    command.positional("path", options->path,
                       "The export file, or a directory of exports (absolute path).");
    command.option(
        "--folder DIR", options->folder,
        "Where the converted transcripts are written. Defaults to beside each original.");
    command.flag("--dry-run", options->dryRun,
                 "Report what would be imported without writing anything.");
    command.run(options, import);
}
}  // namespace ombrix
