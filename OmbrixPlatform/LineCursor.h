// The lines of a text, one at a time. A list of them would cost sixteen bytes a line, which for a
// text of line feeds alone is sixteen times its size.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace ombrix {

class LineCursor {
  public:
    explicit LineCursor(std::string_view text) : rest_(text) {}

    /// The next line without its line feed, as a view of the text; nothing after the last line. An
    /// empty text is one empty line.
    std::optional<std::string_view> next() {
        if (!rest_) return std::nullopt;
        const std::size_t end = rest_->find('\n');
        const std::string_view line = rest_->substr(0, end);
        if (end == rest_->npos)
            rest_.reset();
        else
            rest_->remove_prefix(end + 1);
        return line;
    }
    bool isAtEnd() const { return !rest_; }

  private:
    std::optional<std::string_view> rest_;
};
}  // namespace ombrix
