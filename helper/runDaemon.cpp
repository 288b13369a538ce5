#include "helper/runDaemon.h"

#include "helper/DaemonLog.h"
#include "helper/FanHelperService.h"
#include "helper/ListenerDelegate.h"
#include "smc/SmcSession.h"

namespace corvane {

namespace {

constexpr std::string_view queueLabel = "de.tavrin.switchyard.daemon.queue";

/// Fed from the service's queue, so that a queue that hangs with the fans forced ends in a restart, whose
/// start-up reset hands them back.
std::unique_ptr<Timer> feedFrom(SerialQueue& queue, ServiceWatchdog& watchdog) {
    const Duration interval = watchdog.interval();
    if (interval == Duration::zero()) {
        return nullptr;
    }
    return queue.every(interval, interval, [&watchdog] { watchdog.feed(); });
}

}  // namespace

int runDaemon(HelperPlatform& platform) {
    Log& log = platform.log();
    MainLoop& mainLoop = platform.mainLoop();
    // Held from the first step on, so that no signal ends the process between taking a fan and being able to
    // hand it back.
    mainLoop.holdTerminationSignals();
    const UserIds ids = platform.userIds();
    logDaemon(log, " starting (uid={}, euid={})", ids.uid, ids.euid);

    const auto queue = platform.makeQueue(queueLabel);
    auto session = std::make_unique<SmcSession>(platform.makeSmcConnection(*queue));
    const auto sleepSetting = platform.makeSystemSleepSetting();
    const auto suspendObserver = platform.makeSuspendObserver();
    const auto watchdog = platform.makeServiceWatchdog();

    auto service = FanHelperService::create(*queue, *sleepSetting, log);
    auto watchdogFeed = feedFrom(*queue, *watchdog);
    suspendObserver->observe([&] { queue->syncAhead([&] { service->releaseBeforeSuspend(); }); },
                             [&] { queue->syncAhead([&] { service->resumeAfterSuspend(); }); });

    ListenerDelegate delegate(service);
    auto listener = platform.makeListener();
    const auto failure = listener->resume(delegate);
    if (failure) {
        logDaemon(log, ": cannot listen on {}: {}", FanHelperProtocol::serviceName, *failure);
        mainLoop.exit(1);
    } else {
        mainLoop.onTerminationSignal([&] {
            logDaemon(log, ": received termination signal — releasing to Apple");
            mainLoop.exit(0);
        });
        logDaemon(log, ": listening on {}", FanHelperProtocol::serviceName);
    }
    const int status = mainLoop.run();

    listener.reset();
    // Ahead of requests that still wait: they find the service gone. All that lives on the queue's time ends
    // on it; the delegate's is the last other reference to the service.
    queue->syncAhead([&] {
        service->emergencyRelease();
        watchdogFeed.reset();
        delegate = ListenerDelegate(nullptr);
        service.reset();
        session.reset();
    });
    return status;
}

}  // namespace corvane
