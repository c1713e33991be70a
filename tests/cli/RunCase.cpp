// Runs one case folder (CaseFolder.h) against the real tool: RunCase <tool> <fake desktop> <case>.
// Status 0 when everything is as the case says; otherwise standard error says what differs.
// A case with a running application needs a session bus of its own around this program.
#include <stdlib.h>

#include <filesystem>
#include <iostream>
#include <map>
#include <memory>

#include "CaseFolder.h"
#include "DesktopProcess.h"
#include "OmbrixCore/DictationStore.h"
#include "OmbrixCore/RawDatabase.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/Regex.h"
#include "OmbrixPlatform/TestFolder.h"
#include "OmbrixPlatform/Text.h"
#include "ToolProcess.h"

namespace ombrix::ToolTests {
namespace {

namespace fs = std::filesystem;

/// The two paths that differ from machine to machine, and their names in a case.
struct Placeholders {
    std::string folder;
    std::string tool;

    std::string filled(const std::string& text) const {
        return Text::replacingAll(Text::replacingAll(text, "{folder}", folder), "{tool}", tool);
    }
    std::string normalised(std::string text) const {
        for (const auto& [path, name] :
             {std::pair(tool, "{tool}"), std::pair(folder, "{folder}")}) {
            text = Text::replacingAll(text, Text::replacingAll(path, "/", "\\/"), name);
            text = Text::replacingAll(text, path, name);
        }
        static const Regex now(
            R"re("generatedAt" : "[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}Z")re");
        return now.replacingAll(text,
                                [](const Regex::Match&) { return R"("generatedAt" : "{now}")"; });
    }
};

/// Every file below a folder with its contents; folders and links by their kind.
using Snapshot = std::map<std::string, std::string>;

Snapshot snapshotOf(const std::string& folder) {
    Snapshot result;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const std::string name = fs::relative(entry.path(), folder).string();
        if (name.ends_with("ombrix.db-wal") || name.ends_with("ombrix.db-shm")) continue;
        if (entry.is_symlink())
            result[name] = "link to " + fs::read_symlink(entry.path()).string();
        else if (entry.is_regular_file())
            result[name] = "file: " + Files::bytes(entry.path().string());
        else
            result[name] = entry.is_directory() ? "folder" : "special";
    }
    return result;
}

/// Makes `link` lead to the socket of this process's session bus.
void linkBus(const fs::path& link) {
    static const Regex socket("unix:path=([^,;]+)");
    const char* const variable = ::getenv("DBUS_SESSION_BUS_ADDRESS");
    const std::string address = variable == nullptr ? "" : variable;
    const auto found = socket.firstMatch(address);
    if (!found) throw std::runtime_error("the session bus has no socket: " + address);
    fs::create_directories(link.parent_path());
    fs::create_symlink(found->group(1, address), link);
}

class CaseRunner {
  public:
    CaseRunner(std::string tool, std::string desktop, std::string caseFolder)
        : case_(std::move(caseFolder)), names_{folder_.path(), std::move(tool)} {
        for (const char* part : {"library", "support"}) {
            const fs::path source = fs::path(case_) / part;
            fs::create_directories(fs::path(folder_.path()) / part);
            if (fs::exists(source)) {
                fs::copy(fs::canonical(source), fs::path(folder_.path()) / part,
                         fs::copy_options::recursive | fs::copy_options::copy_symlinks);
            }
        }
        if (fs::exists(case_ + "/database.sql")) {
            const std::string database = folder_.path() + "/support/ombrix.db";
            DictationStore(database).migrateIfNeeded();
            test::RawDatabase(database).run(Files::bytes(case_ + "/database.sql"));
        }
        if (fs::exists(case_ + "/desktop")) {
            linkBus(fs::path(folder_.path()) / "runtime/bus");
            desktop_ = std::make_unique<DesktopProcess>(desktop, case_ + "/desktop",
                                                        folder_.path() + "/support/state");
        }
    }

