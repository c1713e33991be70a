// Comma-separated values as RFC 4180 has them: fields in double quotes may hold commas, line feeds
// and, doubled, quotes. Reads anything: an open quote holds the rest of the text, a quote elsewhere
// than at the start of a field is an ordinary character, and CR is dropped.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ombrix::TranscriptImport {

/// Goes through the fields of a text one at a time, so that a text of commas costs no memory.
class CsvCursor {
  public:
    /// `separator` is in ASCII.
    explicit CsvCursor(std::string_view text, char separator = ',')
        : text_(text), separator_(separator) {}

    /// Goes to the next field; false after the last one. An empty text has one empty field, and so
    /// has the row after a final line feed.
    bool next();

    /// The field; valid until `next`. Shows the text where it can.
    std::string_view field() const { return field_; }
    bool endsRow() const { return endsRow_; }

  private:
    void readQuoted();
    void readPlain();

    std::string_view text_;
    char separator_;
    std::size_t at_ = 0;
    bool isAtEnd_ = false;
    bool endsRow_ = true;
    std::string_view field_;
    std::string storage_;
};

/// The rows of the text without those of one empty field.
std::vector<std::vector<std::string>> parseCSV(std::string_view text);
}  // namespace ombrix::TranscriptImport
