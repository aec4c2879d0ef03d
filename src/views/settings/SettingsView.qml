import QtQuick
import Varnhold

// The whole settings window: a left and a right pane, and over them what has to be answered first.
Rectangle {
    id: root

    required property SettingsModel settings

    color: Theme.window

    WindowScroller {
        id: scroller

        leastWidth: 1200
        leastHeight: 850

        SplitPanes {
            width: scroller.contentWidth
            height: scroller.contentHeight

            leftContent: LeftPane {
                anchors.fill: parent
                settings: root.settings
            }

            rightContent: Item {
                anchors.fill: parent

                TopBlock {
                    id: top

                    objectName: "topBlock"
                    width: parent.width
                    height: 420
                    settings: root.settings
                }

                ChainsPane {
                    anchors.top: top.bottom
                    anchors.bottom: bar.top
                    width: parent.width
                    settings: root.settings
                }

                BottomBar {
                    id: bar

                    anchors.bottom: parent.bottom
                    width: parent.width
                    onReset: root.settings.reset()
                }
            }
        }
    }

    DragAnnouncer {}

    Overlays {
        anchors.fill: parent
        sheets: root.settings.sheets
    }
}
