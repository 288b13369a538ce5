#include "tests/platform/macos/fakes/Foundation/FakeVolumes.h"

#include <utility>

#import <Foundation/Foundation.h>

#include "platform/macos/NSStringText.h"
#include "tests/platform/macos/fakes/Foundation/FakeUrlResources.h"

namespace corvane {

class FakeVolumes::Values {
public:
    void add(const FakeVolume& volume) {
        if (volume.isUnreadable) {
            resources_.fail(volume.path, [NSError errorWithDomain:NSPOSIXErrorDomain code:5 userInfo:nil]);
        }
        if (volume.isNonsense) {
            resources_.set(volume.path, NSURLVolumeNameKey, @1);
            resources_.set(volume.path, NSURLVolumeIsInternalKey, @"YES");
            resources_.set(volume.path, NSURLVolumeIsBrowsableKey, @"YES");
            return;
        }
        resources_.set(volume.path, NSURLVolumeNameKey, volume.name ? stringOf(*volume.name) : nil);
        resources_.set(volume.path, NSURLVolumeIsInternalKey, number(volume.isInternal));
        resources_.set(volume.path, NSURLVolumeIsBrowsableKey, number(volume.isBrowsable));
    }

private:
    static NSNumber* number(std::optional<bool> value) { return value ? @(static_cast<BOOL>(*value)) : nil; }

    FakeUrlResources resources_;
};

FakeVolumes::FakeVolumes() : values_(std::make_unique<Values>()) {}

FakeVolumes::~FakeVolumes() = default;

void FakeVolumes::set(std::vector<FakeVolume> volumes) {
    volumes_ = std::move(volumes);
    values_.reset();
    values_ = std::make_unique<Values>();
    for (const FakeVolume& volume : volumes_) {
        values_->add(volume);
    }
}

}  // namespace corvane
