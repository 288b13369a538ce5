#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/AppPlatform.h"
#include "platform/simulated/MemoryUserDefaults.h"
#include "platform/simulated/RecordingNotificationCenter.h"
#include "platform/simulated/RecordingUrlOpener.h"
#include "platform/simulated/SimulatedActivationPolicy.h"
#include "platform/simulated/SimulatedAppearance.h"
#include "platform/simulated/SimulatedDisplays.h"
#include "platform/simulated/SimulatedHelperHost.h"
#include "platform/simulated/SimulatedHotKeyService.h"
#include "platform/simulated/SimulatedHttpsClient.h"
#include "platform/simulated/SimulatedInstalledApplications.h"
#include "platform/simulated/SimulatedInstaller.h"
#include "platform/simulated/SimulatedLocale.h"
#include "platform/simulated/SimulatedLoginItem.h"
#include "platform/simulated/SimulatedPowerAssertions.h"
#include "platform/simulated/SimulatedPowerSources.h"
#include "platform/simulated/SimulatedRelauncher.h"
#include "platform/simulated/SimulatedRunningApplications.h"
#include "platform/simulated/SimulatedSingleInstance.h"
#include "platform/simulated/SimulatedStatusItem.h"
#include "platform/simulated/SimulatedThermalState.h"
#include "platform/simulated/SimulatedUninstaller.h"
#include "platform/simulated/SimulatedVolumes.h"
#include "tests/helper/HelperMachine.h"
#include "tests/helper/TestHelperPlatform.h"

namespace corvane {

/// A platform for the application on virtual time, with the real helper on a simulated Mac.
class TestAppPlatform final : public AppPlatform {
public:
    TestAppPlatform() { helper.mac.holdSensorsAt(50); }

    Log& log() override { return events; }
    MainLoop& mainLoop() override { return loop; }
    SerialQueue& mainQueue() override { return queue; }

    std::unique_ptr<SingleInstance> makeSingleInstance() override {
        auto made = std::make_unique<SimulatedSingleInstance>(startAs);
        singleInstance = made.get();
        return made;
    }
    std::unique_ptr<UserDefaults> makeUserDefaults() override {
        auto made = std::make_unique<MemoryUserDefaults>();
        for (const auto& [key, value] : storedAtFirst) {
            made->set(key, value);
        }
        defaults = made.get();
        return made;
    }
    std::unique_ptr<Locale> makeLocale() override { return std::make_unique<SimulatedLocale>(); }
    std::unique_ptr<NotificationCenter> makeNotificationCenter() override {
        return std::make_unique<RecordingNotificationCenter>(queue);
    }
    std::unique_ptr<HelperConnector> makeHelperConnector() override {
        auto host = std::make_unique<SimulatedHelperHost>(queue, [this] {
            events.write("[helper]");
            // One that runs already serves whoever comes.
            if (!helper.service) {
                helper.start();
            }
            return helper.service;
        });
        host->setInstalled(isHelperInstalled);
        return host;
    }
    std::unique_ptr<HelperInstaller> makeHelperInstaller() override {
        auto made = std::make_unique<SimulatedInstaller>();
        made->setInstalled(isHelperInstalled);
        return made;
    }
    std::unique_ptr<ThermalStateMonitor> makeThermalStateMonitor() override {
        return std::make_unique<SimulatedThermalState>();
    }
    std::unique_ptr<PowerSources> makePowerSources() override {
        return std::make_unique<SimulatedPowerSources>();
    }
    std::unique_ptr<PowerAssertions> makePowerAssertions() override {
        auto made = std::make_unique<SimulatedPowerAssertions>();
        power = made.get();
        return made;
    }
    std::unique_ptr<Displays> makeDisplays() override { return std::make_unique<SimulatedDisplays>(); }
    std::unique_ptr<RunningApplications> makeRunningApplications() override {
        auto made = std::make_unique<SimulatedRunningApplications>();
        made->set(runningAtFirst);
        return made;
    }
    std::unique_ptr<Volumes> makeVolumes() override {
        auto made = std::make_unique<SimulatedVolumes>(queue);
        made->setMounted(mountedAtFirst);
        volumes = made.get();
        return made;
    }
    std::unique_ptr<HttpsClient> makeHttpsClient() override {
        auto made = std::make_unique<Web>(*this);
        web = &made->simulated;
        return made;
    }
    std::unique_ptr<UrlOpener> makeUrlOpener() override {
        auto made = std::make_unique<RecordingUrlOpener>();
        opener = made.get();
        return made;
    }
    std::unique_ptr<StatusItem> makeStatusItem(Appearance& /*appearance*/) override {
        events.write("[status item]");
        auto made = std::make_unique<SimulatedStatusItem>();
        statusItem = made.get();
        return made;
    }
    std::unique_ptr<Appearance> makeAppearance() override { return std::make_unique<SimulatedAppearance>(); }
    std::unique_ptr<LoginItem> makeLoginItem() override { return std::make_unique<SimulatedLoginItem>(); }
    std::unique_ptr<InstalledApplications> makeInstalledApplications(const Locale& /*locale*/) override {
        return std::make_unique<SimulatedInstalledApplications>(queue);
    }
    std::unique_ptr<HotKeyService> makeHotKeyService() override {
        auto made = std::make_unique<Keyboard>(*this);
        keyboard = &made->simulated;
        return made;
    }
    std::unique_ptr<ActivationPolicy> makeActivationPolicy() override {
        auto made = std::make_unique<SimulatedActivationPolicy>();
        activationPolicy = made.get();
        return made;
    }
    std::unique_ptr<Relauncher> makeRelauncher() override {
        auto made = std::make_unique<SimulatedRelauncher>();
        relauncher = made.get();
        return made;
    }
    std::unique_ptr<Uninstaller> makeUninstaller(LoginItem& /*loginItem*/,
                                                 UserDefaults& /*defaults*/) override {
        auto made = std::make_unique<SimulatedUninstaller>();
        uninstaller = made.get();
        return made;
    }
    std::unique_ptr<ResumeObserver> makeResumeObserver() override { return std::make_unique<Resumes>(*this); }

