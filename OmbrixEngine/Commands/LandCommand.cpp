#include "OmbrixEngine/EngineCommands.h"

namespace ombrix {

void declareAskLand(Command) {}
void declareGiveLand(Command) {}
}  // namespace ombrix
