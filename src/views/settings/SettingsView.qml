import QtQuick
import Varnhold

// The whole settings window: a left and a right pane, and over them what has to be answered first.
Rectangle {
    id: root

    required property SettingsModel settings

    color: Theme.window

    WindowScroller {
        id: scroller

        anchors.fill: parent
        leastWidth: 1200
        leastHeight: 850

        SplitPanes {
            width: scroller.contentWidth
            height: scroller.contentHeight

            leftContent: Rectangle {
                anchors.fill: parent
                color: Theme.pane
            }

            rightContent: Item {
                anchors.fill: parent

                BottomBar {
                    anchors.bottom: parent.bottom
                    width: parent.width
                    onReset: root.settings.reset()
                }
            }
        }
    }

    Overlays {
        anchors.fill: parent
        sheets: root.settings.sheets
    }
}
