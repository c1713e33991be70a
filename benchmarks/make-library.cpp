// make-library FOLDER [--count N] [--seed S]
//
// Writes N transcripts (default 10,000, about 50 KB each) of invented meetings, in monthly folders
// over the three years before 2026-08-01. The same count and seed give the same bytes.
//
// The text resembles real speech in what affects speed: a few words make up most of it and most
// words are rare; a meeting repeats the words of its topic; some names, symbols and quotes are not
// ASCII.
#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "LibraryWords.h"
#include "Vocabulary.h"

namespace {

using namespace ombrix;

/// Writes one meeting.
class Meeting {
  public:
    Meeting(const Vocabulary& vocabulary, std::uint64_t seed, std::string& out)
        : vocabulary_(vocabulary), dice_(seed), out_(out) {}

    void write(std::string_view day) {
        gather();
        header(day);
        out_ += "## Notes\n\n";
        notes();
        out_ += "\n\n## Transcript\n\n";
        const std::size_t turns = dice_.between(120, 300);
        for (std::size_t i = 0; i < turns; ++i) turn(i);
        if (dice_.chance(400)) machineBlock();
    }

    const std::string& title() const { return title_; }

  private:
    void gather() {
        title_ = dice_.of(LibraryWords::titles);
        for (auto& word : topic_) {
            word = dice_.chance(400) ? std::string(dice_.of(LibraryWords::topics))
                                     : vocabulary_.content(dice_);
        }
        if (dice_.chance(600)) title_.append(", ").append(topic_[0]);
        // Squared, so that the first customers are frequent and the last ones rare.
        const std::size_t place = dice_.below(1000);
        if (dice_.chance(300)) {
            topic_.back() = LibraryWords::customers[place * place / 1000 *
                                                    LibraryWords::customers.size() / 1000];
        }
        people_.push_back("Nadia Brandt");
        for (std::size_t others = dice_.between(1, 5); others > 0; --others) {
            people_.push_back(std::string(dice_.of(LibraryWords::firstNames)) + " " +
                              std::string(dice_.of(LibraryWords::lastNames)));
        }
        typographic_ = dice_.chance(100);
    }

    void header(std::string_view day) {
        const auto pad = [](std::size_t n) { return (n < 10 ? "0" : "") + std::to_string(n); };
        out_ += "---\ntitle: ";
        const bool quoted = title_.find(':') != std::string::npos;
        out_.append(quoted ? "\"" : "").append(title_).append(quoted ? "\"" : "");
        out_.append("\nstarted_at: ").append(day).append("T").append(pad(dice_.between(7, 17)));
        out_.append(":").append(pad(5 * dice_.below(12))).append(":00Z\ndate: ").append(day);
        out_.append("\nduration_min: ").append(std::to_string(dice_.between(15, 90)));
        out_ += "\nsource: Ombrix\nparticipants:\n";
        for (const auto& person : people_) out_.append("  - ").append(person).append("\n");
        if (dice_.chance(500))
            out_.append("tags: [").append(topic_[1]).append(", ").append(topic_[2]).append("]\n");
        out_ += "---\n\n";
    }

    void notes() {
        if (dice_.chance(600)) {
            out_ +=
                "_(User-added context. Empty until the user types here in the Library window.)_";
            return;
        }
        for (std::size_t lines = dice_.between(1, 6); lines > 0; --lines) {
            out_ += dice_.chance(200) ? "- [ ] " : "- ";
            words(dice_.between(4, 14));
            if (lines > 1) out_ += "\n";
        }
    }

    void turn(std::size_t index) {
        out_.append("**").append(dice_.chance(450) ? people_[0] : dice_.of(people_)).append(":** ");
        const std::size_t sentences = dice_.chance(250) ? 1 : dice_.between(2, 6);
        for (std::size_t i = 0; i < sentences; ++i) {
            if (i > 0) out_ += " ";
            if (dice_.chance(12))
                promise();
            else
                sentence();
        }
        if (index % 60 == 59) {
            out_ += "\n\n";
            sentence();
        }
        out_ += "\n\n";
    }

    void promise() {
        static constexpr auto openings = std::to_array<std::string_view>(
            {"I'll send you the ", "Can you look at the ", "Let me check the ",
             "I will write down the ", "Could you send me the ", "We agreed on the "});
        static constexpr auto ends = std::to_array<std::string_view>(
            {" by Friday.", " tomorrow.", " next week.", ".", " before the end of the month."});
        out_.append(dice_.of(openings)).append(dice_.of(topic_)).append(dice_.of(ends));
    }

    void sentence() {
        const std::size_t begin = out_.size();
        const bool quoted = dice_.chance(15);
        if (quoted) out_ += typographic_ ? "“" : "\"";
        const std::size_t first = out_.size();
        words(dice_.between(4, 18));
        if (out_[first] >= 'a' && out_[first] <= 'z')
            out_[first] = static_cast<char>(out_[first] - 'a' + 'A');
        out_ += dice_.chance(120) ? "?" : ".";
        if (quoted) out_ += typographic_ ? "”" : "\"";
        if (typographic_) curlApostrophes(begin);
    }

