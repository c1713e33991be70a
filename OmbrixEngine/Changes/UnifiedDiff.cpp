#include "OmbrixEngine/Changes/UnifiedDiff.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace ombrix::UnifiedDiff {
namespace {

using Lines = std::vector<std::string_view>;

constexpr std::size_t context = 3;
/// Beyond so many changed lines the whole stretch counts as changed.
constexpr std::int64_t mostEdits = 1000;

/// With their line feeds.
Lines linesOf(std::string_view text) {
    Lines lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end);
    }
    return lines;
}

/// The same lines of both texts, in order: the places in each.
struct Pair {
    std::size_t before = 0, after = 0;
};

/// How far each diagonal was followed after a number of edits, from -edits to edits.
class Reach {
  public:
    explicit Reach(std::int64_t most) : most_(most), x_(static_cast<std::size_t>(2 * most + 3)) {}
    std::int64_t& operator[](std::int64_t k) { return x_[static_cast<std::size_t>(k + most_ + 1)]; }
    /// True when the path with `edits` edits comes to diagonal `k` from the one above.
    bool comesDown(std::int64_t k, std::int64_t edits) {
        return k == -edits || (k != edits && (*this)[k - 1] < (*this)[k + 1]);
    }
    /// The stretch that a path with `edits` edits may look at.
    Reach cut(std::int64_t edits) {
        Reach part(edits);
        for (std::int64_t k = -edits - 1; k <= edits + 1; ++k) part[k] = (*this)[k];
        return part;
    }

  private:
    std::int64_t most_;
    std::vector<std::int64_t> x_;
};

/// The pairs along the way that `trace` records, which ends at (x, y).
std::vector<Pair> pairsOf(std::vector<Reach>& trace, std::int64_t x, std::int64_t y, Pair from) {
    std::vector<Pair> pairs;
    for (auto edits = static_cast<std::int64_t>(trace.size());; --edits) {
        std::int64_t startX = 0, startY = 0;
        if (edits > 0) {
            Reach& before = trace[static_cast<std::size_t>(edits - 1)];
            const std::int64_t k = x - y;
            const std::int64_t old = before.comesDown(k, edits) ? k + 1 : k - 1;
            startX = before[old];
            startY = startX - old;
        }
        while (x > startX && y > startY) {
            --x, --y;
            pairs.push_back({from.before + static_cast<std::size_t>(x),
                             from.after + static_cast<std::size_t>(y)});
        }
        x = startX, y = startY;
        if (edits == 0) break;
    }
    std::ranges::reverse(pairs);
    return pairs;
}

/// Myers' greedy search between `from` and `end`; nothing when it takes more than `mostEdits`.
std::optional<std::vector<Pair>> commonLines(const Lines& a, const Lines& b, Pair from, Pair end) {
    const auto n = static_cast<std::int64_t>(end.before - from.before);
    const auto m = static_cast<std::int64_t>(end.after - from.after);
    const auto isSame = [&](std::int64_t x, std::int64_t y) {
        return a[from.before + static_cast<std::size_t>(x)] ==
               b[from.after + static_cast<std::size_t>(y)];
    };
    const std::int64_t most = std::min(n + m, mostEdits);
    Reach reach(most);
    std::vector<Reach> trace;
    for (std::int64_t edits = 0; edits <= most; ++edits) {
        for (std::int64_t k = -edits; k <= edits; k += 2) {
            std::int64_t x = edits == 0                  ? 0
                             : reach.comesDown(k, edits) ? reach[k + 1]
                                                         : reach[k - 1] + 1;
            while (x < n && x - k < m && isSame(x, x - k)) ++x;
            reach[k] = x;
            if (x >= n && x - k >= m) return pairsOf(trace, n, m, from);
        }
        trace.push_back(reach.cut(edits));
    }
    return std::nullopt;
}

std::vector<Pair> allCommonLines(const Lines& a, const Lines& b) {
    std::size_t head = 0, tail = 0;
    while (head < std::min(a.size(), b.size()) && a[head] == b[head]) ++head;
    while (head + tail < std::min(a.size(), b.size()) &&
           a[a.size() - 1 - tail] == b[b.size() - 1 - tail])
        ++tail;
    std::vector<Pair> pairs;
    for (std::size_t i = 0; i < head; ++i) pairs.push_back({i, i});
    if (const auto middle = commonLines(a, b, {head, head}, {a.size() - tail, b.size() - tail}))
        pairs.insert(pairs.end(), middle->begin(), middle->end());
    for (std::size_t i = tail; i > 0; --i) pairs.push_back({a.size() - i, b.size() - i});
    return pairs;
}

/// A stretch of either text that the other does not have.
struct Change {
    Pair begin, end;
};

std::vector<Change> changesOf(const Lines& a, const Lines& b) {
    std::vector<Change> changes;
    Pair at;
    auto pairs = allCommonLines(a, b);
    pairs.push_back({a.size(), b.size()});
    for (const auto& pair : pairs) {
        if (pair.before != at.before || pair.after != at.after) changes.push_back({at, pair});
        at = {pair.before + 1, pair.after + 1};
    }
    return changes;
}

void append(std::string& text, char mark, const Lines& lines, std::size_t begin, std::size_t end) {
    for (std::size_t i = begin; i < end; ++i) {
        (text += mark) += lines[i];
        if (!lines[i].ends_with('\n')) text += "\n\\ No newline at end of file\n";
    }
}

/// "9,3": the first line and how many; without lines the line before them.
std::string range(std::size_t begin, std::size_t end) {
    const std::size_t count = end - begin;
    std::string text = std::to_string(count == 0 ? begin : begin + 1);
    if (count != 1) text += "," + std::to_string(count);
    return text;
}

std::string name(char side, std::string_view path, bool isThere) {
    return isThere ? std::string(1, side) + "/" + std::string(path) : "/dev/null";
}
}  // namespace

std::string make(std::string_view path, std::optional<std::string_view> before,
                 std::optional<std::string_view> after) {
    if (before == after) return {};
    const Lines a = linesOf(before.value_or("")), b = linesOf(after.value_or(""));
    std::string text = "--- " + name('a', path, before.has_value()) + "\n+++ " +
                       name('b', path, after.has_value()) + "\n";
    const auto changes = changesOf(a, b);
    for (std::size_t i = 0; i < changes.size();) {
        std::size_t last = i;  // changes whose contexts touch are one hunk
        while (last + 1 < changes.size() &&
               changes[last + 1].begin.before - changes[last].end.before <= 2 * context)
            ++last;
        const std::size_t lead = std::min(context, changes[i].begin.before);
        const std::size_t trail = std::min(context, a.size() - changes[last].end.before);
        const Pair begin{changes[i].begin.before - lead, changes[i].begin.after - lead};
        const Pair end{changes[last].end.before + trail, changes[last].end.after + trail};
        text += "@@ -" + range(begin.before, end.before) + " +" + range(begin.after, end.after) +
                " @@\n";
        std::size_t at = begin.before;
        for (; i <= last; ++i) {
            append(text, ' ', a, at, changes[i].begin.before);
            append(text, '-', a, changes[i].begin.before, changes[i].end.before);
            append(text, '+', b, changes[i].begin.after, changes[i].end.after);
            at = changes[i].end.before;
        }
        append(text, ' ', a, at, end.before);
    }
    return text;
}
}  // namespace ombrix::UnifiedDiff
