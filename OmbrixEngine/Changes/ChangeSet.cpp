#include "OmbrixEngine/Changes/ChangeSet.h"

#include <chrono>
#include <utility>

#include "OmbrixCLI/PathArguments.h"
#include "OmbrixEngine/Changes/UnifiedDiff.h"
#include "OmbrixPlatform/AbandonedFiles.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/Paths.h"
#include "OmbrixPlatform/Permissions.h"

namespace ombrix {
namespace {

/// How often a file is read again that somebody else keeps changing.
constexpr int mostAttempts = 20;

CLIError cannotWrite(const Files::Error& error) {
    return CLIError::invalidInput(std::string(error.what()) + ".",
                                  "What was written before is whole; ombrix-engine refresh "
                                  "completes the rest.");
}

/// Of the nearest folder on the way to `path` that exists.
bool folderAllowsWriting(const std::string& path) {
    std::string folder(Paths::parent(path));
    while (!Files::exists(folder)) folder = Paths::parent(folder);
    return Permissions::allowWriting(folder);
}
}  // namespace

void ChangeSet::rewrite(std::string path, Make make) {
    folders_.emplace(Paths::parent(path));
    files_.push_back({std::move(path), std::move(make)});
}

void ChangeSet::rewriteCopy(std::string_view original, std::string path, Make make) {
    rewrite(std::move(path), std::move(make));
    files_.back().original = original;
}

void ChangeSet::write(std::string path, std::string text) {
    rewrite(std::move(path), [text = std::move(text)](const auto&) { return text; });
}

void ChangeSet::remove(std::string path) { rewrite(std::move(path), nullptr); }

void ChangeSet::whileUnfinished(std::string path, std::string text) {
    unfinished_ = File{std::move(path), [text = std::move(text)](const auto&) { return text; }};
}

// ---- what stands in the way --------------------------------------------------------------------

std::optional<CLIError> ChangeSet::obstacle(const File& file) const {
    try {
        const std::string target = folder_.inside(file.path);
        const bool allowsWriting = Permissions::allowWriting(target);
        if (allowsWriting && folderAllowsWriting(target) &&
            (!Files::exists(target) || Files::isRegular(target)))
            return std::nullopt;
        const auto existing = folder_.bytes(file.path);
        const auto text = file.make ? file.make(existing) : std::nullopt;
        const bool wouldChange = file.make ? text && text != existing : existing.has_value();
        if (!wouldChange) return std::nullopt;
        return CLIError::invalidInput(
            "'" + printable(file.path) +
                (allowsWriting ? "' is in a read-only folder." : "' is read-only."),
            "Nothing was written. Leave it to the person: they allow writing it, or move it away.");
    } catch (const CLIError& error) {
        return error;
    }
}

void ChangeSet::requireNoObstacle() const {
    for (const auto& file : files_)
        if (const auto found = obstacle(file)) throw *found;
}

std::vector<std::string> ChangeSet::leaveOutObstacles() {
    std::vector<std::string> found;
    std::set<std::string, std::less<>> leftOut;
    std::vector<File> others;
    for (auto& file : std::exchange(files_, {})) {
        if (leftOut.contains(file.original)) continue;
        if (const auto why = obstacle(file)) {
            found.push_back("Passed over: " + std::string(why->what()));
            leftOut.insert(file.path);
        } else {
            others.push_back(std::move(file));
        }
    }
    files_ = std::move(others);
    return found;
}

// ---- writing -----------------------------------------------------------------------------------

bool ChangeSet::apply(const File& file, const std::function<void()>& beforeChange) const {
    if (!file.make) {
        if (!folder_.bytes(file.path)) return false;
        beforeChange();
        return Files::remove(folder_.inside(file.path));
    }
    for (int attempt = 0; attempt < mostAttempts; ++attempt) {
        const std::string target = folder_.inside(file.path);
        const auto existing = folder_.bytes(file.path);
        const auto text = file.make(existing);
        if (!text || text == existing) return false;
        beforeChange();
        try {
            if (!existing) Files::createDirectories(std::string(Paths::parent(target)));
            if (Files::writeAtomically(target, *text,
                                       [&] { return folder_.bytes(file.path) == existing; }))
                return true;
        } catch (const Files::Error& error) {
            throw cannotWrite(error);
        }
    }
    throw CLIError::invalidInput("'" + printable(file.path) + "' changes all the time.",
                                 "Close the program that writes it and try again.");
}

void ChangeSet::removeAbandonedFiles() const {
    constexpr std::chrono::hours age{1};
    for (const auto& folder : folders_) {
        try {
            AbandonedFiles::remove(folder_.inside(folder), age);
        } catch (const CLIError&) {  // leads out
        } catch (const Files::Error&) {
        }
    }
}

std::vector<std::string> ChangeSet::apply() const {
    requireNoObstacle();
    std::vector<std::string> changed;
    bool hasBegun = false;
    const auto begin = [&] {
        if (unfinished_ && !std::exchange(hasBegun, true)) apply(*unfinished_, [] {});
    };
    for (const auto& file : files_)
        if (apply(file, begin)) changed.push_back(file.path);
    if (unfinished_) apply(File{unfinished_->path}, [] {});
    removeAbandonedFiles();
    return changed;
}

std::vector<ChangeSet::Difference> ChangeSet::differences() const {
    requireNoObstacle();
    std::vector<Difference> found;
    for (const auto& file : files_) {
        const auto existing = folder_.bytes(file.path);
        auto text = existing;
        if (!file.make)
            text.reset();
        else if (auto made = file.make(existing))
            text = std::move(made);
        if (text == existing) continue;
        found.push_back({file.path, UnifiedDiff::make(file.path, existing, text)});
    }
    return found;
}
}  // namespace ombrix
