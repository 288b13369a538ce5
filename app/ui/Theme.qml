pragma Singleton
import QtQuick
import Corvane

// How everything looks. Lengths in device-independent pixels, durations in milliseconds.
QtObject {
    readonly property bool isDark: AppearanceState.isDark

    // Surfaces, back to front.
    readonly property color background: isDark ? "#1b1e22" : "#f3f5f7"
    readonly property color card: isDark ? "#25292e" : "#ffffff"
    readonly property color raised: isDark ? "#2f343a" : "#ffffff"
    readonly property color outline: isDark ? "#363c43" : "#e1e5ea"
    readonly property color separator: isDark ? "#31363c" : "#dfe3e8"
    readonly property color scrim: isDark ? "#a0000000" : "#5a14202b"

    // What is written and drawn on them: at least 4.5 : 1 against every surface.
    readonly property color text: isDark ? "#eef1f4" : "#171c22"
    readonly property color secondaryText: isDark ? "#a9b2bc" : "#56606b"
    readonly property color accent: isDark ? "#58cae6" : "#096683"
    readonly property color accentInk: isDark ? "#06252e" : "#ffffff"

    // Controls. The tints lie on any surface.
    readonly property color track: isDark ? "#454c55" : "#c3cad2"
    readonly property color knob: "#ffffff"
    readonly property color hoverTint: isDark ? "#14ffffff" : "#0d0e2233"
    readonly property color pressTint: isDark ? "#24ffffff" : "#1a0e2233"
    readonly property color wellTint: isDark ? "#1affffff" : "#120e2233"

    readonly property int spaceTiny: 4
    readonly property int spaceSmall: 8
    readonly property int space: 12
    readonly property int spaceLarge: 16

    readonly property int captionSize: 11
    readonly property int bodySize: 13
    readonly property int titleSize: 15
    readonly property int displaySize: 30

    readonly property int radiusSmall: 6
    readonly property int radius: 8
    readonly property int radiusLarge: 12

    readonly property int controlHeight: 28
    readonly property int symbolSize: 16

    readonly property int quick: 120
    readonly property int calm: 160

    readonly property real disabledOpacity: 0.45

    // The colour that a role stands for, in dots, lines and tints.
    function roleColor(role: string): color {
        switch (role) {
        case "blue":
            return "#2f7df6";
        case "cyan":
            return "#12a6cc";
        case "green":
            return "#34b45a";
        case "lime":
            return Qt.rgba(0.7, 0.8, 0.2, 1);
        case "yellow":
            return Qt.rgba(0.8, 0.66, 0.1, 1);
        case "orange":
            return "#ff9500";
        case "ember":
            return Qt.rgba(0.95, 0.4, 0.15, 1);
        case "red":
            return isDark ? "#ff5a52" : "#e0352b";
        default:
            return accent;
        }
    }

    // The same as a colour of letters, which have to be read. Where the very colour matters, as it does for a temperature,
    // it is there as a dot or a line beside them.
    function roleTextColor(role: string): color {
        switch (role) {
        case "blue":
            return isDark ? "#7db4ff" : "#1c5bb8";
        case "green":
            return isDark ? "#6fd98e" : "#1d7438";
        case "lime":
            return isDark ? "#c5d95a" : "#5c6a0c";
        case "yellow":
            return isDark ? "#e3c44c" : "#76600a";
        case "orange":
            return isDark ? "#ffb454" : "#9a5200";
        case "ember":
            return isDark ? "#ff9468" : "#a83c0c";
        case "red":
            return isDark ? "#ff8a84" : "#b3261e";
        default:
            return accent;
        }
    }

    function tint(base: color, opacity: real): color {
        return Qt.alpha(base, opacity);
    }
}
