#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>
#include <xcb/xtest.h>

#include "platform/linux/desktop/QtSerialQueue.h"
#include "platform/linux/desktop/X11HotKeys.h"
#include "platform/simulated/RecordingLog.h"
#include "tests/platform/linux/desktop/hotKeys.h"
#include "tests/support/Notes.h"
#include "tests/support/QtThread.h"
#include "tests/support/XServer.h"

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// As the X protocol numbers them.
constexpr xcb_keysym_t superKey = 0xFFEB;
constexpr xcb_keysym_t altKey = 0xFFE9;
constexpr xcb_keysym_t shiftKey = 0xFFE1;
constexpr xcb_keysym_t capsLockKey = 0xFFE5;
constexpr xcb_keysym_t numLockKey = 0xFF7F;
constexpr std::uint16_t superAndAlt = XCB_MOD_MASK_4 | XCB_MOD_MASK_1;

/// Of a lower-case Latin letter.
xcb_keysym_t symbolOf(char letter) {
    return static_cast<unsigned char>(letter);
}

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

/// Another client of the server, which is its keyboard as well. Belongs to one thread.
class Client {
public:
    explicit Client(const std::string& display)
        : connection_(xcb_connect(display.c_str(), nullptr)),
          symbols_(xcb_key_symbols_alloc(connection_)),
          root_(xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root) {}
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;
    ~Client() {
        xcb_key_symbols_free(symbols_);
        xcb_disconnect(connection_);
    }

    /// Once the server has done it.
    void press(xcb_keysym_t symbol) { fake(XCB_KEY_PRESS, keycodeOf(symbol)); }
    void release(xcb_keysym_t symbol) { fake(XCB_KEY_RELEASE, keycodeOf(symbol)); }
    void tap(xcb_keysym_t symbol) {
        press(symbol);
        release(symbol);
    }
    /// Presses and releases keys together.
    void chord(const std::vector<xcb_keysym_t>& symbols) {
        for (const xcb_keysym_t symbol : symbols) {
            press(symbol);
        }
        for (auto symbol = symbols.rbegin(); symbol != symbols.rend(); ++symbol) {
            release(*symbol);
        }
    }
    void hotKey(char letter) { chord({superKey, altKey, symbolOf(letter)}); }

    xcb_keycode_t keycodeOf(xcb_keysym_t symbol) {
        const std::unique_ptr<xcb_keycode_t, Free> codes(xcb_key_symbols_get_keycode(symbols_, symbol));
        return codes ? *codes : xcb_keycode_t{0};
    }

