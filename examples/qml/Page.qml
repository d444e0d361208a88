// SPDX-License-Identifier: MIT
// A page of the instrument: time base, trigger, and the labels of the CAN bus.
import QtQuick
import KWIFunctionZEL 2.0

Rectangle {
    id: page

    readonly property var labels:
        KWI.container("SerialBus/CANBusSettings/LabelListSettings/SerialBusLabelItem")
    readonly property var scale: KWI.property("Horizontal/Scale")

    width: 800
    height: 480
    color: "#1a2129"

    Row {
        id: knobs
        x: 16
        y: 16
        spacing: 8
        Knob { setting: page.scale; title: "Time scale" }
        Knob { setting: KWI.property("Vertical/Channel[0]/Scale"); title: "Channel A" }
        Knob { setting: KWI.property("Setup/Display/GridIntensity"); title: "Grid" }
    }

    Selector {
        x: 24
        y: 250
        width: 500
        setting: KWI.property("Trigger/Type")
        title: "Trigger"
    }

    Column {
        x: 560
        y: 24
        width: 216
        spacing: 8
        Text {
            text: "Labels (" + page.labels.count + ")"
            color: "#9fb0c0"
            font.pixelSize: 15
        }
        ListView {
            width: parent.width
            height: 330
            clip: true
            spacing: 6
            model: page.labels
            delegate: Rectangle {
                required property string name
                required property string path
                required property bool active
                readonly property var identifier: KWI.property(path + "/Identifier")
                width: ListView.view.width
                height: 44
                radius: 6
                color: active ? "#3a4a5c" : "#2b3440"
                Text {
                    x: 12
                    anchors.verticalCenter: parent.verticalCenter
                    text: parent.name
                    color: "#e4ebf2"
                    font.pixelSize: 16
                }
                Text {
                    anchors { right: parent.right; rightMargin: 12; verticalCenter: parent.verticalCenter }
                    text: parent.identifier ? "0x" + parent.identifier.value.toString(16) : ""
                    color: "#ffb84d"
                    font.pixelSize: 16
                }
            }
        }
    }

    Text {
        x: 24
        y: 440
        text: page.scale.refusal !== "" ? "Time scale: " + page.scale.refusal
                                        : "Whole screen " + KWI.property("Horizontal/AcquisitionTime").text
        color: page.scale.refusal !== "" ? "#ff8f7a" : "#9fb0c0"
        font.pixelSize: 15
    }
}