    HelperMachine helper;
    VirtualQueue queue{helper.time};
    EventLog events;
    TestMainLoop loop{helper.time, events};
    bool isHelperInstalled = true;
    Start startAs;
    /// What the last run left in the settings.
    std::map<std::string, DefaultsValue> storedAtFirst;
    RunningApplications::Identifiers runningAtFirst;
    std::vector<Volume> mountedAtFirst;
    // The application's, as long as it lives.
    MemoryUserDefaults* defaults = nullptr;
    SimulatedPowerAssertions* power = nullptr;
    SimulatedVolumes* volumes = nullptr;
    SimulatedHttpsClient* web = nullptr;
    RecordingUrlOpener* opener = nullptr;
    SimulatedSingleInstance* singleInstance = nullptr;
    SimulatedStatusItem* statusItem = nullptr;
    SimulatedHotKeyService* keyboard = nullptr;
    SimulatedActivationPolicy* activationPolicy = nullptr;
    SimulatedRelauncher* relauncher = nullptr;
    SimulatedUninstaller* uninstaller = nullptr;
    /// Tells the application that the computer is back from a suspend.
    std::function<void()> resume;

private:
    class Web final : public HttpsClient {
    public:
        explicit Web(TestAppPlatform& platform) : simulated(platform.queue), platform_(platform) {}
        void get(const Request& request, Done done) override {
            platform_.events.write("[web]");
            simulated.get(request, std::move(done));
        }

        SimulatedHttpsClient simulated;

    private:
        TestAppPlatform& platform_;
    };

    class Keyboard final : public HotKeyService {
    public:
        explicit Keyboard(TestAppPlatform& platform) : platform_(platform) {}
        [[nodiscard]] std::unique_ptr<HotKeyRegistration> add(
            const HotKey& key, std::function<void(std::uint32_t id)> pressed) override {
            platform_.events.write("[hot key]");
            return simulated.add(key, std::move(pressed));
        }

        SimulatedHotKeyService simulated;

    private:
        TestAppPlatform& platform_;
    };

    class Resumes final : public ResumeObserver {
    public:
        explicit Resumes(TestAppPlatform& platform) : platform_(platform) {}
        void observe(std::function<void()> afterResume) override {
            platform_.resume = std::move(afterResume);
        }

    private:
        TestAppPlatform& platform_;
    };
};

}  // namespace corvane
