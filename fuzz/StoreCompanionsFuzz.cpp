// The store over what a writer that was killed leaves: a database with a damaged log or journal
// beside it. The input is a database of as many pages as its header says and, behind it, the
// companion.
//
// libFuzzer: -max_len=65536 -dict=fuzz/sql.dict -timeout=120
#include <string_view>

#include "Law.h"
#include "OmbrixPlatform/TestFolder.h"
#include "StoreLaws.h"

using namespace ombrix;

namespace {

/// The number in `count` bytes at an offset, most significant first. SQLite writes it so.
std::size_t number(std::string_view bytes, std::size_t offset, std::size_t count) {
    std::size_t value = 0;
    for (const char byte : bytes.substr(offset, count))
        value = value << 8 | static_cast<std::uint8_t>(byte);
    return value;
}

/// Up to the end of the last page that the header counts; the whole input when that is too short.
std::string_view database(std::string_view input) {
    if (input.size() < 100) return input;
    const std::size_t pageSize = number(input, 16, 2) == 1 ? 65536 : number(input, 16, 2);
    return input.substr(0, pageSize * number(input, 28, 4));
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const test::TestFolder folder;
    const std::string_view input = Fuzz::text(data, size);
    const std::string_view file = database(input);
    const std::string_view companion = input.substr(file.size());
    Fuzz::removeCompanions(folder);
    folder.write("db", file);
    // The first byte of every log; a journal begins otherwise.
    folder.write(companion.starts_with('\x37') ? "db-wal" : "db-journal", companion);
    Fuzz::checkStore(folder);
    return 0;
}