    void words(std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            if (i > 0) out_ += dice_.chance(70) ? ", " : " ";
            const std::size_t kind = dice_.below(1000);
            if (kind < 60) {
                out_ += dice_.of(topic_);
            } else if (kind < 72) {
                number();
            } else if (kind < 80) {
                const std::string& name = dice_.of(people_);
                out_.append(name, 0, name.find(' '));
            } else {
                out_ += vocabulary_.any(dice_);
            }
        }
    }

    void number() {
        const std::string n = std::to_string(dice_.between(2, 999));
        switch (dice_.below(5)) {
            case 0:
                out_.append(n).append(" percent");
                break;
            case 1:
                out_.append("Q").append(std::to_string(dice_.between(1, 4)));
                break;
            case 2:
                out_.append(n).append(",000");
                break;
            case 3:
                out_.append(std::to_string(dice_.between(7, 18))).append(":30");
                break;
            default:
                out_ += n;
        }
    }

    void curlApostrophes(std::size_t from) {
        for (std::size_t at = out_.find('\'', from); at != std::string::npos;
             at = out_.find('\'', at)) {
            out_.replace(at, 1, "’");
        }
    }

    void machineBlock() {
        out_ += "## Summary\n\n";
        for (int i = 0; i < 4; ++i) {
            sentence();
            out_ += " ";
        }
        out_ += "\n\n## Action Items\n\n";
        for (std::size_t items = dice_.between(1, 6); items > 0; --items) {
            out_.append(dice_.chance(200) ? "- [x] " : "- [ ] ").append(dice_.of(people_));
            out_ += " — ";
            words(dice_.between(4, 12));
            out_ += "\n";
        }
        out_ += "\n<!-- /ombrix:ai -->\n";
    }

    const Vocabulary& vocabulary_;
    Dice dice_;
    std::string& out_;
    std::string title_;
    std::array<std::string, 12> topic_;
    std::vector<std::string> people_;
    bool typographic_ = false;
};

std::string dayString(std::chrono::sys_days day) {
    const std::chrono::year_month_day ymd(day);
    char text[16];
    std::snprintf(text, sizeof text, "%04d-%02u-%02u", static_cast<int>(ymd.year()),
                  static_cast<unsigned>(ymd.month()), static_cast<unsigned>(ymd.day()));
    return text;
}

bool writeFile(const std::string& path, const std::string& bytes) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) return false;
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    return std::fclose(file) == 0 && written;
}

int makeLibrary(const std::string& folder, std::size_t count, std::uint64_t seed) {
    using namespace std::chrono;
    constexpr sys_days firstDay = sys_days(year(2023) / August / 1);
    constexpr auto days =
        static_cast<std::size_t>((sys_days(year(2026) / August / 1) - firstDay).count());

    Dice dice(seed);
    const Vocabulary vocabulary(dice);
    std::string text;
    std::uintmax_t bytes = 0;
    for (std::size_t i = 0; i < count; ++i) {
        // Spread evenly, so that a tenth of the days is also a tenth of the bytes.
        const std::string day = dayString(firstDay + std::chrono::days(i * days / count));
        text.clear();
        Meeting meeting(vocabulary, dice.next(), text);
        meeting.write(day);
        std::string name = meeting.title();
        std::ranges::replace(name, ':', '-');
        const std::string month = folder + "/" + day.substr(0, 7);
        std::error_code ignored;  // opening the file fails then
        std::filesystem::create_directories(month, ignored);
        const std::string path = month + "/" + day + " " + std::to_string(i) + " " + name + ".md";
        if (!writeFile(path, text)) {
            std::fprintf(stderr, "make-library: %s: %s\n", path.c_str(), std::strerror(errno));
            return 1;
        }
        bytes += text.size();
    }
    std::printf("%zu transcripts, %.1f MB, in %s\n", count, static_cast<double>(bytes) / 1e6,
                folder.c_str());
    return 0;
}

/// Sets `number` if the whole of `text` is one; otherwise false.
template <typename Number>
bool readNumber(std::string_view text, Number& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}
}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string_view> arguments(argv + 1, argv + argc);
    std::string folder;
    std::size_t count = 10'000;
    std::uint64_t seed = 1;
    bool understood = true;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const bool hasValue = i + 1 < arguments.size();
        if (arguments[i] == "--count" && hasValue)
            understood = understood && readNumber(arguments[++i], count);
        else if (arguments[i] == "--seed" && hasValue)
            understood = understood && readNumber(arguments[++i], seed);
        else if (folder.empty() && !arguments[i].starts_with("-"))
            folder = arguments[i];
        else
            understood = false;
    }
    if (!understood || folder.empty() || count == 0) {
        std::fputs("usage: make-library FOLDER [--count N] [--seed S]\n", stderr);
        return 64;
    }
    return makeLibrary(folder, count, seed);
}
