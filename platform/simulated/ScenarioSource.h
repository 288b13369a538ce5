#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace corvane {

/// Where a control file's text comes from.
class ScenarioSource {
public:
    /// Differs, as far as can be told without reading, once the text does.
    struct Stamp {
        std::int64_t modified = 0;
        std::uintmax_t size = 0;
        bool operator==(const Stamp&) const = default;
    };

    ScenarioSource() = default;
    ScenarioSource(const ScenarioSource&) = delete;
    ScenarioSource& operator=(const ScenarioSource&) = delete;
    virtual ~ScenarioSource() = default;

    /// Nothing when there is no text at present. Cheap; does not allocate.
    virtual std::optional<Stamp> stamp() = 0;

    /// The text, or its first `limit` bytes; nothing when it cannot be read.
    virtual std::optional<std::string> read(std::size_t limit) = 0;
};

/// A regular file; anything else is no text.
class ScenarioFile final : public ScenarioSource {
public:
    explicit ScenarioFile(std::filesystem::path path) : path_(std::move(path)) {}

    std::optional<Stamp> stamp() override;
    std::optional<std::string> read(std::size_t limit) override;

private:
    std::filesystem::path path_;
};

/// The control file at `path`; for an empty path the one that is never there.
std::unique_ptr<ScenarioSource> scenarioSourceFor(const std::string& path);

}  // namespace corvane
