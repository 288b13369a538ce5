#include "app/shell/WindowPresence.h"

namespace corvane {

WindowPresence::OpenWindow::OpenWindow(WindowPresence& presence) : presence_(presence) {
    if (++presence_.openWindows_ == 1) {
        presence_.policy_.set(ActivationPolicy::Presence::regular);
    }
}

WindowPresence::OpenWindow::~OpenWindow() {
    if (--presence_.openWindows_ == 0) {
        presence_.policy_.set(ActivationPolicy::Presence::accessory);
    }
}

std::unique_ptr<WindowPresence::OpenWindow> WindowPresence::opened() {
    return std::make_unique<OpenWindow>(*this);
}

}  // namespace corvane
