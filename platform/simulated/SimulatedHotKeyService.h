#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <utility>
#include <vector>

#include "platform/HotKeyService.h"

namespace corvane {

/// A keyboard that is pressed when it is told to. Main loop.
class SimulatedHotKeyService final : public HotKeyService {
public:
    [[nodiscard]] std::unique_ptr<HotKeyRegistration> add(
        const HotKey& key, std::function<void(std::uint32_t id)> pressed) override {
        ++attempts_;
        if (taken_.contains(key.letter)) {
            return nullptr;
        }
        return std::make_unique<Registration>(*this, Key{key, std::move(pressed)});
    }

    /// Another application has the keys with this letter from now on.
    void take(char letter) { taken_.insert(letter); }

    /// Presses a key: tells everyone who registered it, before it returns.
    void press(char letter, std::uint32_t modifiers = HotKeyModifier::command + HotKeyModifier::option) {
        for (const auto& [number, known] : std::map(keys_)) {
            if (known.key.letter == letter && known.key.modifiers == modifiers) {
                known.pressed(known.key.id);
            }
        }
    }

    /// Tells everyone of a key that nobody knows.
    void pressUnknown(std::uint32_t id) {
        for (const auto& [number, known] : std::map(keys_)) {
            known.pressed(id);
        }
    }

    /// In the order they were added.
    [[nodiscard]] std::vector<HotKey> registered() const {
        std::vector<HotKey> all;
        for (const auto& [number, known] : keys_) {
            all.push_back(known.key);
        }
        return all;
    }

    /// How often `add` was called.
    [[nodiscard]] int attempts() const { return attempts_; }

private:
    struct Key {
        HotKey key;
        std::function<void(std::uint32_t id)> pressed;
    };

    class Registration final : public HotKeyRegistration {
    public:
        Registration(SimulatedHotKeyService& service, Key key)
            : service_(service), number_(service.attempts_) {
            service_.keys_.emplace(number_, std::move(key));
        }
        ~Registration() override { service_.keys_.erase(number_); }

    private:
        SimulatedHotKeyService& service_;
        int number_;
    };

    std::map<int, Key> keys_;
    std::set<char> taken_;
    int attempts_ = 0;
};

}  // namespace corvane
