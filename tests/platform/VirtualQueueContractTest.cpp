#include "platform/simulated/VirtualTime.h"
#include "tests/platform/SerialQueueContract.h"

namespace corvane {
namespace {

class VirtualRig {
public:
    SerialQueue& queue() { return queue_; }

    template <typename T>
    bool await(const Notes<T>& notes, std::size_t count) {
        const BootTime end = time_.bootTime() + testPatience;
        time_.settle();
        while (notes.size() < count && time_.bootTime() < end) {
            time_.advance(std::chrono::milliseconds(1));
        }
        return notes.size() >= count;
    }

private:
    VirtualTime time_;
    VirtualQueue queue_{time_};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Virtual, SerialQueueContract, VirtualRig);

}  // namespace
}  // namespace corvane
