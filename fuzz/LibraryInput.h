// A whole transcripts folder as the input of a target, and commands over it. The input is the
// folder's files, each below a line "==> PATH".
#pragma once

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Law.h"
#include "OmbrixCLI/Program.h"
#include "OmbrixPlatform/Files.h"
#include "OmbrixPlatform/LineCursor.h"
#include "OmbrixPlatform/TestFolder.h"
#include "OmbrixPlatform/Text.h"
#include "Output.h"

namespace ombrix::Fuzz {

/// The bytes of files by path.
using Tree = std::map<std::string, std::string>;

class LibraryInput {
  public:
    LibraryInput() {
        disk_.write("support/config.json", R"({"output_folder_display_path": ")" + folder() +
                                               R"(", "user_name": "Dana"})");
    }
    std::string folder() const { return disk_.at("library"); }

    /// Puts these files into the folder, and nothing else.
    void write(std::string_view input) const {
        std::filesystem::remove_all(folder());
        std::filesystem::create_directory(folder());
        std::string_view path;
        std::size_t begin = 0, next = 0;
        LineCursor lines(input);
        while (const auto line = lines.next()) {
            const std::size_t start = next;
            next = std::min(start + line->size() + 1, input.size());
            if (!line->starts_with(fileLine)) continue;
            writeFile(path, input.substr(begin, start - begin));
            path = line->substr(fileLine.size());
            begin = next;
        }
        writeFile(path, input.substr(begin));
    }

    /// The folder, without what the engine notes for itself.
    Tree tree() const {
        Tree files;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder())) {
            const std::string path = entry.path().lexically_relative(folder());
            if (entry.is_regular_file() && !path.starts_with(".ombrix/engine/"))
                files[path] = Files::bytes(entry.path());
        }
        return files;
    }

    struct Outcome {
        int status = 0;
        std::string output{};
    };
    /// Runs a command. No failure is one that the commands do not know.
    Outcome run(const Program::Tool& tool, std::vector<std::string> words) const {
        static const Output output;
        words.insert(words.begin(), tool.name);
        words.insert(words.end(), {"--support-dir", disk_.at("support")});
        const int status = Program::run(tool, words);
        law(status == 0 || (status >= 2 && status <= 4), "every failure is told of");
        return {status, output.take()};
    }

  private:
    static constexpr std::string_view fileLine = "==> ";

    /// Passes over a name that leads out of the folder or that no file can have.
    void writeFile(std::string_view path, std::string_view bytes) const {
        if (path.empty() || path.size() > 100 || path.starts_with('/') ||
            Text::contains(path, "..") || Text::contains(path, std::string_view("\0", 1)))
            return;
        try {
            disk_.write("library/" + std::string(path), bytes);
        } catch (const std::filesystem::filesystem_error&) {  // its folder is another file
        }
    }

    test::TestFolder disk_;
};
}  // namespace ombrix::Fuzz
