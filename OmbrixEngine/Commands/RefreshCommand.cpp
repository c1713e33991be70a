#include "OmbrixEngine/EngineCommands.h"

namespace ombrix {

void declareRefresh(Command) {}
}  // namespace ombrix
