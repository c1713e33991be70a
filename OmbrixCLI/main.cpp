#include "OmbrixCLI/CommandTree.h"
#include "OmbrixCLI/Program.h"

int main(int argc, char* argv[]) {
    ombrix::Program::prepareProcess();
    return ombrix::Program::run(ombrix::commandTool(), {argv, argv + argc});
}
