#include "OmbrixCLI/CommandSpecPayload.h"
#include "OmbrixCLI/CommandTree.h"

namespace ombrix {

void declareSpec(Command root) { declareSpec(root, CommandSpecPayload::commands); }
}  // namespace ombrix
