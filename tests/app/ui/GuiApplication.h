#pragma once

namespace corvane {

/// The one application object of the process, off any screen and with the renderer that the product uses:
/// made when it is first needed. Main thread.
void needGuiApplication();

}  // namespace corvane
