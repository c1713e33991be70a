// Property lists of other programs, XML and binary: reading one key of any bytes.
#include "Law.h"
#include "OmbrixPlatform/PropertyList.h"

using namespace ombrix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = Fuzz::text(data, size);
    const auto version = PropertyList::string(bytes, "version");
    Fuzz::law(version == PropertyList::string(bytes, "version"), "read twice, the same");
    Fuzz::law(!PropertyList::string(bytes, "no such key of any bundle"),
              "a missing key is nothing");
    return 0;
}
