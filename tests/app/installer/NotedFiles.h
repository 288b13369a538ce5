#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/FileSystem.h"

namespace corvane {

/// What was done to the machine, in order.
using Steps = std::vector<std::string>;

/// Files in memory; notes what is changed.
class NotedFiles final : public FileSystem {
public:
    explicit NotedFiles(Steps& steps) : steps_(steps) {}

    [[nodiscard]] bool isFile(const std::filesystem::path& path) const override {
        return contents.contains(path);
    }
    [[nodiscard]] std::optional<std::string> writeAtomically(const std::filesystem::path& path,
                                                             std::string_view text) override {
        steps_.push_back("write " + path.string());
        if (!writeError) {
            contents[path] = text;
        }
        return writeError;
    }
    void remove(const std::filesystem::path& path) override {
        steps_.push_back("remove " + path.string());
        contents.erase(path);
    }
    void removeTree(const std::filesystem::path& path) override {
        steps_.push_back("remove all of " + path.string());
    }
    [[nodiscard]] bool differ(const std::filesystem::path& one,
                              const std::filesystem::path& other) const override {
        return isFile(one) && isFile(other) && contents.at(one) != contents.at(other);
    }

    std::map<std::filesystem::path, std::string> contents;
    std::optional<std::string> writeError;

private:
    Steps& steps_;
};

}  // namespace corvane
