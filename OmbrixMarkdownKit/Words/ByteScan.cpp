#include "OmbrixMarkdownKit/Words/ByteScan.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "OmbrixPlatform/Text.h"

namespace ombrix::ByteScan {
namespace {

using WordMarks::blockSize;
using WordMarks::readAfter;
using WordMarks::readBefore;

WordMarks::Mark widestMark() {
    static const WordMarks::Mark mark = WordMarks::ways().front().mark;
    return mark;
}

const WordMarks::Beginnings& oneForms() {
    static constexpr std::string_view forms[] = {"1", "one"};
    static const WordMarks::Beginnings beginnings(forms, WordMarks::Where::anywhere);
    return beginnings;
}

std::vector<std::string_view> views(const std::vector<std::string>& texts) {
    return {texts.begin(), texts.end()};
}
}  // namespace

std::size_t MarkedPlaces::nextUnread(std::size_t from) {
    for (; from < text_.size(); from = end_) {
        read(from);
        for (std::size_t at = begin_; at < end_; at += blockSize) {
            if (const auto bits = marks_[(at - begin_) / blockSize]; bits != 0)
                return at + static_cast<std::size_t>(std::countr_zero(bits));
        }
    }
    return text_.size();
}

/// Reads the marks from `from` on, as many as there is room for.
void MarkedPlaces::read(std::size_t from) {
    begin_ = end_ = from;
    const std::size_t last = std::min(text_.size(), from + blocksRead * blockSize);
    if (from < readBefore) end_ += readBeside(from);
    if (end_ + blockSize + readAfter <= text_.size()) {
        const std::size_t blocks = std::min((text_.size() - readAfter - end_) / blockSize,
                                            (from + blocksRead * blockSize - end_) / blockSize);
        widestMark()(beginnings_, text_.data() + end_, blocks,
                     marks_.data() + (end_ - begin_) / blockSize);
        end_ += blocks * blockSize;
    }
    while (end_ < last) end_ += readBeside(end_);
}

/// The marks of one block at an end of the text, by way of a copy with zeros beside it. Returns how
/// many bytes of the text are in the block.
std::size_t MarkedPlaces::readBeside(std::size_t from) {
    std::array<char, readBefore + blockSize + readAfter> copy{};
    const std::size_t before = std::min(from, readBefore);
    const std::size_t count =
        std::min(text_.size() - from + before, before + blockSize + readAfter);
    std::memcpy(copy.data() + readBefore - before, text_.data() + from - before, count);
    std::uint64_t& marks = marks_[(from - begin_) / blockSize];
    widestMark()(beginnings_, copy.data() + readBefore, 1, &marks);
    const std::size_t left = text_.size() - from;
    if (left >= blockSize) return blockSize;
    marks &= (std::uint64_t{1} << left) - 1;
    return left;
}

OneForms::OneForms(std::string_view text) : text_(text), marked_(oneForms(), text) {}

std::size_t OneForms::next(std::size_t from) {
    std::size_t at = marked_.next(from);
    while (at < text_.size() && text_[at] != '1' &&
           !Text::startsWithIgnoringAsciiCase(text_.substr(at), "one"))
        at = marked_.next(at + 1);
    return at;
}

WordStarts::WordStarts(std::vector<std::string> prefixes)
    : beginnings_(std::move(prefixes)),
      marked_(views(beginnings_.prefixes()), WordMarks::Where::wordStarts) {
    beginnings_.eachCharacter(
        [&](unsigned char first, unsigned char second) { marked_.addCharacters(first, second); });
}
}  // namespace ombrix::ByteScan