    bool passes() {
        for (const CaseRun& run : runsOf(case_)) check(run);
        if (desktop_) {
            std::string heard;
            const auto expected = linesOf(case_ + "/heard");
            for (const auto& line : desktop_->heard(expected.size())) heard += line + "\n";
            expect("what the application heard", heard, Files::bytes(case_ + "/heard"));
        }
        return passes_;
    }

  private:
    void check(const CaseRun& run) {
        run_ = run.name;
        const Snapshot before = snapshotOf(folder_.path());
        Call call = callIn(folder_.path(), {names_.tool});
        call.input = run.stdinFile;
        for (const auto& argument : run.arguments)
            call.arguments.push_back(names_.filled(argument));
        for (const auto& line : run.environment) {
            // A program sees the first of two variables with one name.
            const std::string name = line.substr(0, line.find('=') + 1);
            std::erase_if(call.environment, [&](const auto& old) { return old.starts_with(name); });
            call.environment.push_back(names_.filled(line));
        }
        const Outcome outcome = ToolTests::run(call);
        const std::string output = names_.normalised(outcome.output);
        const std::string errors = names_.normalised(outcome.errors);

        if (outcome.status != run.status) {
            complain("status " + std::to_string(outcome.status) + " instead of " +
                     std::to_string(run.status) + "\n" + output + errors);
        }
        if (run.output) expect("standard output", output, *run.output);
        if (run.errors) expect("standard error", errors, *run.errors);
        expectInOrder("standard output", output, run.outputContains);
        expectInOrder("standard error", errors, run.errorsContain);
        for (const auto& part : run.anywhere) expectInOrder("the output", output + errors, {part});
        expectUnchanged(before, snapshotOf(folder_.path()), run.changes);
    }

    void complain(const std::string& problem) {
        passes_ = false;
        std::cerr << case_ << ", run " << run_ << ": " << problem << "\n";
    }

    void expect(const std::string& what, const std::string& found, const std::string& expected) {
        if (found == expected) return;
        complain(what + " differs.\n---- expected\n" + expected + "\n---- found\n" + found);
    }

    void expectInOrder(const std::string& what, const std::string& text,
                       const std::vector<std::string>& parts) {
        std::size_t end = 0;
        for (const auto& part : parts) {
            const auto at = text.find(part, end);
            if (at == std::string::npos) {
                return complain(what + " does not contain, in its place: " + part +
                                "\n---- found\n" + text);
            }
            end = at + part.size();
        }
    }

    void expectUnchanged(const Snapshot& before, const Snapshot& after,
                         const std::vector<std::string>& changes) {
        const auto isAllowed = [&changes](const std::string& name) {
            for (const auto& one : changes)
                if (name == one || (one.ends_with('/') && name.starts_with(one))) return true;
            return false;
        };
        for (const auto& [name, content] : before) {
            const auto found = after.find(name);
            if (isAllowed(name) || (found != after.end() && found->second == content)) continue;
            complain((found == after.end() ? "removed " : "changed ") + name);
        }
        for (const auto& [name, content] : after)
            if (!before.contains(name) && !isAllowed(name)) complain("made " + name);
    }

    std::string case_;
    test::TestFolder folder_;
    Placeholders names_;
    std::unique_ptr<DesktopProcess> desktop_;
    std::string run_;
    bool passes_ = true;
};
}  // namespace
}  // namespace ombrix::ToolTests

int main(int argc, char* argv[]) {
    if (argc != 4) {
        std::cerr << "usage: RunCase <tool> <fake desktop> <case folder>\n";
        return 2;
    }
    // Passed on under this name, so that the tool has a bus only when the case brought one.
    const char* const bus = ::getenv("DBUS_SESSION_BUS_ADDRESS");
    const bool ownBus = std::filesystem::exists(std::string(argv[3]) + "/desktop");
    if (ownBus && bus != nullptr) ::setenv("OMBRIX_TEST_BUS", bus, 1);
    try {
        return ombrix::ToolTests::CaseRunner(argv[1], argv[2], argv[3]).passes() ? 0 : 1;
    } catch (const std::exception& error) {
        std::cerr << argv[3] << ": " << error.what() << "\n";
        return 2;
    }
}
