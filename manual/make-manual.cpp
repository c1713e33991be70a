// Writes the manual pages and completions of one tool:
//
//   make-manual TOOL VERSION COMMON FOLDER
//
// COMMON is a file in roff that all pages of the tool end with. FOLDER gets man1/, bash/, fish/ and
// zsh/.
#include <exception>
#include <iostream>
#include <stdexcept>

#include "Completion.h"
#include "ManualPage.h"
#include "OmbrixCLI/CommandTree.h"
#include "OmbrixEngine/EngineCommands.h"
#include "OmbrixPlatform/Files.h"

namespace ombrix {
namespace {

CommandDescription described(const std::string& name) {
    for (const Program::Tool& tool : {commandTool(), engineTool()}) {
        if (tool.name != name) continue;
        const CommandLine line(tool.name, tool.abstract);
        tool.declare(line, tool.name);
        return line.description();
    }
    throw std::runtime_error("There is no tool " + name + ".");
}

void write(const std::string& folder, const std::string& name, const std::string& text) {
    Files::createDirectories(folder);
    Files::writeAtomically(folder + "/" + name, text);
}

void makeManual(const std::string& name, const std::string& version, const std::string& commonFile,
                const std::string& folder) {
    const CommandDescription tool = described(name);
    const auto common = Files::text(commonFile);
    if (!common) throw std::runtime_error("Cannot read " + commonFile + ".");
    for (const CommandDescription* const command : Completion::all(tool)) {
        write(folder + "/man1", ManualPage::name(*command) + ".1",
              ManualPage::text(tool, *command, version, *common));
    }
    write(folder + "/bash", name, Completion::bash(tool));
    write(folder + "/fish", name + ".fish", Completion::fish(tool));
    write(folder + "/zsh", "_" + name, Completion::zsh(tool));
}
}  // namespace
}  // namespace ombrix

int main(int argc, char* argv[]) {
    if (argc != 5) {
        std::cerr << "usage: make-manual TOOL VERSION COMMON FOLDER\n";
        return 64;
    }
    try {
        ombrix::makeManual(argv[1], argv[2], argv[3], argv[4]);
    } catch (const std::exception& error) {
        std::cerr << "make-manual: " << error.what() << "\n";
        return 1;
    }
}
