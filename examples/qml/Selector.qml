// SPDX-License-Identifier: MIT
// One button for each value that can be selected now.
import QtQuick

Column {
    id: selector

    required property var setting
    property string title: setting.name

    spacing: 8
    Text {
        text: selector.title
        color: "#9fb0c0"
        font.pixelSize: 15
    }
    Flow {
        width: selector.width
        spacing: 6
        Repeater {
            model: selector.setting.choices
            Rectangle {
                id: button
                required property var modelData
                readonly property bool chosen: modelData.value === selector.setting.value
                width: label.implicitWidth + 24
                height: 36
                radius: 6
                color: chosen ? "#ffb84d" : "#2b3440"
                border { width: activeFocus ? 3 : 1; color: activeFocus ? "#ffffff" : "#52606f" }
                activeFocusOnTab: true
                Accessible.role: Accessible.RadioButton
                Accessible.name: modelData.text
                Accessible.checked: chosen
                Keys.onSpacePressed: selector.setting.value = modelData.value
                Text {
                    id: label
                    anchors.centerIn: parent
                    text: button.modelData.text
                    color: button.chosen ? "#1a2129" : "#e4ebf2"
                    font.pixelSize: 15
                }
                MouseArea {
                    anchors.fill: parent
                    onClicked: selector.setting.value = button.modelData.value
                }
            }
        }
    }
}