    /// False when somebody else has the key.
    bool grab(char letter, std::uint16_t mask) {
        const auto request = xcb_grab_key_checked(connection_, 0, root_, mask, keycodeOf(symbolOf(letter)),
                                                  XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        return std::unique_ptr<xcb_generic_error_t, Free>(xcb_request_check(connection_, request)) == nullptr;
    }

    /// Which locks are on, as a mask.
    std::uint16_t locks() {
        const std::unique_ptr<xcb_query_pointer_reply_t, Free> reply(
            xcb_query_pointer_reply(connection_, xcb_query_pointer(connection_, root_), nullptr));
        return static_cast<std::uint16_t>(reply->mask & (XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2));
    }

    /// Waits for the next press of a key that this client has grabbed.
    void awaitPress() {
        while (true) {
            const std::unique_ptr<xcb_generic_event_t, Free> event(xcb_wait_for_event(connection_));
            if (!event || event->response_type == XCB_KEY_PRESS) {
                return;
            }
        }
    }

    /// Gives a key another letter, and tells all clients.
    void setLetter(xcb_keycode_t keycode, char letter) {
        const auto symbol = symbolOf(letter);
        xcb_change_keyboard_mapping(connection_, 1, keycode, 1, &symbol);
        sync();
    }

    void pressCode(xcb_keycode_t keycode) { fake(XCB_KEY_PRESS, keycode); }
    void releaseCode(xcb_keycode_t keycode) { fake(XCB_KEY_RELEASE, keycode); }

private:
    void fake(std::uint8_t type, xcb_keycode_t keycode) {
        // Milliseconds that the server lets pass first: nobody is as quick as to do two things in one.
        constexpr std::uint32_t delay = 2;
        xcb_test_fake_input(connection_, type, keycode, delay, XCB_NONE, 0, 0, 0);
        sync();
    }
    void sync() {
        const std::unique_ptr<xcb_get_input_focus_reply_t, Free> reply(
            xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    }

    xcb_connection_t* connection_;
    xcb_key_symbols_t* symbols_;
    xcb_window_t root_;
};

class X11HotKeysTest : public testing::Test {
protected:
    void SetUp() override {
        if (server.problem()) {
            GTEST_SKIP() << *server.problem();
        }
        keyboard.emplace(server.display());
        thread.emplace(
            [this] {
                queue.emplace();
                keys.emplace(*queue, log, server.display());
            },
            [this] {
                registrations.clear();
                keys.reset();
                queue.reset();
            });
    }

    /// False when the key was refused.
    bool add(const HotKey& key) {
        bool isThere = false;
        queue->sync([&] {
            auto registration = keys->add(key, [this](std::uint32_t id) { presses.add(id); });
            isThere = registration != nullptr;
            registrations.push_back(std::move(registration));
        });
        return isThere;
    }
    void removeAll() {
        queue->sync([this] { registrations.clear(); });
    }

    /// The ids of what was pressed up to now: a press of L, which must be registered, is waited for.
    std::vector<std::uint32_t> pressesBeforeL() {
        keyboard->hotKey('l');
        const auto end = std::chrono::steady_clock::now() + testPatience;
        while (std::chrono::steady_clock::now() < end) {
            auto known = presses.all();
            if (!known.empty() && known.back() == fanBoost.id) {
                known = presses.take();
                known.pop_back();
                return known;
            }
            queue->sync([] {});
        }
        ADD_FAILURE() << "L did not arrive";
        return {};
    }

    XServer server;
    RecordingLog log;
    Notes<std::uint32_t> presses;
    std::optional<Client> keyboard;
    std::optional<QtSerialQueue> queue;
    std::optional<X11HotKeys> keys;
    std::vector<std::unique_ptr<HotKeyRegistration>> registrations;
    std::optional<QtThread> thread;
};

TEST_F(X11HotKeysTest, DeliverEachPressOfEachKey) {
    ASSERT_TRUE(add(keepAwake));
    ASSERT_TRUE(add(fanBoost));
    keyboard->hotKey('k');
    keyboard->hotKey('l');
    keyboard->hotKey('k');
    ASSERT_TRUE(presses.waitFor(3));
    EXPECT_THAT(presses.all(), ElementsAre(1U, 2U, 1U));
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(X11HotKeysTest, DeliverOneKeyAfterTheOtherWhileTheModifiersStayDown) {
    ASSERT_TRUE(add(keepAwake));
    ASSERT_TRUE(add(fanBoost));
    keyboard->press(superKey);
    keyboard->press(altKey);
    keyboard->tap('k');
    keyboard->tap('k');
    keyboard->press('k');
    keyboard->tap('l');
    keyboard->release('k');
    keyboard->release(altKey);
    keyboard->release(superKey);
    ASSERT_TRUE(presses.waitFor(4));
    EXPECT_THAT(presses.all(), ElementsAre(1U, 1U, 1U, 2U));
}

TEST_F(X11HotKeysTest, LeaveEveryOtherCombinationAlone) {
    ASSERT_TRUE(add(keepAwake));
    ASSERT_TRUE(add(fanBoost));
    keyboard->tap('k');
    keyboard->chord({superKey, 'k'});
    keyboard->chord({altKey, 'k'});
    keyboard->chord({superKey, altKey, shiftKey, 'k'});
    keyboard->chord({superKey, altKey, 'j'});
    EXPECT_THAT(pressesBeforeL(), IsEmpty());
}

TEST_F(X11HotKeysTest, WorkWhicheverLocksAreOn) {
    ASSERT_TRUE(add(keepAwake));
    ASSERT_TRUE(add(fanBoost));
    std::vector<std::uint16_t> seen;
    for (const xcb_keysym_t lock : {capsLockKey, numLockKey, capsLockKey, numLockKey}) {
        keyboard->tap(lock);
        seen.push_back(keyboard->locks());
        keyboard->hotKey('k');
        EXPECT_THAT(pressesBeforeL(), ElementsAre(1U)) << "with locks " << seen.back();
    }
    EXPECT_THAT(seen, ElementsAre(XCB_MOD_MASK_LOCK, XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2, XCB_MOD_MASK_2, 0));
}

TEST_F(X11HotKeysTest, DeliverAKeyThatIsHeldDownOnce) {
    ASSERT_TRUE(add(keepAwake));
    ASSERT_TRUE(add(fanBoost));
    keyboard->press(superKey);
    keyboard->press(altKey);

    // How long the server takes to repeat a key some times shows with one that another client has.
    Client other(server.display());
    ASSERT_TRUE(other.grab('j', superAndAlt));
    const auto begin = std::chrono::steady_clock::now();
    keyboard->press('j');
    for (int press = 0; press < 4; ++press) {
        other.awaitPress();
    }
    const auto time = std::chrono::steady_clock::now() - begin;
    keyboard->release('j');

    keyboard->press('k');
    std::promise<void> isOver;
    std::unique_ptr<Timer> timer;
    queue->sync([&] { timer = queue->after(2 * time, [&] { isOver.set_value(); }); });
    isOver.get_future().wait();
    queue->sync([&] { timer.reset(); });
    keyboard->release('k');
    keyboard->tap('k');
    keyboard->release(altKey);
    keyboard->release(superKey);
    EXPECT_THAT(pressesBeforeL(), ElementsAre(1U, 1U));
}

TEST_F(X11HotKeysTest, AreRefusedOneByOneWhenAnotherClientHasThem) {
    Client other(server.display());
    ASSERT_TRUE(other.grab('k', superAndAlt | XCB_MOD_MASK_LOCK));
    EXPECT_FALSE(add(keepAwake));
    ASSERT_TRUE(add(fanBoost));
    EXPECT_THAT(log.lines(), ElementsAre("No hot key Super+Alt+K: another application has it."));
    EXPECT_TRUE(other.grab('k', superAndAlt)) << "nothing is kept of a key that was refused";
    keyboard->hotKey('k');
    EXPECT_THAT(pressesBeforeL(), IsEmpty());
}

TEST_F(X11HotKeysTest, AreKeptFromOtherClientsUntilTheyAreGivenBack) {
    Client other(server.display());
    ASSERT_TRUE(add(keepAwake));
    EXPECT_FALSE(other.grab('k', superAndAlt));
    EXPECT_FALSE(other.grab('k', superAndAlt | XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2));
    removeAll();
    ASSERT_TRUE(add(keepAwake)) << "once more";
    keyboard->hotKey('k');
    ASSERT_TRUE(presses.waitFor(1));
    removeAll();
    // Until the server has heard of it.
    while (!other.grab('k', superAndAlt)) {
    }
    EXPECT_TRUE(other.grab('k', superAndAlt | XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2));
}

TEST_F(X11HotKeysTest, FollowTheLettersOfTheKeyboard) {
    ASSERT_TRUE(add(keepAwake));
    ASSERT_TRUE(add(fanBoost));
    const xcb_keycode_t formerK = keyboard->keycodeOf('k');
    const xcb_keycode_t formerL = keyboard->keycodeOf('l');
    const auto pressWithModifiers = [this](xcb_keycode_t keycode) {
        keyboard->press(superKey);
        keyboard->press(altKey);
        keyboard->pressCode(keycode);
        keyboard->releaseCode(keycode);
        keyboard->release(altKey);
        keyboard->release(superKey);
    };
    // The two change places.
    keyboard->setLetter(formerK, 'x');
    keyboard->setLetter(formerL, 'k');
    keyboard->setLetter(formerK, 'l');
    Client other(server.display());
    ASSERT_EQ(other.keycodeOf('k'), formerL);
    // Until the change has been taken up; the last of the two tells.
    const auto end = std::chrono::steady_clock::now() + testPatience;
    while (presses.take() != std::vector<std::uint32_t>{fanBoost.id}) {
        ASSERT_LT(std::chrono::steady_clock::now(), end);
        queue->sync([] {});
        pressWithModifiers(formerK);
        queue->sync([] {});
    }
    pressWithModifiers(formerL);
    pressWithModifiers(formerK);
    while (presses.size() < 2) {
        ASSERT_LT(std::chrono::steady_clock::now(), end);
    }
    EXPECT_THAT(presses.all(), testing::IsSupersetOf({1U, 2U}));
}

TEST_F(X11HotKeysTest, AreRefusedWhenNoKeyBearsTheLetter) {
    keyboard->setLetter(keyboard->keycodeOf('k'), 'x');
    EXPECT_FALSE(add(keepAwake));
    EXPECT_TRUE(add(fanBoost));
    EXPECT_THAT(log.lines(), ElementsAre("No hot key Super+Alt+K: no key on the keyboard bears the letter."));
}

TEST_F(X11HotKeysTest, OutliveTheServer) {
    ASSERT_TRUE(add(keepAwake));
    keyboard.reset();
    server.end();
    EXPECT_FALSE(add(fanBoost));
    EXPECT_THAT(log.lines(), ElementsAre("No hot key Super+Alt+L: there is no X server."));
    removeAll();
    queue->sync([] {});
    EXPECT_FALSE(add(keepAwake));
}

TEST(X11HotKeysWithoutAServer, AreRefused) {
    RecordingLog log;
    std::optional<QtSerialQueue> queue;
    const QtThread thread{[&] { queue.emplace(); }, [&] { queue.reset(); }};
    queue->sync([&] {
        X11HotKeys keys(*queue, log, "nowhere:99999");
        EXPECT_EQ(keys.add(keepAwake, [](std::uint32_t /*id*/) {}), nullptr);
    });
    EXPECT_THAT(log.lines(), ElementsAre("No hot key Super+Alt+K: there is no X server."));
}

}  // namespace
}  // namespace corvane
