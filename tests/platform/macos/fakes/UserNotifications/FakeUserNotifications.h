#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// The system's notification centre with its user. One at a time. Like the real one it is there for programs
/// in a bundle alone: without an identifier the program ends.
class FakeUserNotifications {
public:
    enum class Status { notDetermined = 0, denied = 1, authorized = 2, provisional = 3 };

    struct Posted {
        std::string identifier;
        std::string title;
        std::string body;
        bool hasDefaultSound;
        bool hasTrigger;

        bool operator==(const Posted&) const = default;
    };

    /// How something appears while the application is in front.
    struct Presentation {
        bool asBanner;
        bool withSound;

        bool operator==(const Presentation&) const = default;
    };

    FakeUserNotifications();
    FakeUserNotifications(const FakeUserNotifications&) = delete;
    FakeUserNotifications& operator=(const FakeUserNotifications&) = delete;
    ~FakeUserNotifications();

    /// As its number has it.
    void setStatus(int status);
    void setStatus(Status status) { setStatus(static_cast<int>(status)); }
    /// From now on it keeps its answers to itself until it is told to give them.
    void hang();
    void answer();

    /// The options of each request for the user's permission, as their bits have it.
    [[nodiscard]] const std::vector<unsigned>& requests() const;
    /// Oldest first.
    [[nodiscard]] const std::vector<Posted>& posted() const;
    /// None when nobody decides about it.
    [[nodiscard]] std::optional<Presentation> presentationInFront() const;

    class State;

private:
    std::unique_ptr<State> state_;
};

}  // namespace corvane
