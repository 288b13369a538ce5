import QtQuick
import QtQuick.Layouts
import Corvane

// Says something that stands out.
BannerBody {
    Layout.fillWidth: true

    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
