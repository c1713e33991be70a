#include "OmbrixEngine/Changes/ChangeSet.h"

#include <utility>

#include "OmbrixCLI/CLIError.h"
#include "OmbrixCLI/PathArguments.h"
#include "OmbrixEngine/Changes/UnifiedDiff.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/Paths.h"

namespace ombrix {
namespace {

/// How often a file is read again that somebody else keeps changing.
constexpr int mostAttempts = 20;

CLIError cannotWrite(const Files::Error& error) {
    return CLIError::invalidInput(std::string(error.what()) + ".",
                                  "What was written before is whole; ombrix-engine refresh "
                                  "completes the rest.");
}
}  // namespace

void ChangeSet::rewrite(std::string path, Make make) {
    files_.push_back({std::move(path), std::move(make)});
}

void ChangeSet::write(std::string path, std::string text) {
    rewrite(std::move(path), [text = std::move(text)](const auto&) { return text; });
}

void ChangeSet::remove(std::string path) { files_.push_back({std::move(path), nullptr}); }

void ChangeSet::whileUnfinished(std::string path, std::string text) {
    unfinished_ = File{std::move(path), [text = std::move(text)](const auto&) { return text; }};
}

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

std::vector<std::string> ChangeSet::apply() const {
    std::vector<std::string> changed;
    bool hasBegun = false;
    const auto begin = [&] {
        if (unfinished_ && !std::exchange(hasBegun, true)) apply(*unfinished_, [] {});
    };
    for (const auto& file : files_)
        if (apply(file, begin)) changed.push_back(file.path);
    if (unfinished_) apply(File{unfinished_->path}, [] {});
    return changed;
}

std::vector<ChangeSet::Difference> ChangeSet::differences() const {
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
