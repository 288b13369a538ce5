import QtQuick
import Corvane

CoolingCurveItem {
    implicitHeight: 70
    implicitWidth: 300
    color: Theme.accent
    primaryColor: Theme.text
}
