#include "OmbrixEngine/EngineCommands.h"

namespace ombrix {

void declareStatus(Command) {}
}  // namespace ombrix
