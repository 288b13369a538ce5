#pragma once

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace corvane {

/// A folder of a test's own, removed with everything in it.
class TemporaryFolder {
public:
    TemporaryFolder() : path_((std::filesystem::temp_directory_path() / "corvane-test-XXXXXX").string()) {
        if (mkdtemp(path_.data()) == nullptr) {
            throw std::filesystem::filesystem_error("no temporary folder", path_,
                                                    std::error_code(errno, std::generic_category()));
        }
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    [[nodiscard]] std::filesystem::path path() const { return path_; }
    [[nodiscard]] std::filesystem::path operator/(std::string_view name) const { return path() / name; }

    /// Writes a file, and the folders it is in.
    std::filesystem::path write(std::string_view name, std::string_view content) const {
        std::filesystem::path file = path() / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << content;
        return file;
    }

    /// Writes a file that can be executed.
    std::filesystem::path writeProgram(std::string_view name, std::string_view content) const {
        std::filesystem::path file = write(name, content);
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
        return file;
    }

    /// The content of a file; empty when there is none.
    [[nodiscard]] std::string read(std::string_view name) const {
        std::ifstream file(path() / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    /// The names of what is in it, sorted.
    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(path_)) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

private:
    std::string path_;
};

}  // namespace corvane
