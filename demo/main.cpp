// corvane-demo BUS CONTROL-FILE: shows the fan helper that serves on BUS at work.

#include <cstdio>
#include <cstdlib>

#include <sdbus-c++/Error.h>

#include "demo/FanDemo.h"
#include "platform/linux/AsioSerialQueue.h"

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: corvane-demo BUS CONTROL-FILE\n", stderr);
        return EXIT_FAILURE;
    }
    try {
        corvane::HelperProxy helper({argv[1]});
        corvane::AsioSerialQueue queue("demo");
        bool isReleased = false;
        queue.sync([&] { isReleased = corvane::FanDemo(helper, queue, argv[2]).run(); });
        return isReleased ? EXIT_SUCCESS : EXIT_FAILURE;
    } catch (const sdbus::Error& error) {
        std::fprintf(stderr, "corvane-demo: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
