// A temporary folder and environment variables for one test; both are restored afterwards.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace ombrix::test {

/// A new temporary folder; removed with the object.
class TestFolder {
  public:
    TestFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "ombrix-XXXXXX").string();
        path_ = ::mkdtemp(pattern.data());
    }
    ~TestFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    const std::string& path() const { return path_; }
    std::string at(std::string_view name) const { return path_ + "/" + std::string(name); }
    /// Writes a file and creates its parent folders.
    std::string write(std::string_view name, std::string_view bytes) const {
        const std::string file = at(name);
        std::filesystem::create_directories(std::filesystem::path(file).parent_path());
        std::ofstream(file, std::ios::binary) << bytes;
        return file;
    }
    std::string read(std::string_view name) const {
        std::ifstream file(at(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

  private:
    std::string path_;
};

/// Sets or removes a variable; the destructor restores it.
class Variable {
  public:
    Variable(std::string name, const std::optional<std::string>& value) : name_(std::move(name)) {
        if (const char* old = std::getenv(name_.c_str())) old_ = old;
        set(value);
    }
    ~Variable() { set(old_); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

  private:
    void set(const std::optional<std::string>& value) {
        if (value)
            ::setenv(name_.c_str(), value->c_str(), 1);
        else
            ::unsetenv(name_.c_str());
    }

    std::string name_;
    std::optional<std::string> old_;
};
}  // namespace ombrix::test
