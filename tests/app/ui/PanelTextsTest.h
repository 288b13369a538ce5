#pragma once

#include <QByteArray>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "app/fan/FanSettings.h"
#include "tests/app/ui/PanelTest.h"

namespace corvane {

/// One thing that is seen: a text or a picture as it is, a symbol in brackets, what is drawn otherwise by its
/// name in angle brackets.
struct Line {
    // Implicit, so that lists of lines read as lists of texts.
    Line(const char* inBoth) : german(inBoth), english(inBoth) {}
    Line(const std::string& inBoth) : german(inBoth), english(inBoth) {}
    Line(const QString& inBoth) : german(inBoth.toStdString()), english(german) {}
    Line(std::string inGerman, std::string inEnglish)
        : german(std::move(inGerman)), english(std::move(inEnglish)) {}

    std::string german;
    std::string english;
};
using Lines = std::vector<Line>;

/// The whole panel, from top to bottom.
class PanelTexts : public PanelTest, public testing::WithParamInterface<const char*> {
protected:
    PanelTexts() { machine.speak(GetParam()); }

    [[nodiscard]] static bool isGerman() { return std::string(GetParam()) == "de"; }

    // What is seen.

    static constexpr const char* divider = "<divider>";
    static constexpr const char* toggle = "<switch>";

    static bool isDivider(const QQuickItem& item) {
        return QByteArray(item.metaObject()->className()).startsWith("Divider_");
    }

    /// Empty for what has no line of its own.
    static std::string lineOf(QQuickItem& item) {
        static const QStringList drawn{"coolingCurve", "customDate", "strengthSlider", "switch", "trend"};
        if (item.inherits("QQuickText")) {
            return item.property("text").toString().toStdString();
        }
        if (item.inherits("corvane::Symbol")) {
            const std::string name = item.property("name").toString().toStdString();
            return name.empty() ? "" : fmt::format("[{}]", name);
        }
        if (isDivider(item)) {
            return divider;
        }
        return drawn.contains(item.objectName()) ? fmt::format("<{}>", item.objectName().toStdString()) : "";
    }

    /// All that is seen of an item, a line each. What is drawn is no higher than all of what is before it,
    /// but for the battery, which is on the right.
    static std::string shown(QQuickItem& root) {
        std::vector<std::string> lines;
        const QQuickItem* calendar = nullptr;
        double top = 0;
        forEachShown(root, [&](QQuickItem& item) {
            const std::string line = lineOf(item);
            if (line.empty() || (calendar != nullptr && calendar->isAncestorOf(&item))) {
                return;
            }
            calendar = item.objectName() == "customDate" ? &item : calendar;
            lines.push_back(line);
            if (!isOfBattery(item)) {
                EXPECT_GT(item.mapToScene({0, item.height()}).y(), top) << line;
                top = item.mapToScene({}).y();
            }
        });
        return fmt::format("{}", fmt::join(lines, "\n"));
    }
    static bool isOfBattery(const QQuickItem& item) {
        const QQuickItem* parent = item.parentItem();
        return parent != nullptr && (parent->objectName() == "batteryBadge" || isOfBattery(*parent));
    }
    static std::string expected(const std::vector<Lines>& parts) {
        std::vector<std::string> lines;
        for (const Lines& part : parts) {
            for (const Line& line : part) {
                lines.push_back(isGerman() ? line.german : line.english);
            }
        }
        return fmt::format("{}", fmt::join(lines, "\n"));
    }
    static void expectShown(QQuickItem& root, const std::vector<Lines>& parts) {
        EXPECT_EQ(shown(root), expected(parts));
    }
    void expectPanel(const std::vector<Lines>& parts) { expectShown(*window->rootObject(), parts); }

    /// What lies over the panel.
    QQuickItem& overlay() {
        for (QQuickItem* item : window->contentItem()->childItems()) {
            if (item->inherits("QQuickOverlay")) {
                return *item;
            }
        }
        throw std::runtime_error("nothing lies over the panel");
    }

