#include "OmbrixPlatform/BreakIterator.h"

#include <unicode/ubrk.h>
#include <unicode/utext.h>

#include <bitset>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <new>

#include <sys/mman.h>

#include "OmbrixPlatform/Letters.h"
#include "OmbrixPlatform/Utf8.h"

namespace ombrix {

namespace {

/// Throws when a call failed for lack of memory. It has no other reason: the data is a part of ICU.
void check(UErrorCode status) {
    if (status == U_MEMORY_ALLOCATION_ERROR) throw std::bad_alloc();
    if (U_SUCCESS(status)) return;
    std::fprintf(stderr, "No break iterator: %s\n", u_errorName(status));
    std::abort();
}

/// True when the address space has room for what a dictionary needs, and some more.
bool hasRoomForDictionary() {
    constexpr std::size_t room = std::size_t{4} << 20U;
    void* const place = ::mmap(nullptr, room, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (place == MAP_FAILED) return false;
    ::munmap(place, room);
    return true;
}
}  // namespace

struct BreakIterator::Handles {
    explicit Handles(UBreakIteratorType type) {
        UErrorCode status = U_ZERO_ERROR;
        iterator.reset(ubrk_open(type, "", nullptr, 0, &status));
        check(status);
    }
    void makeRoomForDictionaries(std::string_view text);

    struct Close {
        void operator()(UBreakIterator* it) const { ubrk_close(it); }
        void operator()(UText* text) const { utext_close(text); }
    };
    std::unique_ptr<UBreakIterator, Close> iterator;
    std::unique_ptr<UText, Close> text;
    std::bitset<0x110000 / 128> met;  // blocks of 128 scalars whose dictionary is loaded
};

/// ICU loads the dictionary of a script when it first meets the script. If it lacks the memory, ICU
/// 72 loads again at the same character, for ever, so that must not happen.
void BreakIterator::Handles::makeRoomForDictionaries(std::string_view given) {
    for (std::size_t at = 0; at < given.size();) {
        const auto [letter, length] = Letters::find(given, at);
        const bool isBeyondTable = static_cast<unsigned char>(given[at]) >= 0xF0;
        if (letter.needsDictionary || isBeyondTable) {
            const std::size_t block = Utf8::decode(given, at).scalar / 128;
            if (!met[block] && !hasRoomForDictionary()) throw std::bad_alloc();
            met.set(block);
        }
        at += length;
    }
}

BreakIterator::Pool& BreakIterator::poolOf(Kind kind) {
    thread_local Pool words;
    thread_local Pool characters;
    return kind == Kind::word ? words : characters;
}

BreakIterator::BreakIterator(Kind kind, std::string_view text) : kind_(kind) {
    auto& pool = poolOf(kind);
    if (pool.empty()) {
        handles_ = std::make_unique<Handles>(kind == Kind::word ? UBRK_WORD : UBRK_CHARACTER);
    } else {
        handles_ = std::move(pool.back());
        pool.pop_back();
    }
    if (kind == Kind::word) handles_->makeRoomForDictionaries(text);
    UErrorCode status = U_ZERO_ERROR;
    const char* bytes = text.empty() ? "" : text.data();
    UText* opened = utext_openUTF8(handles_->text.get(), bytes,
                                   static_cast<std::int64_t>(text.size()), &status);
    if (handles_->text == nullptr) handles_->text.reset(opened);
    ubrk_setUText(handles_->iterator.get(), opened, &status);
    check(status);
}

BreakIterator::~BreakIterator() { poolOf(kind_).push_back(std::move(handles_)); }

namespace {

std::size_t place(std::int32_t boundary) {
    return boundary == UBRK_DONE ? BreakIterator::done : static_cast<std::size_t>(boundary);
}
}  // namespace

std::size_t BreakIterator::first() { return place(ubrk_first(handles_->iterator.get())); }
std::size_t BreakIterator::next() { return place(ubrk_next(handles_->iterator.get())); }
std::size_t BreakIterator::following(std::size_t from) {
    return place(ubrk_following(handles_->iterator.get(), static_cast<std::int32_t>(from)));
}
std::size_t BreakIterator::preceding(std::size_t from) {
    return place(ubrk_preceding(handles_->iterator.get(), static_cast<std::int32_t>(from)));
}
int BreakIterator::ruleStatus() const { return ubrk_getRuleStatus(handles_->iterator.get()); }
}  // namespace ombrix
