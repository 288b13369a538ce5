#pragma once

namespace corvane {

/// Fails the test when `function`, which belongs to the main thread, is called on another.
void expectMainThread(const char* function);

}  // namespace corvane
