pragma Singleton
import QtQuick

QtObject {
    readonly property color window: "#f6f6f8"
}
