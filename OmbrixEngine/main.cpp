#include "OmbrixCLI/Program.h"
#include "OmbrixEngine/EngineCommands.h"

int main(int argc, char* argv[]) {
    ombrix::Program::prepareProcess();
    return ombrix::Program::run(
        {.name = "ombrix-engine",
         .abstract =
             "The memory engine over a transcripts folder: asks an agent, takes its answers, "
             "writes what follows from them. It calls no model.",
         .declare = ombrix::declareEngineCommands},
        {argv, argv + argc});
}
