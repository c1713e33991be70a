#include "OmbrixMarkdownKit/Import/CueReader.h"

#include <algorithm>
#include <array>

#include "OmbrixMarkdownKit/Import/SpeakerLines.h"
#include "OmbrixPlatform/LineCursor.h"
#include "OmbrixPlatform/Text.h"

namespace ombrix::TranscriptImport {
namespace {

constexpr std::string_view arrow = "-->";
constexpr std::string_view signature = "WEBVTT";
constexpr std::string_view voiceOpen = "<v";

bool isNumber(std::string_view line) { return std::ranges::all_of(line, Text::isAsciiDigit); }

/// The name in a voice tag, from what is between "<v" and ">": " Ann Lee", ".loud Ann Lee".
std::string voiceName(std::string_view inside) {
    const std::string flat = Text::flattened(inside);
    const std::string_view name = flat;
    if (!name.starts_with('.')) return flat;
    const std::size_t classEnd = name.find(' ');
    return classEnd == name.npos ? std::string() : std::string(name.substr(classEnd + 1));
}

class CueReader {
  public:
    std::vector<Turn> turns;

    void endBlock() {
        speakHeldNumber();
        part_ = Part::start;
    }

    /// A trimmed line of a block.
    void read(std::string_view line) {
        if (line.empty()) return;
        if (part_ == Part::start) {
            if (line.starts_with(signature)) return;
            part_ = isComment(line) ? Part::comment : Part::beforeTimes;
        }
        if (part_ == Part::beforeTimes && Text::contains(line, arrow))
            part_ = Part::speech;
        else if (part_ == Part::speech)
            readSpeech(line);
    }

  private:
    enum class Part { start, comment, beforeTimes, speech };

    static bool isComment(std::string_view line) {
        constexpr auto openings = std::to_array<std::string_view>({"NOTE", "STYLE", "REGION"});
        return std::ranges::any_of(openings, [&](auto word) { return line.starts_with(word); });
    }

    /// A number is held until the next line shows whether it is the number of another cue.
    void readSpeech(std::string_view line) {
        if (beginsWithCueTiming(line)) {
            heldNumber_ = {};
            return;
        }
        speakHeldNumber();
        if (isNumber(line))
            heldNumber_ = line;
        else
            speak(line);
    }

    void speakHeldNumber() {
        if (!heldNumber_.empty()) append(turns, speaker_, heldNumber_);
        heldNumber_ = {};
    }

    void speak(std::string_view line) {
        if (const std::size_t close = line.find('>');
            line.starts_with(voiceOpen) && close != line.npos) {
            setVoice(line.substr(voiceOpen.size(), close - voiceOpen.size()));
            append(turns, speaker_, stripTags(line.substr(close + 1), lineStorage_));
            return;
        }
        line = Text::trimmed(stripTags(line, lineStorage_));
        if (const auto speech = inlineSpeaker(line, textStorage_)) {
            speaker_ = speech->speaker;
            line = speech->text;
        }
        append(turns, speaker_, line);
    }

    void setVoice(std::string_view inside) {
        if (inside == voice_) {
            if (!voiceName_.empty()) speaker_ = voiceName_;
            return;
        }
        voice_ = inside;
        voiceName_ = voiceName(inside);
        if (!voiceName_.empty()) speaker_ = voiceName_;
    }

    Part part_ = Part::start;
    std::string speaker_{unknownSpeaker};
    std::string_view heldNumber_;
    std::string_view voice_;  // the inside of the last voice tag, which often comes again
    std::string voiceName_;
    std::string lineStorage_, textStorage_;
};
}  // namespace

std::vector<Turn> readCues(std::string_view text) {
    CueReader reader;
    LineCursor lines(text);
    while (const auto line = lines.next()) {
        if (line->empty())
            reader.endBlock();
        else
            reader.read(Text::trimmed(*line));
    }
    reader.endBlock();
    return std::move(reader.turns);
}
}  // namespace ombrix::TranscriptImport
