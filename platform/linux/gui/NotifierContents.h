#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/StatusItem.h"

namespace corvane {

/// An image as status notifier items are given it.
struct NotifierPixmap {
    /// In pixels.
    int width = 0;
    int height = 0;
    /// Line after line, each pixel as alpha, red, green, blue; not premultiplied.
    std::vector<std::uint8_t> argb;

    bool operator==(const NotifierPixmap&) const = default;
};

/// What the desktop's status notifier host is to show. UTF-8.
struct NotifierContents {
    /// One image in several sizes.
    std::vector<NotifierPixmap> pixmaps;
    std::string toolTipTitle;
    std::string toolTipText;
    std::vector<StatusMenuEntry> menu;
};

/// Shared between threads, so never changed.
using SharedContents = std::shared_ptr<const NotifierContents>;

}  // namespace corvane
