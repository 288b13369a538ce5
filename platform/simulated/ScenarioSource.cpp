#include "platform/simulated/ScenarioSource.h"

#include <chrono>
#include <fstream>
#include <system_error>

namespace corvane {

std::optional<ScenarioSource::Stamp> ScenarioFile::stamp() {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path_, error)) {
        return std::nullopt;
    }
    const auto modified = std::filesystem::last_write_time(path_, error);
    if (error) {
        return std::nullopt;
    }
    const std::uintmax_t size = std::filesystem::file_size(path_, error);
    if (error) {
        return std::nullopt;
    }
    const auto age = std::chrono::duration_cast<std::chrono::nanoseconds>(modified.time_since_epoch());
    return Stamp{age.count(), size};
}

std::optional<std::string> ScenarioFile::read(std::size_t limit) {
    std::ifstream file(path_, std::ios::binary);
    if (!file) {
        return std::nullopt;
    }
    std::string text(limit, '\0');
    file.read(text.data(), static_cast<std::streamsize>(limit));
    if (file.bad()) {
        return std::nullopt;
    }
    text.resize(static_cast<std::size_t>(file.gcount()));
    return text;
}

namespace {

class NoScenario final : public ScenarioSource {
public:
    std::optional<Stamp> stamp() override { return std::nullopt; }
    std::optional<std::string> read(std::size_t /*limit*/) override { return std::nullopt; }
};

}  // namespace

std::unique_ptr<ScenarioSource> scenarioSourceFor(const std::string& path) {
    if (path.empty()) {
        return std::make_unique<NoScenario>();
    }
    return std::make_unique<ScenarioFile>(path);
}

}  // namespace corvane
