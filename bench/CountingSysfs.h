#pragma once

#include <cstddef>
#include <memory>
#include <utility>

#include "platform/linux/hwmon/Sysfs.h"

namespace corvane {

/// How often attributes were used.
struct SysfsUse {
    std::size_t opens = 0;
    std::size_t reads = 0;
    std::size_t writes = 0;
};

/// Counts what passes through to another tree.
class CountingSysfs final : public Sysfs {
public:
    /// `use` outlives this and what it opens.
    CountingSysfs(std::unique_ptr<Sysfs> sysfs, SysfsUse& use) : sysfs_(std::move(sysfs)), use_(use) {}

    [[nodiscard]] std::vector<std::string> list(const std::string& directory) override {
        return sysfs_->list(directory);
    }
    [[nodiscard]] std::optional<std::string> canonicalPath(const std::string& path) override {
        return sysfs_->canonicalPath(path);
    }
    [[nodiscard]] std::unique_ptr<SysfsAttribute> open(const std::string& path, SysfsAccess access) override {
        ++use_.opens;
        auto attribute = sysfs_->open(path, access);
        return attribute == nullptr ? nullptr : std::make_unique<Attribute>(std::move(attribute), use_);
    }

private:
    class Attribute final : public SysfsAttribute {
    public:
        Attribute(std::unique_ptr<SysfsAttribute> attribute, SysfsUse& use)
            : attribute_(std::move(attribute)), use_(use) {}

        [[nodiscard]] int read(std::span<char> buffer) override {
            ++use_.reads;
            return attribute_->read(buffer);
        }
        [[nodiscard]] int write(std::string_view text) override {
            ++use_.writes;
            return attribute_->write(text);
        }

    private:
        std::unique_ptr<SysfsAttribute> attribute_;
        SysfsUse& use_;
    };

    std::unique_ptr<Sysfs> sysfs_;
    SysfsUse& use_;
};

}  // namespace corvane
