#include "OmbrixPlatform/BreakIterator.h"

#include <unicode/ubrk.h>
#include <unicode/utext.h>

#include <cstdio>
#include <cstdlib>

namespace ombrix {

struct BreakIterator::Handles {
    explicit Handles(UBreakIteratorType type) {
        UErrorCode status = U_ZERO_ERROR;
        iterator.reset(ubrk_open(type, "", nullptr, 0, &status));
        if (U_FAILURE(status)) {
            std::fprintf(stderr, "No break iterator: %s\n", u_errorName(status));
            std::abort();
        }
    }
    struct Close {
        void operator()(UBreakIterator* it) const { ubrk_close(it); }
        void operator()(UText* text) const { utext_close(text); }
    };
    std::unique_ptr<UBreakIterator, Close> iterator;
    std::unique_ptr<UText, Close> text;
};

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
    UErrorCode status = U_ZERO_ERROR;
    const char* bytes = text.empty() ? "" : text.data();
    UText* opened = utext_openUTF8(handles_->text.get(), bytes,
                                   static_cast<std::int64_t>(text.size()), &status);
    if (handles_->text == nullptr) handles_->text.reset(opened);
    ubrk_setUText(handles_->iterator.get(), opened, &status);
    if (U_FAILURE(status)) std::abort();  // out of memory; ICU has no other reason
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
