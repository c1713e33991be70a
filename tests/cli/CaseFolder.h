// A whole-tool case: a folder with a library, command lines, and the expected results.
//
//   tool                 the name of the program, when it is not ombrix-cli
//   library/, support/   copied into a fresh folder, {folder}; both exist there in any case; may be
//                        links to folders elsewhere in the sources
//   database.sql         run on a new support/ombrix.db that has the store's own tables
//   desktop              a running application: what it hears and how it answers (FakeDesktop.cpp)
//                        {folder}/runtime/bus is then the socket of the session bus
//   heard                what it must have heard over the whole case: "name<TAB>object" lines
//   arguments, ...       one run; or numbered folders with these files, run in order:
//     arguments            one a line, without argument 0; no file means no arguments
//     stdin                bytes; without it standard input is empty
//     environment          "NAME=value" lines on top of a clean environment
//     stdout, stderr       exact; without the file that text is not checked
//     stdout-contains, stderr-contains   lines it must contain, in this order
//     status               0 when there is no file
//     changes              what below {folder} the run may make, change or remove: a file, a folder
//                          without its contents, or with a "/" at its end all of them. The rest
//                          must stay as it was. SQLite may leave its -wal and -shm files.
//   lines                many runs of which only the status and some words of standard output or
//                          standard error matter, one a line:
//                          64 | meetings list --limit 'x y' | some words | some other words
//
// {folder} is the fresh folder and {tool} the tool, in what goes in and in what comes out, there
// also with escaped slashes; {now} is the time of generation.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace ombrix::ToolTests {

struct CaseRun {
    std::string name;  ///< for messages
    std::vector<std::string> arguments;
    std::string stdinFile;
    std::vector<std::string> environment;
    std::optional<std::string> output;
    std::optional<std::string> errors;
    std::vector<std::string> outputContains;
    std::vector<std::string> errorsContain;
    std::vector<std::string> anywhere;  ///< in standard output or standard error
    int status = 0;
    std::vector<std::string> changes;
};

/// The runs of a case, in order. Throws `std::runtime_error` for a case that expects nothing.
std::vector<CaseRun> runsOf(const std::string& caseFolder);

/// The lines of a file, without their line feeds; none when there is no file.
std::vector<std::string> linesOf(const std::string& path);
}  // namespace ombrix::ToolTests
