#include "entry/ApplicationModule.h"

#include <array>
#include <system_error>

#include <dlfcn.h>
#include <fmt/format.h>

namespace corvane {

namespace {

/// dlerror's text names the file and the reason.
std::string loaderError() {
    const char* text = dlerror();
    return text == nullptr ? "unknown error" : text;
}

}  // namespace

const ApplicationModule::Layout ApplicationModule::layout = CORVANE_MODULE_LAYOUT;

std::variant<ApplicationModule::Main, std::string> ApplicationModule::load(
    const std::filesystem::path& executable, const Layout& layout) {
    const std::filesystem::path folder = executable.parent_path();
    const std::array places{folder / layout.fileName,
                            folder.parent_path() / layout.installedFolder / layout.fileName};
    for (const std::filesystem::path& place : places) {
        std::error_code error;
        if (!std::filesystem::exists(place, error)) {
            continue;
        }
        void* module = dlopen(place.c_str(), RTLD_NOW | RTLD_LOCAL);
        void* symbol = module == nullptr ? nullptr : dlsym(module, mainSymbol);
        if (symbol == nullptr) {
            return fmt::format("the application cannot be loaded: {}", loaderError());
        }
        return reinterpret_cast<Main>(symbol);
    }
    return fmt::format("the application is not installed: there is no {} beside {} or in {}", layout.fileName,
                       executable.string(), places.back().parent_path().string());
}

}  // namespace corvane
