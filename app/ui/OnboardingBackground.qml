import QtQuick
import Corvane

// A dark surface, tinted from above in the colour of a role. Dark yellow would look green, so it is amber.
Rectangle {
    id: background

    required property string role
    property color shade: role === "yellow" ? "#d0901c" : Theme.roleColor(role)

    function tinted(share: real): color {
        return Qt.tint("#14171c", Theme.tint(shade, share));
    }

    Behavior on shade {
        ColorAnimation {
            duration: 480
            easing.type: Easing.InOutQuad
        }
    }

    gradient: Gradient {
        GradientStop {
            color: background.tinted(0.42)
            position: 0
        }
        GradientStop {
            color: background.tinted(0.16)
            position: 0.55
        }
        GradientStop {
            color: background.tinted(0.06)
            position: 1
        }
    }

    // The edge of a window without a frame, on a desktop that is just as dark.
    Rectangle {
        anchors.fill: parent
        border.color: Theme.tint(Theme.text, 0.12)
        color: "transparent"
    }
}
