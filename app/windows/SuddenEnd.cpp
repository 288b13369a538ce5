#include "app/windows/SuddenEnd.h"

#include <cstdlib>

namespace corvane {

namespace {

/// What exit() destroys first: the thread's own variables come before everything static.
class ExitWatch {
public:
    ExitWatch() = default;
    ~ExitWatch() {
        if (isExpected_) {
            std::_Exit(EXIT_FAILURE);
        }
    }
    ExitWatch(const ExitWatch&) = delete;
    ExitWatch& operator=(const ExitWatch&) = delete;

    void expect(bool isExpected) { isExpected_ = isExpected; }

private:
    bool isExpected_ = false;
};

ExitWatch& exitWatch() {
    thread_local ExitWatch watch;
    return watch;
}

}  // namespace

SuddenEnd::SuddenEnd() {
    exitWatch().expect(true);
}

SuddenEnd::~SuddenEnd() {
    exitWatch().expect(false);
}

}  // namespace corvane
