#include "tests/platform/linux/hwmon/FakeSysfs.h"

#include <algorithm>
#include <cerrno>
#include <set>
#include <stdexcept>
#include <utility>

namespace corvane {

class FakeHandle final : public SysfsAttribute {
public:
    FakeHandle(FakeHardware& hardware, std::string name, std::shared_ptr<FakeHardware::Attribute> attribute)
        : hardware_(hardware), name_(std::move(name)), attribute_(std::move(attribute)) {}

    int read(std::span<char> buffer) override {
        ++attribute_->reads;
        if (attribute_->isGone || attribute_->readError != 0) {
            return attribute_->isGone ? -ENODEV : -attribute_->readError;
        }
        return static_cast<int>(attribute_->text.copy(buffer.data(), buffer.size()));
    }

    int write(std::string_view text) override {
        return hardware_.write(name_, *attribute_, std::string(text));
    }

private:
    FakeHardware& hardware_;
    std::string name_;
    std::shared_ptr<FakeHardware::Attribute> attribute_;
};

class FakeSysfs final : public Sysfs {
public:
    explicit FakeSysfs(FakeHardware& hardware) : hardware_(hardware) {}

    std::vector<std::string> list(const std::string& directory) override {
        const std::string prefix = hardware_.resolve(directory) + "/";
        std::set<std::string> names;
        const auto note = [&](const std::string& path) {
            if (path.starts_with(prefix)) {
                names.insert(path.substr(prefix.size(), path.find('/', prefix.size()) - prefix.size()));
            }
        };
        for (const auto& [path, attribute] : hardware_.attributes_) {
            note(path);
        }
        for (const auto& [path, target] : hardware_.links_) {
            note(path);
        }
        return {names.begin(), names.end()};
    }

    std::optional<std::string> canonicalPath(const std::string& path) override {
        const std::string real = hardware_.resolve(path);
        for (const auto& [name, attribute] : hardware_.attributes_) {
            if (name == real || name.starts_with(real + "/")) {
                return real;
            }
        }
        return std::nullopt;
    }

    std::unique_ptr<SysfsAttribute> open(const std::string& path, SysfsAccess access) override {
        const std::string real = hardware_.resolve(path);
        const auto found = hardware_.attributes_.find(real);
        const unsigned wanted = access == SysfsAccess::readWrite ? 0600 : 0400;
        if (found == hardware_.attributes_.end() || (found->second->mode & wanted) != wanted) {
            return nullptr;
        }
        return std::make_unique<FakeHandle>(hardware_, real.substr(real.rfind('/') + 1), found->second);
    }

private:
    FakeHardware& hardware_;
};

FakeHardware::FakeHardware(const machines::Machine& machine) {
    for (const machines::ChipSpec& chip : machine) {
        plug(chip);
    }
}

void FakeHardware::plug(const machines::ChipSpec& chip) {
    const std::string hwmon = "hwmon/hwmon" + std::to_string(chip.number);
    link("class/" + hwmon, chip.device + "/" + hwmon);
    link(chip.device + "/" + hwmon + "/device", chip.device);
    add(chip.device + "/" + hwmon + "/uevent", "");
    add(chip.path("name"), chip.name + "\n");
    for (const machines::AttributeSpec& attribute : chip.attributes) {
        add(chip.path(attribute.name), attribute.text, attribute.mode);
    }
}

void FakeHardware::unplug(const machines::ChipSpec& chip) {
    links_.erase("class/hwmon/hwmon" + std::to_string(chip.number));
    links_.erase(chip.device + "/hwmon/hwmon" + std::to_string(chip.number) + "/device");
    std::erase_if(attributes_, [&](const auto& entry) {
        const bool isOfChip = entry.first.starts_with(chip.device + "/");
        entry.second->isGone = entry.second->isGone || isOfChip;
        return isOfChip;
    });
}

void FakeHardware::add(const std::string& path, const std::string& text, unsigned mode) {
    auto attribute = std::make_shared<Attribute>();
    attribute->text = text;
    attribute->mode = mode;
    attributes_[path] = std::move(attribute);
}

FakeHardware::Attribute& FakeHardware::at(const std::string& path) {
    const auto found = attributes_.find(path);
    if (found == attributes_.end()) {
        throw std::runtime_error("no attribute " + path);
    }
    return *found->second;
}

std::vector<std::string> FakeHardware::takeWrites() {
    return std::exchange(writes_, {});
}

std::unique_ptr<Sysfs> FakeHardware::view() {
    return std::make_unique<FakeSysfs>(*this);
}

std::string FakeHardware::resolve(const std::string& path) const {
    std::string real;
    for (std::size_t start = 0; start < path.size();) {
        const std::size_t end = std::min(path.find('/', start), path.size());
        real += (real.empty() ? "" : "/") + path.substr(start, end - start);
        if (const auto target = links_.find(real); target != links_.end()) {
            real = target->second;
        }
        start = end + 1;
    }
    return real;
}

int FakeHardware::write(const std::string& name, Attribute& attribute, const std::string& text) {
    if (writesToDeath_ == 0) {
        writesToDeath_ = -1;
        throw ProcessKilled{};
    }
    writesToDeath_ -= writesToDeath_ > 0 ? 1 : 0;
    if (attribute.isGone) {
        return ENODEV;
    }
    writes_.push_back(name + "=" + text);
    if (attribute.writeError == 0) {
        attribute.text = (attribute.onWrite ? attribute.onWrite(text) : text) + "\n";
    }
    return attribute.writeError;
}

}  // namespace corvane
