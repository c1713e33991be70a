#include "OmbrixCLI/CommandTree.h"
#include "OmbrixCLI/Program.h"

int main(int argc, char* argv[]) {
    ombrix::Program::prepareProcess();
    return ombrix::Program::run(
        {.name = "ombrix-cli",
         .abstract = "Agent-friendly CLI for local Ombrix meetings and dictations.",
         .declare = ombrix::declareCommands},
        {argv, argv + argc});
}
