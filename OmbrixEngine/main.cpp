#include "OmbrixCLI/Program.h"
#include "OmbrixEngine/EngineCommands.h"

int main(int argc, char* argv[]) {
    ombrix::Program::prepareProcess();
    return ombrix::Program::run(ombrix::engineTool(), {argv, argv + argc});
}
