// make-library FOLDER [--count N] [--seed S] [--language english]
// make-library FOLDER --from LIBRARY [--count N] [--spelling plain|quotes|accents]
//
// Writes N transcripts (default 10,000, about 50 KB each) of invented meetings, in monthly folders
// over the three years before 2026-08-01. The same numbers give the same bytes.
//
// The text resembles real speech in what affects speed: a few words make up most of it and most
// words are rare; words begin alike; a meeting repeats the words of its topic; some names, symbols
// and quotes are not ASCII.
//
// With --from it copies transcripts of another library, at most N, spread evenly, and writes what
// was spoken in another spelling (Spelling.h).
#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "LibraryWords.h"
#include "Spelling.h"
#include "Vocabulary.h"

namespace {

using namespace ombrix;

/// Writes one meeting.
class Meeting {
  public:
    Meeting(const Vocabulary& vocabulary, const Language& language, std::uint64_t seed,
            std::string& out)
        : vocabulary_(vocabulary), language_(language), dice_(seed), out_(out) {}

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
            word = dice_.below(shareOfATopic) < language_.topics.size()
                       ? std::string(dice_.of(language_.topics))
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
            if (i > 0) out_ += language_.afterStop;
            if (dice_.chance(12) && language_.name == "english")
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
        Spelling::capitalize(out_, first);
        out_ += dice_.chance(120) ? language_.question : language_.stop;
        if (quoted) out_ += typographic_ ? "”" : "\"";
        if (typographic_) Spelling::curlApostrophes(out_, begin);
    }

    void words(std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            if (i > 0) out_ += dice_.chance(70) ? language_.comma : language_.gap;
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

    void machineBlock() {
        out_ += "## Summary\n\n";
        for (int i = 0; i < 4; ++i) {
            sentence();
            out_ += language_.afterStop;
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

    /// A word of a meeting is one of its language's topics with a chance of one in this for each,
    /// so that a topic is as frequent in every language.
    static constexpr std::size_t shareOfATopic = 290;

    const Vocabulary& vocabulary_;
    const Language& language_;
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

/// What is asked for on the command line.
struct Order {
    std::string folder;
    std::string from;
    std::size_t count = 10'000;
    std::uint64_t seed = 1;
    Language language = Languages::english();
    Spelling::Kind spelling = Spelling::Kind::plain;
};

/// Writes the files of a library and counts them. Ends the program when one cannot be written.
class Writer {
  public:
    void write(const std::filesystem::path& path, const std::string& bytes) {
        std::error_code ignored;  // opening the file fails then
        std::filesystem::create_directories(path.parent_path(), ignored);
        if (!writeFile(path, bytes)) {
            std::fprintf(stderr, "make-library: %s: %s\n", path.c_str(), std::strerror(errno));
            std::exit(1);
        }
        ++files_;
        bytes_ += bytes.size();
    }
    void report(const std::string& folder) const {
        std::printf("%zu transcripts, %.1f MB, in %s\n", files_, static_cast<double>(bytes_) / 1e6,
                    folder.c_str());
    }

  private:
    std::size_t files_ = 0;
    std::uintmax_t bytes_ = 0;
};

void inventMeetings(const Order& order, Writer& writer) {
    using namespace std::chrono;
    constexpr sys_days firstDay = sys_days(year(2023) / August / 1);
    constexpr auto days =
        static_cast<std::size_t>((sys_days(year(2026) / August / 1) - firstDay).count());

    Dice dice(order.seed);
    const Vocabulary vocabulary(dice, order.language);
    std::string text;
    for (std::size_t i = 0; i < order.count; ++i) {
        // Spread evenly, so that a tenth of the days is also a tenth of the bytes.
        const std::string day = dayString(firstDay + std::chrono::days(i * days / order.count));
        text.clear();
        Meeting meeting(vocabulary, order.language, dice.next(), text);
        meeting.write(day);
        std::string name = meeting.title();
        std::ranges::replace(name, ':', '-');
        writer.write(order.folder + "/" + day.substr(0, 7) + "/" + day + " " + std::to_string(i) +
                         " " + name + ".md",
                     text);
    }
}

void copyMeetings(const Order& order, Writer& writer) {
    namespace fs = std::filesystem;
    std::vector<fs::path> paths;
    for (const auto& entry : fs::recursive_directory_iterator(order.from))
        if (entry.is_regular_file() && entry.path().extension() == ".md")
            paths.push_back(entry.path());
    std::ranges::sort(paths);
    const std::size_t count = std::min(order.count, paths.size());
    for (std::size_t i = 0; i < count; ++i) {
        const fs::path& path = paths[i * paths.size() / count];
        std::ifstream in(path, std::ios::binary);
        const std::string text{std::istreambuf_iterator<char>(in), {}};
        writer.write(order.folder / fs::relative(path, order.from),
                     Spelling::ofTranscript(text, order.spelling));
    }
}

/// Sets `number` if the whole of `text` is one; otherwise false.
template <typename Number>
bool readNumber(std::string_view text, Number& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}
/// Sets `order.language` if there is one of this name; otherwise false.
bool readLanguage(std::string_view name, Order& order) {
    for (auto& language : Languages::all()) {
        if (language.name != name) continue;
        order.language = std::move(language);
        return true;
    }
    return false;
}

bool readOption(std::string_view option, std::string_view value, Order& order) {
    if (option == "--count") return readNumber(value, order.count) && order.count > 0;
    if (option == "--seed") return readNumber(value, order.seed);
    if (option == "--language") return readLanguage(value, order);
    if (option == "--spelling") return Spelling::read(value, order.spelling);
    if (option == "--from") order.from = value;
    return option == "--from";
}

bool readOrder(const std::vector<std::string_view>& arguments, Order& order) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (order.folder.empty() && !arguments[i].starts_with("-")) {
            order.folder = arguments[i];
            continue;
        }
        if (i + 1 == arguments.size() || !readOption(arguments[i], arguments[i + 1], order))
            return false;
        ++i;
    }
    return !order.folder.empty();
}
}  // namespace

int main(int argc, char** argv) {
    Order order;
    if (!readOrder({argv + 1, argv + argc}, order)) {
        std::fputs(
            "usage: make-library FOLDER [--count N] [--seed S] [--language NAME]\n"
            "       make-library FOLDER --from LIBRARY [--count N] [--spelling KIND]\n",
            stderr);
        return 64;
    }
    Writer writer;
    if (order.from.empty())
        inventMeetings(order, writer);
    else
        copyMeetings(order, writer);
    writer.report(order.folder);
    return 0;
}
