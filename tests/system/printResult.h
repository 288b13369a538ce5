#pragma once

#include <fmt/format.h>

#include "platform/HelperInstaller.h"

namespace corvane {

/// For the scripts that run the drivers.
inline void printResult(const InstallResult& result) {
    switch (result.outcome) {
        case InstallResult::Outcome::success:
            fmt::print("success\n");
            break;
        case InstallResult::Outcome::cancelled:
            fmt::print("cancelled\n");
            break;
        case InstallResult::Outcome::failure:
            fmt::print("failure: {}\n", result.message);
            break;
    }
}

}  // namespace corvane