    void expand() {
        for (const auto expand :
             {&MenuState::setExpandAwake, &MenuState::setExpandLid, &MenuState::setExpandAuto,
              &MenuState::setExpandDrives, &MenuState::setExpandFans}) {
            ((*machine.menu).*expand)(true);
        }
    }
    void offerUpdate() {
        machine.client.setBody(
            R"({"shortVersion": "2.0", "version": "2", "url": "https://example.org/corvane"})");
        manager().updates().check();
    }
    /// Everything is in use, with the fans at a fixed strength.
    void useEverything() {
        machine.powerSources.set(onBattery(80));
        machine.defaults.set(FanSettings::coolingMode, "manual");
        machine.openPanel(40);
        manager().toggle(SleepAssertions::Kind::system);
        manager().lid().setEnabled(true);
        machine.automate();
        for (const auto& [name, cooling] : {std::pair("A", std::optional<CoolingProfile::Kind>()),
                                            std::pair("B", std::optional(CoolingProfile::Kind::silent)),
                                            std::pair("C", std::optional(CoolingProfile::Kind::balanced))}) {
            manager().triggers().addApp({name, name, cooling});
        }
        machine.attach("Archive");
        manager().drives().setEnabled(true);
        manager().drives().add({"/Volumes/Archive", "Archive"});
        manager().drives().add({"/Volumes/gone", "Gone"});
        fan().setFansEnabled(true);
        fan().setManualFloor(10);
        fan().setBoostDuration(1800);
        machine.menu->setShowingCustomPicker(true);
        offerUpdate();
        machine.advance(2s);
        machine.menu->panelAppeared();
        expand();
        show(4000);
    }

    // The parts, as they are to be.

    Lines header(bool active, Line label) {
        Lines lines{active ? "[gauge.with.dots.needle.bottom.100percent]"
                           : "[gauge.with.dots.needle.bottom.50percent]",
                    "Corvane", std::move(label)};
        for (const QString& line : {machine.header->sessionLine(), machine.header->automationLine()}) {
            if (!line.isEmpty()) {
                lines.emplace_back(line);
            }
        }
        return lines;
    }
    static Lines section(const char* emoji, Line title) {
        return {emoji, std::move(title), "[chevron.right]", toggle};
    }
    static Lines closedSections() {
        Lines lines;
        for (const Lines& each : {section("☀️", {"Wach bleiben", "Stay awake"}),
                                  section("💻", {"Zugeklappt wach halten", "Awake, lid closed"}),
                                  section("🤖", {"Automatik", "Automation"}),
                                  section("💾", {"Laufwerke wach", "Keep drives awake"})}) {
            lines.insert(lines.end(), each.begin(), each.end());
        }
        return lines;
    }
    /// Without the custom end, which may follow.
    static Lines sessionBody(bool systemIsKept) {
        return {"[desktopcomputer]",
                {"System wach halten", "Keep system awake"},
                systemIsKept ? "[checkmark.circle.fill]" : "[circle]",
                "[display]",
                {"Display wach halten", "Keep display awake"},
                "[circle]",
                "[network]",
                {"Netzwerk aktiv halten", "Keep network active"},
                "[circle]",
                {"Wach bleiben für", "Stay awake for"},
                "1 h",
                "4 h",
                "8 h",
                "12 h",
                "24 h",
                "[calendar.badge.clock]",
                {"Eigene Endzeit…", "Custom end time…"}};
    }
    static Line lidBody() {
        return {
            "Uploads und Renders laufen mit geschlossenem Deckel weiter — auch ohne externen Monitor. "
            "Corvane "
            "kühlt dabei automatisch.",
            "Uploads and renders keep running with the lid shut — no external display needed. Corvane "
            "auto-cools "
            "while closed."};
    }
    Lines automationBody() {
        return {{"Wach am Netzteil", "Awake on AC power"},
                toggle,
                {"Wach bei externem Bildschirm", "Awake with external display"},
                toggle,
                "[app.fill]",
                "Render",
                "[fan.fill]",
                "Max",
                "[minus.circle.fill]",
                "[app.fill]",
                "A",
                {"Nur wach halten", "Keep awake only"},
                "[minus.circle.fill]",
                "[app.fill]",
                "B",
                "[fan.fill]",
                {"Leise", "Silent"},
                "[minus.circle.fill]",
                "[app.fill]",
                "C",
                "[fan.fill]",
                {"Ausgewogen", "Balanced"},
                "[minus.circle.fill]",
                {fmt::format("aktiv: {}", manager().triggers().activeReason().toStdString()),
                 fmt::format("active: {}", manager().triggers().activeReason().toStdString())},
                "[plus.circle]",
                {"App auswählen…", "Choose app…"}};
    }
    static Line drivesBody() {
        return {
            "Hält externe Laufwerke wach, solange der Schalter an ist — per kurzem Lesezugriff im gewählten "
            "Takt. "
            "Nur lesend, pairt mit Zugeklappt-wach.",
            "Keeps external drives awake while the switch is on — a short read at the chosen interval. "
            "Read-only, "
            "pairs with closed-lid."};
    }
    static Lines drivesControls() {
        return {"[plus.circle]",
                {"Laufwerk hinzufügen…", "Add drive…"},
                {"Auffrischen alle", "Refresh every"},
                {"30 Sek.", "30s"},
                {"1 Min.", "1 min"},
                {"5 Min.", "5 min"}};
    }
    Lines temperature(Line word) {
        Lines lines{machine.temperature->temperature(), std::move(word)};
        if (const QString gpu = machine.temperature->gpuTemperature(); !gpu.isEmpty()) {
            lines.emplace_back("GPU " + gpu);
        }
        lines.emplace_back("<trend>");
        lines.emplace_back(machine.temperature->rpmLine());
        return lines;
    }
    static Lines loginPrompt() { return {"[power]", {"Beim Login starten", "Launch at login"}, toggle}; }
    static Lines footer(bool isAnythingActive) {
        Lines lines{"Corvane"};
        if (isAnythingActive) {
            lines.insert(lines.end(), {"[stop.circle]", {"Alles beenden", "Stop everything"}});
        }
        lines.insert(lines.end(), {"[gearshape]", "[questionmark.circle]", "[power.circle.fill]"});
        return lines;
    }
    static Lines fanTitle() { return section("🌀", {"Lüfter", "Fans"}); }
    static Lines modes() { return {{"Manuell", "Manual"}, "Auto"}; }
    Lines spinUp() {
        const int seconds = fan().spinUpRemaining().value_or(-1);
        return {"🚀",
                {fmt::format("Lüfter fahren hoch … {}s", seconds),
                 fmt::format("Fans spinning up … {}s", seconds)}};
    }
};

}  // namespace corvane
