// SPDX-License-Identifier: MIT
// A knob for a number: turned by the wheel, by dragging up and down, or by the arrow keys.
import QtQuick

Item {
    id: knob

    required property var setting // as KWI.property answers it
    property string title: setting.name
    // How far it is turned: by the logarithm where the limits span decades.
    readonly property real turned: {
        const low = setting.minimum, high = setting.maximum
        if (!(high > low))
            return 0
        return low > 0 && high / low > 1000 ? Math.log(setting.value / low) / Math.log(high / low)
                                            : (setting.value - low) / (high - low)
    }

    implicitWidth: 170
    implicitHeight: 210
    opacity: setting.writable ? 1 : 0.5
    activeFocusOnTab: true
    Accessible.role: Accessible.Dial
    Accessible.name: title + " " + setting.text
    Accessible.description: setting.meaning
    Keys.onUpPressed: setting.stepBy(1)
    Keys.onDownPressed: setting.stepBy(-1)

    Rectangle {
        id: dial
        anchors { top: parent.top; horizontalCenter: parent.horizontalCenter; topMargin: 8 }
        width: 120
        height: 120
        radius: 60
        color: "#2b3440"
        border { width: knob.activeFocus ? 3 : 1; color: knob.activeFocus ? "#ffb84d" : "#52606f" }

        Item {
            anchors.fill: parent
            rotation: -135 + 270 * Math.max(0, Math.min(1, knob.turned))
            Rectangle {
                anchors { top: parent.top; horizontalCenter: parent.horizontalCenter; topMargin: 8 }
                width: 6
                height: 34
                radius: 3
                color: "#ffb84d"
            }
        }
    }
    Text {
        anchors { top: dial.bottom; horizontalCenter: parent.horizontalCenter; topMargin: 6 }
        text: knob.title
        color: "#9fb0c0"
        font.pixelSize: 15
    }
    Text {
        anchors { bottom: parent.bottom; horizontalCenter: parent.horizontalCenter; bottomMargin: 10 }
        text: knob.setting.valid ? knob.setting.text : "—"
        color: "#ffffff"
        font { pixelSize: 22; bold: true }
    }
    MouseArea {
        anchors.fill: parent
        property real from: 0
        onWheel: wheel => knob.setting.stepBy(wheel.angleDelta.y > 0 ? 1 : -1)
        onPressed: mouse => { from = mouse.y; knob.forceActiveFocus() }
        onPositionChanged: mouse => {
            const steps = Math.trunc((from - mouse.y) / 12)
            if (steps !== 0) {
                from -= 12 * steps
                knob.setting.stepBy(steps)
            }
        }
    }
}
