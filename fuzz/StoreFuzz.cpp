// The store over a damaged database: the input is the file.
//
// libFuzzer: -max_len=65536 -dict=fuzz/sql.dict -timeout=120
#include "Law.h"
#include "OmbrixPlatform/TestFolder.h"
#include "StoreLaws.h"

using namespace ombrix;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::TestFolder folder;
    Fuzz::removeCompanions(folder);
    folder.write("db", Fuzz::text(data, size));
    Fuzz::checkStore(folder);
    return 0;
}
