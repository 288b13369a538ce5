#pragma once

#include <memory>
#include <string>
#include <variant>

namespace corvane {

/// What Qt is to show windows with.
struct QtPlatform {
    /// As Qt calls it: "xcb", "wayland", "cocoa", or whatever the user wants.
    std::string name;
    /// What keeps the display there until Qt is connected to it, or nothing.
    std::shared_ptr<const void> hold;
};

/// Makes the process ready to be the application: from now on termination signals wait for the main loop.
/// Called first of all, before Qt or anybody else starts threads. Tells what to show windows with, or in
/// English why there is nothing.
std::variant<QtPlatform, std::string> prepareDesktop();

}  // namespace corvane
