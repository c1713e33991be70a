// What a question leaves out. The first line is the name of a private person, as a memory file may
// have it; the rest is a text that a model would be told.
#include <string>

#include "Law.h"
#include "OmbrixEngine/Workspace/Addresses.h"
#include "OmbrixEngine/Workspace/Privacy.h"
#include "OmbrixPlatform/Utf8.h"

using namespace ombrix;
using Fuzz::law;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto [name, given] = Fuzz::firstLineAndRest(Fuzz::text(data, size));
    const std::string text = Utf8::repaired(given);
    const std::string withoutAddresses = Addresses::hidden(text);
    law(Addresses::hidden(withoutAddresses) == withoutAddresses, "no address is left");
    law(Utf8::isValid(withoutAddresses), "no scalar is cut");
    const Privacy privacy({{.keys = {}, .names = {std::string(name)}}}, {});
    const std::string cleaned = privacy.cleanedText(text);
    law(Utf8::isValid(cleaned), "no scalar of a name is cut");
    if (privacy.hidesName(name))
        law(privacy.cleanedText(name) == "Speaker 901", "the name itself is hidden");
    return 0;
}
