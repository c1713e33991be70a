// Calls into every library, so that one that is missing from the package, or a dependency of one,
// fails to link; prints what the check expects.
#include <iostream>

#include "OmbrixAnswerKit/Ask/AskIntentRouter.h"
#include "OmbrixCore/DictationStore.h"
#include "OmbrixMarkdownKit/Words/QueryTokenizer.h"
#include "OmbrixMemoryKit/EngineRecipes.h"
#include "OmbrixMemoryKit/Moves/PrepareSidecar.h"
#include "OmbrixPlatform/PropertyList.h"

int main() {
    using namespace ombrix;
    std::cout << EngineRecipes::landVersion << ' ' << QueryTokenizer::stem("decisions") << ' '
              << AskIntentRouter::selfDirectedCues().empty() << ' '
              << PropertyList::string("no list", "key").has_value() << '\n';
    try {
        if (std::cin.peek() == '{') PrepareSidecar::decode("{}");
        DictationStore(":memory:").recentMeetingSummaries({});
    } catch (const std::exception& refused) {
        std::cout << refused.what() << '\n';
    }
}
