#pragma once

#include <filesystem>
#include <map>
#include <string>

#include "platform/AppleScript.h"
#include "tests/app/installer/NotedFiles.h"

namespace corvane {

/// Ends every script the way it is told to; sees what the files hold meanwhile.
class NotedScripting final : public AppleScript {
public:
    NotedScripting(Steps& steps, const NotedFiles& files) : steps_(steps), files_(files) {}

    [[nodiscard]] AppleScriptResult run(const std::string& source) override {
        steps_.emplace_back("run");
        sources.push_back(source);
        seen = files_.contents;
        return result;
    }

    AppleScriptResult result;
    Steps sources;
    std::map<std::filesystem::path, std::string> seen;

private:
    Steps& steps_;
    const NotedFiles& files_;
};

}  // namespace corvane
