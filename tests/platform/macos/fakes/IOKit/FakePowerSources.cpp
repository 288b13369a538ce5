#include "tests/platform/macos/fakes/IOKit/FakePowerSources.h"

#include <cstdint>
#include <utility>

#include <IOKit/ps/IOPowerSources.h>

#include "tests/platform/macos/fakes/MainThread.h"

namespace corvane {

/// Descriptions by the sources' handles.
CfReference FakePowerSources::information() const {
    if (!hasInformation_) {
        return nullptr;
    }
    CfEntries entries;
    for (CfReference& description : descriptions_()) {
        entries.emplace_back(makeCfObject(static_cast<std::int64_t>(entries.size())), std::move(description));
    }
    return makeCfObject(std::move(entries));
}

CfReference FakePowerSources::list(CFTypeRef information) const {
    if (list_) {
        return list_();
    }
    CfElements sources;
    for (const auto& [source, description] : heldByCf<CfEntries>(information)) {
        sources.push_back(retainedCf(source.get()));
    }
    return makeCfObject(std::move(sources));
}

}  // namespace corvane

using FakeSources = corvane::Current<corvane::FakePowerSources>;

CFTypeRef IOPSCopyPowerSourcesInfo() {
    corvane::expectMainThread("IOPSCopyPowerSourcesInfo");
    return FakeSources::get() == nullptr ? nullptr : FakeSources::get()->information().release();
}

CFArrayRef IOPSCopyPowerSourcesList(CFTypeRef information) {
    return FakeSources::get() == nullptr
               ? nullptr
               : static_cast<CFArrayRef>(FakeSources::get()->list(information).release());
}

CFDictionaryRef IOPSGetPowerSourceDescription(CFTypeRef information, CFTypeRef source) {
    return static_cast<CFDictionaryRef>(
        CFDictionaryGetValue(static_cast<CFDictionaryRef>(information), source));
}
