#include "OmbrixMarkdownKit/Import/Csv.h"

#include <algorithm>
#include <utility>

namespace ombrix::TranscriptImport {
namespace {

constexpr char quote = '"';

void appendWithoutReturns(std::string& field, std::string_view text) {
    std::ranges::copy_if(text, std::back_inserter(field), [](char c) { return c != '\r'; });
}
}  // namespace

bool CsvCursor::next() {
    if (isAtEnd_) return false;
    storage_.clear();
    field_ = {};
    while (at_ < text_.size() && text_[at_] == '\r') ++at_;
    if (at_ < text_.size() && text_[at_] == quote) readQuoted();
    readPlain();
    isAtEnd_ = at_ == text_.size();
    endsRow_ = isAtEnd_ || text_[at_] == '\n';
    if (!isAtEnd_) ++at_;
    return true;
}

/// From an opening quote up to its closing one, into `storage_`.
void CsvCursor::readQuoted() {
    ++at_;
    while (true) {
        const std::size_t end = std::min(text_.find(quote, at_), text_.size());
        appendWithoutReturns(storage_, text_.substr(at_, end - at_));
        at_ = std::min(end + 1, text_.size());
        if (at_ == text_.size() || text_[at_] != quote) break;
        storage_ += quote;
        ++at_;
    }
    field_ = storage_;
}

/// Up to the separator or the line feed that ends the field.
void CsvCursor::readPlain() {
    const auto begin = text_.begin() + static_cast<std::ptrdiff_t>(at_);
    const auto stop =
        std::find_if(begin, text_.end(), [this](char c) { return c == separator_ || c == '\n'; });
    const auto plain = text_.substr(at_, static_cast<std::size_t>(stop - begin));
    at_ += plain.size();
    if (storage_.empty() && plain.find('\r') == plain.npos) {
        if (!plain.empty()) field_ = plain;
        return;
    }
    appendWithoutReturns(storage_, plain);
    field_ = storage_;
}

std::vector<std::vector<std::string>> parseCSV(std::string_view text) {
    std::vector<std::vector<std::string>> rows;
    std::vector<std::string> row;
    for (CsvCursor cursor(text); cursor.next();) {
        row.emplace_back(cursor.field());
        if (!cursor.endsRow()) continue;
        if (row.size() > 1 || !row.front().empty()) rows.push_back(std::move(row));
        row.clear();
    }
    return rows;
}
}  // namespace ombrix::TranscriptImport
